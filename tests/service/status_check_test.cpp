#include "tests/service/status_check.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

namespace tests {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

const LogLine monitorOk{infoLevel, "The monitor exists."};
const LogLine resolutionIncorrect{criticalLevel, "The monitor resolution is incorrect."};
const LogLine frameRateIncorrect{criticalLevel, "The monitor framerate is not correct."};

// A display mode as it is set, what a check says of it in its lines, and the status code.
struct Judgement {
    std::string name;
    DWORD width;
    DWORD height;
    DWORD frequency;
    std::string resolution;
    std::string refreshRate;
    std::int32_t status;
};

void PrintTo(const Judgement& judgement, std::ostream* out) {
    *out << judgement.resolution << " at " << judgement.refreshRate;
}

const LogLine& outcomeLine(std::int32_t status) {
    return status == 16 ? monitorOk : status == 18 ? resolutionIncorrect : frameRateIncorrect;
}

class StatusCheckJudgement : public StatusCheckTest,
                             public testing::WithParamInterface<Judgement> {};

TEST_P(StatusCheckJudgement, is_logged_kept_and_returned) {
    const Judgement& expected = GetParam();
    addKitMonitor(
        {.width = expected.width, .height = expected.height, .frequency = expected.frequency});
    module.init();
    EXPECT_EQ(check(), expected.status == 16);
    EXPECT_EQ(status(), expected.status);
    EXPECT_EQ(judged(), LR"(\\.\DISPLAY1)");
    EXPECT_THAT(log.lines,
                ElementsAre(LogLine{debugLevel, "Monitor Info : Vorlen One, "},
                            LogLine{debugLevel, "Monitor Resolution : " + expected.resolution},
                            LogLine{debugLevel, "Monitor FRAMERATE : " + expected.refreshRate},
                            outcomeLine(expected.status)));
}

INSTANTIATE_TEST_SUITE_P(
    Modes, StatusCheckJudgement,
    testing::Values(
        Judgement{"Uhd60", 3840, 2160, 60, "3840 x 2160", "60", 16},
        Judgement{"Uhd59", 3840, 2160, 59, "3840 x 2160", "59", 16},
        Judgement{"Uhd120", 3840, 2160, 120, "3840 x 2160", "120", 16},
        Judgement{"Uhd58", 3840, 2160, 58, "3840 x 2160", "58", 19},
        Judgement{"Uhd30", 3840, 2160, 30, "3840 x 2160", "30", 19},
        Judgement{"Uhd1", 3840, 2160, 1, "3840 x 2160", "1", 19},
        Judgement{"Uhd0", 3840, 2160, 0, "3840 x 2160", "0", 19},
        Judgement{"OneColumnShort", 3839, 2160, 60, "3839 x 2160", "60", 18},
        Judgement{"OneRowShort", 3840, 2159, 60, "3840 x 2159", "60", 18},
        Judgement{"OneColumnAndRowShort", 3839, 2159, 60, "3839 x 2159", "60", 18},
        Judgement{"OneColumnAndRowMore", 3841, 2161, 60, "3841 x 2161", "60", 16},
        Judgement{"DoubleWidth", 7680, 2160, 60, "7680 x 2160", "60", 16},
        Judgement{"DoubleWidthSlow", 7680, 2160, 58, "7680 x 2160", "58", 19},
        Judgement{"DoubleWidthAndHeight", 7680, 4320, 60, "7680 x 4320", "60", 16},
        Judgement{"Portrait", 2160, 3840, 60, "2160 x 3840", "60", 18},
        Judgement{"FullHd", 1920, 1080, 60, "1920 x 1080", "60", 18},
        Judgement{"LargestNumbers", 0x7FFFFFFF, 0x7FFFFFFF, 0x7FFFFFFF, "2147483647 x 2147483647",
                  "2147483647", 16},
        Judgement{"NegativeWidth", 0x80000000, 2160, 60, "-2147483648 x 2160", "60", 18},
        Judgement{"NegativeHeight", 3840, 0xFFFFFFFF, 60, "3840 x -1", "60", 18},
        Judgement{"NegativeRefreshRate", 3840, 2160, 0xFFFFFFC5, "3840 x 2160", "-59", 19}),
    [](const auto& test) { return test.param.name; });

TEST_F(StatusCheckTest, finds_no_monitor_on_an_empty_desktop_and_logs_nothing) {
    module.init();
    EXPECT_FALSE(check());
    EXPECT_EQ(status(), 17);
    EXPECT_EQ(judged(), L"");
    EXPECT_THAT(log.lines, IsEmpty());
    EXPECT_THAT(core.texts, IsEmpty());
}

TEST_F(StatusCheckTest, takes_a_monitor_that_is_not_recognised_for_none_and_logs_nothing) {
    addOtherMonitor(uhdAt60);
    module.init();
    EXPECT_FALSE(check());
    EXPECT_EQ(status(), 17);
    EXPECT_EQ(judged(), L"");
    EXPECT_THAT(log.lines, IsEmpty());
}

TEST_F(StatusCheckTest, does_not_look_at_the_refresh_rate_of_a_wrong_resolution) {
    addKitMonitor({.width = 3840, .height = 2159, .frequency = 30});
    module.init();
    EXPECT_FALSE(check());
    EXPECT_EQ(status(), 18);
    EXPECT_THAT(log.lines,
                ElementsAre(LogLine{debugLevel, "Monitor Info : Vorlen One, "},
                            LogLine{debugLevel, "Monitor Resolution : 3840 x 2159"},
                            LogLine{debugLevel, "Monitor FRAMERATE : 30"}, resolutionIncorrect));
}

TEST_F(StatusCheckTest, judges_a_monitor_whose_settings_cannot_be_read_by_zeros) {
    addKitMonitor(uhdAt60).mode.reset();
    module.init();
    EXPECT_FALSE(check());
    EXPECT_EQ(status(), 18);
    EXPECT_THAT(log.lines,
                ElementsAre(LogLine{debugLevel, "Monitor Info : Vorlen One, "},
                            LogLine{debugLevel, "Monitor Resolution : 0 x 0"},
                            LogLine{debugLevel, "Monitor FRAMERATE : 0"}, resolutionIncorrect));
}

TEST_F(StatusCheckTest, judges_the_first_recognised_monitor_although_a_later_one_would_pass) {
    addKitMonitor(fullHdAt60, LR"(\\.\DISPLAY1)");
    addKitMonitor(uhdAt60, LR"(\\.\DISPLAY2)");
    module.init();
    EXPECT_FALSE(check());
    EXPECT_EQ(status(), 18);
    EXPECT_EQ(judged(), LR"(\\.\DISPLAY1)");
    EXPECT_EQ(log.lines.at(1), (LogLine{debugLevel, "Monitor Resolution : 1920 x 1080"}));
    EXPECT_THAT(core.texts, ElementsAre(R"(\\.\DISPLAY1)"));
}

TEST_F(StatusCheckTest, goes_by_the_order_of_the_list_and_not_by_the_position_on_the_desktop) {
    DisplayMode right = fullHdAt60;
    right.x = 3840;
    addKitMonitor(right, LR"(\\.\DISPLAY2)");
    addKitMonitor(uhdAt60, LR"(\\.\DISPLAY1)");
    module.init();
    EXPECT_FALSE(check());
    EXPECT_EQ(judged(), LR"(\\.\DISPLAY2)");
}

TEST_F(StatusCheckTest, finds_a_recognised_monitor_behind_others_and_asks_in_order_until_then) {
    addOtherMonitor(fullHdAt60, LR"(\\.\DISPLAY3)");
    addOtherMonitor(uhdAt60, LR"(\\.\DISPLAY1)");
    addKitMonitor({.width = 7680, .height = 2160, .frequency = 60}, LR"(\\.\DISPLAY4)");
    addKitMonitor(uhdAt60, LR"(\\.\DISPLAY2)");
    module.init();
    EXPECT_TRUE(check());
    EXPECT_EQ(status(), 16);
    EXPECT_EQ(judged(), LR"(\\.\DISPLAY4)");
    EXPECT_EQ(log.lines.at(1), (LogLine{debugLevel, "Monitor Resolution : 7680 x 2160"}));
    EXPECT_THAT(core.texts, ElementsAre(R"(\\.\DISPLAY3)", R"(\\.\DISPLAY1)", R"(\\.\DISPLAY4)"));
    EXPECT_EQ(desktop.journal.count("VorlenCore::GetVorlenModelName"), 3u);
}

TEST_F(StatusCheckTest, asks_for_every_monitor_when_none_is_recognised) {
    addOtherMonitor(uhdAt60, LR"(\\.\DISPLAY1)");
    addOtherMonitor(uhdAt60, LR"(\\.\DISPLAY2)");
    module.init();
    EXPECT_FALSE(check());
    EXPECT_THAT(core.texts, ElementsAre(R"(\\.\DISPLAY1)", R"(\\.\DISPLAY2)"));
}

TEST_F(StatusCheckTest, takes_any_number_of_recognised_models_for_a_hit) {
    module.runtime.makeModelKnown("One");
    addKitMonitor(uhdAt60);
    module.init();
    EXPECT_TRUE(check());
    EXPECT_EQ(status(), 16);
}

TEST_F(StatusCheckTest, asks_the_runtime_anew_each_time) {
    addOtherMonitor(uhdAt60);
    module.init();
    EXPECT_FALSE(check());
    module.runtime.makeModelKnown("Office");
    EXPECT_TRUE(check());
    EXPECT_EQ(status(), 16);
}

TEST_F(StatusCheckTest, keeps_the_outcome_of_the_last_of_several_checks) {
    SimulatedMonitor& monitor = addKitMonitor(uhdAt60);
    module.init();
    const auto checkAt = [&](const DisplayMode& mode) {
        monitor.mode = mode;
        module.exports->updateMonitorList();
        return check();
    };
    EXPECT_EQ(status(), -1);
    EXPECT_TRUE(check());
    EXPECT_EQ(status(), 16);
    EXPECT_FALSE(checkAt(fullHdAt60));
    EXPECT_EQ(status(), 18);
    EXPECT_FALSE(checkAt({.width = 3840, .height = 2160, .frequency = 30}));
    EXPECT_EQ(status(), 19);
    EXPECT_TRUE(checkAt({.width = 3840, .height = 2160, .frequency = 59}));
    EXPECT_EQ(status(), 16);
    desktop.monitors.all.clear();
    module.exports->updateMonitorList();
    EXPECT_EQ(status(), 16);
    EXPECT_FALSE(check());
    EXPECT_EQ(status(), 17);
}

TEST_F(StatusCheckTest, writes_every_line_of_every_check_to_the_one_logger) {
    addKitMonitor(uhdAt60);
    module.init();
    EXPECT_TRUE(check());
    EXPECT_TRUE(check());
    EXPECT_EQ(log.loggers.size(), 8u);
    EXPECT_NE(log.loggers.at(0), nullptr);
    EXPECT_THAT(log.loggers, Each(log.loggers.at(0)));
}

TEST_F(StatusCheckTest, logs_whether_or_not_the_logger_says_that_it_is_ready) {
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

TEST_F(StatusCheckTest, has_set_the_status_when_it_logs_the_outcome_and_not_before) {
    addKitMonitor(uhdAt60);
    module.init();
    std::vector<std::int32_t> seen;
    for (std::size_t line = 1; line <= 4; ++line) {
        desktop.journal.at("vllogger::log", line, [&] { seen.push_back(status()); });
    }
    EXPECT_TRUE(check());
    EXPECT_THAT(seen, ElementsAre(-1, -1, -1, 16));
}

} // namespace
} // namespace tests
