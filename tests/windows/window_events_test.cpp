#include "tests/fixtures/log_recorder.h"
#include "tests/windows/windows_test.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <initializer_list>
#include <ios>
#include <ostream>
#include <stdexcept>
#include <utility>
#include <vector>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class WindowEvent : public WindowsTest {
protected:
    void deliver(DWORD event, const SimulatedWindow& window) {
        desktop.eventHooks.deliver(event, window.handle);
    }

    SimulatedWindow& add(const std::wstring& title) { return desktop.windows.add(title); }
};

// Promise (getWindowList): Windows are listed in the order in which they appeared. The first ones
// come in the system's order, later ones when they are shown or uncloaked.
TEST_F(WindowEvent, adds_windows_at_the_end_as_they_appear) {
    SimulatedWindow& hidden = add(L"hidden at first");
    hidden.visible = false;
    SimulatedWindow& cloaked = desktop.windows.add(L"cloaked at first", coreWindowClass);
    cloaked.cloaked = 2;
    add(L"there at first");
    const WindowList list;
    deliver(shown, add(L"new"));
    deliver(shown, cloaked);
    hidden.visible = true;
    deliver(shown, hidden);
    cloaked.cloaked = 0;
    deliver(uncloaked, cloaked);
    EXPECT_THAT(titlesOf(list),
                ElementsAre(L"there at first", L"new", L"hidden at first", L"cloaked at first"));
}

// Promise (getWindowList): A window that gets its title, or is enabled, after it was shown is not
// listed until the list is read again, as `restartWindowList` does.
TEST_F(WindowEvent, does_not_add_windows_that_become_capturable_later) {
    new WindowList; // owned by the thread from now on
    SimulatedWindow& untitled = add(L"");
    SimulatedWindow& disabled = add(L"disabled");
    disabled.style |= WS_DISABLED;
    deliver(shown, untitled);
    deliver(shown, disabled);
    untitled.title = L"title";
    disabled.style &= ~WS_DISABLED;
    deliver(renamed, untitled);
    deliver(EVENT_OBJECT_STATECHANGE, disabled);
    EXPECT_THAT(titlesOf(*WindowList::Get()), IsEmpty());
    const WindowList readAgain;
    EXPECT_THAT(titlesOf(readAgain), ElementsAre(L"title", L"disabled"));
}

TEST_F(WindowEvent, does_not_add_a_window_that_dies_while_it_is_read) {
    const std::pair<const char*, std::size_t> calls[] = {{"GetAncestor", 1},
                                                         {"GetWindowTextLengthW", 1},
                                                         {"GetWindowTextLengthW", 2},
                                                         {"GetWindowTextW", 1},
                                                         {"GetClassNameW", 1},
                                                         {"GetShellWindow", 1},
                                                         {"IsWindowVisible", 1},
                                                         {"GetAncestor", 2},
                                                         {"GetWindowLongW", 1},
                                                         {"GetWindowLongW", 2},
                                                         {"IsWindow", 1}};
    const WindowList list;
    for (const auto& [function, call] : calls) {
        SimulatedWindow& window = add(L"dies");
        desktop.journal.at(function, call, [&] { window.alive = false; });
        deliver(shown, window);
        EXPECT_FALSE(window.alive) << function << " was not called";
        EXPECT_THAT(titlesOf(list), IsEmpty()) << function;
    }
}

// Promise (getWindowList): A listed window keeps the title that it had when it appeared.
TEST_F(WindowEvent, keeps_the_title_of_a_window_that_is_renamed) {
    SimulatedWindow& window = add(L"old");
    const WindowList list;
    window.title = L"new";
    deliver(renamed, window);
    deliver(shown, window);
    EXPECT_THAT(titlesOf(list), ElementsAre(L"old"));
}

// Promise (getWindowList): A window leaves the list only when it is destroyed. One that is hidden,
// cloaked or disabled stays listed.
TEST_F(WindowEvent, keeps_a_window_that_is_hidden_cloaked_or_disabled) {
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

// Promise (getWindowList): When the caret of a window is destroyed, the window leaves the list
// until it is shown again: the object of a destruction is not looked at.
TEST_F(WindowEvent, removes_a_window_whose_caret_is_destroyed) {
    const SimulatedWindow& editor = add(L"editor");
    add(L"other");
    const WindowList list;
    desktop.eventHooks.deliver(destroyed, editor.handle, OBJID_CARET, CHILDID_SELF);
    EXPECT_THAT(titlesOf(list), ElementsAre(L"other"));
    deliver(shown, editor);
    EXPECT_THAT(titlesOf(list), ElementsAre(L"other", L"editor"));
}

TEST_F(WindowEvent, lists_a_handle_that_is_used_again_at_the_end) {
    SimulatedWindow& window = add(L"first");
    add(L"other");
    const WindowList list;
    deliver(destroyed, window);
    window.title = L"second";
    deliver(shown, window);
    EXPECT_THAT(titlesOf(list), ElementsAre(L"other", L"second"));
}

// The thread may be about to ask for the error of a call of its own.
TEST_F(WindowEvent, keeps_the_last_error_of_the_thread) {
    SimulatedWindow& listed = add(L"listed");
    const WindowList list;
    SimulatedWindow& hidden = add(L"hidden");
    hidden.visible = false;
    SimulatedWindow& dead = add(L"dead");
    dead.alive = false;
    SimulatedWindow& added = add(L"added");
    const LogRecorder log(GetModuleHandleW(nullptr), desktop.journal); // of the event that fails
    const auto expectKept = [&](DWORD event, const SimulatedWindow& window) {
        SetLastError(77);
        deliver(event, window);
        EXPECT_EQ(GetLastError(), 77u) << "event " << event << ", window " << window.handle;
    };
    for (const DWORD event : {shown, uncloaked, renamed, destroyed}) {
        for (const SimulatedWindow* const window : {&hidden, &dead, &added, &listed}) {
            expectKept(event, *window);
        }
    }
    desktop.journal.at("GetWindowTextW", 1, [] {
        SetLastError(5);
        throw std::runtime_error("planned");
    });
    expectKept(shown, added);
}

// It was on its way when the hook was released.
TEST_F(WindowEvent, is_ignored_when_the_thread_has_no_list_any_more) {
    { const WindowList list; }
    const HWND window = add(L"a").handle;
    desktop.journal.clear();
    const SimulatedEventHook& hook = desktop.eventHooks.all.at(0);
    SetLastError(77);
    for (const DWORD event : {shown, uncloaked, destroyed}) {
        hook.procedure(hook.handle, event, window, OBJID_WINDOW, CHILDID_SELF, hook.thread, 0);
    }
    EXPECT_EQ(GetLastError(), 77u);
    EXPECT_THAT(desktop.journal.calls(), IsEmpty());
}

enum class Root { self, other, none };

// An event of a window, and what the window is like.
struct Situation {
    DWORD event;
    LONG object;
    LONG child;
    Root root;
    bool titled;
    bool listed; // before the event

    friend std::ostream& operator<<(std::ostream& out, const Situation& situation) {
        return out << "event 0x" << std::hex << situation.event << std::dec << ", object "
                   << situation.object << ", child " << situation.child << ", root "
                   << static_cast<int>(situation.root) << ", titled " << situation.titled
                   << ", listed " << situation.listed;
    }

    bool removes() const { return event == destroyed && child == 0; }

    bool mayAdd() const {
        return (event == shown || event == uncloaked) && object == 0 && child == 0;
    }

    bool adds() const { return mayAdd() && root == Root::self && titled; }
};

// The events of the hooked range, and some beyond it.
std::vector<DWORD> allEvents() {
    std::vector<DWORD> events = {0,      1,      2,       3,          0x18,      0x7FFF,
                                 0x8030, 0x8102, 0x18002, 0x80008001, 0xFFFFFFFF};
    for (DWORD event = 0x8000; event <= 0x801A; ++event) {
        events.push_back(event);
    }
    return events;
}

std::vector<Situation> allSituations() {
    std::vector<Situation> result;
    for (const DWORD event : allEvents()) {
        for (const LONG object : {0, 1, -1, -4, -8, -9}) {
            for (const LONG child : {0, 1, -1}) {
                for (const Root root : {Root::self, Root::other, Root::none}) {
                    for (const bool titled : {false, true}) {
                        result.push_back({event, object, child, root, titled, false});
                        result.push_back({event, object, child, root, titled, true});
                    }
                }
            }
        }
    }
    return result;
}

class WindowEventTable : public WindowEvent {
protected:
    // Leaves the window listed or not, and then in the situation.
    void prepare(WindowList& list, const Situation& situation) {
        list.RegisterComboBoxForUpdates(box);
        if (situation.listed) {
            window.title = L"subject";
            window.root = window.handle;
            deliver(shown, window);
        }
        window.title = situation.titled ? L"subject" : L"";
        window.root = situation.root == Root::self    ? window.handle
                      : situation.root == Root::other ? neighbour.handle
                                                      : nullptr;
        desktop.journal.clear();
        desktop.comboBoxes.messages.clear();
    }

    void check(const Situation& situation) {
        window.visible = false; // while the list reads the desktop
        WindowList list;
        window.visible = true;
        prepare(list, situation);
        const std::uint64_t revision = list.GetRevision();
        desktop.eventHooks.deliver(situation.event, window.handle, situation.object,
                                   situation.child);

        const bool listed = situation.listed ? !situation.removes() : situation.adds();
        const bool changed = listed != situation.listed;
        const auto titles = listed ? std::vector<std::wstring>{L"neighbour", L"subject"}
                                   : std::vector<std::wstring>{L"neighbour"};
        EXPECT_EQ(titlesOf(list), titles);
        EXPECT_EQ(desktop.comboBoxes.entries(box), titles);
        EXPECT_EQ(list.GetRevision() != revision, changed);
        EXPECT_EQ(desktop.comboBoxes.messages.size(), changed ? 1u : 0u);
        if (!situation.mayAdd()) {
            EXPECT_THAT(desktop.windowCalls(), IsEmpty());
        }
    }

    SimulatedWindow& neighbour = add(L"neighbour");
    SimulatedWindow& window = add(L"subject");
    HWND box = desktop.comboBoxes.add();
};

TEST_F(WindowEventTable, lets_only_appearance_add_and_only_destruction_remove) {
    for (const Situation& situation : allSituations()) {
        SCOPED_TRACE(testing::Message() << situation);
        check(situation);
        desktop.eventHooks.all.clear();
    }
}

} // namespace
} // namespace tests
