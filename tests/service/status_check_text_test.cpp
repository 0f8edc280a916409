#include "tests/service/status_check.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <utility>

namespace tests {
namespace {

using testing::IsEmpty;

class StatusCheckTextTest : public StatusCheckTest {
protected:
    SimulatedMonitor& addNamed(const std::wstring& friendlyName, const DisplayMode& mode) {
        return desktop.addMonitor(LR"(\\.\DISPLAY1)", friendlyName, mode);
    }

    void expectBadConversion() const {
        try {
            check();
            ADD_FAILURE() << "the check has passed";
        } catch (const std::range_error& error) {
            EXPECT_STREQ(error.what(), "bad conversion");
        }
    }

    // Its identification text comes from WMI, as units of UTF-16.
    void addIdentified(const std::wstring& friendlyName, const std::wstring& monitorId) {
        const wchar_t* const deviceName = LR"(\\.\DISPLAY1)";
        desktop.displayPaths.add(deviceName, friendlyName,
                                 LR"(\\?\DISPLAY#VRL0001#7&1#{e6f07b5f})");
        desktop.monitors.add(deviceName, uhdAt60);
        desktop.wmi.add(LR"(DISPLAY\VRL0001\7&1_0)", monitorId);
    }
};

TEST_F(StatusCheckTextTest, logs_names_of_any_script_in_utf8_while_the_runtime_has_low_bytes) {
    addNamed(L"Vorlen \u00E9\u3042\U0001F5A5", uhdAt60);
    module.init();
    EXPECT_TRUE(check());
    EXPECT_EQ(
        log.lines.at(0),
        (LogLine{debugLevel, "Monitor Info : Vorlen \xC3\xA9\xE3\x81\x82\xF0\x9F\x96\xA5, "}));
    EXPECT_EQ(module.runtime.monitorItems().at(0).friendlyName, "Vorlen \xE9\x42\x3D\xA5");
}

TEST_F(StatusCheckTextTest, logs_the_identification_behind_the_name) {
    addIdentified(L"Vorlen One", L"SN-0042");
    module.init();
    EXPECT_TRUE(check());
    EXPECT_EQ(log.lines.at(0), (LogLine{debugLevel, "Monitor Info : Vorlen One, SN-0042"}));
}

TEST_F(StatusCheckTextTest, logs_identifications_of_any_script_in_utf8) {
    addIdentified(L"Vorlen One", L"\u00E9\u3042\U0001F5A5");
    module.init();
    EXPECT_TRUE(check());
    EXPECT_EQ(
        log.lines.at(0),
        (LogLine{debugLevel, "Monitor Info : Vorlen One, \xC3\xA9\xE3\x81\x82\xF0\x9F\x96\xA5"}));
    EXPECT_EQ(module.runtime.monitorItems().at(0).monitorId, "\xE9\x42\x3D\xA5");
}

TEST_F(StatusCheckTextTest, leaves_as_an_exception_when_only_the_identification_is_no_text) {
    addIdentified(L"Vorlen One", L"SN\xD83D");
    module.init();
    expectBadConversion();
    EXPECT_EQ(status(), -1);
    EXPECT_EQ(judged(), L"");
    EXPECT_THAT(log.lines, IsEmpty());
}

TEST_F(StatusCheckTextTest, asks_the_runtime_for_the_low_bytes_of_the_device_name) {
    desktop.addMonitor(L"\\\\.\\D\u00E9\u3042", L"Vorlen One", uhdAt60);
    module.init();
    EXPECT_TRUE(check());
    EXPECT_THAT(core.texts, testing::ElementsAre("\\\\.\\D\xE9\x42"));
}

// Names that are recognised, since the runtime takes the low bytes, and are not UTF-16.
class StatusCheckBadName : public StatusCheckTextTest,
                           public testing::WithParamInterface<std::wstring> {};

TEST_P(StatusCheckBadName, leaves_as_an_exception_before_any_check) {
    addNamed(GetParam(), uhdAt60);
    module.init();
    expectBadConversion();
    EXPECT_EQ(status(), -1);
    EXPECT_EQ(judged(), L"");
    EXPECT_THAT(log.lines, IsEmpty());
}

TEST_P(StatusCheckBadName, leaves_the_outcome_and_the_judged_monitor_of_the_check_before) {
    const std::wstring badDevice = LR"(\\.\DISPLAY9)";
    addKitMonitor(fullHdAt60, LR"(\\.\DISPLAY1)");
    module.init();
    EXPECT_FALSE(check());
    log.lines.clear();
    desktop.addMonitor(badDevice, GetParam(), uhdAt60);
    std::swap(desktop.monitors.all.front(), desktop.monitors.all.back());
    module.exports->updateMonitorList();
    expectBadConversion();
    EXPECT_EQ(status(), 18);
    EXPECT_EQ(judged(), LR"(\\.\DISPLAY1)");
    EXPECT_THAT(log.lines, IsEmpty());

    desktop.displayPaths.all.back().friendlyName = L"Vorlen Two";
    module.exports->updateMonitorList();
    EXPECT_TRUE(check());
    EXPECT_EQ(status(), 16);
    EXPECT_EQ(judged(), badDevice);
}

INSTANTIATE_TEST_SUITE_P(UnpairedSurrogates, StatusCheckBadName,
                         testing::Values(L"\xD83DVorlen",             // high, at the start
                                         L"\xDDA5Vorlen",             // low, at the start
                                         L"Vorlen \xD83D One",        // high, in the middle
                                         L"Vorlen \xDDA5 One",        // low, in the middle
                                         L"Vorlen\xD83D",             // high, at the end
                                         L"Vorlen\xDDA5",             // low, at the end
                                         L"Vorlen \xDDA5\xD83D",      // reversed
                                         L"Vorlen \xD83D\xD83D\xDDA5" // high, before a pair
                                         ));

TEST_F(StatusCheckTextTest, does_not_convert_names_of_monitors_that_it_does_not_judge) {
    addOtherMonitor(uhdAt60, LR"(\\.\DISPLAY1)");
    desktop.displayPaths.all.back().friendlyName = L"Office \xD83D";
    addKitMonitor(uhdAt60, LR"(\\.\DISPLAY2)");
    addKitMonitor(uhdAt60, LR"(\\.\DISPLAY3)");
    desktop.displayPaths.all.back().friendlyName = L"Vorlen \xD83D";
    module.init();
    EXPECT_TRUE(check());
    EXPECT_EQ(judged(), LR"(\\.\DISPLAY2)");
}

} // namespace
} // namespace tests
