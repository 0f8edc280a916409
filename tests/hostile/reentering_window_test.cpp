#include "monitor/service/ui_records.h"
#include "tests/hostile/poisoned_memory.h"
#include "tests/fixtures/log_recorder.h"
#include "tests/fixtures/module_test.h"
#include "tests/fixtures/live_list.h"

#include <gmock/gmock.h>

#include <functional>
#include <string>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// A window of the host's own process, whose procedure does something else while its title is read.
class ReenteringWindow : public ModuleTest {
protected:
    void SetUp() override {
        desktop.addMonitor(display1, L"Model A", wideMode);
        a = desktop.windows.add(L"a").handle;
        b = desktop.windows.add(L"b").handle;
    }

    void useWindowList(bool use) const { module.monitorWrapper().useWindowList(use); }

    std::vector<std::wstring> titles() const {
        std::vector<std::wstring> result;
        for (const auto& window : module.monitorWrapper().getWindowList()) {
            result.push_back(window.title);
        }
        return result;
    }

    void expectLiveList(const std::vector<HWND>& windows) {
        const WindowList* const list = liveListOf(*module.exports->getMonitorData());
        ASSERT_NE(list, nullptr);
        EXPECT_EQ(listedHandlesOf(*list), windows);
        EXPECT_THAT(handleSetOf(*list), testing::UnorderedElementsAreArray(windows));
        EXPECT_EQ(desktop.eventHooks.installed(), 1u);
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

class WindowThatAppears : public ReenteringWindow, public testing::WithParamInterface<Reading> {
protected:
    void SetUp() override {
        ReenteringWindow::SetUp();
        module.init();
        c = desktop.windows.add(L"c").handle;
        EXPECT_THAT(titles(), ElementsAre(L"a", L"b"));
    }

    void showWhile(const std::function<void()>& action) {
        desktop.journal.at(GetParam().function, GetParam().n, action);
        desktop.eventHooks.deliver(EVENT_OBJECT_SHOW, c);
        EXPECT_THAT(log.lines, IsEmpty());
    }

    HWND c = nullptr;
};

TEST_P(WindowThatAppears, may_shut_the_library_down) {
    showWhile([&] { module.cleanup(); });
    EXPECT_EQ(module.exports->getMonitorData(), nullptr);
    EXPECT_EQ(desktop.eventHooks.installed(), 0u);
    module.init();
    expectLiveList({a, b, c});
}

TEST_P(WindowThatAppears, may_shut_the_library_down_and_start_it_again) {
    showWhile([&] {
        module.cleanup();
        module.init();
    });
    expectLiveList({a, b, c});
}

TEST_P(WindowThatAppears, may_switch_the_list_off) {
    showWhile([&] { useWindowList(false); });
    EXPECT_EQ(liveListOf(*module.exports->getMonitorData()), nullptr);
    EXPECT_THAT(titles(), ElementsAre(L"a", L"b"));
}

TEST_P(WindowThatAppears, may_have_the_list_replaced) {
    showWhile([&] {
        useWindowList(false);
        useWindowList(true);
    });
    expectLiveList({a, b, c});
}

INSTANTIATE_TEST_SUITE_P(While, WindowThatAppears,
                         testing::Values(Reading{"GetWindowTextLengthW", 1},
                                         Reading{"GetWindowTextLengthW", 2},
                                         Reading{"GetWindowTextW", 1}),
                         [](const auto& reading) {
                             return reading.param.function + std::to_string(reading.param.n);
                         });

class WindowThatIsThereAtTheStart : public ReenteringWindow {
protected:
    void startWhile(const std::function<void()>& action) {
        desktop.journal.at("GetWindowTextW", 2, action);
        module.init();
    }
};

TEST_F(WindowThatIsThereAtTheStart, may_ask_for_another_start_which_does_nothing) {
    startWhile([&] { module.init(); });
    expectLiveList({a, b});
    EXPECT_EQ(desktop.journal.count("EnumWindows"), 1u);
    EXPECT_EQ(desktop.journal.count("EnumDisplayMonitors"), 1u);
}

TEST_F(WindowThatIsThereAtTheStart, may_shut_down_which_does_nothing) {
    startWhile([&] { module.cleanup(); });
    expectLiveList({a, b});
}

TEST_F(WindowThatIsThereAtTheStart, may_use_the_exports_which_know_no_service) {
    startWhile([&] {
        useWindowList(true);
        EXPECT_EQ(module.exports->getWindowList(nullptr, 0), 0);
        EXPECT_EQ(module.exports->getMonitorList(nullptr, 0), 0);
    });
    expectLiveList({a, b});
}

class WindowThatIsReadAgain : public ReenteringWindow {
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

TEST_F(WindowThatIsReadAgain, may_switch_the_list_on_too) {
    switchOnWhile([&] { useWindowList(true); });
    expectLiveList({a, b});
    EXPECT_EQ(desktop.journal.count("EnumWindows"), 1u);
}

TEST_F(WindowThatIsReadAgain, may_switch_the_list_off_which_stays_off) {
    switchOnWhile([&] { useWindowList(false); });
    EXPECT_EQ(liveListOf(*module.exports->getMonitorData()), nullptr);
    EXPECT_EQ(desktop.eventHooks.installed(), 0u);
    useWindowList(true);
    expectLiveList({a, b});
}

TEST_F(WindowThatIsReadAgain, may_shut_the_library_down) {
    switchOnWhile([&] { module.cleanup(); });
    EXPECT_EQ(module.exports->getMonitorData(), nullptr);
    EXPECT_EQ(desktop.eventHooks.installed(), 0u);
    module.init();
    expectLiveList({a, b});
}

TEST_F(WindowThatIsReadAgain, may_switch_the_list_off_and_on_which_stays_on) {
    switchOnWhile([&] {
        useWindowList(false);
        useWindowList(true);
    });
    expectLiveList({a, b});
}

} // namespace
} // namespace tests
