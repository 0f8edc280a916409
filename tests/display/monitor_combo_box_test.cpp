#include "monitor/display/monitor_list.h"
#include "tests/display/display_test.h"
#include "tests/support/private_member.h"

#include <comdef.h>
#include <gmock/gmock.h>

#include <optional>
#include <thread>

namespace tests {

struct RegisteredComboBoxes {
    using type = std::vector<HWND> MonitorList::*;
    friend type memberOf(RegisteredComboBoxes);
};
template struct PrivateMember<RegisteredComboBoxes, &MonitorList::comboBoxes>;

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class MonitorComboBox : public DisplayTest {
protected:
    void SetUp() override {
        desktop.addMonitor(display2, L"B", wideMode);
        desktop.addMonitor(display1, L"A", smallMode);
    }

    // The code of the error that the registration ends with, if it does.
    std::optional<HRESULT> errorOfRegistering() {
        try {
            list.RegisterComboBoxForUpdates(box);
        } catch (const _com_error& error) {
            return error.Error();
        }
        return std::nullopt;
    }

    MonitorList list{false};
    HWND box = desktop.comboBoxes.add({L"left over"});
};

TEST_F(MonitorComboBox, is_emptied_and_filled_with_the_device_names_in_order) {
    list.Update();
    list.RegisterComboBoxForUpdates(box);
    EXPECT_THAT(desktop.comboBoxes.entries(box), ElementsAre(display2, display1));
}

TEST_F(MonitorComboBox, is_only_emptied_before_the_first_update) {
    list.RegisterComboBoxForUpdates(box);
    EXPECT_THAT(desktop.comboBoxes.entries(box), IsEmpty());
    EXPECT_EQ(desktop.journal.count("SendMessageW"), 1u);
}

TEST_F(MonitorComboBox, shows_all_displays_last) {
    std::vector<std::wstring> entries;
    std::thread([&] {
        MonitorList withAllDisplays(true);
        withAllDisplays.Update();
        withAllDisplays.RegisterComboBoxForUpdates(box);
        entries = desktop.comboBoxes.entries(box);
    }).join();
    EXPECT_THAT(entries, ElementsAre(display2, display1, L"All Displays"));
}

TEST_F(MonitorComboBox, keeps_what_it_shows_until_it_is_registered_again) {
    list.Update();
    list.RegisterComboBoxForUpdates(box);
    desktop.journal.clear();
    desktop.addMonitor(display3, L"C", wideMode);
    list.Update();
    EXPECT_EQ(desktop.journal.count("SendMessageW"), 0u);
    EXPECT_THAT(desktop.comboBoxes.entries(box), ElementsAre(display2, display1));

    list.RegisterComboBoxForUpdates(box);
    EXPECT_THAT(desktop.comboBoxes.entries(box), ElementsAre(display2, display1, display3));
    EXPECT_THAT(list.*memberOf(RegisteredComboBoxes{}), ElementsAre(box, box));
}

TEST_F(MonitorComboBox, does_not_touch_others_that_were_registered_before) {
    list.Update();
    list.RegisterComboBoxForUpdates(box);
    const HWND other = desktop.comboBoxes.add();
    desktop.comboBoxes.messages.clear();
    list.RegisterComboBoxForUpdates(other);
    for (const SentMessage& message : desktop.comboBoxes.messages) {
        EXPECT_EQ(message.window, other);
    }
    EXPECT_THAT(desktop.comboBoxes.entries(other), ElementsAre(display2, display1));
}

TEST_F(MonitorComboBox, that_refuses_to_be_emptied_fails_the_registration) {
    list.Update();
    desktop.journal.fail("SendMessageW", 1, CB_ERR);
    EXPECT_EQ(errorOfRegistering(), static_cast<HRESULT>(0xFFFFFFFF));
    EXPECT_THAT(desktop.comboBoxes.entries(box), ElementsAre(L"left over"));
    EXPECT_EQ(desktop.journal.count("SendMessageW"), 1u);
}

TEST_F(MonitorComboBox, that_has_no_room_fails_the_registration_and_keeps_what_it_has) {
    list.Update();
    desktop.journal.fail("SendMessageW", 3, CB_ERRSPACE);
    EXPECT_EQ(errorOfRegistering(), static_cast<HRESULT>(0xFFFFFFFE));
    EXPECT_THAT(desktop.comboBoxes.entries(box), ElementsAre(display2));
    EXPECT_EQ(desktop.journal.count("SendMessageW"), 3u);
}

TEST_F(MonitorComboBox, that_fails_in_the_middle_is_not_filled_further) {
    list.Update();
    desktop.journal.fail("SendMessageW", 2, CB_ERR);
    EXPECT_EQ(errorOfRegistering(), static_cast<HRESULT>(0xFFFFFFFF));
    EXPECT_THAT(desktop.comboBoxes.entries(box), IsEmpty());
    EXPECT_EQ(desktop.journal.count("SendMessageW"), 2u);
}

TEST_F(MonitorComboBox, that_failed_is_remembered_all_the_same) {
    desktop.journal.fail("SendMessageW", 1, CB_ERR);
    EXPECT_TRUE(errorOfRegistering().has_value());
    EXPECT_THAT(list.*memberOf(RegisteredComboBoxes{}), ElementsAre(box));
}

TEST_F(MonitorComboBox, fails_by_the_low_half_of_its_reply) {
    desktop.journal.fail("SendMessageW", 1, 0x0000'0001'FFFF'FFFE);
    EXPECT_EQ(errorOfRegistering(), static_cast<HRESULT>(0xFFFFFFFE));
    desktop.journal.fail("SendMessageW", 1, static_cast<std::int64_t>(0xFFFF'FFFF'0000'0000));
    EXPECT_EQ(errorOfRegistering(), std::nullopt);
}

TEST_F(MonitorComboBox, that_was_destroyed_is_no_error) {
    list.Update();
    desktop.comboBoxes.box(box).destroyed = true;
    EXPECT_EQ(errorOfRegistering(), std::nullopt);
}

} // namespace
} // namespace tests
