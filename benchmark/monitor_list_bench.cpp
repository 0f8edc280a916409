#include "benchmark/cases.h"
#include "benchmark/measurement.h"
#include "tests/simulated_desktop/simulated_desktop.h"
#include "tests/support/allocations.h"
#include "tests/support/display_modes.h"
#include "tests/support/module_under_test.h"

#include <algorithm>
#include <cstring>

namespace bench {

namespace {

constexpr std::int32_t monitorCount = 2;

// Calls of the platform, but for the clock, that an answer from the cache makes.
double platformCallsOfAFreshAnswer() {
    const tests::ModuleUnderTest module;
    tests::SimulatedDesktop desktop(module.image());
    desktop.addMonitor(tests::display1, L"Model A", tests::wideMode);
    desktop.addMonitor(tests::display2, L"Model B", tests::smallMode);
    module.init();
    desktop.journal.clear();
    std::vector<MonitorListItem> items(monitorCount);
    module.exports->getMonitorList(items.data(), monitorCount);
    const auto calls = desktop.journal.calls();
    const auto isOfTheClock = [](const std::string& name) {
        return name.starts_with("QueryPerformance");
    };
    return static_cast<double>(calls.size()) -
           static_cast<double>(std::count_if(calls.begin(), calls.end(), isOfTheClock));
}

} // namespace

std::vector<Row> monitorListOfTheDesktop(const Effort& effort) {
    const double calls = platformCallsOfAFreshAnswer();
    const tests::ModuleUnderTest module;
    module.init();
    const std::int32_t count = module.exports->getMonitorList(nullptr, 0);
    std::vector<MonitorListItem> items(static_cast<std::size_t>(count));
    std::vector<MonitorListItem> copies(items.size());
    const auto refresh = [&] {
        module.exports->updateMonitorList();
    };
    // A sample is far shorter than the 500 ms for which the list stays fresh.
    const auto list = [&] {
        module.exports->getMonitorList(items.data(), count);
    };
    const auto copy = [&] {
        std::memcpy(copies.data(), items.data(), items.size() * sizeof(MonitorListItem));
        use(copies.data());
    };
    const auto times = medians({{list, refresh, 1'000}, {refresh}}, effort.slowSamples);
    const auto copying = medians({{list, refresh, 1'000}, {copy}}, effort.slowSamples);
    refresh();
    std::size_t requests = 0;
    {
        const tests::Allocations allocations({module.image()});
        list();
        requests = allocations.requests();
    }
    const std::string what = "getMonitorList, fresh, " + std::to_string(count) + " monitors";
    const double refreshed = times[1] / times[0];
    const double copied = copying[0] / copying[1];
    return {
        {what,
         "a refresh",
         ">= 500 x faster",
         refreshed,
         "x",
         refreshed >= 500,
         {{"list, ns", times[0]}, {"refresh, ns", times[1]}}},
        {what,
         "copying the same bytes",
         "<= 10 x slower",
         copied,
         "x",
         copied <= 10,
         {{"list, ns", copying[0]}, {"copy, ns", copying[1]}}},
        {what, "", "no allocation", static_cast<double>(requests), "allocations", requests == 0},
        {what, "", "none but the clock", calls, "platform calls", calls == 0}};
}

} // namespace bench
