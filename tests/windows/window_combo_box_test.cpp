#include "tests/fixtures/log_recorder.h"
#include "tests/support/allocations.h"
#include "tests/windows/windows_test.h"

#include <comdef.h>
#include <gmock/gmock.h>

#include <cstdint>
#include <new>
#include <optional>
#include <string>
#include <vector>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr UINT resetContent = 0x014B;
constexpr UINT addString = 0x0143;
constexpr UINT deleteString = 0x0144;

class WindowComboBox : public WindowsTest {
protected:
    void deliver(DWORD event, HWND window) { desktop.eventHooks.deliver(event, window); }

    HWND show(const std::wstring& title) {
        const HWND window = desktop.windows.add(title).handle;
        deliver(shown, window);
        return window;
    }

    HWND makeRegistered() {
        const HWND box = desktop.comboBoxes.add({L"left over"});
        list.RegisterComboBoxForUpdates(box);
        return box;
    }

    // The code of the error that the registration throws, if it does.
    std::optional<HRESULT> errorOfRegistering(HWND box) {
        try {
            list.RegisterComboBoxForUpdates(box);
        } catch (const _com_error& error) {
            return error.Error();
        }
        return std::nullopt;
    }

    const std::vector<std::wstring>& entries(HWND box) { return desktop.comboBoxes.entries(box); }

    // The numbers of the messages that the box got, in order.
    std::vector<UINT> messagesTo(HWND box) const {
        std::vector<UINT> result;
        for (const SentMessage& message : desktop.comboBoxes.messages) {
            if (message.window == box) {
                result.push_back(message.message);
            }
        }
        return result;
    }

    SimulatedWindow& a = desktop.windows.add(L"a");
    SimulatedWindow& b = desktop.windows.add(L"b");
    WindowList list;
    LogRecorder log{GetModuleHandleW(nullptr), desktop.journal}; // of events that fail
};

TEST_F(WindowComboBox, is_emptied_and_filled_with_the_titles_in_order) {
    a.title = L"renamed"; // without an event
    const HWND box = makeRegistered();
    EXPECT_THAT(messagesTo(box), ElementsAre(resetContent, addString, addString));
    EXPECT_THAT(entries(box), ElementsAre(L"a", L"b"));
}

TEST_F(WindowComboBox, is_only_emptied_when_no_window_is_listed) {
    deliver(destroyed, a.handle);
    deliver(destroyed, b.handle);
    const HWND box = makeRegistered();
    EXPECT_THAT(messagesTo(box), ElementsAre(resetContent));
    EXPECT_THAT(entries(box), IsEmpty());
}

TEST_F(WindowComboBox, gets_the_title_of_a_new_window_alone) {
    const HWND box = makeRegistered();
    desktop.comboBoxes.messages.clear();
    show(L"c");
    EXPECT_THAT(messagesTo(box), ElementsAre(addString));
    EXPECT_THAT(entries(box), ElementsAre(L"a", L"b", L"c"));
}

TEST_F(WindowComboBox, gets_the_index_of_a_destroyed_window) {
    const HWND c = show(L"c");
    show(L"d");
    show(L"e");
    const HWND boxes[] = {makeRegistered(), makeRegistered()};
    desktop.comboBoxes.messages.clear();
    deliver(destroyed, c);
    for (const HWND box : boxes) {
        EXPECT_THAT(entries(box), ElementsAre(L"a", L"b", L"d", L"e"));
        EXPECT_THAT(messagesTo(box), ElementsAre(deleteString));
    }
    for (const SentMessage& message : desktop.comboBoxes.messages) {
        EXPECT_EQ(message.wParam, 2u);
    }
}

TEST_F(WindowComboBox, gets_messages_in_the_order_of_registration) {
    const HWND boxes[] = {makeRegistered(), makeRegistered(), makeRegistered()};
    desktop.comboBoxes.messages.clear();
    deliver(destroyed, show(L"c"));
    std::vector<HWND> receivers;
    for (const SentMessage& message : desktop.comboBoxes.messages) {
        receivers.push_back(message.window);
    }
    EXPECT_THAT(receivers, ElementsAre(boxes[0], boxes[1], boxes[2], boxes[0], boxes[1], boxes[2]));
}

TEST_F(WindowComboBox, gets_everything_twice_when_registered_twice) {
    const HWND box = makeRegistered();
    list.RegisterComboBoxForUpdates(box);
    EXPECT_THAT(messagesTo(box), ElementsAre(resetContent, addString, addString, resetContent,
                                             addString, addString));
    EXPECT_THAT(entries(box), ElementsAre(L"a", L"b"));

    desktop.comboBoxes.messages.clear();
    show(L"c");
    deliver(destroyed, a.handle);
    EXPECT_THAT(messagesTo(box), ElementsAre(addString, addString, deleteString, deleteString));
}

TEST_F(WindowComboBox, stays_registered_when_it_is_destroyed) {
    const HWND dead = makeRegistered();
    const HWND box = makeRegistered();
    desktop.comboBoxes.box(dead).destroyed = true;
    desktop.comboBoxes.messages.clear();
    show(L"c");
    deliver(destroyed, a.handle);
    EXPECT_THAT(messagesTo(dead), ElementsAre(addString, deleteString));
    EXPECT_THAT(entries(box), ElementsAre(L"b", L"c"));
    EXPECT_NO_THROW(list.RegisterComboBoxForUpdates(dead));
}

TEST_F(WindowComboBox, is_not_filled_further_after_a_reply_that_is_an_error) {
    const HWND box = desktop.comboBoxes.add({L"left over"});
    desktop.journal.fail("SendMessageW", 1, CB_ERR);
    EXPECT_EQ(errorOfRegistering(box), static_cast<HRESULT>(0xFFFFFFFF));
    EXPECT_THAT(entries(box), ElementsAre(L"left over"));

    desktop.journal.fail("SendMessageW", 2, CB_ERRSPACE);
    desktop.journal.clear();
    EXPECT_EQ(errorOfRegistering(box), static_cast<HRESULT>(0xFFFFFFFE));
    EXPECT_EQ(desktop.journal.count("SendMessageW"), 2u);
    EXPECT_THAT(entries(box), IsEmpty());
}

TEST_F(WindowComboBox, is_registered_although_it_could_not_be_filled) {
    const HWND box = desktop.comboBoxes.add({L"left over"});
    desktop.journal.fail("SendMessageW", 1, CB_ERR);
    EXPECT_TRUE(errorOfRegistering(box).has_value());
    show(L"c");
    EXPECT_THAT(entries(box), ElementsAre(L"left over", L"c"));
}

TEST_F(WindowComboBox, is_not_registered_when_memory_is_exhausted) {
    const HWND box = desktop.comboBoxes.add();
    {
        Allocations allocations({GetModuleHandleW(nullptr)});
        allocations.failRequest(1);
        EXPECT_THROW(list.RegisterComboBoxForUpdates(box), std::bad_alloc);
    }
    show(L"c");
    EXPECT_THAT(desktop.comboBoxes.messages, IsEmpty());
}

TEST_F(WindowComboBox, replies_with_an_error_by_the_sign_of_32_bits) {
    const HWND box = desktop.comboBoxes.add();
    for (const std::int64_t reply : {0x0000'0000'FFFF'FFFELL, 0x0000'0001'8000'0000LL}) {
        desktop.journal.fail("SendMessageW", 1, reply);
        EXPECT_EQ(errorOfRegistering(box), static_cast<HRESULT>(reply));
    }
    for (const std::int64_t reply :
         {0x7FFF'FFFFLL, 0x1'0000'0000LL, static_cast<long long>(0xFFFF'FFFF'0000'0001)}) {
        desktop.journal.fail("SendMessageW", 1, reply);
        EXPECT_EQ(errorOfRegistering(box), std::nullopt);
    }
}

// Promise (Threads and callbacks): When a combo box replies to a change of the window list with an
// error, the combo boxes registered after it miss that change. The list itself has it.
TEST_F(WindowComboBox, keeps_a_change_from_later_boxes_by_replying_with_an_error) {
    const HWND boxes[] = {makeRegistered(), makeRegistered(), makeRegistered()};
    desktop.journal.fail("SendMessageW", 2, CB_ERR);
    show(L"c");
    EXPECT_THAT(titlesOf(list), ElementsAre(L"a", L"b", L"c"));
    EXPECT_THAT(entries(boxes[0]), ElementsAre(L"a", L"b", L"c"));
    EXPECT_THAT(entries(boxes[1]), ElementsAre(L"a", L"b"));
    EXPECT_THAT(entries(boxes[2]), ElementsAre(L"a", L"b"));

    desktop.journal.fail("SendMessageW", 2, CB_ERRSPACE);
    deliver(destroyed, a.handle);
    EXPECT_THAT(titlesOf(list), ElementsAre(L"b", L"c"));
    EXPECT_THAT(entries(boxes[0]), ElementsAre(L"b", L"c"));
    EXPECT_THAT(entries(boxes[1]), ElementsAre(L"a", L"b"));
    EXPECT_THAT(entries(boxes[2]), ElementsAre(L"a", L"b"));
}

} // namespace
} // namespace tests
