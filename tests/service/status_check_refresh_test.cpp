#include "simulation/loaded_image.h"
#include "tests/service/status_check.h"
#include "tests/support/simulation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <cstring>
#include <deque>
#include <set>
#include <string>

namespace tests {
namespace {

using namespace std::chrono_literals;
using testing::IsEmpty;
using testing::Not;

class StatusCheckRefreshTest : public StatusCheckTest {
protected:
    std::size_t enumerations() const { return desktop.journal.count("EnumDisplayMonitors"); }
};

TEST_F(StatusCheckRefreshTest, reads_a_list_anew_that_is_half_a_second_old) {
    addKitMonitor(uhdAt60);
    module.init();
    desktop.journal.clear();
    desktop.clock.advance(500ms);
    EXPECT_TRUE(check());
    EXPECT_EQ(enumerations(), 1u);
}

TEST_F(StatusCheckRefreshTest, keeps_a_list_that_is_a_tick_younger) {
    addKitMonitor(uhdAt60);
    module.init();
    desktop.journal.clear();
    desktop.clock.advance(499ms);
    EXPECT_TRUE(check());
    desktop.clock.advance(1ms - 100ns);
    EXPECT_TRUE(check());
    EXPECT_EQ(enumerations(), 0u);
}

TEST_F(StatusCheckRefreshTest, reads_once_for_two_checks_that_are_less_than_half_a_second_apart) {
    addKitMonitor(uhdAt60);
    module.init();
    desktop.clock.advance(500ms);
    desktop.journal.clear();
    EXPECT_TRUE(check());
    desktop.clock.advance(400ms);
    EXPECT_TRUE(check());
    EXPECT_EQ(enumerations(), 1u);
    desktop.clock.advance(100ms);
    EXPECT_TRUE(check());
    EXPECT_EQ(enumerations(), 2u);
}

TEST_F(StatusCheckRefreshTest, judges_what_it_has_logged_though_the_log_has_the_list_read_anew) {
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

TEST_F(StatusCheckRefreshTest, returns_its_own_outcome_though_the_log_has_another_check_made) {
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

TEST_F(StatusCheckRefreshTest, reads_an_empty_list_anew_however_young_it_is) {
    module.init();
    desktop.journal.clear();
    EXPECT_FALSE(check());
    EXPECT_FALSE(check());
    EXPECT_EQ(enumerations(), 2u);
    addKitMonitor(uhdAt60);
    EXPECT_TRUE(check());
    EXPECT_EQ(status(), 16);
}

TEST_F(StatusCheckRefreshTest, judges_what_it_has_just_read) {
    SimulatedMonitor& monitor = addKitMonitor(fullHdAt60);
    module.init();
    EXPECT_FALSE(check());
    monitor.mode = uhdAt60;
    desktop.clock.advance(499ms);
    EXPECT_FALSE(check());
    EXPECT_EQ(status(), 18);
    desktop.clock.advance(1ms);
    EXPECT_TRUE(check());
    EXPECT_EQ(status(), 16);
}

TEST_F(StatusCheckRefreshTest, leaves_a_list_behind_that_is_young_for_others_too) {
    addKitMonitor(uhdAt60);
    module.init();
    desktop.clock.advance(10s);
    EXPECT_TRUE(check());
    desktop.journal.clear();
    EXPECT_EQ(module.exports->getMonitorList(nullptr, 0), 1);
    EXPECT_EQ(enumerations(), 0u);
}

// Stands for any platform function: the caller cleans up, whatever the arguments are.
std::size_t platformCalls = 0;

std::uintptr_t countPlatformCall() {
    ++platformCalls;
    return 0;
}

// Every function of the system that the image imports, but the clock and the C library.
std::set<std::string> platformFunctions(HMODULE image) {
    std::set<std::string> functions;
    for (const Import& import : LoadedImage(image).imports()) {
        if (_stricmp(import.library.c_str(), "vorlen_runtime.dll") != 0 &&
            _stricmp(import.library.c_str(), "msvcrt.dll") != 0) {
            functions.insert(import.function);
        }
    }
    functions.erase("QueryPerformanceCounter");
    functions.erase("QueryPerformanceFrequency");
    return functions;
}

TEST_F(StatusCheckRefreshTest,
       calls_nothing_of_the_platform_but_the_clock_while_the_list_is_young) {
    addKitMonitor(uhdAt60);
    module.init();
    const std::set<std::string> functions = platformFunctions(module.image());
    ASSERT_TRUE(functions.contains("EnumDisplayMonitors"));
    ASSERT_TRUE(functions.contains("CoCreateInstance"));
    {
        std::deque<ImportRedirect> redirects;
        for (const std::string& function : functions) {
            redirects.emplace_back(module.image(), function, addressOf(countPlatformCall));
        }
        platformCalls = 0;
        EXPECT_TRUE(check());
    }
    EXPECT_EQ(platformCalls, 0u);
    EXPECT_EQ(status(), 16);
    EXPECT_THAT(log.lines, Not(IsEmpty()));
}

TEST_F(StatusCheckRefreshTest, is_watched_by_a_count_that_would_notice_a_platform_call) {
    addKitMonitor(uhdAt60);
    module.init();
    desktop.clock.advance(500ms);
    platformCalls = 0;
    const ImportRedirect redirect(module.image(), "EnumDisplayMonitors",
                                  addressOf(countPlatformCall));
    EXPECT_FALSE(check());
    EXPECT_EQ(platformCalls, 1u);
}

} // namespace
} // namespace tests
