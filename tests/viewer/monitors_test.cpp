#include "tests/viewer/viewed_monitors.h"

#include <gmock/gmock.h>

namespace vorlen::viewer {

// For messages of failed tests.
void PrintTo(const MapLine& line, std::ostream* stream) {
    *stream << line.text << " (" << static_cast<int>(line.mark) << ")";
}

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

const MapLine failingSize{"Resolution too low", Mark::failing};
const MapLine failingRate{"Refresh rate too low", Mark::failing};

TEST(MapLines, show_what_marks_a_kit_monitor) {
    EXPECT_THAT(mapLines(kitMonitor()),
                ElementsAre(MapLine{"KIT 27"}, MapLine{"3840 x 2160, 60 Hz"},
                            MapLine{"Kit monitor", Mark::kitModel},
                            MapLine{"Current monitor", Mark::current}, MapLine{"Serial SN-1"},
                            MapLine{R"(\\.\DISPLAY1)"}));
}

TEST(MapLines, mark_nothing_on_another_monitor) {
    EXPECT_THAT(mapLines(otherMonitor()),
                ElementsAre(MapLine{"Office"}, MapLine{"1920 x 1080, 30 Hz"},
                            MapLine{"No serial number"}, MapLine{R"(\\.\DISPLAY2)"}));
}

TEST(MapLines, begin_with_the_device_name_of_a_monitor_without_a_name) {
    ViewedMonitor monitor = otherMonitor();
    setText(monitor.record.friendlyName, L"");
    EXPECT_THAT(mapLines(monitor),
                ElementsAre(MapLine{R"(\\.\DISPLAY2)"}, MapLine{"1920 x 1080, 30 Hz"},
                            MapLine{"No serial number"}));
}

TEST(MapLines, mark_the_name_and_below_it_a_failing_size_and_rate) {
    ViewedMonitor monitor = kitMonitor();
    monitor.record.width = 3839;
    monitor.record.refreshRate = 58;
    const std::vector<MapLine> lines = mapLines(monitor);
    EXPECT_EQ(lines[0], (MapLine{"KIT 27", Mark::failing}));
    EXPECT_EQ(lines[1], failingSize);
    EXPECT_EQ(lines[2], failingRate);
}

TEST(MapLines, accept_what_the_check_accepts) {
    ViewedMonitor monitor = kitMonitor();
    monitor.record.refreshRate = 59;
    EXPECT_THAT(mapLines(monitor), Not(Contains(failingRate)));
    monitor.record.height = 2159;
    EXPECT_THAT(mapLines(monitor), Contains(failingSize));
}

TEST(MapLines, spell_out_control_characters_of_names) {
    ViewedMonitor monitor = otherMonitor();
    setText(monitor.record.friendlyName, L"turned \x202e round");
    EXPECT_EQ(mapLines(monitor)[0].text, "turned <U+202E> round");
}

TEST(RecordText, has_every_field) {
    EXPECT_EQ(recordText(kitMonitor()), "Device name: \\\\.\\DISPLAY1\n"
                                        "Name: KIT 27\n"
                                        "Serial number: SN-1\n"
                                        "Position: 0, 0\n"
                                        "Size: 3840 x 2160\n"
                                        "Refresh rate: 60 Hz\n"
                                        "Handle: 0x10001\n"
                                        "Kit monitor: yes\n"
                                        "Current monitor: yes\n");
    EXPECT_THAT(recordText(otherMonitor()), HasSubstr("Position: 3840, 0\n"));
}

TEST(RecordText, says_what_is_too_low) {
    ViewedMonitor monitor = kitMonitor();
    monitor.record.height = 1080;
    monitor.record.refreshRate = 30;
    EXPECT_THAT(recordText(monitor), HasSubstr("Size: 3840 x 1080 (too low)\n"
                                               "Refresh rate: 30 Hz (too low)\n"));
}

class MonitorSelection : public testing::Test {
protected:
    std::wstring selectedDevice() const {
        const ViewedMonitor* const monitor = monitors.selectedMonitor();
        return monitor != nullptr ? monitor->record.deviceName : L"(none)";
    }

    Monitors monitors;
};

TEST_F(MonitorSelection, begins_with_the_current_monitor) {
    EXPECT_EQ(monitors.selected(), std::nullopt);
    monitors.update({otherMonitor(), kitMonitor()});
    EXPECT_EQ(monitors.selected(), 1u);
}

TEST_F(MonitorSelection, begins_with_the_first_monitor_without_a_current_one) {
    monitors.update({otherMonitor(), otherMonitor()});
    EXPECT_EQ(monitors.selected(), 0u);
}

TEST_F(MonitorSelection, stays_when_monitors_come_and_go) {
    monitors.update({kitMonitor(), otherMonitor()});
    monitors.select(1);
    ViewedMonitor third = otherMonitor();
    setText(third.record.deviceName, LR"(\\.\DISPLAY3)");
    setText(third.record.friendlyName, L"Third");
    monitors.update({third, kitMonitor(), otherMonitor()});
    EXPECT_EQ(selectedDevice(), LR"(\\.\DISPLAY2)");
    monitors.update({otherMonitor()});
    EXPECT_EQ(selectedDevice(), LR"(\\.\DISPLAY2)");
}

TEST_F(MonitorSelection, stays_when_the_mode_of_the_monitor_changes) {
    monitors.update({kitMonitor(), otherMonitor()});
    monitors.select(1);
    ViewedMonitor smaller = otherMonitor();
    smaller.record.width = 800;
    monitors.update({kitMonitor(), smaller});
    EXPECT_EQ(monitors.selected(), 1u);
}

TEST_F(MonitorSelection, follows_a_monitor_that_gets_another_device_name) {
    monitors.update({kitMonitor(), otherMonitor()});
    monitors.select(1);
    ViewedMonitor renumbered = otherMonitor();
    setText(renumbered.record.deviceName, LR"(\\.\DISPLAY1)");
    ViewedMonitor kit = kitMonitor();
    setText(kit.record.deviceName, LR"(\\.\DISPLAY2)");
    monitors.update({renumbered, kit});
    EXPECT_EQ(monitors.selected(), 0u);
}

TEST_F(MonitorSelection, stays_while_names_are_missing) {
    monitors.update({kitMonitor(), otherMonitor()});
    monitors.select(1);
    ViewedMonitor nameless = otherMonitor();
    setText(nameless.record.friendlyName, L"");
    monitors.update({kitMonitor(), nameless});
    EXPECT_EQ(monitors.selected(), 1u);
}

TEST_F(MonitorSelection, goes_to_the_current_monitor_when_its_own_is_gone) {
    monitors.update({otherMonitor(), kitMonitor()});
    monitors.select(0);
    monitors.update({kitMonitor()});
    EXPECT_EQ(selectedDevice(), LR"(\\.\DISPLAY1)");
    monitors.update({});
    EXPECT_EQ(monitors.selected(), std::nullopt);
}

TEST_F(MonitorSelection, ignores_an_index_outside_the_list) {
    monitors.update({kitMonitor(), otherMonitor()});
    monitors.select(2);
    EXPECT_EQ(monitors.selected(), 0u);
}

TEST(Monitors, report_every_change_that_is_shown) {
    Monitors monitors;
    EXPECT_TRUE(monitors.update({kitMonitor(), otherMonitor()}));
    EXPECT_FALSE(monitors.update({kitMonitor(), otherMonitor()}));
    EXPECT_TRUE(monitors.update({otherMonitor(), kitMonitor()}));
    const auto isReported = [](auto change) {
        Monitors shown;
        shown.update({kitMonitor()});
        ViewedMonitor monitor = kitMonitor();
        change(monitor);
        return shown.update({monitor});
    };
    EXPECT_TRUE(isReported([](auto& monitor) { monitor.record.handle = nullptr; }));
    EXPECT_TRUE(isReported([](auto& monitor) { setText(monitor.record.deviceName, L"a"); }));
    EXPECT_TRUE(isReported([](auto& monitor) { setText(monitor.record.friendlyName, L"a"); }));
    EXPECT_TRUE(isReported([](auto& monitor) { setText(monitor.record.monitorId, L"a"); }));
    EXPECT_TRUE(isReported([](auto& monitor) { monitor.record.x = 1; }));
    EXPECT_TRUE(isReported([](auto& monitor) { monitor.record.y = 1; }));
    EXPECT_TRUE(isReported([](auto& monitor) { monitor.record.width = 1; }));
    EXPECT_TRUE(isReported([](auto& monitor) { monitor.record.height = 1; }));
    EXPECT_TRUE(isReported([](auto& monitor) { monitor.record.refreshRate = 1; }));
    EXPECT_TRUE(isReported([](auto& monitor) { monitor.isKitModel = false; }));
    EXPECT_TRUE(isReported([](auto& monitor) { monitor.isCurrent = false; }));
}

TEST(Monitors, are_described_in_words) {
    Monitors monitors;
    EXPECT_EQ(monitors.description(), "0 monitors.");
    monitors.update({otherMonitor()});
    EXPECT_EQ(monitors.description(), R"(1 monitor. Selected: \\.\DISPLAY2, Office, )"
                                      "1920 x 1080, 30 Hz, No serial number.");
    ViewedMonitor failing = kitMonitor();
    failing.record.refreshRate = 30;
    monitors.update({failing, otherMonitor()});
    monitors.select(0);
    EXPECT_THAT(monitors.description(), HasSubstr(R"(2 monitors. Selected: \\.\DISPLAY1, KIT 27, )"
                                                  "Refresh rate too low, "));
}

} // namespace
} // namespace vorlen::viewer
