#include "tests/fixtures/log_recorder.h"
#include "tests/support/other_thread.h"
#include "tests/support/private_member.h"
#include "tests/windows/windows_test.h"

#include <comdef.h>
#include <gmock/gmock.h>

#include <algorithm>
#include <iterator>
#include <new>
#include <optional>
#include <stdexcept>
#include <string>

namespace tests {

struct ComboBoxesOfWindowList {
    using type = std::vector<HWND> WindowList::*;
    friend type memberOf(ComboBoxesOfWindowList);
};
template struct PrivateMember<ComboBoxesOfWindowList, &WindowList::comboBoxes>;

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class FailingComboBox : public WindowsTest {
protected:
    // The code of the error that the registration ends with, if it does.
    std::optional<HRESULT> errorOfRegistering(HWND box) {
        try {
            list.RegisterComboBoxForUpdates(box);
        } catch (const _com_error& error) {
            return error.Error();
        }
        return std::nullopt;
    }

    void registerAll() {
        for (const HWND box : boxes) {
            list.RegisterComboBoxForUpdates(box);
        }
    }

    void expectOneLine(const char* reason) const {
        ASSERT_EQ(log.lines.size(), 1u);
        EXPECT_EQ(log.lines[0].level, 5);
        EXPECT_THAT(log.lines[0].text, HasSubstr(reason));
        EXPECT_FALSE(log.lines[0].flag);
    }

    const std::vector<std::wstring>& entries(std::size_t box) {
        return desktop.comboBoxes.entries(boxes[box]);
    }

    SimulatedWindow& a = desktop.windows.add(L"a");
    SimulatedWindow& b = desktop.windows.add(L"b");
    WindowList list;
    HWND boxes[3] = {desktop.comboBoxes.add({L"left over"}), desktop.comboBoxes.add(),
                     desktop.comboBoxes.add()};
    LogRecorder log{GetModuleHandleW(nullptr), desktop.journal};
};

TEST_F(FailingComboBox, that_refuses_to_be_emptied_fails_its_registration) {
    desktop.journal.fail("SendMessageW", 1, CB_ERR);
    EXPECT_EQ(errorOfRegistering(boxes[0]), static_cast<HRESULT>(0xFFFFFFFF));
    EXPECT_EQ(desktop.journal.count("SendMessageW"), 1u);
    EXPECT_THAT(entries(0), ElementsAre(L"left over"));
}

TEST_F(FailingComboBox, that_has_no_room_fails_its_registration_and_keeps_what_it_has) {
    desktop.journal.fail("SendMessageW", 3, CB_ERRSPACE);
    EXPECT_EQ(errorOfRegistering(boxes[0]), static_cast<HRESULT>(0xFFFFFFFE));
    EXPECT_EQ(desktop.journal.count("SendMessageW"), 3u);
    EXPECT_THAT(entries(0), ElementsAre(L"a"));
}

TEST_F(FailingComboBox, that_fails_in_the_middle_is_not_filled_further) {
    desktop.journal.fail("SendMessageW", 2, CB_ERR);
    EXPECT_EQ(errorOfRegistering(boxes[0]), static_cast<HRESULT>(0xFFFFFFFF));
    EXPECT_EQ(desktop.journal.count("SendMessageW"), 2u);
}

TEST_F(FailingComboBox, that_failed_to_be_filled_is_registered_all_the_same) {
    desktop.journal.fail("SendMessageW", 1, CB_ERR);
    EXPECT_TRUE(errorOfRegistering(boxes[0]).has_value());
    EXPECT_THAT(list.*memberOf(ComboBoxesOfWindowList{}), ElementsAre(boxes[0]));
    desktop.eventHooks.deliver(shown, desktop.windows.add(L"c").handle);
    EXPECT_THAT(entries(0), ElementsAre(L"left over", L"c"));
}

TEST_F(FailingComboBox, leaves_the_list_as_it_is_when_its_registration_fails) {
    const std::uint64_t revision = list.GetRevision();
    desktop.journal.fail("SendMessageW", 2, CB_ERRSPACE);
    EXPECT_TRUE(errorOfRegistering(boxes[0]).has_value());
    EXPECT_THAT(titlesOf(list), ElementsAre(L"a", L"b"));
    EXPECT_EQ(list.GetRevision(), revision);
    EXPECT_THAT(log.lines, IsEmpty());
}

TEST_F(FailingComboBox, is_told_by_the_sign_of_the_low_half_of_its_reply) {
    for (const std::int64_t reply : {0x0000'0000'FFFF'FFFELL, 0x0000'0001'8000'0000LL}) {
        desktop.journal.fail("SendMessageW", 1, reply);
        EXPECT_EQ(errorOfRegistering(boxes[0]), static_cast<HRESULT>(reply));
    }
    for (const std::int64_t reply :
         {0x7FFF'FFFFLL, 0x1'0000'0000LL, static_cast<long long>(0xFFFF'FFFF'0000'0001)}) {
        desktop.journal.fail("SendMessageW", 1, reply);
        EXPECT_EQ(errorOfRegistering(boxes[0]), std::nullopt);
    }
}

TEST_F(FailingComboBox, in_the_middle_keeps_a_new_window_from_the_later_ones_but_not_the_list) {
    registerAll();
    desktop.journal.fail("SendMessageW", 2, CB_ERR);
    desktop.journal.clear();
    desktop.eventHooks.deliver(shown, desktop.windows.add(L"c").handle);
    EXPECT_THAT(titlesOf(list), ElementsAre(L"a", L"b", L"c"));
    EXPECT_EQ(desktop.journal.count("SendMessageW"), 2u);
    EXPECT_THAT(entries(0), ElementsAre(L"a", L"b", L"c"));
    EXPECT_THAT(entries(1), ElementsAre(L"a", L"b"));
    EXPECT_THAT(entries(2), ElementsAre(L"a", L"b"));
    expectOneLine("0xffffffff");
}

TEST_F(FailingComboBox, in_the_middle_keeps_a_destruction_from_the_later_ones_but_not_the_list) {
    registerAll();
    desktop.journal.fail("SendMessageW", 2, CB_ERRSPACE);
    desktop.journal.clear();
    desktop.eventHooks.deliver(destroyed, a.handle);
    EXPECT_THAT(titlesOf(list), ElementsAre(L"b"));
    EXPECT_EQ(desktop.journal.count("SendMessageW"), 2u);
    EXPECT_THAT(entries(0), ElementsAre(L"b"));
    EXPECT_THAT(entries(1), ElementsAre(L"a", L"b"));
    EXPECT_THAT(entries(2), ElementsAre(L"a", L"b"));
    expectOneLine("0xfffffffe");
}

TEST_F(FailingComboBox, does_not_bring_a_window_back_that_is_shown_again) {
    registerAll();
    desktop.journal.fail("SendMessageW", 1, CB_ERR);
    const HWND window = desktop.windows.add(L"c").handle;
    desktop.eventHooks.deliver(shown, window);
    desktop.journal.clear();
    desktop.eventHooks.deliver(shown, window);
    EXPECT_EQ(desktop.journal.count("SendMessageW"), 0u);
    EXPECT_THAT(titlesOf(list), ElementsAre(L"a", L"b", L"c"));
}

TEST_F(FailingComboBox, does_not_stop_later_events) {
    registerAll();
    desktop.journal.fail("SendMessageW", 1, CB_ERR);
    desktop.eventHooks.deliver(shown, desktop.windows.add(L"c").handle);
    desktop.eventHooks.deliver(shown, desktop.windows.add(L"d").handle);
    desktop.eventHooks.deliver(destroyed, a.handle);
    EXPECT_THAT(titlesOf(list), ElementsAre(L"b", L"c", L"d"));
    EXPECT_THAT(entries(1), ElementsAre(L"b", L"d"));
    EXPECT_EQ(log.lines.size(), 1u);
}

// Every event that sends a message fails while the combo boxes do.
class SeriesOfFailedEvents : public FailingComboBox {
protected:
    void SetUp() override {
        registerAll();
        desktop.journal.failAll("SendMessageW", CB_ERR);
        failAgain();
        log.lines.clear();
    }

    void failAgain() {
        desktop.eventHooks.deliver(shown, desktop.windows.add(L"c").handle);
        desktop.eventHooks.deliver(destroyed, desktop.windows.order.back());
    }
};

TEST_F(SeriesOfFailedEvents, is_one_line_of_the_log) {
    failAgain();
    failAgain();
    EXPECT_THAT(log.lines, IsEmpty());
}

TEST_F(SeriesOfFailedEvents, ends_with_a_window_that_is_added) {
    desktop.journal.dropPlans();
    const HWND window = desktop.windows.add(L"d").handle;
    desktop.eventHooks.deliver(shown, window);
    desktop.journal.failAll("SendMessageW", CB_ERR);
    failAgain();
    expectOneLine("0xffffffff");
}

TEST_F(SeriesOfFailedEvents, ends_with_a_window_that_is_removed) {
    desktop.journal.dropPlans();
    desktop.eventHooks.deliver(destroyed, a.handle);
    desktop.journal.failAll("SendMessageW", CB_ERR);
    failAgain();
    expectOneLine("0xffffffff");
}

TEST_F(SeriesOfFailedEvents, ends_with_a_window_that_is_looked_at_and_refused) {
    SimulatedWindow& disabled = desktop.windows.add(L"disabled");
    disabled.style |= WS_DISABLED;
    desktop.eventHooks.deliver(shown, disabled.handle);
    failAgain();
    expectOneLine("0xffffffff");
}

TEST_F(SeriesOfFailedEvents, ends_with_a_new_list) {
    onAnotherThread([] { const WindowList other; });
    failAgain();
    expectOneLine("0xffffffff");
}

TEST_F(SeriesOfFailedEvents, goes_on_after_an_event_that_is_ignored) {
    SimulatedWindow& untitled = desktop.windows.add(L"");
    SimulatedWindow& part = desktop.windows.add(L"part");
    part.root = b.handle;
    desktop.eventHooks.deliver(renamed, b.handle);
    desktop.eventHooks.deliver(shown, b.handle);
    desktop.eventHooks.deliver(shown, untitled.handle);
    desktop.eventHooks.deliver(shown, part.handle);
    desktop.eventHooks.deliver(destroyed, part.handle);
    failAgain();
    EXPECT_THAT(log.lines, IsEmpty());
}

TEST_F(FailingComboBox, is_logged_by_the_next_event_when_the_line_cannot_be_written) {
    registerAll();
    desktop.journal.failAll("SendMessageW", CB_ERR);
    desktop.journal.at("vllogger::log", 1, [] { throw std::bad_alloc(); });
    desktop.eventHooks.deliver(destroyed, a.handle);
    EXPECT_THAT(log.lines, IsEmpty());
    desktop.eventHooks.deliver(destroyed, b.handle);
    expectOneLine("0xffffffff");
}

// What a window calls itself may be confidential.
class FailedEvent : public FailingComboBox {
protected:
    // The line of an event of a new window, which fails with the exception.
    template <typename Exception>
    void expectLineFor(const Exception& exception, const std::string& reason) {
        log.lines.clear();
        const HWND window = desktop.windows.add(L"confidential").handle;
        desktop.journal.at("GetWindowTextW", 1, [=] { throw exception; });
        desktop.eventHooks.deliver(shown, window);
        EXPECT_THAT(log.lines,
                    ElementsAre(LogLine{5, "A window event could not be handled: " + reason}));
        EXPECT_THAT(titlesOf(list), ElementsAre(L"a", L"b"));
        desktop.eventHooks.deliver(shown, window);
        desktop.eventHooks.deliver(destroyed, window);
    }
};

TEST_F(FailedEvent, is_one_line_of_the_log_that_tells_the_reason_and_no_title) {
    expectLineFor(std::runtime_error("planned"), "planned");
    expectLineFor(_com_error(E_OUTOFMEMORY), "HRESULT 0x8007000e");
    expectLineFor(42, "unknown exception");
}

} // namespace
} // namespace tests
