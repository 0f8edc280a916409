#include "tests/fixtures/module_test.h"
#include "tests/fixtures/service_members.h"
#include "tests/fixtures/status_check_test.h"
#include "tests/hostile/poisoned_memory.h"

#include <gmock/gmock.h>

#include <chrono>
#include <functional>
#include <stdexcept>
#include <string>

namespace tests {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

// A runtime that calls the module while the module updates the runtime's list of monitors.
class ReenteringRuntime : public RunningModuleTest {
protected:
    // Runs the action at every call of the core's function from now on.
    void atEvery(const std::string& function, const std::function<void()>& action) {
        desktop.journal.at("VorlenCore::" + function, 1, [this, function, action] {
            if (++depth > 3) {
                throw std::logic_error("the update recurses");
            }
            atEvery(function, action);
            action();
            --depth;
        });
    }

    int listed() const { return module.exports->getMonitorList(nullptr, 0); }

    void expectThreeMonitorsReadOnce() {
        EXPECT_EQ(desktop.journal.count("EnumDisplayMonitors"), 1u);
        EXPECT_EQ(module.runtime.monitorItems().size(), 3u);
        desktop.journal.dropPlans();
        desktop.journal.clear();
        EXPECT_EQ(listed(), 3);
        EXPECT_THAT(desktop.displayCalls(), IsEmpty()) << "the update counts as complete";
    }

    int depth = 0;
};

// Promise (Threads and callbacks): While an update gives the runtime the monitors, the runtime may
// ask for them: it gets those that it was given so far. Another update does nothing.
TEST_F(ReenteringRuntime, gets_the_monitors_that_it_was_given_so_far) {
    std::vector<int> answers;
    const auto ask = [&] {
        answers.push_back(listed());
    };
    atEvery("ClearMonitorList", ask);
    atEvery("AddMonitorItem", ask);
    module.exports->updateMonitorList();
    EXPECT_THAT(answers, ElementsAre(0, 1, 2, 3));
    expectThreeMonitorsReadOnce();
}

TEST_F(ReenteringRuntime, may_ask_for_anything_while_a_stale_list_is_updated) {
    desktop.clock.advance(1s);
    atEvery("AddMonitorItem", [&] {
        listed();
        module.exports->getMonitorModelName();
        module.exports->getMonitorRect();
        module.exports->checkMonitorStatus();
    });
    EXPECT_EQ(listed(), 3);
    expectThreeMonitorsReadOnce();
}

TEST_F(ReenteringRuntime, starts_no_second_update_while_one_runs) {
    atEvery("AddMonitorItem", [&] { module.exports->updateMonitorList(); });
    module.exports->updateMonitorList();
    expectThreeMonitorsReadOnce();
}

TEST_F(ReenteringRuntime, leaves_an_update_unfinished_when_it_throws) {
    desktop.journal.at("VorlenCore::AddMonitorItem", 2, [&] {
        EXPECT_EQ(listed(), 2);
        throw std::runtime_error("planned");
    });
    EXPECT_THROW(module.exports->updateMonitorList(), std::runtime_error);
    desktop.journal.clear();
    EXPECT_EQ(listed(), 3);
    expectThreeMonitorsReadOnce();
}

TEST_F(ReenteringRuntime, may_update_the_threads_list_while_it_is_given_monitors) {
    const PoisonedMemory poison(module.image());
    desktop.journal.at("VorlenCore::AddMonitorItem", 1, [&] {
        for (int i = 0; i < 50; ++i) {
            desktop.addMonitor(L"late " + std::to_wstring(i), L"name", smallMode);
        }
        module.windowEnumWrapper().updateMonitorList();
        desktop.monitors.all.clear();
        module.windowEnumWrapper().updateMonitorList();
    });
    module.exports->updateMonitorList();
    EXPECT_EQ(module.runtime.monitorItems().size(), 3u);
    EXPECT_EQ(cachedMonitors(service()).size(), 3u);
    EXPECT_EQ(cachedMonitors(service())[2].deviceName, display3);
}

// The runtime, or a callback of the host that gets the lines of the log, calls the module while a
// check runs.
class ReenteringStatusCheck : public StatusCheckTest {
protected:
    void SetUp() override {
        addOtherMonitor(fullHdAt60, LR"(\\.\DISPLAY-BESIDE-THE-KIT)");
        addKitMonitor(uhdAt60, LR"(\\.\DISPLAY-OF-THE-KIT)");
        module.init();
    }

    const PoisonedMemory poison{module.image()};
};

TEST_F(ReenteringStatusCheck, judges_the_list_that_it_began_with) {
    desktop.journal.at("VorlenCore::GetVorlenModelName", 1, [&] {
        for (int i = 0; i < 50; ++i) {
            desktop.addMonitor(L"late " + std::to_wstring(i), L"name", smallMode);
        }
        module.exports->updateMonitorList();
    });
    EXPECT_TRUE(check());
    EXPECT_EQ(status(), 16);
    EXPECT_EQ(judged(), LR"(\\.\DISPLAY-OF-THE-KIT)");
}

TEST_F(ReenteringStatusCheck, survives_monitors_that_are_removed_while_it_runs) {
    desktop.journal.at("VorlenCore::GetVorlenModelName", 1, [&] {
        desktop.monitors.all.clear();
        module.exports->updateMonitorList();
    });
    EXPECT_FALSE(check());
    EXPECT_EQ(status(), 17);
}

// Promise (Threads and callbacks): A callback that gets the lines of the log may shut the library
// down. A check that runs completes, and its outcome is kept.
TEST_F(ReenteringStatusCheck, completes_when_the_log_shuts_the_library_down) {
    for (std::size_t line = 1; line <= 4; ++line) {
        SCOPED_TRACE(line);
        log.lines.clear();
        desktop.journal.at("vllogger::log", line, [&] { module.cleanup(); });
        EXPECT_TRUE(check());
        EXPECT_EQ(status(), 16);
        EXPECT_EQ(log.lines.size(), 4u);
        EXPECT_EQ(module.exports->getMonitorData(), nullptr);
        module.init();
    }
}

TEST_F(ReenteringStatusCheck, completes_when_the_core_shuts_the_library_down) {
    for (std::size_t call = 1; call <= 2; ++call) {
        SCOPED_TRACE(call);
        desktop.journal.at("VorlenCore::GetVorlenModelName", call, [&] { module.cleanup(); });
        EXPECT_TRUE(check());
        EXPECT_EQ(status(), 16);
        EXPECT_EQ(module.exports->getMonitorData(), nullptr);
        module.init();
    }
}

TEST_F(ReenteringStatusCheck, finds_nothing_though_the_core_shuts_the_library_down) {
    module.runtime.resetCore();
    desktop.journal.at("VorlenCore::GetVorlenModelName", 1, [&] { module.cleanup(); });
    EXPECT_FALSE(check());
    EXPECT_EQ(status(), 17);
}

} // namespace
} // namespace tests
