#include "tests/service/status_check.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cstddef>
#include <cstring>
#include <utility>
#include <vector>

namespace tests {
namespace {

using namespace std::chrono_literals;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::byte untouched{0xCD};

class StatusExportTest : public StatusCheckTest {
protected:
    StatusExportTest() { std::memset(&item, std::to_integer<int>(untouched), sizeof(item)); }

    bool getChecked() { return module.exports->getCheckedMonitor(&item); }

    std::vector<std::byte> bytesOfItem() const {
        const auto* const bytes = reinterpret_cast<const std::byte*>(&item);
        return {bytes, bytes + sizeof(item)};
    }

    void expectNoneJudged() {
        EXPECT_FALSE(getChecked());
        EXPECT_THAT(bytesOfItem(), Each(untouched));
    }

    MonitorListItem item{};
};

TEST_F(StatusExportTest, tells_an_unknown_status_before_the_first_check) {
    EXPECT_EQ(status(), -1);
    addKitMonitor(uhdAt60);
    module.init();
    EXPECT_EQ(status(), -1);
    expectNoneJudged();
}

TEST_F(StatusExportTest, check_does_nothing_without_a_service) {
    addKitMonitor(uhdAt60);
    EXPECT_FALSE(check());
    EXPECT_EQ(status(), -1);
    expectNoneJudged();
    EXPECT_THAT(desktop.journal.calls(), IsEmpty());
    EXPECT_THAT(log.lines, IsEmpty());
}

TEST_F(StatusExportTest, check_leaves_the_status_after_cleanup) {
    addKitMonitor(uhdAt60);
    module.init();
    EXPECT_TRUE(check());
    module.cleanup();
    EXPECT_EQ(status(), 16);
    desktop.journal.clear();
    EXPECT_FALSE(check());
    EXPECT_EQ(status(), 16);
    EXPECT_THAT(desktop.journal.calls(), IsEmpty());
}

TEST_F(StatusExportTest, a_new_service_has_the_status_of_the_one_before_but_has_judged_nothing) {
    addKitMonitor({.width = 3840, .height = 2160, .frequency = 30});
    module.init();
    EXPECT_FALSE(check());
    module.cleanup();
    module.init();
    EXPECT_EQ(status(), 19);
    expectNoneJudged();
}

TEST_F(StatusExportTest, a_library_loaded_anew_has_made_no_check) {
    addKitMonitor(uhdAt60);
    module.init();
    EXPECT_TRUE(check());
    module.unload();
    module.load();
    EXPECT_EQ(status(), -1);
}

TEST_F(StatusExportTest, nothing_but_the_check_is_logged) {
    addKitMonitor(uhdAt60);
    desktop.windows.add(L"a");
    module.init();
    const Exports& exports = *module.exports;
    const vorlen::MonitorWrapper& table = module.monitorWrapper();
    exports.updateMonitorList();
    EXPECT_EQ(exports.getMonitorList(&item, 1), 1);
    EXPECT_EQ(exports.getWindowList(nullptr, 0), 1);
    exports.setVorlenMonitorModelName("model", 5);
    exports.getMonitorModelName();
    exports.getVorlenMonitorModelName();
    exports.getMonitorRect();
    table.setVorlenModelName("model");
    table.getVorlenModelNameWide(LR"(\\.\DISPLAY1)");
    table.useWindowList(false);
    table.useWindowList(true);
    module.windowEnumWrapper().updateMonitorList();
    module.windowEnumWrapper().registerWindowComboBox(desktop.comboBoxes.add());
    desktop.eventHooks.deliver(EVENT_OBJECT_SHOW, desktop.windows.add(L"b").handle);
    module.cleanup();
    EXPECT_THAT(log.lines, IsEmpty());
}

TEST_F(StatusExportTest, asking_for_the_outcome_reads_nothing_anew) {
    SimulatedMonitor& monitor = addKitMonitor(uhdAt60);
    module.init();
    EXPECT_TRUE(check());
    desktop.clock.advance(10s);
    monitor.mode = fullHdAt60;
    desktop.journal.clear();
    log.lines.clear();
    EXPECT_EQ(status(), 16);
    EXPECT_TRUE(getChecked());
    EXPECT_EQ(item.width, 3840);
    EXPECT_THAT(desktop.journal.calls(), IsEmpty());
    EXPECT_THAT(log.lines, IsEmpty());
}

TEST_F(StatusExportTest, the_judged_monitor_is_written_whole_but_for_the_padding) {
    addOtherMonitor(fullHdAt60, LR"(\\.\DISPLAY1)");
    const SimulatedMonitor& kit = addKitMonitor(
        {.x = -3840, .y = 17, .width = 3840, .height = 2160, .frequency = 58}, LR"(\\.\DISPLAY2)");
    module.init();
    EXPECT_FALSE(check());
    EXPECT_TRUE(getChecked());
    EXPECT_EQ(item.handle, kit.handle);
    EXPECT_STREQ(item.deviceName, LR"(\\.\DISPLAY2)");
    EXPECT_STREQ(item.friendlyName, L"Vorlen One");
    EXPECT_STREQ(item.monitorId, L"");
    EXPECT_EQ(item.x, -3840);
    EXPECT_EQ(item.y, 17);
    EXPECT_EQ(item.width, 3840);
    EXPECT_EQ(item.height, 2160);
    EXPECT_EQ(item.refreshRate, 58);
    const std::vector<std::byte> bytes = bytesOfItem();
    EXPECT_THAT(std::vector(bytes.begin() + 796, bytes.end()),
                ElementsAre(untouched, untouched, untouched, untouched));
}

TEST_F(StatusExportTest, the_judged_monitor_is_told_as_it_is_listed_now) {
    addKitMonitor(uhdAt60, LR"(\\.\DISPLAY1)");
    module.init();
    EXPECT_TRUE(check());
    addOtherMonitor(uhdAt60, LR"(\\.\DISPLAY0)");
    std::swap(desktop.monitors.all.front(), desktop.monitors.all.back());
    desktop.monitors.all.back().mode = fullHdAt60;
    module.exports->updateMonitorList();
    EXPECT_TRUE(getChecked());
    EXPECT_STREQ(item.deviceName, LR"(\\.\DISPLAY1)");
    EXPECT_EQ(item.width, 1920);
    EXPECT_EQ(status(), 16);
}

TEST_F(StatusExportTest, a_judged_monitor_that_has_gone_is_told_no_more) {
    addKitMonitor(uhdAt60, LR"(\\.\DISPLAY1)");
    addKitMonitor(uhdAt60, LR"(\\.\DISPLAY2)");
    module.init();
    EXPECT_TRUE(check());
    desktop.monitors.all.erase(desktop.monitors.all.begin());
    module.exports->updateMonitorList();
    expectNoneJudged();
    EXPECT_EQ(status(), 16);
    EXPECT_TRUE(check());
    EXPECT_EQ(judged(), LR"(\\.\DISPLAY2)");
}

TEST_F(StatusExportTest, a_check_that_judges_no_monitor_forgets_the_one_before) {
    addKitMonitor(uhdAt60);
    module.init();
    EXPECT_TRUE(check());
    module.runtime.resetCore();
    EXPECT_FALSE(check());
    EXPECT_EQ(status(), 17);
    expectNoneJudged();
}

TEST_F(StatusExportTest, the_judged_monitor_is_told_to_nobody_without_a_service) {
    addKitMonitor(uhdAt60);
    module.init();
    EXPECT_TRUE(check());
    module.cleanup();
    expectNoneJudged();
}

} // namespace
} // namespace tests
