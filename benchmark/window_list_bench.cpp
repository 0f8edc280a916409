#include "benchmark/cases.h"
#include "benchmark/host_window_list.h"
#include "benchmark/list_rows.h"
#include "benchmark/measurement.h"
#include "benchmark/plain_windows.h"
#include "benchmark/simulated_module.h"
#include "tests/fixtures/module_under_test.h"
#include "tests/fixtures/other_program.h"

namespace bench {

namespace {

Row besideEnumerating(const std::string& what, double list, double fresh) {
    return fasterBy(1'000, what, "a fresh EnumWindows with the same filter", fresh / list,
                    {{"list, ns", list}, {"fresh, ns", fresh}});
}

// The time of getWindowList for each window, with so many windows.
double timeOfEach(std::size_t windowCount, std::size_t samples) {
    const SimulatedModule simulated;
    const tests::ModuleUnderTest& module = simulated.module;
    const PlainWindows windows(module.image(), windowCount);
    module.init();
    Records<WindowListItem> records(module.exports->getWindowList);
    const auto times = medians({{[&] {
                                   records.list();
                               }}},
                               samples);
    return times[0] / static_cast<double>(windowCount);
}

} // namespace

std::vector<Row> windowListOfTheDesktop(const Effort& effort) {
    constexpr int windowCount = 200;
    tests::OtherProgram program;
    for (int i = 0; i < windowCount; ++i) {
        program.createShown(L"A document - An application " + std::to_wstring(i));
    }
    const tests::ModuleUnderTest module;
    module.init();
    Records<WindowListItem> records(module.exports->getWindowList);
    const auto list = [&] {
        records.list();
    };
    const auto copy = [&] {
        records.copy();
    };
    const auto listAfresh = [] {
        use(listWindowsAfresh().data());
    };
    const auto times = medians({{list}, {.work = listAfresh, .once = true}}, effort.slowSamples);
    const auto copying = medians({{list}, {copy}}, effort.samples);
    const std::string what = "getWindowList, " + std::to_string(records.count()) + " live windows";
    return {besideEnumerating(what, times[0], times[1]),
            besideCopying(what, copying[0], copying[1]),
            allocationsOfList(what, module.image(), list)};
}

std::vector<Row> windowListBySize(const Effort& effort) {
    std::vector<Row> rows;
    double least = 0;
    for (const std::size_t count : {std::size_t{10}, std::size_t{1'000}, std::size_t{10'000}}) {
        const double each = timeOfEach(count, effort.samples);
        least = least == 0 ? each : least;
        rows.push_back(within("linear: ", 3, "",
                              "getWindowList, " + std::to_string(count) + " windows, for each",
                              "10 windows", each / least, {{"for each window, ns", each}}));
    }
    return rows;
}

} // namespace bench
