#include "benchmark/cases.h"
#include "benchmark/measurement.h"
#include "benchmark/priced_displays.h"
#include "benchmark/simulated_module.h"

namespace bench {

namespace {

using TextOfMonitor = std::wstring(HMONITOR);

// The library on a desktop of so many monitors, whose calls cost what they cost on the real one.
struct PricedDesktop : SimulatedModule {
    PricedDesktop(std::size_t monitorCount, const std::map<std::string, double>& prices)
        : displays(module.image(), prices) {
        addMonitors(monitorCount);
        const auto resolve = [this](TextOfMonitor*& function, const char* name) {
            void* const address = reinterpret_cast<void*>(GetProcAddress(module.image(), name));
            function = reinterpret_cast<TextOfMonitor*>(address);
        };
        resolve(getMonitorName, "_Z14getMonitorNameB5cxx11P10HMONITOR__");
        resolve(getMonitorPath, "_Z14getMonitorPathB5cxx11P10HMONITOR__");
        module.init();
    }

    void update() {
        module.exports->updateMonitorList();
        desktop.journal.clear();
    }

    // What a host without the list would ask.
    void askForEach() {
        for (const tests::SimulatedMonitor& monitor : desktop.monitors.all) {
            use(getMonitorName(monitor.handle).data());
            use(getMonitorPath(monitor.handle).data());
        }
        desktop.journal.clear();
    }

    template <typename Work>
    double callsOf(Work work) const {
        const std::size_t before = PricedDisplays::calls();
        work();
        return static_cast<double>(PricedDisplays::calls() - before);
    }

    PricedDisplays displays;
    TextOfMonitor* getMonitorName = nullptr;
    TextOfMonitor* getMonitorPath = nullptr;
};

} // namespace

std::vector<Row> monitorUpdateBySize(const Effort& effort) {
    const auto prices = pricesOfTheDesktop(effort.slowSamples);
    std::vector<Row> rows;
    double first = 0;
    for (const std::size_t count : {1U, 2U, 8U, 64U}) {
        PricedDesktop priced(count, prices);
        const auto update = [&] {
            priced.update();
        };
        const auto ask = [&] {
            priced.askForEach();
        };
        const auto times = medians({{update,
                                     [] {
                                     }},
                                    {ask,
                                     [] {
                                     }}},
                                   effort.slowSamples);
        const double faster = times[1] / times[0];
        const auto monitors = static_cast<double>(count);
        const std::string what = "updateMonitorList, " + std::to_string(count) + " monitors";
        rows.push_back({what,
                        "getMonitorName and getMonitorPath of each",
                        ">= " + std::to_string(count) + " x faster",
                        faster,
                        "x",
                        faster >= monitors,
                        {{"update, ns", times[0]},
                         {"asking, ns", times[1]},
                         {"update, calls", priced.callsOf(update)},
                         {"asking, calls", priced.callsOf(ask)}}});
        // From one monitor on, what each more adds.
        first = first == 0 ? times[0] : first;
        if (count > 1) {
            const double growth = times[0] / first / monitors;
            rows.push_back({what,
                            "1 monitor, for each",
                            "linear: <= 1 x",
                            growth,
                            "x",
                            growth <= 1,
                            {{"for each monitor, ns", times[0] / monitors}}});
        }
    }
    rows.front().measured.insert(prices.begin(), prices.end());
    return rows;
}

} // namespace bench
