#pragma once

#include "monitor/module.h"
#include "tests/recording_runtime/recording_runtime.h"
#include "tests/support/library.h"
#include "vorlen/diagnostics.h"
#include "vorlen/monitor.h"

#include <windows.h>

#include <optional>

namespace tests {

// The exported functions of the library under test.
struct Exports {
    explicit Exports(const Library& library);

    decltype(checkMonitorStatus)* checkMonitorStatus = nullptr;
    decltype(getMonitorList)* getMonitorList = nullptr;
    decltype(getWindowList)* getWindowList = nullptr;
    decltype(getMonitorModelName)* getMonitorModelName = nullptr;
    decltype(getVorlenMonitorModelName)* getVorlenMonitorModelName = nullptr;
    decltype(setVorlenMonitorModelName)* setVorlenMonitorModelName = nullptr;
    decltype(getMonitorRect)* getMonitorRect = nullptr;
    decltype(updateMonitorList)* updateMonitorList = nullptr;
    decltype(vorlen::monitor_internal::getLastMonitorStatus)* getLastMonitorStatus = nullptr;
    decltype(vorlen::monitor_internal::getCheckedMonitor)* getCheckedMonitor = nullptr;
    decltype(vorlen::monitor_internal::getWindowRefusal)* getWindowRefusal = nullptr;
    decltype(vorlen::monitor_internal::restartWindowList)* restartWindowList = nullptr;
    decltype(vorlen::monitor_internal::GetMonitorData)* getMonitorData = nullptr;
};

// The shipped libvorlen_monitor.dll, freshly loaded and bound to a freshly loaded recording
// runtime. The module is unloaded before the runtime.
class ModuleUnderTest {
    Library runtimeLibrary;
    std::optional<Library> moduleLibrary;

public:
    ModuleUnderTest();
    ~ModuleUnderTest();
    ModuleUnderTest(const ModuleUnderTest&) = delete;
    ModuleUnderTest& operator=(const ModuleUnderTest&) = delete;

    HMODULE image() const { return moduleLibrary.value().image(); }
    HMODULE runtimeImage() const { return runtimeLibrary.image(); }

    void init() const { runtime.init(); }
    void cleanup() const { runtime.cleanup(); }
    const vorlen::MonitorWrapper& monitorWrapper() const { return *runtime.monitorWrapper(); }
    const vorlen::WindowEnumWrapper& windowEnumWrapper() const {
        return *runtime.windowEnumWrapper();
    }

    // Unloads the module, while the runtime stays, and loads it again.
    void unload();
    void load();

    RecordingRuntime& runtime;
    std::optional<Exports> exports;
};

} // namespace tests
