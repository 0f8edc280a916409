#include "tests/fixtures/window_module_test.h"
#include "tests/support/signal.h"

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

TEST_F(ReasonExport, is_null_for_a_capturable_window) {
    EXPECT_EQ(reason(), nullptr);
}

TEST_F(ReasonExport, names_the_first_test_that_the_window_fails) {
    window.style |= WS_DISABLED;
    EXPECT_STREQ(reason(), "disabled");
    window.visible = false;
    EXPECT_STREQ(reason(), "not visible");
    desktop.windows.shellWindow = window.handle;
    EXPECT_STREQ(reason(), "shell window");
    window.title.clear();
    EXPECT_STREQ(reason(), "no title");
}

// Promise (diagnostics.h): For a handle that is not a window, `getReasonNotCapturable` returns "no
// title".
TEST_F(ReasonExport, is_no_title_for_a_handle_that_is_not_a_window) {
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

TEST_F(ReasonExport, is_the_same_before_during_and_after_a_service) {
    window.extendedStyle |= WS_EX_TOOLWINDOW;
    const char* const before = reason();
    EXPECT_STREQ(before, "tool window");
    module.init();
    EXPECT_EQ(reason(), before);
    module.cleanup();
    EXPECT_EQ(reason(), before);
}

TEST_F(ReasonExport, may_be_asked_for_on_several_threads_at_once) {
    window.title = L"Task View";
    window.className = L"Windows.UI.Core.CoreWindow";
    Gate allReady(2);
    const auto reasonAtTheGate = [&] {
        allReady.pass();
        return reason();
    };
    const char* reasons[2] = {};
    std::thread other([&] { reasons[0] = reasonAtTheGate(); });
    reasons[1] = reasonAtTheGate();
    other.join();
    EXPECT_STREQ(reasons[0], "blocked");
    EXPECT_STREQ(reasons[1], "blocked");
}

} // namespace
} // namespace tests
