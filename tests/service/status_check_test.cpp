#include "tests/fixtures/status_check_test.h"

#include <gmock/gmock.h>

#include <chrono>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace tests {
namespace {

using namespace std::chrono_literals;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

const LogLine monitorOk{infoLevel, "The monitor exists."};
const LogLine resolutionIncorrect{criticalLevel, "The monitor resolution is incorrect."};
const LogLine frameRateIncorrect{criticalLevel, "The monitor framerate is not correct."};

const LogLine& outcomeLine(std::int32_t status) {
    return status == 16 ? monitorOk : status == 18 ? resolutionIncorrect : frameRateIncorrect;
}

// A display mode as it is set, what a check says of it in its lines, and the status code.
struct Judgement {
    DWORD width;
    DWORD height;
    DWORD frequency;
    std::string resolution;
    std::string refreshRate;
    std::int32_t status;
};

const Judgement judgements[] = {
    {3840, 2160, 60, "3840 x 2160", "60", 16},
    {3840, 2160, 59, "3840 x 2160", "59", 16},
    {3840, 2160, 58, "3840 x 2160", "58", 19},
    {3840, 2160, 0, "3840 x 2160", "0", 19},
    {3839, 2160, 60, "3839 x 2160", "60", 18},
    {3840, 2159, 60, "3840 x 2159", "60", 18},
    {3840, 2159, 30, "3840 x 2159", "30", 18},
    {3841, 2161, 60, "3841 x 2161", "60", 16},
    {7680, 2160, 58, "7680 x 2160", "58", 19},
    {7680, 4320, 120, "7680 x 4320", "120", 16},
    {2160, 3840, 60, "2160 x 3840", "60", 18},
    {0x7FFFFFFF, 0x7FFFFFFF, 0x7FFFFFFF, "2147483647 x 2147483647", "2147483647", 16},
    {0x80000000, 2160, 60, "-2147483648 x 2160", "60", 18},
    {3840, 0xFFFFFFFF, 60, "3840 x -1", "60", 18},
    {3840, 2160, 0xFFFFFFC5, "3840 x 2160", "-59", 19},
};

// Promise (checkMonitorStatus): A kit monitor passes from 3840 x 2160 pixels and 59 Hz on: one that
// runs at 59.94 Hz reports 59. Nothing else is judged.
TEST_F(StatusCheckTest, judges_and_logs_size_and_refresh_rate) {
    SimulatedMonitor& monitor = addKitMonitor(uhdAt60);
    module.init();
    for (const Judgement& expected : judgements) {
        SCOPED_TRACE(expected.resolution + " at " + expected.refreshRate);
        monitor.mode = {
            .width = expected.width, .height = expected.height, .frequency = expected.frequency};
        module.exports->updateMonitorList();
        log.lines.clear();
        EXPECT_EQ(check(), expected.status == 16);
        EXPECT_EQ(status(), expected.status);
        EXPECT_EQ(judged(), LR"(\\.\DISPLAY1)");
        EXPECT_THAT(log.lines,
                    ElementsAre(LogLine{debugLevel, "Monitor Info : Vorlen One, "},
                                LogLine{debugLevel, "Monitor Resolution : " + expected.resolution},
                                LogLine{debugLevel, "Monitor FRAMERATE : " + expected.refreshRate},
                                outcomeLine(expected.status)));
    }
}

TEST_F(StatusCheckTest, judges_zeros_when_the_settings_cannot_be_read) {
    addKitMonitor(uhdAt60).mode.reset();
    module.init();
    EXPECT_FALSE(check());
    EXPECT_EQ(status(), 18);
    EXPECT_EQ(log.lines.at(1).text, "Monitor Resolution : 0 x 0");
    EXPECT_EQ(log.lines.at(2).text, "Monitor FRAMERATE : 0");
}

TEST_F(StatusCheckTest, logs_nothing_when_there_is_no_monitor) {
    module.init();
    EXPECT_FALSE(check());
    EXPECT_EQ(status(), 17);
    EXPECT_EQ(judged(), L"");
    EXPECT_THAT(log.lines, IsEmpty());
    EXPECT_THAT(core.texts, IsEmpty());
}

// Promise (checkMonitorStatus): A monitor that the runtime does not recognise is treated as if it
// were not connected, and nothing is logged.
TEST_F(StatusCheckTest, logs_nothing_when_no_monitor_is_recognised) {
    addOtherMonitor(uhdAt60, LR"(\\.\DISPLAY1)");
    addOtherMonitor(uhdAt60, LR"(\\.\DISPLAY2)");
    module.init();
    EXPECT_FALSE(check());
    EXPECT_EQ(status(), 17);
    EXPECT_EQ(judged(), L"");
    EXPECT_THAT(log.lines, IsEmpty());
    EXPECT_THAT(core.texts, ElementsAre(R"(\\.\DISPLAY1)", R"(\\.\DISPLAY2)"));
}

// Promise (checkMonitorStatus): The first recognised monitor in the order of the list is judged,
// although a later one would pass.
TEST_F(StatusCheckTest, judges_the_first_recognised_monitor_of_the_list) {
    DisplayMode atTheRight = fullHdAt60;
    atTheRight.x = 3840;
    addOtherMonitor(uhdAt60, LR"(\\.\DISPLAY3)");
    addKitMonitor(atTheRight, LR"(\\.\DISPLAY2)");
    addKitMonitor(uhdAt60, LR"(\\.\DISPLAY1)");
    module.init();
    EXPECT_FALSE(check());
    EXPECT_EQ(status(), 18);
    EXPECT_EQ(judged(), LR"(\\.\DISPLAY2)");
    EXPECT_EQ(log.lines.at(1).text, "Monitor Resolution : 1920 x 1080");
    EXPECT_THAT(core.texts, ElementsAre(R"(\\.\DISPLAY3)", R"(\\.\DISPLAY2)"));
}

TEST_F(StatusCheckTest, takes_any_number_of_models_for_a_kit_monitor) {
    module.runtime.makeModelKnown("One");
    addKitMonitor(uhdAt60);
    module.init();
    EXPECT_TRUE(check());
}

TEST_F(StatusCheckTest, asks_the_runtime_at_each_check) {
    addOtherMonitor(uhdAt60);
    module.init();
    EXPECT_FALSE(check());
    module.runtime.makeModelKnown("Office");
    EXPECT_TRUE(check());
}

TEST_F(StatusCheckTest, keeps_the_status_until_the_next_check) {
    SimulatedMonitor& monitor = addKitMonitor(uhdAt60);
    module.init();
    EXPECT_EQ(status(), -1);
    EXPECT_TRUE(check());
    monitor.mode = fullHdAt60;
    module.exports->updateMonitorList();
    EXPECT_EQ(status(), 16);
    EXPECT_FALSE(check());
    EXPECT_EQ(status(), 18);
}

TEST_F(StatusCheckTest, reads_only_a_stale_list_again) {
    SimulatedMonitor& monitor = addKitMonitor(fullHdAt60);
    module.init();
    monitor.mode = uhdAt60;
    desktop.clock.advance(500ms - 100ns);
    EXPECT_FALSE(check());
    desktop.clock.advance(100ns);
    EXPECT_TRUE(check());
    desktop.journal.clear();
    EXPECT_EQ(module.exports->getMonitorList(nullptr, 0), 1);
    EXPECT_THAT(desktop.displayCalls(), IsEmpty()) << "the list is fresh for other questions, too";
}

TEST_F(StatusCheckTest, calls_nothing_of_the_system_but_the_clock_on_a_fresh_list) {
    addKitMonitor(uhdAt60);
    module.init();
    desktop.journal.clear();
    EXPECT_TRUE(check());
    auto calls = desktop.journal.calls();
    std::erase_if(calls, [](const std::string& call) {
        return call.starts_with("QueryPerformance") || call.starts_with("VorlenCore::") ||
               call == "vllogger::log";
    });
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(StatusCheckTest, writes_every_line_to_one_logger) {
    addKitMonitor(uhdAt60);
    module.init();
    EXPECT_TRUE(check());
    EXPECT_TRUE(check());
    EXPECT_EQ(log.loggers.size(), 8u);
    EXPECT_NE(log.loggers.at(0), nullptr);
    EXPECT_THAT(log.loggers, Each(log.loggers.at(0)));
}

TEST_F(StatusCheckTest, logs_whether_or_not_the_logger_is_ready) {
    addKitMonitor(uhdAt60);
    module.init();
    EXPECT_TRUE(check());
    auto* const logger = const_cast<vorlen::log::vllogger*>(log.loggers.at(0));
    bool& ready = *reinterpret_cast<bool*>(logger);
    const bool before = ready;
    for (const bool state : {false, true}) {
        ready = state;
        log.lines.clear();
        EXPECT_TRUE(check());
        EXPECT_EQ(log.lines.size(), 4u);
    }
    ready = before;
}

TEST_F(StatusCheckTest, sets_the_status_before_it_logs_the_outcome) {
    addKitMonitor(uhdAt60);
    module.init();
    std::vector<std::int32_t> seen;
    for (std::size_t line = 1; line <= 4; ++line) {
        desktop.journal.at("vllogger::log", line, [&] { seen.push_back(status()); });
    }
    EXPECT_TRUE(check());
    EXPECT_THAT(seen, ElementsAre(-1, -1, -1, 16));
}

TEST_F(StatusCheckTest, logs_name_and_serial_number_in_utf8) {
    addKitMonitorWithTexts(L"Vorlen \u00E9\u3042\U0001F5A5", L"\u00E9\u3042\U0001F5A5");
    module.init();
    EXPECT_TRUE(check());
    const std::string utf8 = "\xC3\xA9\xE3\x81\x82\xF0\x9F\x96\xA5";
    EXPECT_EQ(log.lines.at(0).text, "Monitor Info : Vorlen " + utf8 + ", " + utf8);
    EXPECT_EQ(module.runtime.monitorItems().at(0).friendlyName, "Vorlen \xE9\x42\x3D\xA5");
    EXPECT_EQ(module.runtime.monitorItems().at(0).monitorId, "\xE9\x42\x3D\xA5");
}

} // namespace
} // namespace tests
