#include "monitor/service/ui_records.h"
#include "simulation/variants.h"
#include "tests/hostile/hostile_texts.h"
#include "tests/fixtures/log_recorder.h"
#include "tests/fixtures/module_test.h"
#include "tests/support/simulation.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <functional>
#include <iterator>
#include <stdexcept>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// A monitor that is identified by WMI.
class HostileMonitor : public ModuleTest {
protected:
    void add(const std::wstring& deviceName, const std::wstring& friendlyName,
             const std::function<VARIANT()>& serialNumber) {
        desktop.monitors.add(deviceName, wideMode);
        desktop.displayPaths.add(deviceName, friendlyName,
                                 LR"(\\?\DISPLAY#VRL0001#7&1#{e6f07b5f})");
        desktop.wmi.provider.instances.push_back(
            {[] { return stringVariant(LR"(DISPLAY\VRL0001\7&1_0)"); }, serialNumber});
    }

    void addNamed(const std::wstring& friendlyName) {
        add(display1, friendlyName, [] { return unitsVariant(L"SN"); });
    }

    LogRecorder log{module.image(), desktop.journal};
};

class MonitorWithHostileTexts : public HostileMonitor,
                                public testing::WithParamInterface<HostileText> {
protected:
    void SetUp() override {
        add(deviceName, friendlyName, [this] { return unitsVariant(serialNumber); });
        module.init();
    }

    // As long as the platform's fields let them be.
    const std::wstring serialNumber = GetParam().text;
    const std::wstring deviceName = (LR"(\\.\)" + GetParam().text).substr(0, 31);
    const std::wstring friendlyName = GetParam().text.substr(0, 63);
};

TEST_P(MonitorWithHostileTexts, has_them_in_every_list_unit_by_unit) {
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
    EXPECT_EQ(record.width, 3840);
}

TEST_P(MonitorWithHostileTexts, reaches_the_runtime_by_its_low_bytes) {
    ASSERT_EQ(module.runtime.monitorItems().size(), 1u);
    const vorlen::VORLEN_MONITOR_INFO& item = module.runtime.monitorItems()[0];
    EXPECT_EQ(item.deviceName, lowBytesOf(deviceName));
    EXPECT_EQ(item.friendlyName, lowBytesOf(friendlyName));
    EXPECT_EQ(item.monitorId, lowBytesOf(serialNumber));
}

TEST_P(MonitorWithHostileTexts, is_found_among_the_kits_and_named_up_to_its_first_zero_byte) {
    module.runtime.makeModelKnown(lowBytesOf(friendlyName));
    EXPECT_EQ(module.monitorWrapper().getVorlenModelNameWide(deviceName.c_str()).size(), 1u);
    EXPECT_STREQ(module.exports->getMonitorModelName(), lowBytesOf(friendlyName).c_str());
    EXPECT_STREQ(module.exports->getVorlenMonitorModelName(), lowBytesOf(friendlyName).c_str());
    EXPECT_EQ(module.exports->getMonitorRect().width, 3840);
}

TEST_P(MonitorWithHostileTexts, is_logged_in_utf8_or_leaves_the_check_without_an_outcome) {
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

INSTANTIATE_TEST_SUITE_P(Texts, MonitorWithHostileTexts, testing::ValuesIn(hostileTexts),
                         [](const auto& text) { return std::string(text.param.name); });

// A string that holds zeros, and an array of units that does.
class SerialNumberWithZeros : public HostileMonitor,
                              public testing::WithParamInterface<VARIANT (*)(const std::wstring&)> {
};

TEST_P(SerialNumberWithZeros, is_what_stands_before_them) {
    add(display1, L"Model", [] { return GetParam()(std::wstring(L"SN\0and more\0", 12)); });
    module.init();
    MonitorListItem record{};
    std::fill(std::begin(record.monitorId), std::end(record.monitorId), L'#');
    ASSERT_EQ(module.exports->getMonitorList(&record, 1), 1);
    std::wstring field = L"SN";
    field.resize(std::size(record.monitorId), L'\0');
    EXPECT_EQ(std::wstring(record.monitorId, std::size(record.monitorId)), field);
    EXPECT_EQ(module.monitorWrapper().getMonitorList()[0].monitorId, L"SN");
    EXPECT_EQ(module.runtime.monitorItems()[0].monitorId, "SN");
}

INSTANTIATE_TEST_SUITE_P(Values, SerialNumberWithZeros,
                         testing::Values(stringVariant, unitsVariant));

TEST_F(HostileMonitor, whose_low_bytes_spell_a_kit_model_is_taken_for_one) {
    module.runtime.makeModelKnown("Vorlen");
    addNamed(L"\u0156\u4E6F\u0172\u006C\u0165\u016E");
    module.init();
    EXPECT_TRUE(module.exports->checkMonitorStatus());
    EXPECT_STREQ(module.exports->getMonitorModelName(), "Vorlen");
}

TEST_F(HostileMonitor, with_a_zero_byte_inside_a_kit_models_name_is_not_taken_for_one) {
    module.runtime.makeModelKnown("Vorlen");
    addNamed(L"Vor\u0100len");
    module.init();
    EXPECT_FALSE(module.exports->checkMonitorStatus());
    EXPECT_EQ(module.exports->getLastMonitorStatus(), 17);
    EXPECT_STREQ(module.exports->getMonitorModelName(), "");
}

} // namespace
} // namespace tests
