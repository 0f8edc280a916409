#include "monitor/windows/window_info.h"
#include "simulation/import_redirect.h"
#include "tests/support/allocations.h"
#include "tests/windows/windows_test.h"

#include <gmock/gmock.h>

#include <limits>
#include <new>
#include <optional>
#include <string>
#include <type_traits>

namespace tests {
namespace {

using testing::ElementsAre;

static_assert(std::is_copy_constructible_v<WindowInfo> && std::is_copy_assignable_v<WindowInfo>);
static_assert(std::is_nothrow_move_constructible_v<WindowInfo> &&
              std::is_nothrow_move_assignable_v<WindowInfo>);

std::wstring zeros(std::size_t count) {
    return std::wstring(count, L'\0');
}

class WindowInfoTest : public WindowsTest {
protected:
    WindowInfo read() const { return WindowInfo(window.handle); }

    SimulatedWindow& window = desktop.windows.add(L"Title", L"Class");
};

TEST_F(WindowInfoTest, reads_length_text_and_class_name_in_this_order) {
    const WindowInfo info = read();
    EXPECT_EQ(info.hwnd, window.handle);
    EXPECT_THAT(desktop.windowCalls(),
                ElementsAre("GetWindowTextLengthW", "GetWindowTextW", "GetClassNameW"));
}

TEST_F(WindowInfoTest, keeps_the_zeros_of_the_buffers) {
    const WindowInfo info = read();
    EXPECT_EQ(info.title, L"Title" + zeros(1));
    EXPECT_EQ(info.className, L"Class" + zeros(251));
}

TEST_F(WindowInfoTest, holds_a_class_name_of_255_units) {
    window.className = std::wstring(255, L'c');
    EXPECT_EQ(read().className, window.className + zeros(1));
}

TEST_F(WindowInfoTest, has_no_title_for_a_length_of_zero_or_less) {
    for (const int length : {0, -1, -2, -1000, std::numeric_limits<int>::min()}) {
        desktop.journal.fail("GetWindowTextLengthW", 1, length);
        EXPECT_EQ(read().title, L"") << "length " << length;
    }
}

int unitsOfText = -1;

int WINAPI noteUnits(HWND, LPWSTR, int units) {
    unitsOfText = units;
    return 0;
}

TEST_F(WindowInfoTest, asks_for_the_text_of_an_untitled_window_without_room) {
    window.title.clear();
    const ImportRedirect redirect(GetModuleHandleW(nullptr), "GetWindowTextW",
                                  addressOf(noteUnits));
    unitsOfText = -1;
    EXPECT_EQ(read().title, L"");
    EXPECT_EQ(unitsOfText, 0);
}

TEST_F(WindowInfoTest, throws_when_the_longest_title_finds_no_memory) {
    desktop.journal.fail("GetWindowTextLengthW", 1, std::numeric_limits<int>::max());
    Allocations memory({GetModuleHandleW(nullptr)});
    memory.failRequestsFor(1'000'000);
    EXPECT_THROW(read(), std::bad_alloc);
    EXPECT_EQ(memory.failedBytes(), (0x7FFF'FFFF + std::size_t{1}) * sizeof(wchar_t))
        << "with the terminating zero and that of the string";
}

TEST_F(WindowInfoTest, has_no_texts_for_a_handle_of_no_window) {
    window.alive = false;
    for (const HWND handle : {window.handle, HWND{nullptr}}) {
        const WindowInfo info(handle);
        EXPECT_EQ(info.hwnd, handle);
        EXPECT_EQ(info.title, L"");
        EXPECT_EQ(info.className, zeros(256));
    }
}

// The title is read in two calls, between which the window may change it.
TEST_F(WindowInfoTest, has_the_room_of_the_old_title_for_the_new_one) {
    struct Change {
        std::wstring from;
        std::optional<std::wstring> to; // none: the window is destroyed
        std::wstring read;
    };
    const Change changes[] = {{L"Title", L"Titles grow", L"Title" + zeros(1)},
                              {L"Title", L"Ti", L"Ti" + zeros(4)},
                              {L"Title", L"", zeros(6)},
                              {L"Title", std::nullopt, zeros(6)},
                              {L"", L"Late", L""}};
    for (const Change& change : changes) {
        window.title = change.from;
        window.alive = true;
        desktop.journal.at("GetWindowTextW", 1, [&] {
            window.alive = change.to.has_value();
            window.title = change.to.value_or(L"");
        });
        EXPECT_EQ(read().title, change.read) << testing::PrintToString(change.to);
    }
}

} // namespace
} // namespace tests
