#pragma once

#include "monitor/service/ui_records.h"
#include "tests/fixtures/message_pump.h"
#include "tests/fixtures/module_under_test.h"
#include "tests/fixtures/other_program.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace tests {

// A test of the shipped library on the desktop that it runs on, which shows other windows as well:
// only those of the other program are spoken of.
class RealWindowsTest : public testing::Test {
protected:
    RealWindowsTest() { makeMessageQueue(); }

    const vorlen::ui::WindowInfo* find(HWND window) const {
        const auto& windows = module.monitorWrapper().getWindowList();
        const auto found = std::find_if(windows.begin(), windows.end(),
                                        [=](const auto& listed) { return listed.hwnd == window; });
        return found != windows.end() ? &*found : nullptr;
    }

    bool isListed(HWND window) const { return find(window) != nullptr; }

    std::wstring titleOf(HWND window) const {
        const vorlen::ui::WindowInfo* const listed = find(window);
        return listed != nullptr ? listed->title : L"(not listed)";
    }

    ::testing::AssertionResult becomesListed(HWND window) const {
        return pumpUntil([&] { return isListed(window); })
                   ? ::testing::AssertionSuccess()
                   : ::testing::AssertionFailure() << "the window was not listed in time";
    }

    ::testing::AssertionResult leavesTheList(HWND window) const {
        return pumpUntil([&] { return !isListed(window); })
                   ? ::testing::AssertionSuccess()
                   : ::testing::AssertionFailure() << "the window did not leave the list in time";
    }

    // Events of one program arrive in order: when this returns, all earlier ones have arrived.
    void receiveAllEvents() {
        const HWND fence = program.createShown(L"fence");
        EXPECT_TRUE(becomesListed(fence));
        program.destroy(fence);
        EXPECT_TRUE(leavesTheList(fence));
    }

    OtherProgram program;
    ModuleUnderTest module;
};

} // namespace tests
