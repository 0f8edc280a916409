#include "tests/support/other_thread.h"
#include "tests/support/signal.h"
#include "tests/windows/window_module_test.h"

#include <gmock/gmock.h>

#include <thread>

namespace tests {
namespace {

using testing::ElementsAre;

class ReasonExport : public WindowModuleTest {
protected:
    const char* reason() const { return module.exports->getReasonNotCapturable(window.handle); }

    SimulatedWindow& window = add(L"a");
};

TEST_F(ReasonExport, is_null_for_a_window_that_is_capturable) {
    EXPECT_EQ(reason(), nullptr);
}

TEST_F(ReasonExport, names_what_keeps_a_window_out) {
    window.style |= WS_DISABLED;
    EXPECT_STREQ(reason(), "disabled");
    window.visible = false;
    EXPECT_STREQ(reason(), "not visible");
    desktop.windows.shellWindow = window.handle;
    EXPECT_STREQ(reason(), "shell window");
    window.title.clear();
    EXPECT_STREQ(reason(), "no title");
}

TEST_F(ReasonExport, is_a_missing_title_for_what_is_no_window) {
    window.alive = false;
    EXPECT_STREQ(reason(), "no title");
    EXPECT_STREQ(module.exports->getReasonNotCapturable(nullptr), "no title");
}

TEST_F(ReasonExport, looks_at_the_window_as_it_is_now) {
    module.init();
    window.title = L"PopupHost";
    window.className = L"Xaml_WindowedPopupClass";
    EXPECT_STREQ(reason(), "blocked");
    EXPECT_THAT(titles(), ElementsAre(L"a"));
}

TEST_F(ReasonExport, is_the_same_with_without_and_after_a_service) {
    window.extendedStyle |= WS_EX_TOOLWINDOW;
    const char* const before = reason();
    EXPECT_STREQ(before, "tool window");
    module.init();
    EXPECT_EQ(reason(), before);
    module.cleanup();
    EXPECT_EQ(reason(), before);
}

TEST_F(ReasonExport, may_be_asked_for_on_any_thread) {
    module.init();
    window.root = nullptr;
    const char* const reason = onAnotherThread([this] { return reason(); });
    EXPECT_STREQ(reason, "not a root window");
}

TEST_F(ReasonExport, is_right_on_threads_that_ask_at_the_same_time) {
    window.title = L"Task View";
    window.className = L"Windows.UI.Core.CoreWindow";
    Gate allReady(2);
    const auto refusalAtTheGate = [&] {
        allReady.pass();
        return reason();
    };
    const char* reasons[2] = {};
    std::thread other([&] { reasons[0] = refusalAtTheGate(); });
    reasons[1] = refusalAtTheGate();
    other.join();
    EXPECT_STREQ(reasons[0], "blocked");
    EXPECT_STREQ(reasons[1], "blocked");
}

} // namespace
} // namespace tests
