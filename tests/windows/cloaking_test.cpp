#include "monitor/windows/capture_filter.h"
#include "tests/windows/windows_test.h"

#include <gmock/gmock.h>

#include <ios>
#include <ostream>
#include <tuple>

namespace tests {
namespace {

struct CloakingAnswer {
    HRESULT result;
    DWORD value;
    bool cloaked; // what it means

    friend std::ostream& operator<<(std::ostream& out, const CloakingAnswer& answer) {
        return out << "result 0x" << std::hex << static_cast<unsigned long>(answer.result)
                   << ", value 0x" << answer.value;
    }
};

// A failed call counts as not cloaked, whatever it wrote.
const CloakingAnswer answers[] = {
    {S_OK, 0, false},
    {S_OK, 1, true}, // by the application
    {S_OK, 2, true}, // by the shell
    {S_OK, 4, true}, // inherited from the owner
    {S_OK, 0x80000000, true},
    {S_FALSE, 0, false},
    {S_FALSE, 1, true},
    {0x7FFFFFFF, 2, true},
    {E_NOTIMPL, 0, false},
    {E_NOTIMPL, 1, false},
    {E_HANDLE, 2, false},
    {E_INVALIDARG, 4, false},
    {E_FAIL, 0xFFFFFFFF, false},
    {std::numeric_limits<HRESULT>::min(), 1, false},
};

class Cloaked : public WindowsTest {
protected:
    bool capturable() const { return IsCapturableWindow(WindowInfo(window.handle)); }

    SimulatedWindow& window = desktop.windows.add(L"Title", L"Class");
};

class CloakedFrame
    : public Cloaked,
      public testing::WithParamInterface<std::tuple<const wchar_t*, CloakingAnswer>> {};

TEST_P(CloakedFrame, of_a_packaged_application_is_refused_when_the_system_says_so) {
    const auto& [className, answer] = GetParam();
    window.className = className;
    window.cloakingResult = answer.result;
    window.cloaked = answer.value;
    EXPECT_EQ(capturable(), !answer.cloaked);
    EXPECT_EQ(desktop.journal.count("DwmGetWindowAttribute"), 1u);
}

INSTANTIATE_TEST_SUITE_P(Cloaked, CloakedFrame,
                         testing::Combine(testing::Values(coreWindowClass, frameWindowClass),
                                          testing::ValuesIn(answers)));

TEST_F(Cloaked, window_of_any_other_class_is_capturable_without_asking) {
    for (const wchar_t* const className :
         {L"Class", L"", L"windows.ui.core.corewindow", L"Windows.UI.Core.CoreWindow2",
          L"Windows.UI.Core.CoreWindo", L"Windows.UI.Core", L"applicationframewindow",
          L"ApplicationFrameWindow ", L" ApplicationFrameWindow", L"ApplicationFrame",
          L"Xaml_WindowedPopupClass"}) {
        window.className = className;
        window.cloaked = 1;
        EXPECT_TRUE(capturable()) << testing::PrintToString(std::wstring(className));
    }
    EXPECT_EQ(desktop.journal.count("DwmGetWindowAttribute"), 0u);
}

TEST_F(Cloaked, state_that_is_not_told_and_not_written_counts_as_not_cloaked) {
    window.className = frameWindowClass;
    window.cloaked = 1;
    desktop.journal.fail("DwmGetWindowAttribute", 1, E_NOTIMPL);
    EXPECT_TRUE(capturable());
}

TEST_F(Cloaked, state_that_is_told_without_a_value_counts_as_not_cloaked) {
    window.className = frameWindowClass;
    window.cloaked = 1;
    desktop.journal.fail("DwmGetWindowAttribute", 1, S_OK);
    EXPECT_TRUE(capturable());
}

TEST_F(Cloaked, frame_whose_window_dies_before_the_question_is_capturable) {
    window.className = frameWindowClass;
    window.cloaked = 1;
    desktop.journal.at("DwmGetWindowAttribute", 1, [&] { window.alive = false; });
    EXPECT_TRUE(capturable());
}

} // namespace
} // namespace tests
