#include "monitor/display/enumeration.h"
#include "tests/display/display_test.h"

#include <gmock/gmock.h>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

// EnumerateAllMonitors.
class MonitorEnumeration : public DisplayTest {
protected:
    static std::vector<std::wstring> deviceNames(bool includeAllDisplays) {
        std::vector<std::wstring> names;
        for (const MonitorInfo& monitor : EnumerateAllMonitors(includeAllDisplays)) {
            names.push_back(monitor.deviceName);
        }
        return names;
    }

    static void expectMode(const MonitorInfo& monitor, const DisplayMode& mode) {
        EXPECT_EQ(monitor.x, mode.x);
        EXPECT_EQ(monitor.y, mode.y);
        EXPECT_EQ(monitor.width, static_cast<int>(mode.width));
        EXPECT_EQ(monitor.height, static_cast<int>(mode.height));
        EXPECT_EQ(monitor.refreshRate, static_cast<int>(mode.frequency));
    }
};

TEST_F(MonitorEnumeration, gives_each_monitor_its_own_settings_and_names) {
    desktop.monitors.add(display1, wideMode);
    desktop.monitors.add(display2, smallMode);
    desktop.displayPaths.add(display2, L"Model B", L"path of B");
    desktop.displayPaths.add(display1, L"Model A", L"path of A");

    const auto monitors = EnumerateAllMonitors(false);
    ASSERT_THAT(monitors, SizeIs(2));
    expectMode(monitors[0], wideMode);
    expectMode(monitors[1], smallMode);
    EXPECT_EQ(monitors[0].friendlyName, L"Model A");
    EXPECT_EQ(monitors[1].friendlyName, L"Model B");
    EXPECT_EQ(monitors[0].devicePath, L"path of A");
    EXPECT_EQ(monitors[1].devicePath, L"path of B");
    EXPECT_EQ(monitors[0].reservedText, L"");
}

// Promise (getMonitorList): Position and size are the physical pixels of the display mode, whatever
// the DPI awareness of the process.
TEST_F(MonitorEnumeration, reports_physical_pixels_of_the_display_mode) {
    // The system scales the rectangle for a process that does not know of scaling.
    desktop.monitors.add(display1, wideMode).rectangle = {0, -100, 1920, 980};
    expectMode(EnumerateAllMonitors(false).at(0), wideMode);
}

TEST_F(MonitorEnumeration, leaves_out_a_monitor_that_cannot_be_read) {
    desktop.addMonitor(display1, L"A", wideMode);
    desktop.addMonitor(display2, L"B", wideMode).informationReadable = false;
    desktop.addMonitor(display3, L"C", smallMode);
    EXPECT_THAT(deviceNames(false), ElementsAre(display1, display3));
    EXPECT_EQ(desktop.journal.count("EnumDisplaySettingsW"), 2u);
}

// Promise (getMonitorList): A monitor whose display mode cannot be read is listed, with zeros for
// position, size and refresh rate.
TEST_F(MonitorEnumeration, reports_zeros_for_a_mode_that_cannot_be_read) {
    desktop.monitors.add(display1, std::nullopt);
    desktop.displayPaths.add(display1, L"Model A", L"path of A");
    const auto monitors = EnumerateAllMonitors(false);
    ASSERT_THAT(monitors, SizeIs(1));
    expectMode(monitors[0], {0, 0, 0, 0, 0});
    EXPECT_EQ(monitors[0].friendlyName, L"Model A");
}

TEST_F(MonitorEnumeration, leaves_names_empty_without_a_path_of_the_same_name) {
    const HMONITOR handle = desktop.monitors.add(display1, wideMode).handle;
    desktop.displayPaths.add(LR"(\\.\Display1)", L"other case", L"1");
    desktop.displayPaths.add(LR"(\\.\DISPLAY10)", L"longer", L"2");
    desktop.displayPaths.add(LR"(\\.\DISPLAY)", L"shorter", L"3");
    desktop.displayPaths.add(L"", L"empty", L"4");

    const auto monitors = EnumerateAllMonitors(false);
    ASSERT_THAT(monitors, SizeIs(1));
    EXPECT_EQ(monitors[0].hMonitor, handle);
    EXPECT_EQ(monitors[0].deviceName, display1);
    EXPECT_EQ(monitors[0].friendlyName, L"");
    EXPECT_EQ(monitors[0].devicePath, L"");
    EXPECT_EQ(monitors[0].monitorId, L"");
    expectMode(monitors[0], wideMode);
}

// Promise (getMonitorList): Of cloned outputs, only the first display path gives `friendlyName` and
// `monitorId`.
TEST_F(MonitorEnumeration, names_cloned_outputs_by_the_first_path) {
    desktop.monitors.add(display1, wideMode);
    desktop.displayPaths.add(display1, L"Second in the alphabet", L"path 2");
    desktop.displayPaths.add(display1, L"First in the alphabet", L"path 1");
    const auto monitors = EnumerateAllMonitors(false);
    ASSERT_THAT(monitors, SizeIs(1));
    EXPECT_EQ(monitors[0].friendlyName, L"Second in the alphabet");
    EXPECT_EQ(monitors[0].devicePath, L"path 2");
}

TEST_F(MonitorEnumeration, ignores_the_result_of_the_systems_enumeration) {
    desktop.addMonitor(display1, L"A", wideMode);
    desktop.journal.fail("EnumDisplayMonitors");
    EXPECT_THAT(deviceNames(false), ElementsAre(display1));
}

TEST_F(MonitorEnumeration, adds_all_displays_behind_two_monitors) {
    desktop.addMonitor(display1, L"A", wideMode);
    desktop.addMonitor(display2, L"B", smallMode);
    EXPECT_THAT(deviceNames(false), ElementsAre(display1, display2));

    const auto monitors = EnumerateAllMonitors(true);
    ASSERT_THAT(monitors, SizeIs(3));
    EXPECT_EQ(monitors.capacity(), 3u) << "the entry made the list grow";
    EXPECT_EQ(monitors[2].hMonitor, nullptr);
    EXPECT_EQ(monitors[2].deviceName, L"All Displays");
    EXPECT_EQ(monitors[2].friendlyName, L"All Displays");
    EXPECT_EQ(monitors[2].devicePath, L"");
    EXPECT_EQ(monitors[2].monitorId, L"");
    EXPECT_EQ(monitors[2].reservedText, L"");
    expectMode(monitors[2], {0, 0, 0, 0, 0});
}

TEST_F(MonitorEnumeration, adds_no_all_displays_to_a_single_readable_monitor) {
    EXPECT_THAT(deviceNames(true), SizeIs(0));
    desktop.addMonitor(display1, L"A", wideMode);
    EXPECT_THAT(deviceNames(true), ElementsAre(display1));
    desktop.addMonitor(display2, L"B", smallMode).informationReadable = false;
    EXPECT_THAT(deviceNames(true), ElementsAre(display1));
}

} // namespace
} // namespace tests
