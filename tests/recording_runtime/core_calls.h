#pragma once

#include "runtime/core.h"
#include "simulation/current.h"
#include "simulation/journal.h"
#include "simulation/redirects.h"
#include "tests/support/simulation.h"

#include <windows.h>

#include <deque>
#include <set>
#include <string>
#include <vector>

namespace tests {

// Notes every call that an image makes of the runtime's core in the journal, under names such as
// "VorlenCore::AddMonitorItem", and passes it on. A call is made to fail with the journal's at():
// the action throws, and the core is not reached.
class CoreCalls : private Current<CoreCalls> {
public:
    CoreCalls(HMODULE image, Journal& calls, std::set<std::string> absentFunctions = {});

    // The core's calls so far, in order and without the "VorlenCore::" in front.
    std::vector<std::string> names() const;

    // The texts of the calls with a text argument, in order.
    std::vector<std::string> texts;

    // The answer about cameras: the core itself knows none.
    std::string cameraName;

private:
    friend class Current<CoreCalls>;
    using VorlenCore = vorlen::VorlenCore;
    using Text = std::string;
    using Texts = std::vector<std::string>;

    template <typename Function>
    void forward(Function*& original, const char* mangledName, Function* replacement);
    static void note(const char* name);
    static void note(const char* name, const Text& text);

    static VorlenCore& instance();
    static void clearMonitorList(VorlenCore* core);
    static void addMonitorItem(VorlenCore* core, vorlen::VORLEN_MONITOR_INFO monitor);
    static const Text& getMonitorName(const VorlenCore* core);
    static void setMonitorName(VorlenCore* core, const Text& name);
    static const Text& getMonitorModelName(const VorlenCore* core);
    static void setMonitorModelName(VorlenCore* core, const Text& name);
    static const Texts& getVorlenModelName(const VorlenCore* core, const Text& deviceName);
    static void setVorlenModelName(VorlenCore* core, const Text& modelName);
    static const Text& getDefaultCameraName(const VorlenCore* core, const Text& modelName);

    // The core's own functions, as the image called them.
    struct {
        decltype(CoreCalls::instance)* instance = nullptr;
        decltype(CoreCalls::clearMonitorList)* clearMonitorList = nullptr;
        decltype(CoreCalls::addMonitorItem)* addMonitorItem = nullptr;
        decltype(CoreCalls::getMonitorName)* getMonitorName = nullptr;
        decltype(CoreCalls::setMonitorName)* setMonitorName = nullptr;
        decltype(CoreCalls::getMonitorModelName)* getMonitorModelName = nullptr;
        decltype(CoreCalls::setMonitorModelName)* setMonitorModelName = nullptr;
        decltype(CoreCalls::getVorlenModelName)* getVorlenModelName = nullptr;
        decltype(CoreCalls::setVorlenModelName)* setVorlenModelName = nullptr;
        decltype(CoreCalls::getDefaultCameraName)* getDefaultCameraName = nullptr;
    } core;

    HMODULE image;
    Journal& journal;
    std::set<std::string> absent;
    std::deque<ImportRedirect> redirects;
};

} // namespace tests
