#include "benchmark/cases.h"
#include "benchmark/hook_procedure.h"
#include "benchmark/host_window_list.h"
#include "benchmark/measurement.h"
#include "tests/support/module_under_test.h"
#include "tests/windows_real/other_program.h"

#include <algorithm>

namespace bench {

namespace {

// A host's own list, which asks the platform about the window of every event before it looks at
// what the event is.
class PlatformFirst {
public:
    PlatformFirst() : windows(listWindowsAfresh()) {}

    void handle(DWORD event, HWND window, LONG object, LONG child) {
        HostWindow read;
        const bool offered = GetAncestor(window, GA_ROOT) == window &&
                             GetWindowTextLengthW(window) >= 1 && isOffered(window, read);
        const auto listed = std::find_if(windows.begin(), windows.end(),
                                         [=](const auto& each) { return each.window == window; });
        if (event == EVENT_OBJECT_DESTROY && child == CHILDID_SELF) {
            if (listed != windows.end()) {
                windows.erase(listed);
            }
        } else if ((event == EVENT_OBJECT_SHOW || event == EVENT_OBJECT_UNCLOAKED) &&
                   object == OBJID_WINDOW && child == CHILDID_SELF && offered &&
                   listed == windows.end()) {
            windows.push_back(read);
        }
    }

private:
    std::vector<HostWindow> windows;
};

struct Event {
    std::string what;
    DWORD event;
    HWND window;
    LONG object;
    LONG child;
};

} // namespace

std::vector<Row> windowEvents(const Effort& effort) {
    tests::OtherProgram program;
    HWND listed = nullptr;
    for (int i = 0; i < 20; ++i) {
        listed = program.createShown(L"A document - An application " + std::to_wstring(i));
    }
    const HWND unlisted = program.create(L"Hidden");
    const tests::ModuleUnderTest module;
    const HookProcedure hook(module.image());
    module.init();
    PlatformFirst host;

    const std::vector<Event> events = {
        {"a location event", EVENT_OBJECT_LOCATIONCHANGE, listed, OBJID_WINDOW, CHILDID_SELF},
        {"a location event of the pointer", EVENT_OBJECT_LOCATIONCHANGE, nullptr, OBJID_CURSOR,
         CHILDID_SELF},
        {"a destroyed child", EVENT_OBJECT_DESTROY, listed, OBJID_CLIENT, 3},
        {"an unlisted window destroyed", EVENT_OBJECT_DESTROY, unlisted, OBJID_WINDOW,
         CHILDID_SELF},
        {"a listed window shown again", EVENT_OBJECT_SHOW, listed, OBJID_WINDOW, CHILDID_SELF},
    };
    std::vector<Row> rows;
    for (const Event& event : events) {
        const auto times = medians(
            {{[&] {
                 HookProcedure::deliver(event.event, event.window, event.object, event.child);
             }},
             {[&] {
                 host.handle(event.event, event.window, event.object, event.child);
             }}},
            effort.slowSamples);
        const double faster = times[1] / times[0];
        const double rate = 1e3 / times[0];
        rows.push_back({event.what,
                        "platform tests first",
                        ">= 100 x faster",
                        faster,
                        "x",
                        faster >= 100,
                        {{"event, ns", times[0]}, {"platform first, ns", times[1]}}});
        rows.push_back({event.what, "", ">= 20 million a second", rate, "million/s", rate >= 20});
    }
    // Events that change the list, for which the platform has to be asked or was.
    const auto appear = [&](const auto& deliver) {
        deliver(EVENT_OBJECT_SHOW);
    };
    const auto vanish = [&](const auto& deliver) {
        deliver(EVENT_OBJECT_DESTROY);
    };
    const auto toLibrary = [&](DWORD event) {
        HookProcedure::deliver(event, listed);
    };
    const auto toHost = [&](DWORD event) {
        host.handle(event, listed, OBJID_WINDOW, CHILDID_SELF);
    };
    const auto shown = medians({{[&] { appear(toLibrary); },
                                 [&] {
                                     vanish(toLibrary);
                                 }},
                                {[&] { appear(toHost); },
                                 [&] {
                                     vanish(toHost);
                                 }}},
                               effort.samples);
    const auto destroyed = medians({{[&] { vanish(toLibrary); },
                                     [&] {
                                         appear(toLibrary);
                                     }},
                                    {[&] { vanish(toHost); },
                                     [&] {
                                         appear(toHost);
                                     }}},
                                   effort.samples);
    rows.push_back({"a shown window",
                    "platform tests first",
                    "",
                    shown[1] / shown[0],
                    "x",
                    std::nullopt,
                    {{"event, ns", shown[0]}, {"platform first, ns", shown[1]}}});
    rows.push_back({"a listed window destroyed",
                    "platform tests first",
                    "",
                    destroyed[1] / destroyed[0],
                    "x",
                    std::nullopt,
                    {{"event, ns", destroyed[0]}, {"platform first, ns", destroyed[1]}}});
    return rows;
}

} // namespace bench
