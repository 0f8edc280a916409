#pragma once

#include "monitor/display/monitor_info.h"
#include "tests/fixtures/module_under_test.h"
#include "tests/fixtures/shipped_runtime.h"
#include "tests/support/library.h"

#include <windows.h>

#include <string>

namespace tests {

// The shipped runtime with the shipped module registered, both freshly loaded, and unloaded in
// reverse order. Not the recording runtime, which keeps what it recorded.
class LoadedProducts {
    ShippedRuntime runtimeLibrary;
    Library moduleLibrary{product("libvorlen_monitor.dll")};

public:
    LoadedProducts();

    HMODULE image() const { return moduleLibrary.image(); }

    // Runs init; false when it failed.
    bool initialize() const { return runtimeLibrary.initialize(); }
    void shutdown() const { runtimeLibrary.shutdown(); }

    const Exports& exports() const { return functions; }

    // Every function that the module exports and every slot of its tables once. The combo boxes
    // are filled, and the second stays registered for the windows until cleanup.
    void useEverything(HWND monitorBox, HWND windowBox) const;

private:
    void useLists() const;
    void useNames() const;
    void useStatus() const;
    void useSingleMonitor(HMONITOR monitor) const;
    void useMonitorTable() const;
    void useWindowEnumTable(HWND monitorBox, HWND windowBox) const;

    Exports functions{moduleLibrary};
    std::wstring (*getMonitorName)(HMONITOR) = nullptr;
    std::wstring (*getMonitorPath)(HMONITOR) = nullptr;
    void (*getMonitorBasicInfo)(HMONITOR, MonitorInfo&) = nullptr;
};

} // namespace tests
