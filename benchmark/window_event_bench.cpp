#include "benchmark/cases.h"
#include "benchmark/hook_procedure.h"
#include "benchmark/host_window_list.h"
#include "benchmark/measurement.h"
#include "tests/fixtures/module_under_test.h"
#include "tests/fixtures/other_program.h"

#include <algorithm>

namespace bench {

namespace {

constexpr const char* besidePlatformFirst = "a host that asks the platform first";

struct Event {
    std::string what;
    DWORD event;
    HWND window;
    LONG object = OBJID_WINDOW;
    LONG child = CHILDID_SELF;
};

void tellLibrary(const Event& event) {
    HookProcedure::deliver(event.event, event.window, event.object, event.child);
}

// A host's own list, which calls the platform for every event (is the window a root window with a
// title?) before it looks at the event's numbers.
class PlatformFirst {
public:
    void handle(const Event& event) {
        const bool worthALook = GetAncestor(event.window, GA_ROOT) == event.window &&
                                GetWindowTextLengthW(event.window) >= 1;
        const auto listed = std::ranges::find_if(
            windows, [&](const auto& each) { return each.window == event.window; });
        const bool isListed = listed != windows.end();
        if (event.event == EVENT_OBJECT_DESTROY && event.child == CHILDID_SELF) {
            if (isListed) {
                windows.erase(listed);
            }
        } else if (worthALook && !isListed && isAppearance(event)) {
            add(event.window);
        }
    }

private:
    static bool isAppearance(const Event& event) {
        return (event.event == EVENT_OBJECT_SHOW || event.event == EVENT_OBJECT_UNCLOAKED) &&
               event.object == OBJID_WINDOW && event.child == CHILDID_SELF;
    }

    void add(HWND window) {
        HostWindow read;
        if (isCapturable(window, read)) {
            windows.push_back(std::move(read));
        }
    }

    std::vector<HostWindow> windows = listWindowsAfresh();
};

// The library and the host's own list, on a real desktop with the windows of another program.
struct Listeners {
    Listeners() { module.init(); }

    static HWND showSeveral(tests::OtherProgram& program) {
        HWND last = nullptr;
        for (int i = 0; i < 20; ++i) {
            last = program.createShown(L"A document - An application " + std::to_wstring(i));
        }
        return last;
    }

    tests::OtherProgram program;
    HWND listed = showSeveral(program);
    tests::ModuleUnderTest module;
    HookProcedure hook{module.image()};
    PlatformFirst host;
};

// The row of an event that changes nothing.
Row unchanging(const Event& event, PlatformFirst& host, std::size_t samples) {
    const auto times = medians({{[&] {
                                    tellLibrary(event);
                                }},
                                {[&] {
                                    host.handle(event);
                                }}},
                               samples);
    return {.what = event.what,
            .beside = besidePlatformFirst,
            .value = times[1] / times[0],
            .unit = timesFaster,
            .atLeast = 100,
            .measured = {{"event, ns", times[0]}, {"platform first, ns", times[1]}}};
}

// The row of an event that changes the list. The event back reverses the change.
Row changing(const Event& event, const Event& back, PlatformFirst& host, std::size_t samples) {
    const auto times = medians({{[&] { tellLibrary(event); },
                                 [&] {
                                     tellLibrary(back);
                                 }},
                                {[&] { host.handle(event); },
                                 [&] {
                                     host.handle(back);
                                 }}},
                               samples);
    return {.what = event.what,
            .beside = besidePlatformFirst,
            .value = times[0] / times[1],
            .unit = timesTheTime,
            .atMost = 1.5,
            .measured = {{"event, ns", times[0]}, {"platform first, ns", times[1]}}};
}

} // namespace

std::vector<Row> windowEvents(const Effort& effort) {
    Listeners listeners;
    const Event moved{"a moved window", EVENT_OBJECT_LOCATIONCHANGE, listeners.listed};
    const Event shown{"a shown window", EVENT_OBJECT_SHOW, listeners.listed};
    const Event gone{"", EVENT_OBJECT_DESTROY, listeners.listed};
    return {unchanging(moved, listeners.host, effort.samples),
            changing(shown, gone, listeners.host, effort.samples)};
}

} // namespace bench
