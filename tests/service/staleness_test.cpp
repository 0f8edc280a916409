#include "tests/support/allocations.h"
#include "tests/fixtures/module_test.h"

#include <gmock/gmock.h>

#include <functional>

namespace tests {
namespace {

using testing::IsEmpty;
using namespace std::chrono_literals;

// One question about monitors, in one of the ways in which it can be asked.
struct Question {
    const char* name;
    std::function<void(const ModuleUnderTest&)> ask;
};

class MonitorQuestion : public RunningModuleTest, public testing::WithParamInterface<Question> {
protected:
    void ask() const { GetParam().ask(module); }

    // How often the monitors were enumerated for questions asked since the last look.
    std::size_t enumerations() {
        const std::size_t count = desktop.journal.count("EnumDisplayMonitors");
        desktop.journal.clear();
        return count;
    }
};

TEST_P(MonitorQuestion, is_answered_from_the_cache_for_half_a_second) {
    desktop.clock.advance(499ms);
    ask();
    desktop.clock.advance(999'900ns);
    ask();
    EXPECT_THAT(desktop.displayCalls(), IsEmpty());
}

TEST_P(MonitorQuestion, is_answered_from_the_cache_when_the_clock_lies_behind_the_last_reading) {
    desktop.clock.advance(-1h);
    ask();
    EXPECT_THAT(desktop.displayCalls(), IsEmpty());
}

TEST_P(MonitorQuestion, reads_the_monitors_anew_after_exactly_half_a_second) {
    desktop.clock.advance(500ms);
    ask();
    EXPECT_EQ(enumerations(), 1u);
}

TEST_P(MonitorQuestion, reads_the_monitors_anew_after_more_than_half_a_second) {
    desktop.clock.advance(501ms);
    ask();
    EXPECT_EQ(enumerations(), 1u);
    desktop.clock.advance(24h);
    ask();
    EXPECT_EQ(enumerations(), 1u);
}

TEST_P(MonitorQuestion, reads_the_monitors_once_for_two_questions_100_ms_apart) {
    desktop.clock.advance(1s);
    ask();
    desktop.clock.advance(100ms);
    ask();
    EXPECT_EQ(enumerations(), 1u);
}

TEST_P(MonitorQuestion, reads_the_monitors_twice_for_two_questions_600_ms_apart) {
    desktop.clock.advance(1s);
    ask();
    desktop.clock.advance(600ms);
    ask();
    EXPECT_EQ(enumerations(), 2u);
}

TEST_P(MonitorQuestion, does_not_keep_the_list_fresh_by_being_asked) {
    for (int i = 0; i < 4; ++i) {
        desktop.clock.advance(125ms);
        ask();
    }
    EXPECT_EQ(enumerations(), 1u);
}

TEST_P(MonitorQuestion, counts_the_age_from_the_end_of_the_reading) {
    desktop.journal.at("EnumDisplayMonitors", 1, [this] { desktop.clock.advance(300ms); });
    desktop.journal.at("VorlenCore::AddMonitorItem", 3, [this] { desktop.clock.advance(400ms); });
    desktop.clock.advance(500ms);
    ask();
    desktop.clock.advance(499ms);
    ask();
    EXPECT_EQ(enumerations(), 1u);
    desktop.clock.advance(1ms);
    ask();
    EXPECT_EQ(enumerations(), 1u);
}

TEST_P(MonitorQuestion, reads_the_monitors_each_time_while_there_are_none) {
    desktop.monitors.all.clear();
    module.exports->updateMonitorList();
    enumerations();
    for (int i = 0; i < 3; ++i) {
        ask();
        EXPECT_EQ(enumerations(), 1u);
    }
}

TEST_P(MonitorQuestion, that_is_answered_from_the_cache_takes_no_memory) {
    const Allocations allocations({module.image()});
    ask();
    EXPECT_EQ(allocations.requests(), 0u);
}

INSTANTIATE_TEST_SUITE_P(Of, MonitorQuestion,
                         testing::Values(Question{"getMonitorList",
                                                  [](const auto& module) {
                                                      module.exports->getMonitorList(nullptr, 0);
                                                  }},
                                         Question{"getMonitorList_without_room",
                                                  [](const auto& module) {
                                                      MonitorListItem item{};
                                                      module.exports->getMonitorList(&item, 0);
                                                  }},
                                         Question{"getMonitorList_with_negative_room",
                                                  [](const auto& module) {
                                                      MonitorListItem item{};
                                                      module.exports->getMonitorList(&item, -3);
                                                  }},
                                         Question{"getMonitorModelName",
                                                  [](const auto& module) {
                                                      module.exports->getMonitorModelName();
                                                  }},
                                         Question{"getMonitorRect",
                                                  [](const auto& module) {
                                                      module.exports->getMonitorRect();
                                                  }},
                                         Question{"MonitorWrapper_getMonitorList",
                                                  [](const auto& module) {
                                                      module.monitorWrapper().getMonitorList();
                                                  }},
                                         Question{
                                             "MonitorWrapper_getCurrentMonitorName",
                                             [](const auto& module) {
                                                 module.monitorWrapper().getCurrentMonitorName();
                                             }}),
                         [](const auto& question) { return std::string(question.param.name); });

class FreshMonitorList : public RunningModuleTest {};

TEST_F(FreshMonitorList, costs_a_fixed_number_of_platform_calls) {
    // Three monitors, four paths.
    desktop.displayPaths.add(LR"(\\.\DISPLAY4)", L"D", L"d");
    module.exports->updateMonitorList();
    EXPECT_EQ(desktop.journal.count("EnumDisplayMonitors"), 1u);
    EXPECT_EQ(desktop.journal.count("GetMonitorInfoW"), 3u);
    EXPECT_EQ(desktop.journal.count("EnumDisplaySettingsW"), 3u);
    EXPECT_EQ(desktop.journal.count("GetDisplayConfigBufferSizes"), 1u);
    EXPECT_EQ(desktop.journal.count("QueryDisplayConfig"), 1u);
    EXPECT_EQ(desktop.journal.count("DisplayConfigGetDeviceInfo"), 8u);
    EXPECT_THAT(desktop.windowCalls(), IsEmpty());
}

TEST_F(FreshMonitorList, is_what_a_question_after_half_a_second_is_answered_from) {
    desktop.monitors.all.erase(desktop.monitors.all.begin());
    EXPECT_EQ(module.exports->getMonitorList(nullptr, 0), 3);
    desktop.clock.advance(500ms);
    EXPECT_EQ(module.exports->getMonitorList(nullptr, 0), 2);
    MonitorListItem first{};
    EXPECT_EQ(module.exports->getMonitorList(&first, 1), 1);
    EXPECT_STREQ(first.deviceName, display1);
}

TEST_F(FreshMonitorList, is_read_at_once_when_the_host_asks_for_it) {
    module.exports->updateMonitorList();
    module.exports->updateMonitorList();
    EXPECT_EQ(desktop.journal.count("EnumDisplayMonitors"), 2u);
}

TEST_F(FreshMonitorList, that_the_host_asked_for_is_fresh_for_half_a_second) {
    desktop.clock.advance(400ms);
    module.exports->updateMonitorList();
    desktop.journal.clear();
    desktop.clock.advance(499ms);
    module.exports->getMonitorList(nullptr, 0);
    EXPECT_THAT(desktop.displayCalls(), IsEmpty());
}

} // namespace
} // namespace tests
