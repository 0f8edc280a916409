#include "tests/fixtures/live_list.h"
#include "tests/fixtures/log_recorder.h"
#include "tests/fixtures/window_module_test.h"
#include "tests/hostile/poisoned_memory.h"

#include <gmock/gmock.h>

#include <functional>
#include <string>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// A window of the host's own process, whose procedure calls the module while its title is read.
class ReenteringWindow : public WindowModuleTest {
protected:
    void SetUp() override {
        desktop.addMonitor(display1, L"Model A", wideMode);
        a = add(L"a").handle;
        b = add(L"b").handle;
    }

    const WindowList* liveList() const { return liveListOf(*module.exports->getMonitorData()); }

    void expectLiveList(const std::vector<HWND>& windows) {
        ASSERT_NE(liveList(), nullptr);
        EXPECT_EQ(listedHandlesOf(*liveList()), windows);
        EXPECT_THAT(handleSetOf(*liveList()), testing::UnorderedElementsAreArray(windows));
        EXPECT_EQ(desktop.eventHooks.installed(), 1u);
    }

    // After a shutdown by the procedure.
    void expectRestartLists(const std::vector<HWND>& windows) {
        EXPECT_EQ(module.exports->getMonitorData(), nullptr);
        EXPECT_EQ(desktop.eventHooks.installed(), 0u);
        module.init();
        expectLiveList(windows);
    }

    const PoisonedMemory poison{module.image()};
    LogRecorder log{module.image(), desktop.journal};
    HWND a = nullptr;
    HWND b = nullptr;
};

// The n-th call of a function that sends the window a message.
struct Reading {
    const char* function;
    std::size_t n;
};

class ReenteringWindowEvent : public ReenteringWindow, public testing::WithParamInterface<Reading> {
protected:
    void SetUp() override {
        ReenteringWindow::SetUp();
        module.init();
        c = add(L"c").handle;
        EXPECT_THAT(titles(), ElementsAre(L"a", L"b"));
    }

    void showWhile(const std::function<void()>& action) {
        desktop.journal.at(GetParam().function, GetParam().n, action);
        desktop.eventHooks.deliver(EVENT_OBJECT_SHOW, c);
        EXPECT_THAT(log.lines, IsEmpty());
    }

    HWND c = nullptr;
};

// Promise (Threads and callbacks): While a window event is handled, the procedure of a window of
// the host, whose title is read, may call any function, also shut the library down.
TEST_P(ReenteringWindowEvent, may_shut_the_library_down) {
    showWhile([&] { module.cleanup(); });
    expectRestartLists({a, b, c});
}

TEST_P(ReenteringWindowEvent, may_shut_the_library_down_and_start_it_again) {
    showWhile([&] {
        module.cleanup();
        module.init();
    });
    expectLiveList({a, b, c});
}

TEST_P(ReenteringWindowEvent, may_switch_the_list_off) {
    showWhile([&] { useWindowList(false); });
    EXPECT_EQ(liveList(), nullptr);
    EXPECT_THAT(titles(), ElementsAre(L"a", L"b"));
}

TEST_P(ReenteringWindowEvent, may_replace_the_list) {
    showWhile([&] {
        useWindowList(false);
        useWindowList(true);
    });
    expectLiveList({a, b, c});
}

INSTANTIATE_TEST_SUITE_P(While, ReenteringWindowEvent,
                         testing::Values(Reading{"GetWindowTextLengthW", 1},
                                         Reading{"GetWindowTextLengthW", 2},
                                         Reading{"GetWindowTextW", 1}),
                         [](const auto& reading) {
                             return reading.param.function + std::to_string(reading.param.n);
                         });

// Promise (Threads and callbacks): While init reads the windows, a window procedure of the host may
// call any function: there is no service yet, and init and cleanup do nothing.
TEST_F(ReenteringWindow, may_call_anything_while_init_reads_its_title) {
    desktop.journal.at("GetWindowTextW", 2, [&] {
        module.cleanup();
        module.init();
        useWindowList(true);
        EXPECT_EQ(module.exports->getWindowList(nullptr, 0), 0);
        EXPECT_EQ(module.exports->getMonitorList(nullptr, 0), 0);
    });
    module.init();
    expectLiveList({a, b});
    EXPECT_EQ(desktop.journal.count("EnumWindows"), 1u);
    EXPECT_EQ(desktop.journal.count("EnumDisplayMonitors"), 1u);
}

// The windows are switched on again.
class ReenteringWindowSwitch : public ReenteringWindow {
protected:
    void SetUp() override {
        ReenteringWindow::SetUp();
        module.init();
        useWindowList(false);
        desktop.journal.clear();
    }

    void switchOnWhile(const std::function<void()>& action) {
        desktop.journal.at("GetWindowTextW", 2, action);
        useWindowList(true);
    }
};

TEST_F(ReenteringWindowSwitch, may_switch_the_list_on_too) {
    switchOnWhile([&] { useWindowList(true); });
    expectLiveList({a, b});
    EXPECT_EQ(desktop.journal.count("EnumWindows"), 1u);
}

TEST_F(ReenteringWindowSwitch, may_switch_the_list_off_which_stays_off) {
    switchOnWhile([&] { useWindowList(false); });
    EXPECT_EQ(liveList(), nullptr);
    EXPECT_EQ(desktop.eventHooks.installed(), 0u);
    useWindowList(true);
    expectLiveList({a, b});
}

TEST_F(ReenteringWindowSwitch, may_switch_the_list_off_and_on_which_stays_on) {
    switchOnWhile([&] {
        useWindowList(false);
        useWindowList(true);
    });
    expectLiveList({a, b});
}

TEST_F(ReenteringWindowSwitch, may_shut_the_library_down) {
    switchOnWhile([&] { module.cleanup(); });
    expectRestartLists({a, b});
}

// Another service would delete the list that is being read.
TEST_F(ReenteringWindowSwitch, cannot_start_the_library_after_a_shutdown) {
    switchOnWhile([&] {
        module.cleanup();
        module.init();
    });
    expectRestartLists({a, b});
}

TEST_F(ReenteringWindowSwitch, makes_a_restart_fail_by_a_shutdown) {
    useWindowList(true);
    desktop.journal.at("GetWindowTextW", 2, [&] { module.cleanup(); });
    EXPECT_FALSE(module.exports->restartWindowList());
    expectRestartLists({a, b});
}

} // namespace
} // namespace tests
