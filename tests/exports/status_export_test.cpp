#include "tests/fixtures/status_check_test.h"

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
using testing::IsEmpty;

constexpr std::byte untouched{0xCD};

// getLastMonitorStatus and getCheckedMonitor.
class StatusExport : public StatusCheckTest {
protected:
    StatusExport() { std::memset(&item, std::to_integer<int>(untouched), sizeof(item)); }

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

// Promise (diagnostics.h): `getLastMonitorStatus` returns the code of the last check since the
// library was loaded, and -1 before the first. The code stays when the service is destroyed.
TEST_F(StatusExport, keeps_the_status_until_the_library_is_unloaded) {
    addKitMonitor({.width = 3840, .height = 2160, .frequency = 30});
    EXPECT_EQ(status(), -1);
    module.init();
    EXPECT_EQ(status(), -1);
    EXPECT_FALSE(check());
    EXPECT_EQ(status(), 19);
    module.cleanup();
    EXPECT_EQ(status(), 19);
    module.init();
    EXPECT_EQ(status(), 19);
    module.unload();
    module.load();
    EXPECT_EQ(status(), -1);
}

TEST_F(StatusExport, keeps_the_status_of_a_check_without_a_service) {
    addKitMonitor(uhdAt60);
    module.init();
    EXPECT_TRUE(check());
    module.cleanup();
    EXPECT_FALSE(check());
    EXPECT_EQ(status(), 16);
}

TEST_F(StatusExport, has_no_judged_monitor_before_a_check_and_without_a_service) {
    addKitMonitor(uhdAt60);
    module.init();
    expectNoneJudged();
    EXPECT_TRUE(check());
    module.cleanup();
    expectNoneJudged();
    module.init();
    expectNoneJudged();
}

TEST_F(StatusExport, forgets_the_judged_monitor_when_a_check_judges_none) {
    addKitMonitor(uhdAt60);
    module.init();
    EXPECT_TRUE(check());
    module.runtime.resetCore();
    EXPECT_FALSE(check());
    EXPECT_EQ(status(), 17);
    expectNoneJudged();
}

// Promise (diagnostics.h): `getCheckedMonitor` writes the judged monitor as it is listed now, which
// may differ from what was judged.
TEST_F(StatusExport, writes_the_judged_monitor_as_it_is_listed_now) {
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
    const std::vector<std::byte> bytes = bytesOfItem();
    EXPECT_THAT(std::vector(bytes.begin() + 796, bytes.end()), Each(untouched)) << "padding";
}

TEST_F(StatusExport, has_no_judged_monitor_that_is_no_longer_listed) {
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

TEST_F(StatusExport, reads_no_monitor_and_logs_nothing) {
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

// Promise (checkMonitorStatus): Only `checkMonitorStatus`, and a window event that fails, write to
// the runtime's log.
TEST_F(StatusExport, is_all_that_the_library_logs) {
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

} // namespace
} // namespace tests
