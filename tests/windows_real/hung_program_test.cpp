#include "tests/windows_real/real_windows_test.h"

namespace tests {
namespace {

// The other program handles messages only while it carries out a command: in between its windows do
// not answer, as if it hung. The system knows their titles and need not ask.
class HungProgram : public RealWindowsTest {
protected:
    static bool answers(HWND window) {
        DWORD_PTR result = 0;
        constexpr UINT patience = 100; // milliseconds
        return SendMessageTimeoutW(window, WM_GETTEXTLENGTH, 0, 0, SMTO_NORMAL, patience,
                                   &result) != 0;
    }
};

TEST_F(HungProgram, has_its_windows_read_when_the_library_starts) {
    const HWND window = program.createShown(L"does not answer");
    ASSERT_FALSE(answers(window));
    module.init();
    EXPECT_EQ(titleOf(window), L"does not answer");
}

TEST_F(HungProgram, has_its_windows_listed_when_they_appear_and_removed_when_they_go) {
    module.init();
    const HWND window = program.createShown(L"does not answer");
    ASSERT_FALSE(answers(window));
    EXPECT_TRUE(becomesListed(window));
    EXPECT_EQ(titleOf(window), L"does not answer");
    program.destroy(window);
    EXPECT_TRUE(leavesTheList(window));
}

TEST_F(HungProgram, has_its_windows_judged) {
    const HWND window = program.createShown(L"does not answer");
    ASSERT_FALSE(answers(window));
    EXPECT_EQ(module.exports->getReasonNotCapturable(window), nullptr);
}

} // namespace
} // namespace tests
