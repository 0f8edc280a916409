#include "monitor/windows/window_info.h"
#include "simulation/import_redirect.h"
#include "tests/support/allocations.h"
#include "tests/support/simulation.h"
#include "tests/windows/windows_test.h"

#include <gmock/gmock.h>

#include <limits>
#include <new>
#include <type_traits>
#include <utility>

namespace tests {
namespace {

using testing::ElementsAre;

static_assert(std::is_copy_constructible_v<WindowInfo> && std::is_copy_assignable_v<WindowInfo>);
static_assert(std::is_nothrow_move_constructible_v<WindowInfo> &&
              std::is_nothrow_move_assignable_v<WindowInfo>);

std::wstring zeros(std::size_t count) {
    return std::wstring(count, L'\0');
}

class WindowRecord : public WindowsTest {
protected:
    WindowInfo read() const { return WindowInfo(window.handle); }

    SimulatedWindow& window = desktop.windows.add(L"Title", L"Class");
};

TEST_F(WindowRecord, reads_length_text_and_class_name_in_this_order) {
    const WindowInfo info = read();
    EXPECT_EQ(info.hwnd, window.handle);
    EXPECT_THAT(desktop.windowCalls(),
                ElementsAre("GetWindowTextLengthW", "GetWindowTextW", "GetClassNameW"));
}

TEST_F(WindowRecord, keeps_the_terminating_zero_of_the_title) {
    window.title = L"A";
    EXPECT_EQ(read().title, L"A" + zeros(1));
}

TEST_F(WindowRecord, pads_the_class_name_with_zeros_to_256_units) {
    EXPECT_EQ(read().className, L"Class" + zeros(251));
}

TEST_F(WindowRecord, holds_a_class_name_of_255_units_whole) {
    window.className = std::wstring(255, L'c');
    EXPECT_EQ(read().className, window.className + zeros(1));
}

TEST_F(WindowRecord, of_an_untitled_window_has_an_empty_title) {
    window.title.clear();
    EXPECT_EQ(read().title, L"");
}

int unitsOfText = -1;

int WINAPI noteUnits(HWND, LPWSTR, int units) {
    unitsOfText = units;
    return 0;
}

TEST_F(WindowRecord, reads_the_text_of_an_untitled_window_too_without_room) {
    window.title.clear();
    const ImportRedirect redirect(GetModuleHandleW(nullptr), "GetWindowTextW",
                                  addressOf(noteUnits));
    unitsOfText = -1;
    read();
    EXPECT_EQ(unitsOfText, 0);
}

TEST_F(WindowRecord, takes_a_failed_length_query_for_no_title) {
    desktop.journal.fail("GetWindowTextLengthW", 1, 0);
    EXPECT_EQ(read().title, L"");
}

TEST_F(WindowRecord, takes_a_negative_length_for_no_title) {
    for (const int length : {-1, -2, -1000, std::numeric_limits<int>::min()}) {
        desktop.journal.fail("GetWindowTextLengthW", 1, length);
        EXPECT_EQ(read().title, L"") << "length " << length;
    }
}

TEST_F(WindowRecord, asks_for_the_memory_of_the_longest_length_that_a_window_can_name) {
    desktop.journal.fail("GetWindowTextLengthW", 1, std::numeric_limits<int>::max());
    Allocations memory({GetModuleHandleW(nullptr)});
    memory.failRequestsFor(1'000'000);
    EXPECT_THROW(read(), std::bad_alloc);
    EXPECT_EQ(memory.failedBytes(), (0x7FFF'FFFF + std::size_t{1}) * sizeof(wchar_t))
        << "with the terminating zero and that of the string";
}

TEST_F(WindowRecord, of_a_dead_window_has_no_title_and_a_class_name_of_zeros) {
    window.alive = false;
    const WindowInfo info = read();
    EXPECT_EQ(info.hwnd, window.handle);
    EXPECT_EQ(info.title, L"");
    EXPECT_EQ(info.className, zeros(256));
}

TEST_F(WindowRecord, of_no_window_has_no_title_and_a_class_name_of_zeros) {
    const WindowInfo info(nullptr);
    EXPECT_EQ(info.hwnd, nullptr);
    EXPECT_EQ(info.title, L"");
    EXPECT_EQ(info.className, zeros(256));
}

TEST_F(WindowRecord, of_a_window_that_dies_after_its_title_keeps_what_was_read) {
    desktop.journal.at("GetClassNameW", 1, [&] { window.alive = false; });
    const WindowInfo info = read();
    EXPECT_EQ(info.title, L"Title" + zeros(1));
    EXPECT_EQ(info.className, zeros(256));
}

TEST_F(WindowRecord, is_not_refreshed) {
    const WindowInfo info = read();
    window.title = L"Other";
    window.className = L"OtherClass";
    EXPECT_EQ(info.title, L"Title" + zeros(1));
    EXPECT_EQ(textOf(info.className), L"Class");
}

TEST_F(WindowRecord, that_was_moved_from_keeps_its_handle_and_has_empty_strings) {
    WindowInfo info = read();
    const WindowInfo moved(std::move(info));
    EXPECT_EQ(moved.title, L"Title" + zeros(1));
    EXPECT_EQ(info.hwnd, window.handle); // NOLINT(bugprone-use-after-move)
    EXPECT_EQ(info.title, L"");
    EXPECT_EQ(info.className, L"");
}

TEST_F(WindowRecord, keeps_unpaired_surrogates) {
    window.title = L"a\xD83D z\xDC00";
    EXPECT_EQ(read().title, window.title + zeros(1));
}

// The title is read in two calls, between which the window may change it.
TEST_F(WindowRecord, cuts_a_title_that_grew_meanwhile) {
    desktop.journal.at("GetWindowTextW", 1, [&] { window.title = L"Titles grow"; });
    EXPECT_EQ(read().title, L"Title" + zeros(1));
}

TEST_F(WindowRecord, fills_up_a_title_that_shrank_meanwhile) {
    desktop.journal.at("GetWindowTextW", 1, [&] { window.title = L"Ti"; });
    EXPECT_EQ(read().title, L"Ti" + zeros(4));
}

TEST_F(WindowRecord, has_a_title_of_zeros_when_it_went_meanwhile) {
    desktop.journal.at("GetWindowTextW", 1, [&] { window.title.clear(); });
    EXPECT_EQ(read().title, zeros(6));
}

TEST_F(WindowRecord, has_a_title_of_zeros_when_the_window_died_meanwhile) {
    desktop.journal.at("GetWindowTextW", 1, [&] { window.alive = false; });
    EXPECT_EQ(read().title, zeros(6));
}

TEST_F(WindowRecord, misses_a_title_that_came_meanwhile) {
    window.title.clear();
    desktop.journal.at("GetWindowTextW", 1, [&] { window.title = L"Late"; });
    EXPECT_EQ(read().title, L"");
}

class WindowRecordOfLength : public WindowRecord,
                             public testing::WithParamInterface<std::size_t> {};

TEST_P(WindowRecordOfLength, holds_the_title_whole) {
    window.title = std::wstring(GetParam() - 1, L't') + L'!';
    EXPECT_EQ(read().title, window.title + zeros(1));
}

INSTANTIATE_TEST_SUITE_P(WindowRecord, WindowRecordOfLength,
                         testing::Values(1, 126, 127, 128, 200, 32'767));

} // namespace
} // namespace tests
