#include "monitor/windows/capture_filter.h"
#include "tests/windows/windows_test.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <vector>

namespace tests {
namespace {

// One test of the filter: what makes it alone keep a window out, and the calls that have been made
// by then.
struct Reason {
    const char* name;
    void (*bringAbout)(SimulatedDesktop& desktop, SimulatedWindow& window);
    std::vector<std::string> calls;
};

// In the order in which the filter makes them.
const std::vector<Reason>& reasons() {
    static const std::vector<Reason> all = {
        {"no title", [](SimulatedDesktop&, SimulatedWindow& window) { window.title.clear(); }, {}},
        {"shell window",
         [](SimulatedDesktop& desktop, SimulatedWindow& window) {
             desktop.windows.shellWindow = window.handle;
         },
         {"GetShellWindow"}},
        {"not visible",
         [](SimulatedDesktop&, SimulatedWindow& window) { window.visible = false; },
         {"GetShellWindow", "IsWindowVisible"}},
        {"not a root window",
         [](SimulatedDesktop&, SimulatedWindow& window) { window.root = nullptr; },
         {"GetShellWindow", "IsWindowVisible", "GetAncestor"}},
        {"disabled",
         [](SimulatedDesktop&, SimulatedWindow& window) { window.style |= WS_DISABLED; },
         {"GetShellWindow", "IsWindowVisible", "GetAncestor", "GetWindowLongW"}},
        {"tool window",
         [](SimulatedDesktop&, SimulatedWindow& window) {
             window.extendedStyle |= WS_EX_TOOLWINDOW;
         },
         {"GetShellWindow", "IsWindowVisible", "GetAncestor", "GetWindowLongW", "GetWindowLongW"}},
        {"not a window",
         [](SimulatedDesktop& desktop, SimulatedWindow&) {
             desktop.journal.failAll("IsWindow", FALSE);
         },
         {"GetShellWindow", "IsWindowVisible", "GetAncestor", "GetWindowLongW", "GetWindowLongW",
          "IsWindow"}},
        {"cloaked",
         [](SimulatedDesktop&, SimulatedWindow& window) {
             window.className = coreWindowClass;
             window.cloaked = 1;
         },
         {"GetShellWindow", "IsWindowVisible", "GetAncestor", "GetWindowLongW", "GetWindowLongW",
          "IsWindow", "DwmGetWindowAttribute"}},
        {"blocked",
         [](SimulatedDesktop&, SimulatedWindow& window) {
             window.title = L"Task View";
             window.className = coreWindowClass;
         },
         {"GetShellWindow", "IsWindowVisible", "GetAncestor", "GetWindowLongW", "GetWindowLongW",
          "IsWindow", "DwmGetWindowAttribute"}},
    };
    return all;
}

class CaptureFilterOrder : public WindowsTest, public testing::WithParamInterface<std::size_t> {
protected:
    static const Reason& reason() { return reasons()[GetParam()]; }

    SimulatedWindow& window = desktop.windows.add(L"Title", L"Class");
};

TEST_P(CaptureFilterOrder, one_test_alone_keeps_a_window_out_and_no_later_one_is_made) {
    reason().bringAbout(desktop, window);
    const WindowInfo info(window.handle);
    desktop.journal.clear();
    EXPECT_STREQ(reasonNotCapturable(info), reason().name);
    EXPECT_EQ(desktop.windowCalls(), reason().calls);
}

TEST_P(CaptureFilterOrder, the_first_of_two_failing_tests_decides) {
    for (std::size_t later = GetParam() + 1; later < reasons().size(); ++later) {
        SCOPED_TRACE(reasons()[later].name);
        SimulatedWindow& both = desktop.windows.add(L"Title", L"Class");
        // The later first: either may set the title.
        reasons()[later].bringAbout(desktop, both);
        reason().bringAbout(desktop, both);
        EXPECT_STREQ(reasonNotCapturable(WindowInfo(both.handle)), reason().name);
    }
}

TEST_P(CaptureFilterOrder, the_first_of_all_failing_tests_from_here_on_decides) {
    for (std::size_t later = reasons().size(); later-- > GetParam();) {
        reasons()[later].bringAbout(desktop, window);
    }
    EXPECT_STREQ(reasonNotCapturable(WindowInfo(window.handle)), reason().name);
    EXPECT_FALSE(IsCapturableWindow(WindowInfo(window.handle)));
}

INSTANTIATE_TEST_SUITE_P(CaptureFilter, CaptureFilterOrder,
                         testing::Range(std::size_t{0}, reasons().size()), [](const auto& tested) {
                             std::string name = reasons()[tested.param].name;
                             std::replace(name.begin(), name.end(), ' ', '_');
                             return name;
                         });

} // namespace
} // namespace tests
