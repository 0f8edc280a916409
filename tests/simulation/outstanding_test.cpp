// A simulated desktop reports a failure at its end when the image under test, here this program,
// has kept something of it.

#include "simulation/simulated_desktop.h"
#include "tests/support/failures_of.h"
#include "tests/support/simulation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <wbemidl.h>

#include <set>
#include <string>
#include <vector>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// The functions that this program, unlike the module, does not import.
std::set<std::string> functionsNotImported() {
    std::set<std::string> functions = SimulatedDesktop::displayFunctions;
    for (const auto* more : {&SimulatedDesktop::windowFunctions, &SimulatedDesktop::wmiFunctions}) {
        functions.insert(more->begin(), more->end());
    }
    functions.insert({"QueryPerformanceCounter", "QueryPerformanceFrequency", "SendMessageW"});
    return functions;
}

// The failures that a desktop reports at its end, after it was used so.
template <typename Function>
std::vector<std::string> failuresOfDesktop(Function use) {
    return failuresOf([&] {
        SimulatedDesktop desktop(GetModuleHandleW(nullptr), functionsNotImported());
        use(desktop);
    });
}

void CALLBACK ignoreEvent(HWINEVENTHOOK, DWORD, HWND, LONG, LONG, DWORD, DWORD) {}

HWINEVENTHOOK hook() {
    return SetWinEventHook(EVENT_OBJECT_DESTROY, EVENT_OBJECT_UNCLOAKED, nullptr, ignoreEvent, 0, 0,
                           WINEVENT_OUTOFCONTEXT);
}

TEST(SimulatedDesktop, reports_an_event_hook_that_was_kept) {
    EXPECT_THAT(failuresOfDesktop([](auto&) { hook(); }),
                ElementsAre(HasSubstr("event hooks were left installed")));
}

TEST(SimulatedDesktop, lets_a_test_leave_an_event_hook_on_purpose) {
    EXPECT_THAT(failuresOfDesktop([](auto& desktop) {
                    hook();
                    desktop.eventHooks.leftInstalled = 1;
                }),
                IsEmpty());
}

TEST(SimulatedDesktop, reports_a_string_that_was_kept) {
    BSTR text = nullptr;
    EXPECT_THAT(failuresOfDesktop([&](auto&) { text = SysAllocString(L"kept"); }),
                ElementsAre(HasSubstr("BSTR")));
    SysFreeString(text);
}

TEST(SimulatedDesktop, reports_a_variant_that_was_kept) {
    VARIANT value;
    EXPECT_THAT(failuresOfDesktop([&](auto&) { VariantInit(&value); }),
                ElementsAre(HasSubstr("VARIANT")));
}

TEST(SimulatedDesktop, reports_an_access_to_a_safe_array_that_was_kept) {
    SAFEARRAY* const array = SafeArrayCreateVector(VT_I4, 0, 1);
    void* data = nullptr;
    EXPECT_THAT(failuresOfDesktop([&](auto&) { SafeArrayAccessData(array, &data); }),
                ElementsAre(HasSubstr("access to a SAFEARRAY")));
    SafeArrayUnaccessData(array);
    SafeArrayDestroy(array);
}

TEST(SimulatedDesktop, reports_an_apartment_that_was_not_left) {
    EXPECT_THAT(failuresOfDesktop(
                    [](auto&) { EXPECT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK); }),
                ElementsAre(HasSubstr("apartment")));
}

TEST(SimulatedDesktop, reports_a_com_object_that_was_not_released) {
    EXPECT_THAT(failuresOfDesktop([](auto& desktop) { desktop.wmi.provider.makeLocator(); }),
                ElementsAre(HasSubstr("IWbemLocator")));
}

} // namespace
} // namespace tests
