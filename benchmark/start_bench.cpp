#include "benchmark/cases.h"
#include "benchmark/host_monitor_list.h"
#include "benchmark/host_window_list.h"
#include "benchmark/measurement.h"
#include "simulation/import_redirect.h"
#include "tests/fixtures/module_under_test.h"
#include "tests/fixtures/other_program.h"

#include <process.h>

#include <chrono>
#include <optional>

namespace bench {

namespace {

using Clock = std::chrono::steady_clock;

// While the object lives, measures the parts of an init: reading the windows, and waiting for the
// thread that asks WMI.
class PartsOfInit {
public:
    explicit PartsOfInit(HMODULE image)
        : enumerating(image, "EnumWindows", simulation::addressOf(enumerateWindows)),
          starting(image, "_beginthreadex", simulation::addressOf(startThread)),
          waiting(image, "WaitForSingleObject", simulation::addressOf(waitForThread)) {
        windows = 0;
        wmi = 0;
    }

    static inline double windows = 0; // in nanoseconds, as wmi
    static inline double wmi = 0;

private:
    static BOOL WINAPI enumerateWindows(WNDENUMPROC callback, LPARAM parameter) {
        BOOL done = FALSE;
        windows += nanosecondsOf([&] { done = EnumWindows(callback, parameter); });
        return done;
    }
    static uintptr_t startThread(void* security, unsigned stackSize,
                                 unsigned(__stdcall* function)(void*), void* parameter,
                                 unsigned flags, unsigned* id) {
        started = Clock::now();
        return _beginthreadex(security, stackSize, function, parameter, flags, id);
    }
    static DWORD WINAPI waitForThread(HANDLE thread, DWORD milliseconds) {
        const DWORD waited = WaitForSingleObject(thread, milliseconds);
        wmi += std::chrono::duration<double, std::nano>(Clock::now() - started).count();
        return waited;
    }

    static inline Clock::time_point started;
    simulation::ImportRedirect enumerating;
    simulation::ImportRedirect starting;
    simulation::ImportRedirect waiting;
};

void mapLibraries() {
    using tests::Library;
    const Library runtime(tests::product("vorlen_runtime.dll"), Library::Mapping::imageOnly);
    const Library module(tests::product("libvorlen_monitor.dll"), Library::Mapping::imageOnly);
}

} // namespace

std::vector<Row> start(const Effort& /*effort*/) {
    constexpr int windowCount = 50;
    tests::OtherProgram program;
    for (int i = 0; i < windowCount; ++i) {
        program.createShown(L"A document - An application " + std::to_wstring(i));
    }
    const double mapping = nanosecondsOf(mapLibraries);
    std::optional<tests::ModuleUnderTest> module;
    const double loading = nanosecondsOf([&] { module.emplace(); });
    const HostMonitorList host(module->image());
    const auto readWindows = [] {
        use(listWindowsAfresh().data());
    };
    const auto readMonitors = [&] {
        use(host.read().data());
    };
    // What the system takes for the first reading in a process is neither the host's nor the
    // library's.
    readWindows();
    readMonitors();
    const double hostWindows = nanosecondsOf(readWindows);
    const double hostMonitors = nanosecondsOf(readMonitors);
    std::optional<PartsOfInit> parts(module->image());
    const double init = nanosecondsOf([&] { module->init(); });
    parts.reset();
    const double windows = PartsOfInit::windows;
    const double wmi = PartsOfInit::wmi;
    const double again = nanosecondsOf([&] {
        module->cleanup();
        module->init();
    });
    const double listed = module->exports->getWindowList(nullptr, 0);
    return {{.what = "load, init and first list, " + std::to_string(windowCount) + " windows",
             .beside = "a host that maps the files, reads the desktop and asks WMI",
             .value = (loading + init) / (mapping + hostWindows + hostMonitors + wmi),
             .unit = timesTheTime,
             .atMost = 2,
             .measured = {{"loading, ns", loading},
                          {"windows, ns", windows},
                          {"for each window, ns", windows / listed},
                          {"monitors, ns", init - windows - wmi},
                          {"WMI, ns", wmi},
                          {"mapping the files, ns", mapping},
                          {"host's windows, ns", hostWindows},
                          {"host's monitors, ns", hostMonitors}}},
            {.what = "shutdown and init again",
             .beside = "load, init and first list",
             .value = again / (loading + init),
             .unit = timesTheTime,
             .atMost = 1,
             .measured = {{"again, ns", again}}}};
}

} // namespace bench
