#include "monitor/windows/capture_filter.h"
#include "tests/windows/windows_test.h"

#include <gmock/gmock.h>

#include <bit>
#include <cstdint>

namespace tests {
namespace {

using testing::IsEmpty;

class CaptureFilter : public WindowsTest {
protected:
    const char* reason() const { return reasonNotCapturable(WindowInfo(window.handle)); }

    void expectCapturable() const {
        EXPECT_EQ(reason(), nullptr);
        EXPECT_TRUE(IsCapturableWindow(WindowInfo(window.handle)));
    }

    void expectRefused(const char* expected) const {
        EXPECT_STREQ(reason(), expected);
        EXPECT_FALSE(IsCapturableWindow(WindowInfo(window.handle)));
    }

    SimulatedWindow& window = desktop.windows.add(L"Title", L"Class");
};

TEST_F(CaptureFilter, offers_an_ordinary_window) {
    expectCapturable();
}

TEST_F(CaptureFilter, offers_a_window_without_any_style) {
    window.style = 0;
    window.extendedStyle = 0;
    expectCapturable();
}

TEST_F(CaptureFilter, refuses_an_untitled_window) {
    window.title.clear();
    expectRefused("no title");
}

TEST_F(CaptureFilter, takes_a_title_that_was_gone_when_it_was_read_for_a_title) {
    desktop.journal.at("GetWindowTextW", 1, [&] { window.title.clear(); });
    EXPECT_EQ(reason(), nullptr);
}

TEST_F(CaptureFilter, refuses_the_shell_window_though_it_is_visible) {
    desktop.windows.shellWindow = window.handle;
    expectRefused("shell window");
}

TEST_F(CaptureFilter, offers_other_windows_than_the_shell_window) {
    desktop.windows.shellWindow = desktop.windows.add(L"Program Manager", L"Progman").handle;
    expectCapturable();
}

TEST_F(CaptureFilter, refuses_a_hidden_window) {
    window.visible = false;
    expectRefused("not visible");
}

TEST_F(CaptureFilter, goes_by_what_the_system_says_of_visibility_not_by_the_style) {
    window.style &= ~WS_VISIBLE;
    expectCapturable();
}

TEST_F(CaptureFilter, refuses_a_part_of_another_window) {
    window.root = desktop.windows.add(L"Parent").handle;
    expectRefused("not a root window");
}

TEST_F(CaptureFilter, refuses_a_window_without_a_root) {
    window.root = nullptr;
    expectRefused("not a root window");
}

TEST_F(CaptureFilter, refuses_a_disabled_window) {
    window.style |= WS_DISABLED;
    expectRefused("disabled");
}

TEST_F(CaptureFilter, looks_at_no_other_bit_of_the_style) {
    for (unsigned bit = 0; bit < 32; ++bit) {
        SCOPED_TRACE(bit);
        window.style = std::bit_cast<LONG>(std::uint32_t{1} << bit);
        EXPECT_EQ(IsCapturableWindow(WindowInfo(window.handle)), bit != 27);
    }
}

TEST_F(CaptureFilter, refuses_a_tool_window) {
    window.extendedStyle |= WS_EX_TOOLWINDOW;
    expectRefused("tool window");
}

TEST_F(CaptureFilter, looks_at_no_other_bit_of_the_extended_style) {
    for (unsigned bit = 0; bit < 32; ++bit) {
        SCOPED_TRACE(bit);
        window.extendedStyle = std::bit_cast<LONG>(std::uint32_t{1} << bit);
        EXPECT_EQ(IsCapturableWindow(WindowInfo(window.handle)), bit != 7);
    }
}

TEST_F(CaptureFilter, refuses_what_is_no_window_any_more) {
    desktop.journal.failAll("IsWindow", FALSE);
    expectRefused("not a window");
}

TEST_F(CaptureFilter, takes_a_style_that_cannot_be_read_for_harmless) {
    desktop.journal.failAll("GetWindowLongW", 0);
    window.style |= WS_DISABLED;
    window.extendedStyle |= WS_EX_TOOLWINDOW;
    expectCapturable();
}

TEST_F(CaptureFilter, refuses_a_dead_window_for_its_missing_title) {
    window.alive = false;
    expectRefused("no title");
}

TEST_F(CaptureFilter, judges_title_and_class_name_as_recorded_and_all_else_as_it_is_now) {
    const WindowInfo recorded(window.handle);
    window.title = L"Task View";
    window.className = coreWindowClass;
    window.cloaked = 1;
    EXPECT_EQ(reasonNotCapturable(recorded), nullptr);
    window.visible = false;
    EXPECT_STREQ(reasonNotCapturable(recorded), "not visible");
}

TEST_F(CaptureFilter, names_a_reason_by_a_constant) {
    window.visible = false;
    const char* const first = reason();
    EXPECT_EQ(reason(), first);
}

TEST_F(CaptureFilter, asks_nothing_about_an_untitled_window) {
    window.title.clear();
    const WindowInfo info(window.handle);
    desktop.journal.clear();
    EXPECT_FALSE(IsCapturableWindow(info));
    EXPECT_THAT(desktop.windowCalls(), IsEmpty());
}

} // namespace
} // namespace tests
