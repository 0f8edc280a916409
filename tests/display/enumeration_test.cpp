#include "monitor/display/enumeration.h"
#include "monitor/display/monitor_list.h"
#include "tests/display/display_test.h"
#include "tests/support/other_thread.h"

#include <gmock/gmock.h>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class MonitorEnumeration : public DisplayTest {
protected:
    static std::vector<std::wstring> deviceNames(const std::vector<MonitorInfo>& monitors) {
        std::vector<std::wstring> names;
        for (const MonitorInfo& monitor : monitors) {
            names.push_back(monitor.deviceName);
        }
        return names;
    }
};

void expectMode(const MonitorInfo& monitor, const DisplayMode& mode) {
    EXPECT_EQ(monitor.x, mode.x);
    EXPECT_EQ(monitor.y, mode.y);
    EXPECT_EQ(monitor.width, static_cast<int>(mode.width));
    EXPECT_EQ(monitor.height, static_cast<int>(mode.height));
    EXPECT_EQ(monitor.refreshRate, static_cast<int>(mode.frequency));
}

TEST_F(MonitorEnumeration, fills_every_field_of_a_monitor) {
    const HMONITOR handle = desktop.monitors.add(display1, wideMode).handle;
    desktop.displayPaths.add(display1, L"Model A", L"path of A");

    const auto monitors = EnumerateAllMonitors(false);
    ASSERT_THAT(monitors, SizeIs(1));
    EXPECT_EQ(monitors[0].hMonitor, handle);
    EXPECT_EQ(monitors[0].deviceName, display1);
    EXPECT_EQ(monitors[0].friendlyName, L"Model A");
    EXPECT_EQ(monitors[0].devicePath, L"path of A");
    EXPECT_EQ(monitors[0].monitorId, L"");
    EXPECT_EQ(monitors[0].reservedText, L"");
    expectMode(monitors[0], wideMode);
}

TEST_F(MonitorEnumeration, keeps_the_systems_order) {
    desktop.addMonitor(display3, L"C", smallMode);
    desktop.addMonitor(display1, L"A", wideMode);
    desktop.addMonitor(display2, L"B", smallMode);
    EXPECT_THAT(deviceNames(EnumerateAllMonitors(false)),
                ElementsAre(display3, display1, display2));
}

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
}

// The system scales the rectangle for a process that does not know of scaling.
TEST_F(MonitorEnumeration, tells_physical_pixels_whatever_the_rectangle_of_the_monitor_is) {
    desktop.monitors.add(display1, wideMode).rectangle = {0, -100, 1920, 980};
    expectMode(EnumerateAllMonitors(false).at(0), wideMode);
}

TEST_F(MonitorEnumeration, of_a_desktop_without_monitors_is_empty) {
    EXPECT_THAT(EnumerateAllMonitors(false), IsEmpty());
    EXPECT_THAT(EnumerateAllMonitors(true), IsEmpty());
}

TEST_F(MonitorEnumeration, skips_a_handle_whose_information_cannot_be_read) {
    desktop.addMonitor(display1, L"A", wideMode);
    desktop.addMonitor(display2, L"B", wideMode).informationReadable = false;
    desktop.addMonitor(display3, L"C", smallMode);

    const auto monitors = EnumerateAllMonitors(false);
    ASSERT_THAT(deviceNames(monitors), ElementsAre(display1, display3));
    EXPECT_EQ(monitors[1].friendlyName, L"C");
    expectMode(monitors[1], smallMode);
}

TEST_F(MonitorEnumeration, skips_a_monitor_that_is_detached_meanwhile) {
    desktop.addMonitor(display1, L"A", wideMode);
    desktop.addMonitor(display2, L"B", wideMode);
    desktop.journal.at("GetMonitorInfoW", 2, [this] { desktop.monitors.all.pop_back(); });
    EXPECT_THAT(deviceNames(EnumerateAllMonitors(false)), ElementsAre(display1));
}

TEST_F(MonitorEnumeration, does_not_ask_for_the_settings_of_a_handle_that_it_skips) {
    desktop.addMonitor(display1, L"A", wideMode).informationReadable = false;
    EnumerateAllMonitors(false);
    EXPECT_EQ(desktop.journal.count("EnumDisplaySettingsW"), 0u);
}

TEST_F(MonitorEnumeration, gives_zeros_for_settings_that_cannot_be_read) {
    desktop.monitors.add(display1, std::nullopt);
    desktop.displayPaths.add(display1, L"Model A", L"path of A");

    const auto monitors = EnumerateAllMonitors(false);
    ASSERT_THAT(monitors, SizeIs(1));
    expectMode(monitors[0], {0, 0, 0, 0, 0});
    EXPECT_EQ(monitors[0].friendlyName, L"Model A");
}

TEST_F(MonitorEnumeration, keeps_a_monitor_that_no_display_path_leads_to) {
    const HMONITOR handle = desktop.monitors.add(display1, wideMode).handle;
    desktop.displayPaths.add(display2, L"Model B", L"path of B");

    const auto monitors = EnumerateAllMonitors(false);
    ASSERT_THAT(monitors, SizeIs(1));
    EXPECT_EQ(monitors[0].hMonitor, handle);
    EXPECT_EQ(monitors[0].deviceName, display1);
    EXPECT_EQ(monitors[0].friendlyName, L"");
    EXPECT_EQ(monitors[0].devicePath, L"");
    EXPECT_EQ(monitors[0].monitorId, L"");
    expectMode(monitors[0], wideMode);
}

TEST_F(MonitorEnumeration, takes_device_names_for_equal_only_if_every_character_is) {
    desktop.monitors.add(display1, wideMode);
    desktop.displayPaths.add(LR"(\\.\Display1)", L"other case", L"1");
    desktop.displayPaths.add(LR"(\\.\DISPLAY10)", L"longer", L"2");
    desktop.displayPaths.add(LR"(\\.\DISPLAY)", L"shorter", L"3");
    desktop.displayPaths.add(L"", L"empty", L"4");
    EXPECT_EQ(EnumerateAllMonitors(false).at(0).friendlyName, L"");
}

TEST_F(MonitorEnumeration, takes_the_first_of_two_paths_that_show_one_desktop) {
    desktop.monitors.add(display1, wideMode);
    desktop.displayPaths.add(display1, L"First", L"path of the first");
    desktop.displayPaths.add(display1, L"Second", L"path of the second");

    const auto monitors = EnumerateAllMonitors(false);
    ASSERT_THAT(monitors, SizeIs(1));
    EXPECT_EQ(monitors[0].friendlyName, L"First");
    EXPECT_EQ(monitors[0].devicePath, L"path of the first");
}

TEST_F(MonitorEnumeration, leaves_the_names_empty_when_the_target_cannot_be_read) {
    desktop.monitors.add(display1, wideMode);
    desktop.displayPaths.add(display1, L"A", L"path").targetNameStatus = ERROR_GEN_FAILURE;
    const auto monitors = EnumerateAllMonitors(false);
    ASSERT_THAT(monitors, SizeIs(1));
    EXPECT_EQ(monitors[0].friendlyName, L"");
    EXPECT_EQ(monitors[0].devicePath, L"");
}

TEST_F(MonitorEnumeration, reads_a_device_name_that_fills_its_field) {
    const std::wstring fullName(CCHDEVICENAME, L'N');
    desktop.monitors.add(fullName, wideMode);
    const auto monitors = EnumerateAllMonitors(false);
    ASSERT_THAT(deviceNames(monitors), ElementsAre(fullName));
    expectMode(monitors[0], wideMode);
}

TEST_F(MonitorEnumeration, does_not_care_what_the_systems_enumeration_answers) {
    desktop.addMonitor(display1, L"A", wideMode);
    desktop.journal.fail("EnumDisplayMonitors");
    EXPECT_THAT(EnumerateAllMonitors(false), SizeIs(1));
}

TEST_F(MonitorEnumeration, asks_the_platform_once_for_the_lists_and_once_per_entry) {
    desktop.addMonitor(display1, L"A", wideMode);
    desktop.addMonitor(display2, L"B", wideMode);
    desktop.monitors.add(display3, smallMode);
    EnumerateAllMonitors(true);
    EXPECT_THAT(desktop.displayCalls(),
                ElementsAre("EnumDisplayMonitors", "GetDisplayConfigBufferSizes",
                            "QueryDisplayConfig", "DisplayConfigGetDeviceInfo",
                            "DisplayConfigGetDeviceInfo", "DisplayConfigGetDeviceInfo",
                            "DisplayConfigGetDeviceInfo", "GetMonitorInfoW", "EnumDisplaySettingsW",
                            "GetMonitorInfoW", "EnumDisplaySettingsW", "GetMonitorInfoW",
                            "EnumDisplaySettingsW"));
}

TEST_F(MonitorEnumeration, has_room_for_all_displays_from_the_start) {
    desktop.addMonitor(display1, L"A", wideMode);
    desktop.addMonitor(display2, L"B", wideMode);
    desktop.addMonitor(display3, L"C", wideMode).informationReadable = false;
    EXPECT_EQ(EnumerateAllMonitors(true).capacity(), 4u);
}

TEST_F(MonitorEnumeration, needs_no_list_and_no_certain_thread) {
    desktop.addMonitor(display2, L"B", wideMode);
    desktop.addMonitor(display1, L"A", smallMode);
    EXPECT_THAT(onAnotherThread([] { return deviceNames(EnumerateAllMonitors(true)); }),
                ElementsAre(display2, display1, L"All Displays"));
    EXPECT_EQ(MonitorList::Get(), nullptr);
}

class AllDisplays : public MonitorEnumeration {};

TEST_F(AllDisplays, follow_two_monitors_where_asked_for) {
    desktop.addMonitor(display1, L"A", wideMode);
    desktop.addMonitor(display2, L"B", smallMode);

    const auto monitors = EnumerateAllMonitors(true);
    ASSERT_THAT(deviceNames(monitors), ElementsAre(display1, display2, L"All Displays"));
    EXPECT_EQ(monitors[2].hMonitor, nullptr);
    EXPECT_EQ(monitors[2].friendlyName, L"All Displays");
    EXPECT_EQ(monitors[2].devicePath, L"");
    EXPECT_EQ(monitors[2].monitorId, L"");
    EXPECT_EQ(monitors[2].reservedText, L"");
    expectMode(monitors[2], {0, 0, 0, 0, 0});
}

TEST_F(AllDisplays, are_left_out_where_not_asked_for) {
    desktop.addMonitor(display1, L"A", wideMode);
    desktop.addMonitor(display2, L"B", smallMode);
    EXPECT_THAT(deviceNames(EnumerateAllMonitors(false)), ElementsAre(display1, display2));
}

TEST_F(AllDisplays, do_not_follow_a_single_monitor) {
    desktop.addMonitor(display1, L"A", wideMode);
    EXPECT_THAT(deviceNames(EnumerateAllMonitors(true)), ElementsAre(display1));
}

TEST_F(AllDisplays, do_not_follow_a_single_readable_monitor_of_two) {
    desktop.addMonitor(display1, L"A", wideMode);
    desktop.addMonitor(display2, L"B", smallMode).informationReadable = false;
    EXPECT_THAT(deviceNames(EnumerateAllMonitors(true)), ElementsAre(display1));
}

} // namespace
} // namespace tests
