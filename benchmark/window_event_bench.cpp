#include "benchmark/cases.h"
#include "benchmark/hook_procedure.h"
#include "benchmark/host_window_list.h"
#include "benchmark/measurement.h"
#include "tests/fixtures/module_under_test.h"
#include "tests/fixtures/other_program.h"

#include <algorithm>

namespace bench {

namespace {

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
    HWND unlisted = program.create(L"Hidden");
    tests::ModuleUnderTest module;
    HookProcedure hook{module.image()};
    PlatformFirst host;
};

std::vector<Event> eventsThatChangeNothing(HWND listed, HWND unlisted) {
    return {
        {"a location event", EVENT_OBJECT_LOCATIONCHANGE, listed},
        {"a location event of the pointer", EVENT_OBJECT_LOCATIONCHANGE, nullptr, OBJID_CURSOR},
        {"a destroyed child", EVENT_OBJECT_DESTROY, listed, OBJID_CLIENT, 3},
        {"an unlisted window destroyed", EVENT_OBJECT_DESTROY, unlisted},
        {"a listed window shown again", EVENT_OBJECT_SHOW, listed},
    };
}

Row besidePlatformFirst(const Event& event, double library, double host) {
    return {event.what,
            "the platform first",
            "",
            host / library,
            "x",
            std::nullopt,
            {{"event, ns", library}, {"platform first, ns", host}}};
}

// The two rows of an event that changes nothing.
std::vector<Row> unchanging(const Event& event, PlatformFirst& host, std::size_t samples) {
    const auto times = medians({{[&] {
                                    tellLibrary(event);
                                }},
                                {[&] {
                                    host.handle(event);
                                }}},
                               samples);
    const Row plain = besidePlatformFirst(event, times[0], times[1]);
    const double rate = 1e3 / times[0];
    return {fasterBy(100, plain.what, plain.beside, plain.value, plain.measured),
            {event.what, "", ">= 20 million a second", rate, "million/s", rate >= 20}};
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
    return besidePlatformFirst(event, times[0], times[1]);
}

} // namespace

std::vector<Row> windowEvents(const Effort& effort) {
    Listeners listeners;
    std::vector<Row> rows;
    for (const Event& event : eventsThatChangeNothing(listeners.listed, listeners.unlisted)) {
        for (Row& row : unchanging(event, listeners.host, effort.slowSamples)) {
            rows.push_back(std::move(row));
        }
    }
    const Event shown{"a shown window", EVENT_OBJECT_SHOW, listeners.listed};
    const Event gone{"a listed window destroyed", EVENT_OBJECT_DESTROY, listeners.listed};
    rows.push_back(changing(shown, gone, listeners.host, effort.samples));
    rows.push_back(changing(gone, shown, listeners.host, effort.samples));
    return rows;
}

} // namespace bench
