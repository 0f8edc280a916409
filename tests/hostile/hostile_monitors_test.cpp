#include "monitor/service/ui_records.h"
#include "tests/fixtures/log_recorder.h"
#include "tests/fixtures/module_test.h"
#include "tests/hostile/hostile_texts.h"

#include <gmock/gmock.h>

#include <stdexcept>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class HostileMonitor : public ModuleTest {
protected:
    // A monitor that WMI identifies.
    void add(const std::wstring& deviceName, const std::wstring& friendlyName,
             const std::wstring& serialNumber) {
        desktop.monitors.add(deviceName, wideMode);
        desktop.displayPaths.add(deviceName, friendlyName,
                                 LR"(\\?\DISPLAY#VRL0001#7&1#{e6f07b5f})");
        desktop.wmi.add(LR"(DISPLAY\VRL0001\7&1_0)", serialNumber);
    }

    LogRecorder log{module.image(), desktop.journal};
};

// Promise (Names and rectangle): Names of monitors reach the runtime as the low 8 bits of each
// UTF-16 unit. A name of other characters with the same low bytes is taken for a kit model's.
TEST_F(HostileMonitor, is_recognised_by_the_low_bytes_of_its_name) {
    module.runtime.makeModelKnown("Vorlen");
    add(display1, L"\u0156\u4E6F\u0172\u006C\u0165\u016E", L"SN");
    module.init();
    EXPECT_TRUE(module.exports->checkMonitorStatus());
    EXPECT_STREQ(module.exports->getMonitorModelName(), "Vorlen");
}

class HostileMonitorText : public HostileMonitor, public testing::WithParamInterface<HostileText> {
protected:
    void SetUp() override {
        add(deviceName, friendlyName, serialNumber);
        module.init();
    }

    // As long as the platform's fields let them be.
    const std::wstring serialNumber = GetParam().text;
    const std::wstring deviceName = (LR"(\\.\)" + GetParam().text).substr(0, 31);
    const std::wstring friendlyName = GetParam().text.substr(0, 63);
};

TEST_P(HostileMonitorText, arrives_unit_by_unit_in_every_list) {
    MonitorListItem record{};
    ASSERT_EQ(module.exports->getMonitorList(&record, 1), 1);
    EXPECT_EQ(record.deviceName, deviceName);
    EXPECT_EQ(record.friendlyName, friendlyName);
    EXPECT_EQ(record.monitorId, asFieldShows(serialNumber));
    const auto& monitors = module.monitorWrapper().getMonitorList();
    ASSERT_EQ(monitors.size(), 1u);
    EXPECT_EQ(monitors[0].deviceName, deviceName);
    EXPECT_EQ(monitors[0].friendlyName, friendlyName);
    EXPECT_EQ(monitors[0].monitorId, serialNumber);
    const HWND box = desktop.comboBoxes.add();
    module.windowEnumWrapper().registerMonitorComboBox(box);
    EXPECT_THAT(desktop.comboBoxes.entries(box), ElementsAre(deviceName));
}

TEST_P(HostileMonitorText, reaches_the_runtime_as_low_bytes) {
    ASSERT_EQ(module.runtime.monitorItems().size(), 1u);
    const vorlen::VORLEN_MONITOR_INFO& item = module.runtime.monitorItems()[0];
    EXPECT_EQ(item.deviceName, lowBytesOf(deviceName));
    EXPECT_EQ(item.friendlyName, lowBytesOf(friendlyName));
    EXPECT_EQ(item.monitorId, lowBytesOf(serialNumber));

    module.runtime.makeModelKnown(lowBytesOf(friendlyName));
    EXPECT_EQ(module.monitorWrapper().getVorlenModelNameWide(deviceName.c_str()).size(), 1u);
    EXPECT_STREQ(module.exports->getMonitorModelName(), lowBytesOf(friendlyName).c_str());
    EXPECT_EQ(module.exports->getMonitorRect().width, 3840);
}

TEST_P(HostileMonitorText, is_logged_in_utf8_or_ends_the_check) {
    module.runtime.makeModelKnown(lowBytesOf(friendlyName));
    const auto name = utf8Of(friendlyName);
    const auto serial = utf8Of(serialNumber);
    if (name && serial) {
        EXPECT_TRUE(module.exports->checkMonitorStatus());
        EXPECT_EQ(module.exports->getLastMonitorStatus(), 16);
        ASSERT_EQ(log.lines.size(), 4u);
        EXPECT_EQ(log.lines[0].text, "Monitor Info : " + *name + ", " + *serial);
    } else {
        EXPECT_THROW(module.exports->checkMonitorStatus(), std::range_error);
        EXPECT_EQ(module.exports->getLastMonitorStatus(), -1);
        EXPECT_THAT(log.lines, IsEmpty());
    }
}

INSTANTIATE_TEST_SUITE_P(Texts, HostileMonitorText, testing::ValuesIn(hostileTexts),
                         [](const auto& text) { return std::string(text.param.name); });

} // namespace
} // namespace tests
