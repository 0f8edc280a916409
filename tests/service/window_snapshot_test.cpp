#include "tests/support/allocations.h"
#include "tests/windows/window_module_test.h"

#include <gmock/gmock.h>

#include <new>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class WindowSnapshot : public TwoWindowsTest {};

TEST_F(WindowSnapshot, holds_the_windows_of_the_start_without_being_switched_on) {
    EXPECT_THAT(titles(), ElementsAre(L"a", L"b"));
    EXPECT_THAT(desktop.journal.calls(), IsEmpty());
}

TEST_F(WindowSnapshot, holds_handle_title_and_class_name) {
    ASSERT_EQ(windowList().size(), 2u);
    EXPECT_EQ(windowList()[1].hwnd, desktop.windows.order[1]);
    EXPECT_EQ(windowList()[1].title, L"b");
    EXPECT_EQ(windowList()[1].className, L"ApplicationWindow");
}

TEST_F(WindowSnapshot, has_titles_of_exactly_their_length_and_class_names_without_padding) {
    desktop.eventHooks.deliver(EVENT_OBJECT_SHOW, desktop.windows.add(L"sixsix", L"Class").handle);
    EXPECT_EQ(windowList().back().title.size(), 6u);
    EXPECT_EQ(windowList().back().className.size(), 5u);
}

TEST_F(WindowSnapshot, cuts_a_title_that_shrank_while_it_was_read_at_its_first_zero) {
    SimulatedWindow& window = add(L"longer");
    desktop.journal.at("GetWindowTextW", 1, [&] { window.title = L"long"; });
    desktop.eventHooks.deliver(EVENT_OBJECT_SHOW, window.handle);
    EXPECT_EQ(windowList().back().title, L"long");
}

TEST_F(WindowSnapshot, holds_texts_of_any_length_and_content) {
    const std::wstring longTitle = std::wstring(32'766, L't') + L'!';
    const std::wstring strangeTitle = L"\xD83D\x0001 \xDC00";
    const std::wstring longClass(255, L'c');
    show(longTitle);
    desktop.eventHooks.deliver(EVENT_OBJECT_SHOW,
                               desktop.windows.add(strangeTitle, longClass).handle);
    EXPECT_THAT(titles(), ElementsAre(L"a", L"b", longTitle, strangeTitle));
    EXPECT_EQ(windowList().back().className, longClass);
}

TEST_F(WindowSnapshot, follows_every_change_of_the_live_list) {
    const HWND c = show(L"c");
    EXPECT_THAT(titles(), ElementsAre(L"a", L"b", L"c"));
    destroy(desktop.windows.order[0]);
    EXPECT_THAT(titles(), ElementsAre(L"b", L"c"));
    show(L"d");
    destroy(c);
    EXPECT_THAT(titles(), ElementsAre(L"b", L"d"));
}

TEST_F(WindowSnapshot, follows_a_change_that_leaves_the_number_of_windows_as_it_was) {
    titles();
    destroy(desktop.windows.order[1]);
    show(L"c");
    EXPECT_THAT(titles(), ElementsAre(L"a", L"c"));
}

TEST_F(WindowSnapshot, follows_a_window_whose_handle_is_used_again) {
    titles();
    SimulatedWindow& window = *desktop.windows.find(desktop.windows.order[1]);
    destroy(window.handle);
    window.alive = true;
    window.title = L"another";
    desktop.eventHooks.deliver(EVENT_OBJECT_SHOW, window.handle);
    EXPECT_THAT(titles(), ElementsAre(L"a", L"another"));
}

TEST_F(WindowSnapshot, keeps_old_titles) {
    desktop.windows.find(desktop.windows.order[0])->title = L"new";
    desktop.eventHooks.deliver(EVENT_OBJECT_NAMECHANGE, desktop.windows.order[0]);
    EXPECT_THAT(titles(), ElementsAre(L"a", L"b"));
}

TEST_F(WindowSnapshot, changes_only_when_it_is_asked_for) {
    const auto& snapshot = windowList();
    show(L"c");
    EXPECT_THAT(titlesOf(snapshot), ElementsAre(L"a", L"b"));
    windowList();
    EXPECT_THAT(titlesOf(snapshot), ElementsAre(L"a", L"b", L"c"));
}

TEST_F(WindowSnapshot, is_one_vector_for_the_life_of_the_service) {
    const auto* const first = &windowList();
    show(L"c");
    EXPECT_EQ(&windowList(), first);
    useWindowList(false);
    EXPECT_EQ(&windowList(), first);
    useWindowList(true);
    EXPECT_EQ(&windowList(), first);
}

TEST_F(WindowSnapshot, of_an_unchanged_list_costs_neither_memory_nor_a_call) {
    windowList();
    const Allocations allocations({module.image()});
    for (int i = 0; i < 10; ++i) {
        windowList();
    }
    EXPECT_EQ(allocations.requests(), 0u);
    EXPECT_THAT(desktop.journal.calls(), IsEmpty());
}

TEST_F(WindowSnapshot, is_taken_whole_once_there_is_memory_again) {
    show(L"c");
    const auto& snapshot = windowList();
    for (std::size_t n = 1;; ++n) {
        SCOPED_TRACE(n);
        destroy(desktop.windows.order.back());
        show(L"a title that is too long to be kept inside the string itself");
        Allocations allocations({module.image()});
        allocations.failRequest(n);
        try {
            windowList();
        } catch (const std::bad_alloc&) {
            EXPECT_TRUE(allocations.hasFailed());
        }
        if (!allocations.hasFailed()) {
            EXPECT_GT(n, 1u);
            break;
        }
        windowList();
        EXPECT_EQ(
            titlesOf(snapshot),
            (std::vector<std::wstring>{
                L"a", L"b", L"a title that is too long to be kept inside the string itself"}));
    }
}

} // namespace
} // namespace tests
