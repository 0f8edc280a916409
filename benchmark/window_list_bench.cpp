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
    const auto restart = [&] {
        module.exports->restartWindowList();
    };
    const auto readAgain = [] {
        use(listWindowsAfresh().data());
    };
    const auto listPrograms = [] {
        use(listWindowsOfPrograms().data());
    };
    const auto times = medians({{list},
                                {.work = restart, .once = true},
                                {.work = readAgain, .once = true},
                                {.work = listPrograms, .once = true}},
                               effort.slowSamples);
    list(); // of the last list that was read, so that the next call has nothing new to copy
    const std::map<std::string, double> measured = {{"list, ns", times[0]},
                                                    {"restart, ns", times[1]},
                                                    {"same filter, ns", times[2]},
                                                    {"other programs, ns", times[3]}};
    const std::string windows = ", " + std::to_string(records.count()) + " windows";
    return {{.what = "getWindowList" + windows,
             .beside = "a host's own reading with the same filter",
             .value = times[2] / times[0],
             .unit = timesFaster,
             .atLeast = 1'000,
             .measured = measured},
            {.what = "getWindowList" + windows,
             .beside = "the usual list of windows with their programs",
             .value = times[3] / times[0],
             .unit = timesFaster,
             .atLeast = 1'000,
             .measured = measured},
            {.what = "restartWindowList" + windows,
             .beside = "a host's own reading with the same filter",
             .value = times[1] / times[2],
             .unit = timesTheTime,
             .atMost = 2,
             .measured = measured},
            {.what = "restartWindowList" + windows,
             .beside = "the usual list of windows with their programs",
             .value = times[1] / times[3],
             .unit = timesTheTime,
             .measured = measured},
            allocationsOfList("getWindowList" + windows, module.image(), list)};
}

std::vector<Row> windowListBySize(const Effort& effort) {
    const double few = timeOfEach(10, effort.samples);
    const double many = timeOfEach(10'000, effort.samples);
    return {{.what = "getWindowList, 10000 windows, for each",
             .beside = "10 windows",
             .value = many / few,
             .unit = timesTheTime,
             .atMost = 3,
             .measured = {{"of 10000, ns", many}, {"of 10, ns", few}}}};
}

} // namespace bench
