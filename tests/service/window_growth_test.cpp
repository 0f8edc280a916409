#include "monitor/service/ui_records.h"
#include "simulation/simulated_desktop.h"
#include "tests/support/allocations.h"
#include "tests/fixtures/module_under_test.h"
#include "tests/support/simulation.h"
#include "tests/windows/window_module_test.h"

#include <gtest/gtest.h>

#include <iomanip>
#include <sstream>

namespace tests {
namespace {

std::wstring titleOf(std::size_t number) {
    std::wostringstream title;
    title << L"Window " << std::setw(8) << std::setfill(L'0') << number;
    return title.str();
}

// What a desktop of so many windows costs the library.
struct Cost {
    explicit Cost(std::size_t windows) {
        const ModuleUnderTest module;
        SimulatedDesktop desktop(module.image());
        for (std::size_t i = 0; i < windows; ++i) {
            desktop.windows.add(titleOf(i));
        }
        const Allocations allocations({module.image(), module.runtimeImage()});
        module.init();
        startCalls = desktop.windowCalls().size();
        startRequests = allocations.requests();
        bytes = allocations.outstandingBytes();
        EXPECT_EQ(module.monitorWrapper().getWindowList().size(), windows);

        measureAppearance(desktop, allocations);
        module.cleanup();
    }

    void measureAppearance(SimulatedDesktop& desktop, const Allocations& allocations) {
        const HWND window = desktop.windows.add(L"late").handle;
        desktop.journal.clear();
        const std::size_t requests = allocations.requests();
        desktop.eventHooks.deliver(EVENT_OBJECT_SHOW, window);
        appearanceCalls = desktop.windowCalls();
        appearanceRequests = allocations.requests() - requests;
    }

    std::size_t startCalls = 0;
    std::size_t startRequests = 0;
    std::size_t bytes = 0; // held afterwards, the first snapshot included
    std::vector<std::string> appearanceCalls;
    std::size_t appearanceRequests = 0;
};

class TenThousandWindows : public testing::Test {
protected:
    static double ratio(std::size_t many, std::size_t few) {
        return static_cast<double>(many) / static_cast<double>(few);
    }

    static void SetUpTestSuite() {
        thousand = new Cost(1'000);
        tenThousand = new Cost(10'000);
    }

    static void TearDownTestSuite() {
        delete thousand;
        delete tenThousand;
    }

    static inline const Cost* thousand = nullptr;
    static inline const Cost* tenThousand = nullptr;
};

TEST_F(TenThousandWindows, are_read_with_ten_times_the_calls_of_a_thousand) {
    EXPECT_NEAR(ratio(tenThousand->startCalls, thousand->startCalls), 10.0, 0.1);
}

TEST_F(TenThousandWindows, are_read_with_ten_times_the_memory_requests_of_a_thousand) {
    EXPECT_NEAR(ratio(tenThousand->startRequests, thousand->startRequests), 10.0, 0.5);
}

TEST_F(TenThousandWindows, take_less_than_a_kibibyte_each_beyond_their_titles) {
    const std::size_t titles = std::size_t{10'000} * 2 * (titleOf(0).size() + 1) * sizeof(wchar_t);
    EXPECT_LT((tenThousand->bytes - titles) / 10'000, 1024u);
}

TEST_F(TenThousandWindows, make_one_more_no_dearer) {
    EXPECT_EQ(tenThousand->appearanceCalls, thousand->appearanceCalls);
    // The containers may have to grow.
    EXPECT_LE(tenThousand->appearanceRequests, thousand->appearanceRequests + 2);
}

class ComingAndGoingWindows : public WindowModuleTest {};

TEST_F(ComingAndGoingWindows, leave_no_memory_behind_in_a_list_that_is_not_read) {
    add(L"stays");
    module.init();
    destroy(show(titleOf(0)));
    const Allocations allocations({module.image()});
    for (std::size_t i = 0; i < 10'000; ++i) {
        destroy(show(titleOf(i)));
    }
    EXPECT_LT(allocations.outstandingBytes(), 4096u);
}

} // namespace
} // namespace tests
