#include "tests/windows/windows_test.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <ios>
#include <sstream>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

enum class Root { self, other, none };

struct Situation {
    DWORD event;
    LONG object;
    LONG child;
    Root root;
    bool titled;
    bool listed; // before the event

    std::string text() const {
        std::ostringstream out;
        out << std::boolalpha << "event 0x" << std::hex << event << std::dec << ", object "
            << object << ", child " << child << ", root " << static_cast<int>(root) << ", titled "
            << titled << ", listed " << listed;
        return out.str();
    }

    bool removes() const { return event == destroyed && child == 0; }

    bool mayAdd() const {
        return (event == shown || event == uncloaked) && object == 0 && child == 0;
    }

    bool adds() const { return mayAdd() && root == Root::self && titled && !listed; }
};

std::vector<Situation> situationsOf(DWORD event) {
    std::vector<Situation> result;
    for (const LONG object : {0, 1, -1, -4, -8, -9}) {
        for (const LONG child : {0, 1, -1}) {
            for (const Root root : {Root::self, Root::other, Root::none}) {
                for (const bool titled : {false, true}) {
                    for (const bool listed : {false, true}) {
                        result.push_back({event, object, child, root, titled, listed});
                    }
                }
            }
        }
    }
    return result;
}

class WindowEventTable : public WindowsTest, public testing::WithParamInterface<DWORD> {
protected:
    // Leaves the window listed or not, and then in the situation.
    void prepare(WindowList& list, const Situation& situation) {
        list.RegisterComboBoxForUpdates(box);
        if (situation.listed) {
            window.title = L"subject";
            window.root = window.handle;
            desktop.eventHooks.deliver(shown, window.handle);
        }
        window.title = situation.titled ? L"subject" : L"";
        window.root = situation.root == Root::self    ? window.handle
                      : situation.root == Root::other ? neighbour.handle
                                                      : nullptr;
        desktop.journal.clear();
        desktop.comboBoxes.messages.clear();
    }

    void expectListed(const WindowList& list, bool listed) {
        std::vector<std::wstring> titles = {L"neighbour"};
        if (listed) {
            titles.push_back(L"subject");
        }
        EXPECT_EQ(titlesOf(list), titles);
        EXPECT_EQ(desktop.comboBoxes.entries(box), titles);
    }

    void check(const Situation& situation) {
        SCOPED_TRACE(situation.text());
        window.visible = false; // at seeding
        WindowList list;
        window.visible = true;
        prepare(list, situation);
        const std::uint64_t revision = list.GetRevision();
        desktop.eventHooks.deliver(situation.event, window.handle, situation.object,
                                   situation.child);

        const bool changes = situation.adds() || (situation.removes() && situation.listed);
        expectListed(list, situation.listed ? !situation.removes() : situation.adds());
        EXPECT_EQ(list.GetRevision() != revision, changes);
        EXPECT_EQ(desktop.comboBoxes.messages.size(), changes ? 1u : 0u);
        if (!situation.mayAdd()) {
            EXPECT_THAT(desktop.windowCalls(), IsEmpty());
        }
    }

    SimulatedWindow& neighbour = desktop.windows.add(L"neighbour");
    SimulatedWindow& window = desktop.windows.add(L"subject");
    HWND box = desktop.comboBoxes.add();
};

TEST_P(WindowEventTable, only_destruction_removes_and_only_appearance_adds) {
    for (const Situation& situation : situationsOf(GetParam())) {
        check(situation);
    }
}

INSTANTIATE_TEST_SUITE_P(HookedRangeAndBeyond, WindowEventTable,
                         testing::Range(DWORD{0x8000}, DWORD{0x801B}));
INSTANTIATE_TEST_SUITE_P(OtherEvents, WindowEventTable,
                         testing::Values(0u, 1u, 2u, 3u, 0x18u, 0x7FFFu, 0x8030u, 0x8102u, 0x18002u,
                                         0x80008001u, 0xFFFFFFFFu));

class WindowEvent : public WindowsTest {
protected:
    void deliver(DWORD event, const SimulatedWindow& window) {
        desktop.eventHooks.deliver(event, window.handle);
    }
};

TEST_F(WindowEvent, without_a_window_changes_nothing_and_asks_nothing) {
    desktop.windows.add(L"a");
    const WindowList list;
    desktop.journal.clear();
    for (DWORD event = 0x8000; event <= 0x801A; ++event) {
        desktop.eventHooks.deliver(event, nullptr);
    }
    EXPECT_THAT(titlesOf(list), ElementsAre(L"a"));
    EXPECT_THAT(desktop.journal.calls(), IsEmpty());
}

TEST_F(WindowEvent, appends_windows_in_the_order_in_which_they_appear) {
    SimulatedWindow& early = desktop.windows.add(L"early");
    early.visible = false;
    desktop.windows.add(L"seeded");
    const WindowList list;
    deliver(shown, desktop.windows.add(L"late"));
    early.visible = true;
    deliver(uncloaked, early);
    EXPECT_THAT(titlesOf(list), ElementsAre(L"seeded", L"late", L"early"));
}

TEST_F(WindowEvent, adds_a_hidden_window_when_it_is_shown) {
    SimulatedWindow& window = desktop.windows.add(L"a");
    window.visible = false;
    const WindowList list;
    EXPECT_THAT(list.GetCurrentWindows(), IsEmpty());
    window.visible = true;
    deliver(shown, window);
    EXPECT_THAT(titlesOf(list), ElementsAre(L"a"));
}

TEST_F(WindowEvent, adds_a_cloaked_window_when_it_is_uncloaked) {
    SimulatedWindow& window = desktop.windows.add(L"a", coreWindowClass);
    window.cloaked = 2;
    const WindowList list;
    deliver(shown, window);
    EXPECT_THAT(list.GetCurrentWindows(), IsEmpty());
    window.cloaked = 0;
    deliver(uncloaked, window);
    EXPECT_THAT(titlesOf(list), ElementsAre(L"a"));
}

TEST_F(WindowEvent, adds_no_window_that_may_not_be_offered) {
    const WindowList list;
    SimulatedWindow& window = desktop.windows.add(L"a");
    window.style |= WS_DISABLED;
    deliver(shown, window);
    deliver(uncloaked, window);
    EXPECT_THAT(list.GetCurrentWindows(), IsEmpty());
}

TEST_F(WindowEvent, that_shows_a_window_twice_lists_it_once) {
    const WindowList list;
    const SimulatedWindow& window = desktop.windows.add(L"a");
    deliver(shown, window);
    deliver(shown, window);
    EXPECT_THAT(titlesOf(list), ElementsAre(L"a"));
}

TEST_F(WindowEvent, that_renames_a_window_leaves_the_title_that_it_had_when_it_appeared) {
    SimulatedWindow& window = desktop.windows.add(L"old");
    const WindowList list;
    window.title = L"new";
    deliver(renamed, window);
    EXPECT_THAT(titlesOf(list), ElementsAre(L"old"));
    deliver(shown, window);
    EXPECT_THAT(titlesOf(list), ElementsAre(L"old"));
}

TEST_F(WindowEvent, that_hides_cloaks_or_disables_a_window_leaves_it_listed) {
    SimulatedWindow& window = desktop.windows.add(L"a", coreWindowClass);
    const WindowList list;
    window.visible = false;
    deliver(EVENT_OBJECT_HIDE, window);
    window.cloaked = 1;
    deliver(EVENT_OBJECT_CLOAKED, window);
    window.style |= WS_DISABLED;
    deliver(EVENT_OBJECT_STATECHANGE, window);
    EXPECT_THAT(titlesOf(list), ElementsAre(L"a"));
}

TEST_F(WindowEvent, that_destroys_an_unlisted_window_changes_nothing_and_asks_nothing) {
    desktop.windows.add(L"a");
    const WindowList list;
    SimulatedWindow& unlisted = desktop.windows.add(L"b");
    unlisted.alive = false;
    const std::uint64_t revision = list.GetRevision();
    desktop.journal.clear();
    deliver(destroyed, unlisted);
    EXPECT_THAT(desktop.journal.calls(), IsEmpty());
    EXPECT_THAT(titlesOf(list), ElementsAre(L"a"));
    EXPECT_EQ(list.GetRevision(), revision);
}

TEST_F(WindowEvent, that_destroys_a_window_twice_removes_one) {
    const SimulatedWindow& first = desktop.windows.add(L"a");
    desktop.windows.add(L"b");
    const WindowList list;
    deliver(destroyed, first);
    deliver(destroyed, first);
    EXPECT_THAT(titlesOf(list), ElementsAre(L"b"));
}

TEST_F(WindowEvent, lists_a_window_anew_at_the_end_whose_handle_is_used_again) {
    SimulatedWindow& window = desktop.windows.add(L"first");
    desktop.windows.add(L"other");
    const WindowList list;
    deliver(destroyed, window);
    window.title = L"second";
    deliver(shown, window);
    EXPECT_THAT(titlesOf(list), ElementsAre(L"other", L"second"));
}

TEST_F(WindowEvent, moves_later_windows_up_when_one_is_destroyed) {
    std::vector<HWND> handles;
    for (const wchar_t* const title : {L"0", L"1", L"2", L"3", L"4"}) {
        handles.push_back(desktop.windows.add(title).handle);
    }
    const WindowList list;
    desktop.eventHooks.deliver(destroyed, handles[2]);
    EXPECT_THAT(titlesOf(list), ElementsAre(L"0", L"1", L"3", L"4"));
    EXPECT_THAT(handlesOf(list), ElementsAre(handles[0], handles[1], handles[3], handles[4]));
}

} // namespace
} // namespace tests
