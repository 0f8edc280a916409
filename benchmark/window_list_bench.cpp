#include "benchmark/cases.h"
#include "benchmark/host_window_list.h"
#include "benchmark/measurement.h"
#include "benchmark/plain_windows.h"
#include "benchmark/simulated_module.h"
#include "tests/support/allocations.h"
#include "tests/support/module_under_test.h"
#include "tests/windows_real/other_program.h"

#include <algorithm>
#include <cstring>

namespace bench {

namespace {

// The windows as the export writes them; copied, they are what no list can be faster than.
struct Records {
    explicit Records(const tests::Exports& exports)
        : items(static_cast<std::size_t>(exports.getWindowList(nullptr, 0))), copies(items.size()) {
        exports.getWindowList(items.data(), capacity());
    }

    std::int32_t capacity() const { return static_cast<std::int32_t>(items.size()); }

    void copy() {
        std::memcpy(copies.data(), items.data(), items.size() * sizeof(WindowListItem));
        use(copies.data());
    }

    std::vector<WindowListItem> items;
    std::vector<WindowListItem> copies;
};

std::size_t allocationsOf(HMODULE image, const std::function<void()>& work) {
    const tests::Allocations allocations({image});
    work();
    return allocations.requests();
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
    Records records(*module.exports);
    const auto list = [&] {
        module.exports->getWindowList(records.items.data(), records.capacity());
    };
    const auto listAfresh = [] {
        use(listWindowsAfresh().data());
    };
    const auto times = medians({{list},
                                {listAfresh,
                                 [] {
                                 }}},
                               effort.slowSamples);
    const auto copying = medians({{list}, {[&] {
                                      records.copy();
                                  }}},
                                 effort.samples);
    const std::string what =
        "getWindowList, " + std::to_string(records.items.size()) + " live windows";
    const double afresh = times[1] / times[0];
    const double copied = copying[0] / copying[1];
    const auto allocations = static_cast<double>(allocationsOf(module.image(), list));
    return {{what,
             "a fresh EnumWindows with the same filter",
             ">= 1000 x faster",
             afresh,
             "x",
             afresh >= 1000,
             {{"list, ns", times[0]}, {"fresh, ns", times[1]}}},
            {what,
             "copying the same bytes",
             "<= 10 x slower",
             copied,
             "x",
             copied <= 10,
             {{"list, ns", copying[0]}, {"copy, ns", copying[1]}}},
            {what, "", "no allocation", allocations, "allocations", allocations == 0}};
}

std::vector<Row> windowListBySize(const Effort& effort) {
    std::vector<Row> rows;
    double least = 0;
    for (const std::size_t count : {std::size_t{10}, std::size_t{1'000}, std::size_t{10'000}}) {
        const SimulatedModule simulated;
        const tests::ModuleUnderTest& module = simulated.module;
        const PlainWindows windows(module.image(), count);
        module.init();
        Records records(*module.exports);
        const auto each =
            medians({{[&] {
                        module.exports->getWindowList(records.items.data(), records.capacity());
                    }}},
                    effort.samples)[0] /
            static_cast<double>(count);
        least = least == 0 ? each : least;
        rows.push_back({"getWindowList, " + std::to_string(count) + " windows, for each",
                        "10 windows",
                        "linear: <= 3 x",
                        each / least,
                        "x",
                        each / least <= 3,
                        {{"for each window, ns", each}}});
    }
    return rows;
}

} // namespace bench
