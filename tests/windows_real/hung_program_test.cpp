#include "tests/windows_real/real_windows_test.h"

namespace tests {
namespace {

// The other program handles messages only while it carries out a command: in between its windows do
// not answer, as if it hung. The system knows their titles and need not ask.
class HungProgram : public RealWindowsTest {
protected:
    HWND createHung() {
        const HWND window = program.createShown(L"does not answer");
        DWORD_PTR result = 0;
        constexpr UINT patience = 100; // milliseconds
        EXPECT_EQ(
            SendMessageTimeoutW(window, WM_GETTEXTLENGTH, 0, 0, SMTO_NORMAL, patience, &result), 0)
            << "the window answers";
        return window;
    }
};

TEST_F(HungProgram, has_its_windows_listed_at_the_start) {
    const HWND window = createHung();
    EXPECT_EQ(module.exports->getReasonNotCapturable(window), nullptr);
    module.init();
    EXPECT_EQ(titleOf(window), L"does not answer");
}

TEST_F(HungProgram, has_its_windows_listed_and_removed) {
    module.init();
    const HWND window = createHung();
    EXPECT_TRUE(becomesListed(window));
    EXPECT_EQ(titleOf(window), L"does not answer");
    program.destroy(window);
    EXPECT_TRUE(leavesTheList(window));
}

} // namespace
} // namespace tests
