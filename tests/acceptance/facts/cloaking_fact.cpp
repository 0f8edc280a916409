// Facts about cloaking.

#include "platform/for_each.h"
#include "tests/acceptance/facts/answers.h"
#include "tests/acceptance/facts/finding.h"
#include "tests/acceptance/facts/window_thread.h"

#include <windows.h>

#include <dwmapi.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

namespace tests {
namespace {

const wchar_t* const coreWindow = L"Windows.UI.Core.CoreWindow";

std::string cloakingOf(HWND window) {
    DWORD cloaked = 0;
    const HRESULT result = DwmGetWindowAttribute(window, DWMWA_CLOAKED, &cloaked, sizeof(cloaked));
    return hexadecimal(result) + ", " + std::to_string(cloaked);
}

std::vector<HWND> windowsOfClass(const wchar_t* className) {
    std::vector<HWND> windows;
    HWND window = nullptr;
    while ((window = FindWindowExW(nullptr, window, className, nullptr)) != nullptr) {
        windows.push_back(window);
    }
    return windows;
}

bool isCloaked(HWND window) {
    DWORD cloaked = 0;
    return SUCCEEDED(DwmGetWindowAttribute(window, DWMWA_CLOAKED, &cloaked, sizeof(cloaked))) &&
           cloaked != 0;
}

class Cloaking : public testing::Test {
protected:
    // Answers whether windows of the class are visible while they are cloaked.
    static void answerForClass(const wchar_t* className) {
        const std::vector<HWND> windows = windowsOfClass(className);
        const auto cloaked = std::count_if(windows.begin(), windows.end(), isCloaked);
        const auto visible = std::count_if(windows.begin(), windows.end(), [](HWND each) {
            return isCloaked(each) && IsWindowVisible(each) != FALSE;
        });
        detail("windows", std::to_string(windows.size()));
        detail("cloaked", std::to_string(cloaked));
        detail("visible while cloaked", std::to_string(visible));
        if (cloaked == 0) {
            return notMeasured("no window of this class is cloaked: open an application of the "
                               "Store, such as the calculator, minimise it, and run this again");
        }
        answer(visible > 0 ? "yes" : "no");
    }

    HWND shownWindow() const {
        const HWND window = thread.createWindow(L"fact");
        thread.run([=] { ShowWindow(window, SW_SHOWNOACTIVATE); });
        return window;
    }

    const WindowThread thread;
};

// Fact: What does `DwmGetWindowAttribute` give for a window that is not cloaked?
// Relied on by: `monitor/windows/capture_filter.cpp`
// Simulated: 0x00000000, 0
TEST_F(Cloaking, of_a_window_that_is_not_cloaked) {
    answer(cloakingOf(shownWindow()));
}

// Fact: What does `DwmGetWindowAttribute` give for a window that its program cloaks, and is the
// window visible?
// Relied on by: `monitor/windows/capture_filter.cpp`
// Simulated: 0x00000000, 1, visible
TEST_F(Cloaking, of_a_window_that_its_program_cloaks) {
    const HWND window = shownWindow();
    const BOOL cloak = TRUE;
    const HRESULT result = DwmSetWindowAttribute(window, DWMWA_CLOAK, &cloak, sizeof(cloak));
    detail("DwmSetWindowAttribute", hexadecimal(result));
    answer(cloakingOf(window) + (IsWindowVisible(window) != FALSE ? ", visible" : ", hidden"));
}

// Fact: What does `DwmGetWindowAttribute` return for a destroyed window?
// Relied on by: `monitor/windows/capture_filter.cpp`
// Simulated: 0x80070006, 0
TEST_F(Cloaking, of_a_destroyed_window) {
    const HWND window = thread.createWindow(L"fact");
    thread.run([=] { DestroyWindow(window); });
    answer(cloakingOf(window));
}

// Fact: Are cloaked windows of the class `Windows.UI.Core.CoreWindow` visible?
// Relied on by: `monitor/windows/capture_filter.cpp`
// Simulated: yes
TEST_F(Cloaking, of_core_windows) {
    answerForClass(coreWindow);
}

// Fact: Does `EnumWindows` list windows of the class `Windows.UI.Core.CoreWindow`?
// Relied on by: `monitor/windows/window_list.cpp`
// Simulated: yes
TEST(WindowListing, of_core_windows) {
    const std::vector<HWND> windows = windowsOfClass(coreWindow);
    if (windows.empty()) {
        return notMeasured("no window of this class is open: open the Start menu once, and run "
                           "this again");
    }
    std::set<HWND> listed;
    vorlen::forEachWindow([&](HWND each) { listed.insert(each); });
    const auto count = std::count_if(windows.begin(), windows.end(),
                                     [&](HWND each) { return listed.contains(each); });
    detail("windows", std::to_string(windows.size()));
    detail("listed", std::to_string(count));
    answer(count > 0 ? "yes" : "no");
}

// Fact: Are cloaked windows of the class `ApplicationFrameWindow` visible?
// Relied on by: `monitor/windows/capture_filter.cpp`
// Simulated: yes
TEST_F(Cloaking, of_application_frames) {
    answerForClass(L"ApplicationFrameWindow");
}

} // namespace
} // namespace tests
