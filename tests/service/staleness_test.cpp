#include "tests/fixtures/module_test.h"
#include "tests/support/allocations.h"

#include <gmock/gmock.h>

#include <functional>
#include <string>
#include <utility>

namespace tests {
namespace {

using testing::IsEmpty;
using namespace std::chrono_literals;

// A question about monitors, and the way in which it is asked.
using Question = std::pair<const char*, std::function<void(const ModuleUnderTest&)>>;

const Question questions[] = {
    Question("getMonitorList", [](const auto& m) { m.exports->getMonitorList(nullptr, 0); }),
    Question("getMonitorList_with_negative_room",
             [](const auto& m) {
                 MonitorListItem item{};
                 m.exports->getMonitorList(&item, -3);
             }),
    Question("getMonitorModelName", [](const auto& m) { m.exports->getMonitorModelName(); }),
    Question("getMonitorRect", [](const auto& m) { m.exports->getMonitorRect(); }),
    Question("table_getMonitorList", [](const auto& m) { m.monitorWrapper().getMonitorList(); }),
    Question("table_getCurrentMonitorName",
             [](const auto& m) { m.monitorWrapper().getCurrentMonitorName(); }),
};

// How old the list may be that questions are answered from.
class Staleness : public RunningModuleTest, public testing::WithParamInterface<Question> {
protected:
    void ask() const { GetParam().second(module); }

    // How often the monitors were enumerated since the last look.
    std::size_t enumerations() {
        const std::size_t count = desktop.journal.count("EnumDisplayMonitors");
        desktop.journal.clear();
        return count;
    }
};

// Promise (getMonitorList): For less than 500 ms after the monitors were read, questions about them
// are answered without any call of the display functions.
TEST_P(Staleness, answers_from_the_cache_for_half_a_second) {
    desktop.clock.advance(499ms);
    ask();
    desktop.clock.advance(1ms - 100ns);
    ask();
    EXPECT_THAT(desktop.displayCalls(), IsEmpty());
}

// Promise (getMonitorList): From exactly 500 ms on, `getMonitorList`, `getMonitorModelName` and
// `getMonitorRect` read the monitors again before they answer.
TEST_P(Staleness, reads_the_monitors_again_after_exactly_half_a_second) {
    desktop.clock.advance(500ms);
    ask();
    EXPECT_EQ(enumerations(), 1u);
}

TEST_P(Staleness, counts_the_age_from_the_end_of_the_reading) {
    desktop.journal.at("EnumDisplayMonitors", 1, [this] { desktop.clock.advance(300ms); });
    desktop.journal.at("VorlenCore::AddMonitorItem", 3, [this] { desktop.clock.advance(400ms); });
    desktop.clock.advance(500ms);
    ask();
    desktop.clock.advance(300ms);
    ask();
    desktop.clock.advance(199ms);
    ask();
    EXPECT_EQ(enumerations(), 1u);
    desktop.clock.advance(1ms);
    ask();
    EXPECT_EQ(enumerations(), 1u);
}

TEST_P(Staleness, answers_from_the_cache_when_the_clock_has_gone_back) {
    desktop.clock.advance(-1h);
    ask();
    EXPECT_THAT(desktop.displayCalls(), IsEmpty());
}

// Promise (getMonitorList): While there is no monitor, every question reads the monitors again.
TEST_P(Staleness, reads_the_monitors_each_time_while_there_are_none) {
    desktop.monitors.all.clear();
    module.exports->updateMonitorList();
    enumerations();
    for (int i = 0; i < 3; ++i) {
        ask();
        EXPECT_EQ(enumerations(), 1u);
    }
}

TEST_P(Staleness, takes_no_memory_to_answer_from_the_cache) {
    const Allocations allocations({module.image()});
    ask();
    EXPECT_EQ(allocations.requests(), 0u);
}

INSTANTIATE_TEST_SUITE_P(Questions, Staleness, testing::ValuesIn(questions),
                         [](const auto& question) { return std::string(question.param.first); });

} // namespace
} // namespace tests
