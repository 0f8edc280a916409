#pragma once

#include "monitor/windows/window_list.h"
#include "simulation/simulated_desktop.h"
#include "tests/support/simulation.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

namespace tests {

// A test of what lies below the exports: the objects of the library are linked into the test
// program, whose own imports are redirected.
class WindowsTest : public testing::Test {
protected:
    // The first use of the lists takes a thread slot, which must not be on the first test's
    // account.
    static void SetUpTestSuite() { EXPECT_EQ(WindowList::Get(), nullptr); }

    SimulatedDesktop desktop{GetModuleHandleW(nullptr), functionsNotLinked()};

private:
    static std::set<std::string> functionsNotLinked() {
        std::set<std::string> functions = SimulatedDesktop::displayFunctions;
        functions.insert(SimulatedDesktop::wmiFunctions.begin(),
                         SimulatedDesktop::wmiFunctions.end());
        return functions;
    }
};

inline std::vector<std::wstring> titlesOf(const WindowList& list) {
    std::vector<std::wstring> titles;
    for (const WindowInfo& window : list.GetCurrentWindows()) {
        titles.push_back(window.title.substr(0, window.title.find(L'\0')));
    }
    return titles;
}

inline constexpr DWORD destroyed = 0x8001;
inline constexpr DWORD shown = 0x8002;
inline constexpr DWORD renamed = 0x800C;
inline constexpr DWORD uncloaked = 0x8018;

inline const wchar_t* const coreWindowClass = L"Windows.UI.Core.CoreWindow";
inline const wchar_t* const frameWindowClass = L"ApplicationFrameWindow";

} // namespace tests
