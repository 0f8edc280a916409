#include "benchmark/cases.h"
#include "benchmark/host_monitor_list.h"
#include "benchmark/measurement.h"
#include "benchmark/priced_displays.h"
#include "benchmark/simulated_module.h"
#include "tests/fixtures/mangled_names.h"

namespace bench {

namespace {

using TextOfMonitor = std::wstring(HMONITOR);

// The library and a host's own list on a simulated desktop with so many monitors. The display
// calls take time in proportion to the real ones.
class PricedDesktop : SimulatedModule {
public:
    PricedDesktop(std::size_t monitorCount, const std::map<std::string, double>& prices)
        : displays(module.image(), prices), host(module.image()) {
        addMonitors(monitorCount);
        const auto resolve = [this](TextOfMonitor*& function, const char* name) {
            void* const address = reinterpret_cast<void*>(GetProcAddress(module.image(), name));
            function = reinterpret_cast<TextOfMonitor*>(address);
        };
        resolve(getMonitorName, tests::mangled::getNameOfMonitor);
        resolve(getMonitorPath, tests::mangled::getPathOfMonitor);
        module.init();
    }

    void update() {
        module.exports->updateMonitorList();
        forgetCalls();
    }

    // Calls the library's functions for one monitor: each call reads the display configuration.
    void askForEach() {
        for (const simulation::SimulatedMonitor& monitor : desktop.monitors.all) {
            use(getMonitorName(monitor.handle).data());
            use(getMonitorPath(monitor.handle).data());
        }
        forgetCalls();
    }

    void readOnce() {
        use(host.read().data());
        forgetCalls();
    }

private:
    // Otherwise the recorded calls accumulate, and the growth of their memory is timed, too.
    void forgetCalls() {
        desktop.journal.clear();
        desktop.displayPaths.requests.clear();
    }

    PricedDisplays displays;
    HostMonitorList host;
    TextOfMonitor* getMonitorName = nullptr;
    TextOfMonitor* getMonitorPath = nullptr;
};

// The cost of one way to read all monitors.
struct Way {
    double time = 0; // in nanoseconds
    double calls = 0;
};

struct Ways {
    std::size_t monitorCount;
    Way update;  // updateMonitorList
    Way asking;  // getMonitorName and getMonitorPath for each monitor
    Way reading; // the host's own list
};

template <typename Work>
double callsOf(Work work) {
    const std::size_t before = PricedDisplays::calls();
    work();
    return static_cast<double>(PricedDisplays::calls() - before);
}

Ways measure(std::size_t monitorCount, const std::map<std::string, double>& prices,
             std::size_t samples) {
    PricedDesktop priced(monitorCount, prices);
    const auto update = [&] {
        priced.update();
    };
    const auto ask = [&] {
        priced.askForEach();
    };
    const auto read = [&] {
        priced.readOnce();
    };
    const auto times = medians(
        {{.work = update, .once = true}, {.work = ask, .once = true}, {.work = read, .once = true}},
        samples);
    return {monitorCount,
            {times[0], callsOf(update)},
            {times[1], callsOf(ask)},
            {times[2], callsOf(read)}};
}

std::string nameOf(const Ways& ways) {
    return "updateMonitorList, " + std::to_string(ways.monitorCount) + " monitors";
}

Row besideAsking(const Ways& ways) {
    return fasterBy(static_cast<double>(ways.monitorCount), nameOf(ways),
                    "getMonitorName and getMonitorPath of each",
                    ways.asking.time / ways.update.time,
                    {{"update, ns", ways.update.time},
                     {"asking, ns", ways.asking.time},
                     {"update, calls", ways.update.calls},
                     {"asking, calls", ways.asking.calls}});
}

Row besideReading(const Ways& ways) {
    return {nameOf(ways),
            "one plain reading by the host",
            "",
            ways.reading.time / ways.update.time,
            "x",
            std::nullopt,
            {{"update, ns", ways.update.time},
             {"reading, ns", ways.reading.time},
             {"update, calls", ways.update.calls},
             {"reading, calls", ways.reading.calls}}};
}

// The row that compares the time for each monitor with that on a desktop with one monitor.
Row besideOneMonitor(const Ways& ways, const Ways& one) {
    const double each = ways.update.time / static_cast<double>(ways.monitorCount);
    return within("linear: ", 1.2, "", nameOf(ways), "1 monitor, for each", each / one.update.time,
                  {{"for each monitor, ns", each}});
}

} // namespace

std::vector<Row> monitorUpdateBySize(const Effort& effort) {
    const auto prices = pricesOfTheDesktop(effort.slowSamples);
    const Ways one = measure(1, prices, effort.slowSamples);
    std::vector<Row> rows = {besideAsking(one), besideReading(one)};
    for (const std::size_t count : {2U, 8U, 64U}) {
        const Ways more = measure(count, prices, effort.slowSamples);
        rows.push_back(besideAsking(more));
        rows.push_back(besideReading(more));
        rows.push_back(besideOneMonitor(more, one));
    }
    rows.front().measured.insert(prices.begin(), prices.end());
    return rows;
}

} // namespace bench
