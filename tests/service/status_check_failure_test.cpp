#include "tests/service/status_check.h"
#include "tests/support/allocations.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <new>
#include <stdexcept>
#include <string>
#include <vector>

namespace tests {
namespace {

using namespace std::chrono_literals;
using testing::AnyOf;
using testing::IsEmpty;

// Longer than what a string holds without memory of its own.
const std::wstring longDeviceName = LR"(\\.\DISPLAY-BEHIND-THE-DOCK)";

const std::vector<LogLine> linesOfPassedCheck = {
    {debugLevel, "Monitor Info : Vorlen One, "},
    {debugLevel, "Monitor Resolution : 3840 x 2160"},
    {debugLevel, "Monitor FRAMERATE : 60"},
    {infoLevel, "The monitor exists."},
};

void failOnPurpose() {
    throw std::runtime_error("planned");
}

class StatusCheckFailureTest : public StatusCheckTest {
protected:
    // What is to be seen after a failure at any place: an outcome that was there before.
    void checkWithoutKitMonitor() {
        module.runtime.resetCore();
        module.exports->updateMonitorList();
        EXPECT_FALSE(check());
        EXPECT_EQ(status(), 17);
        module.runtime.makeModelKnown("Vorlen");
        log.lines.clear();
    }

    // Checks while the n-th request for memory fails. Returns whether there was one.
    bool checkWithoutMemory(std::size_t n) const {
        Allocations allocations({module.image()});
        allocations.failRequest(n);
        bool thrown = false;
        try {
            EXPECT_TRUE(check());
        } catch (const std::bad_alloc&) {
            thrown = true;
        }
        EXPECT_EQ(thrown, allocations.hasFailed());
        return thrown;
    }

    bool linesAreFirstOfPassedCheck() const {
        return log.lines.size() <= linesOfPassedCheck.size() &&
               std::equal(log.lines.begin(), log.lines.end(), linesOfPassedCheck.begin());
    }

    void expectPassedCheck() {
        log.lines.clear();
        EXPECT_TRUE(check());
        EXPECT_EQ(status(), 16);
        EXPECT_EQ(judged(), longDeviceName);
        EXPECT_EQ(log.lines, linesOfPassedCheck);
    }
};

TEST_F(StatusCheckFailureTest, passes_on_what_the_runtime_throws_about_models) {
    addOtherMonitor(uhdAt60, LR"(\\.\DISPLAY1)");
    addKitMonitor(uhdAt60, longDeviceName);
    module.init();
    checkWithoutKitMonitor();
    desktop.journal.at("VorlenCore::GetVorlenModelName", 2, failOnPurpose);
    EXPECT_THROW(check(), std::runtime_error);
    EXPECT_EQ(status(), 17);
    EXPECT_EQ(judged(), L"");
    EXPECT_THAT(log.lines, IsEmpty());
    expectPassedCheck();
}

TEST_F(StatusCheckFailureTest, passes_on_what_the_refresh_throws_and_refreshes_next_time) {
    addOtherMonitor(uhdAt60, LR"(\\.\DISPLAY1)");
    addKitMonitor(uhdAt60, longDeviceName);
    module.init();
    checkWithoutKitMonitor();
    desktop.clock.advance(500ms);
    desktop.journal.at("VorlenCore::AddMonitorItem", 2, failOnPurpose);
    EXPECT_THROW(check(), std::runtime_error);
    EXPECT_EQ(status(), 17);
    EXPECT_THAT(log.lines, IsEmpty());
    desktop.journal.clear();
    expectPassedCheck();
    EXPECT_EQ(desktop.journal.count("EnumDisplayMonitors"), 1u);
}

TEST_F(StatusCheckFailureTest, passes_on_what_the_logger_throws_with_the_outcome_known_or_not) {
    addKitMonitor(uhdAt60, longDeviceName);
    module.init();
    for (std::size_t line = 1; line <= linesOfPassedCheck.size(); ++line) {
        checkWithoutKitMonitor();
        desktop.journal.at("vllogger::log", line, failOnPurpose);
        EXPECT_THROW(check(), std::runtime_error);
        const bool known = line == linesOfPassedCheck.size();
        EXPECT_EQ(status(), known ? 16 : 17);
        EXPECT_EQ(judged(), known ? longDeviceName : L"");
        EXPECT_EQ(log.lines.size(), line - 1);
        expectPassedCheck();
    }
}

TEST_F(StatusCheckFailureTest, survives_exhausted_memory_anywhere_on_a_young_list) {
    addOtherMonitor(uhdAt60, LR"(\\.\DISPLAY1)");
    addKitMonitor(uhdAt60, longDeviceName);
    module.init();
    checkWithoutKitMonitor();
    std::size_t failures = 0;
    while (checkWithoutMemory(failures + 1)) {
        ++failures;
        EXPECT_THAT(status(), AnyOf(17, 16));
        EXPECT_TRUE(linesAreFirstOfPassedCheck());
        expectPassedCheck();
        checkWithoutKitMonitor();
    }
    // The device name, the four messages and what they are put together from.
    EXPECT_GE(failures, 5u);
    expectPassedCheck();
}

TEST_F(StatusCheckFailureTest, survives_exhausted_memory_anywhere_while_it_refreshes) {
    addOtherMonitor(uhdAt60, LR"(\\.\DISPLAY1)");
    addKitMonitor(uhdAt60, longDeviceName);
    module.init();
    checkWithoutKitMonitor();
    desktop.clock.advance(500ms);
    std::size_t failures = 0;
    while (checkWithoutMemory(failures + 1)) {
        ++failures;
        EXPECT_THAT(status(), AnyOf(17, 16));
        EXPECT_TRUE(linesAreFirstOfPassedCheck());
        expectPassedCheck();
        checkWithoutKitMonitor();
        desktop.clock.advance(500ms);
    }
    EXPECT_GE(failures, 15u);
    expectPassedCheck();
}

TEST_F(StatusCheckFailureTest, keeps_no_memory_of_a_check_on_a_young_list) {
    addKitMonitor(uhdAt60, longDeviceName);
    module.init();
    const Allocations allocations({module.image()});
    EXPECT_TRUE(check());
    EXPECT_GT(allocations.requests(), 0u);
    EXPECT_EQ(allocations.outstanding(), 0u);
}

} // namespace
} // namespace tests
