// What both C++ hosts do with a session: everything that it offers.
#pragma once

#include "vorlen/monitor.hpp"

#include <iostream>

inline void use(const vorlen::Session& session) {
    session.updateMonitors();
    std::cout << session.monitors().size() << '\n';
    const vorlen::Version version = session.version();
    std::cout << version.major << '.' << version.minor << '.' << version.patch << '\n';
    std::cout << session.lastStatus().name << ' ' << session.check().name << '\n';
    std::cout << session.lastStatus().text << '\n';
    std::cout << session.checkedMonitor().has_value() << session.restartWindowList() << '\n';
    session.setModelName({"two\0parts", 9});
    std::cout << session.modelName() << ' ' << session.currentMonitorName() << '\n';
    std::cout << session.currentMonitorRect().width << '\n';
    std::cout << session.reasonNotCapturable(nullptr) << '\n';
    std::cout << session.windows().size() << '\n';
}
