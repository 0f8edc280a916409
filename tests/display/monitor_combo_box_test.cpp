#include "monitor/display/monitor_list.h"
#include "tests/display/display_test.h"
#include "tests/support/other_thread.h"
#include "tests/support/private_member.h"

#include <comdef.h>
#include <gmock/gmock.h>

#include <optional>

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

TEST_F(MonitorComboBox, is_only_emptied_before_the_first_update) {
    list.RegisterComboBoxForUpdates(box);
    EXPECT_THAT(desktop.comboBoxes.entries(box), IsEmpty());
    EXPECT_EQ(desktop.journal.count("SendMessageW"), 1u);
}

TEST_F(MonitorComboBox, shows_device_names_and_all_displays_last) {
    onAnotherThread([this] {
        MonitorList withAllDisplays(true);
        withAllDisplays.Update();
        withAllDisplays.RegisterComboBoxForUpdates(box);
    });
    EXPECT_THAT(desktop.comboBoxes.entries(box), ElementsAre(display2, display1, L"All Displays"));
}

TEST_F(MonitorComboBox, is_not_touched_when_another_is_registered) {
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

TEST_F(MonitorComboBox, is_remembered_each_time_also_when_it_fails) {
    list.RegisterComboBoxForUpdates(box);
    desktop.journal.fail("SendMessageW", 1, CB_ERR);
    EXPECT_TRUE(errorOfRegistering().has_value());
    EXPECT_THAT(list.*memberOf(RegisteredComboBoxes{}), ElementsAre(box, box));
}

TEST_F(MonitorComboBox, keeps_its_entries_when_it_cannot_be_emptied) {
    list.Update();
    desktop.journal.fail("SendMessageW", 1, CB_ERR);
    EXPECT_EQ(errorOfRegistering(), static_cast<HRESULT>(0xFFFFFFFF));
    EXPECT_THAT(desktop.comboBoxes.entries(box), ElementsAre(L"left over"));
    EXPECT_EQ(desktop.journal.count("SendMessageW"), 1u);
}

TEST_F(MonitorComboBox, keeps_the_entries_before_one_that_fails) {
    desktop.addMonitor(display3, L"C", smallMode);
    list.Update();
    desktop.journal.fail("SendMessageW", 3, CB_ERRSPACE);
    EXPECT_EQ(errorOfRegistering(), static_cast<HRESULT>(0xFFFFFFFE));
    EXPECT_THAT(desktop.comboBoxes.entries(box), ElementsAre(display2));
    EXPECT_EQ(desktop.journal.count("SendMessageW"), 3u);
}

TEST_F(MonitorComboBox, fails_by_the_low_half_of_its_reply) {
    desktop.journal.fail("SendMessageW", 1, 0x0000'0001'FFFF'FFFE);
    EXPECT_EQ(errorOfRegistering(), static_cast<HRESULT>(0xFFFFFFFE));
    desktop.journal.fail("SendMessageW", 1, static_cast<std::int64_t>(0xFFFF'FFFF'0000'0000));
    EXPECT_EQ(errorOfRegistering(), std::nullopt);
}

TEST_F(MonitorComboBox, may_be_destroyed_before_it_is_registered) {
    list.Update();
    desktop.comboBoxes.box(box).destroyed = true;
    EXPECT_EQ(errorOfRegistering(), std::nullopt);
}

} // namespace
} // namespace tests
