#include "benchmark/cases.h"
#include "benchmark/list_rows.h"
#include "benchmark/measurement.h"
#include "benchmark/simulated_module.h"
#include "tests/fixtures/module_under_test.h"

#include <algorithm>

namespace bench {

namespace {

// The number of platform calls, without those of the clock, of a call that reads only the cache.
double platformCallsOfAFreshAnswer() {
    SimulatedModule simulated;
    simulated.addMonitors(2);
    simulated.module.init();
    Records<MonitorListItem> records(simulated.module.exports->getMonitorList);
    simulated.desktop.journal.clear();
    records.list();
    const auto calls = simulated.desktop.journal.calls();
    const auto isOfTheClock = [](const std::string& name) {
        return name.starts_with("QueryPerformance");
    };
    return static_cast<double>(calls.size()) -
           static_cast<double>(std::ranges::count_if(calls, isOfTheClock));
}

Row besideRefreshing(const std::string& what, double list, double refresh) {
    return {.what = what,
            .beside = "a refresh",
            .value = refresh / list,
            .unit = timesFaster,
            .atLeast = 500,
            .measured = {{"list, ns", list}, {"refresh, ns", refresh}}};
}

} // namespace

std::vector<Row> monitorListOfTheDesktop(const Effort& effort) {
    const double calls = platformCallsOfAFreshAnswer();
    const tests::ModuleUnderTest module;
    module.init();
    Records<MonitorListItem> records(module.exports->getMonitorList);
    const auto refresh = [&] {
        module.exports->updateMonitorList();
    };
    // A sample is much shorter than 500 ms, so the list is not refreshed during it.
    const auto list = [&] {
        records.list();
    };
    const auto times = medians({{list, refresh, 1'000}, {refresh}}, effort.slowSamples);
    refresh();
    const std::string what =
        "getMonitorList, fresh, " + std::to_string(records.count()) + " monitors";
    return {
        besideRefreshing(what, times[0], times[1]),
        allocationsOfList(what, module.image(), list),
        {.what = what, .value = calls, .unit = "platform calls, without the clock", .atMost = 0}};
}

} // namespace bench
