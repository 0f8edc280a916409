#include "tests/tools/doctor/doctor_test.h"
#include "vorlen/status.h"

#include <windows.h>

namespace vorlen::tool {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kitDevice = R"(\\.\DISPLAY1)";
constexpr const char* otherDevice = R"(\\.\DISPLAY2)";

// The monitors that a finding names as its own.
class FindingMonitors : public DoctorTest {
protected:
    std::vector<std::string> monitorsOf(std::string_view code) const {
        return theFinding(code).monitors;
    }
};

TEST_F(FindingMonitors, are_the_kit_monitor_for_its_mode) {
    setKitMode(1920, 1080, 60);
    EXPECT_THAT(monitorsOf("resolution-too-low"), ElementsAre(kitDevice));
    setKitMode(3840, 2160, 30);
    kitPath().scanLineOrdering = DISPLAYCONFIG_SCANLINE_ORDERING_INTERLACED;
    EXPECT_THAT(monitorsOf("refresh-rate-too-low"), ElementsAre(kitDevice));
    EXPECT_THAT(monitorsOf("interlaced-mode"), ElementsAre(kitDevice));
    setKitMode(3840, 2160, 59);
    EXPECT_THAT(monitorsOf("refresh-rate-below-60"), ElementsAre(kitDevice));
}

TEST_F(FindingMonitors, are_the_kit_monitor_for_its_picture) {
    kitPath().rotation = DISPLAYCONFIG_ROTATION_ROTATE180;
    kitPath().advancedColor.encoding = DISPLAYCONFIG_COLOR_ENCODING_YCBCR420;
    kitTarget().activeWidth = 1920;
    EXPECT_THAT(monitorsOf("rotated-picture"), ElementsAre(kitDevice));
    EXPECT_THAT(monitorsOf("scaled-picture"), ElementsAre(kitDevice));
    EXPECT_THAT(monitorsOf("not-the-panel-size"), ElementsAre(kitDevice));
    EXPECT_THAT(monitorsOf("colour-not-rgb"), ElementsAre(kitDevice));
    kitPath().preferredMode.status = ERROR_NOT_SUPPORTED;
    EXPECT_THAT(monitorsOf("not-examined"), ElementsAre(kitDevice));
}

TEST_F(FindingMonitors, are_the_kit_monitor_for_its_serial_number) {
    examination.monitors[0].monitorId[0] = L'\0';
    examination.status.monitor = examination.monitors[0];
    EXPECT_THAT(monitorsOf("missing-serial-number"), ElementsAre(kitDevice));
}

TEST_F(FindingMonitors, are_those_that_cannot_be_recognised) {
    recogniseNone();
    rename(0, L"kit 27");
    rename(1, L"Generic PnP Monitor");
    EXPECT_THAT(monitorsOf("kit-name-differs"), ElementsAre(kitDevice));
    EXPECT_THAT(monitorsOf("generic-name"), ElementsAre(otherDevice));
    rename(1, L"");
    EXPECT_THAT(monitorsOf("missing-name"), ElementsAre(otherDevice));
    otherPath().outputTechnology =
        static_cast<std::uint32_t>(DISPLAYCONFIG_OUTPUT_TECHNOLOGY_INTERNAL);
    EXPECT_THAT(monitorsOf("missing-name"), ElementsAre(otherDevice)) << "a built-in panel";
}

TEST_F(FindingMonitors, are_not_known_for_a_path_without_a_device_name) {
    recogniseNone();
    rename(0, L"Generic PnP Monitor");
    kitPath().sourceName.gdiDeviceName.clear();
    EXPECT_THAT(monitorsOf("generic-name"), IsEmpty());
}

TEST_F(FindingMonitors, are_those_without_a_mode_or_with_scaled_coordinates) {
    examination.reading.monitors[1].rectangle.right -= 1;
    EXPECT_THAT(monitorsOf("scaled-coordinates"), ElementsAre(otherDevice));
    examination.reading.monitors[1].currentMode.reset();
    EXPECT_THAT(monitorsOf("unreadable-monitor"), ElementsAre(otherDevice));
}

TEST_F(FindingMonitors, are_all_that_share_a_picture_a_name_or_a_number) {
    rename(1, L"KIT 27");
    setText(examination.monitors[1].monitorId, L"SN-1");
    EXPECT_THAT(monitorsOf("same-name"), ElementsAre(kitDevice, otherDevice));
    EXPECT_THAT(monitorsOf("same-serial-number"), ElementsAre(kitDevice, otherDevice));
    otherPath().sourceName.gdiDeviceName = kitPath().sourceName.gdiDeviceName;
    EXPECT_THAT(monitorsOf("cloned-monitor"), ElementsAre(kitDevice));
}

TEST_F(FindingMonitors, are_empty_for_what_is_about_the_whole_desktop) {
    recogniseNone();
    addWindow(L"Palette", "tool window");
    examination.reading.process.remoteSession = true;
    examination.reading.displayConfiguration.queryStatus = ERROR_ACCESS_DENIED;
    examination.reading.wmi.steps.back().result = E_ACCESSDENIED;
    for (const char* const code :
         {"no-kit-monitor", "remote-session", "display-configuration-failed", "wmi-failed",
          "window-not-capturable"}) {
        EXPECT_THAT(monitorsOf(code), IsEmpty()) << code;
    }
}

} // namespace
} // namespace vorlen::tool
