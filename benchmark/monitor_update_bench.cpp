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
    return {.what = nameOf(ways),
            .beside = "getMonitorName and getMonitorPath of each",
            .value = ways.asking.time / ways.update.time,
            .unit = timesFaster,
            .atLeast = static_cast<double>(ways.monitorCount),
            .measured = {{"update, ns", ways.update.time},
                         {"asking, ns", ways.asking.time},
                         {"update, calls", ways.update.calls},
                         {"asking, calls", ways.asking.calls}}};
}

Row besideReading(const Ways& ways) {
    return {.what = nameOf(ways),
            .beside = "one plain reading by the host",
            .value = ways.update.time / ways.reading.time,
            .unit = timesTheTime,
            .atMost = 1.5,
            .measured = {{"update, ns", ways.update.time},
                         {"reading, ns", ways.reading.time},
                         {"update, calls", ways.update.calls},
                         {"reading, calls", ways.reading.calls}}};
}

// The row that compares the time for each monitor with that on a desktop with one monitor.
Row besideOneMonitor(const Ways& ways, const Ways& one) {
    const double each = ways.update.time / static_cast<double>(ways.monitorCount);
    return {.what = nameOf(ways) + ", for each",
            .beside = "1 monitor",
            .value = each / one.update.time,
            .unit = timesTheTime,
            .atMost = 1.2,
            .measured = {{"for each monitor, ns", each}, {"1 monitor, ns", one.update.time}}};
}

} // namespace

std::vector<Row> monitorUpdateBySize(const Effort& effort) {
    const auto prices = pricesOfTheDesktop(effort.slowSamples);
    const Ways one = measure(1, prices, effort.slowSamples);
    const Ways two = measure(2, prices, effort.slowSamples);
    const Ways many = measure(64, prices, effort.slowSamples);
    return {besideAsking(two), besideReading(two), besideOneMonitor(many, one)};
}

} // namespace bench
