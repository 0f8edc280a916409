#include "tests/fixtures/status_check_test.h"

#include <gmock/gmock.h>

#include <stdexcept>
#include <string>
#include <utility>

namespace tests {
namespace {

using testing::IsEmpty;

const std::wstring kitDevice = LR"(\\.\DISPLAY2)";

void failOnPurpose() {
    throw std::runtime_error("planned");
}

class FailingStatusCheck : public StatusCheckTest {
protected:
    // An outcome that was there before.
    void checkWithoutKitMonitor() {
        module.runtime.resetCore();
        module.exports->updateMonitorList();
        EXPECT_FALSE(check());
        EXPECT_EQ(status(), 17);
        module.runtime.makeModelKnown("Vorlen");
        log.lines.clear();
    }

    void expectPassedCheck() {
        log.lines.clear();
        EXPECT_TRUE(check());
        EXPECT_EQ(status(), 16);
        EXPECT_EQ(judged(), kitDevice);
        EXPECT_EQ(log.lines.size(), 4u);
    }
};

TEST_F(FailingStatusCheck, keeps_the_earlier_outcome_when_the_runtime_throws) {
    addOtherMonitor(uhdAt60, LR"(\\.\DISPLAY1)");
    addKitMonitor(uhdAt60, kitDevice);
    module.init();
    checkWithoutKitMonitor();
    desktop.journal.at("VorlenCore::GetVorlenModelName", 2, failOnPurpose);
    EXPECT_THROW(check(), std::runtime_error);
    EXPECT_EQ(status(), 17);
    EXPECT_EQ(judged(), L"");
    EXPECT_THAT(log.lines, IsEmpty());
    expectPassedCheck();
}

TEST_F(FailingStatusCheck, has_an_outcome_only_if_the_last_line_is_what_throws) {
    addKitMonitor(uhdAt60, kitDevice);
    module.init();
    for (std::size_t line = 1; line <= 4; ++line) {
        checkWithoutKitMonitor();
        desktop.journal.at("vllogger::log", line, failOnPurpose);
        EXPECT_THROW(check(), std::runtime_error);
        EXPECT_EQ(status(), line == 4 ? 16 : 17);
        EXPECT_EQ(judged(), line == 4 ? kitDevice : L"");
        EXPECT_EQ(log.lines.size(), line - 1);
        expectPassedCheck();
    }
}

// Promise (checkMonitorStatus): A name or serial number with an unpaired surrogate leaves as
// `std::range_error`. The status and the judged monitor stay those of the check before.
TEST_F(FailingStatusCheck, throws_for_texts_that_are_not_utf16) {
    const std::pair<std::wstring, std::wstring> texts[] = {{L"Vorlen \xD83D One", L"SN-0042"},
                                                           {L"Vorlen One", L"SN\xD83D"}};
    addKitMonitor(fullHdAt60, kitDevice);
    module.init();
    EXPECT_FALSE(check());
    log.lines.clear();
    for (const auto& [friendlyName, serialNumber] : texts) {
        addKitMonitorWithTexts(friendlyName, serialNumber);
        std::swap(desktop.monitors.all.front(), desktop.monitors.all.back());
        module.exports->updateMonitorList();
        try {
            check();
            ADD_FAILURE() << "nothing was thrown";
        } catch (const std::range_error& error) {
            EXPECT_STREQ(error.what(), "bad conversion");
        }
        EXPECT_EQ(status(), 18);
        EXPECT_EQ(judged(), kitDevice);
        EXPECT_THAT(log.lines, IsEmpty());
        desktop.monitors.all.erase(desktop.monitors.all.begin());
        desktop.displayPaths.all.pop_back();
    }
}

TEST_F(FailingStatusCheck, does_not_convert_names_of_other_monitors) {
    addOtherMonitor(uhdAt60, LR"(\\.\DISPLAY1)");
    desktop.displayPaths.all.back().friendlyName = L"Office \xD83D";
    addKitMonitor(uhdAt60, kitDevice);
    addKitMonitor(uhdAt60, LR"(\\.\DISPLAY3)");
    desktop.displayPaths.all.back().friendlyName = L"Vorlen \xD83D";
    module.init();
    expectPassedCheck();
}

// Promise (Threads and callbacks): A debug callback of the log may have the monitors read during
// `checkMonitorStatus`. The check judges the monitor that it has logged.
TEST_F(StatusCheckTest, judges_what_it_has_logged_although_the_log_updates) {
    SimulatedMonitor& monitor = addKitMonitor(uhdAt60);
    module.init();
    desktop.journal.at("vllogger::log", 1, [&] {
        monitor.mode = fullHdAt60;
        module.exports->updateMonitorList();
    });
    EXPECT_TRUE(check());
    EXPECT_EQ(log.lines.at(1).text, "Monitor Resolution : 3840 x 2160");
    EXPECT_EQ(log.lines.at(3).text, "The monitor exists.");
    EXPECT_FALSE(check());
}

TEST_F(StatusCheckTest, returns_its_own_outcome_although_the_log_checks) {
    SimulatedMonitor& monitor = addKitMonitor(uhdAt60);
    module.init();
    desktop.journal.at("vllogger::log", 4, [&] {
        monitor.mode = fullHdAt60;
        module.exports->updateMonitorList();
        EXPECT_FALSE(check());
    });
    EXPECT_TRUE(check());
    EXPECT_EQ(status(), 18) << "that of the check that judged last";
}

} // namespace
} // namespace tests
