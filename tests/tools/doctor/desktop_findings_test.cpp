#include "tests/tools/doctor/doctor_test.h"

#include <windows.h>

namespace vorlen::tool {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr auto accessDenied = static_cast<std::int32_t>(0x80041003);

class RemoteSession : public DoctorTest {};

TEST_F(RemoteSession, may_spoil_3d) {
    examination.reading.process.remoteSession = true;
    EXPECT_THAT(findings(), ElementsAre("warning remote-session"));
}

class ScaledCoordinates : public DoctorTest {
protected:
    ScaledCoordinates() {
        examination.reading.process.dpiAwareness = DPI_AWARENESS_UNAWARE;
        EXPECT_THAT(findings(), IsEmpty());
    }
};

// Windows enlarges the windows of this command on most monitors of 3840 x 2160 pixels.
TEST_F(ScaledCoordinates, are_a_note_at_the_kit_monitor_too) {
    kitMonitor().rectangle = {0, 0, 2560, 1440};
    EXPECT_THAT(findings(), ElementsAre("note scaled-coordinates"));
    EXPECT_EQ(theFinding("scaled-coordinates").seen,
              "This program is not DPI aware. \\\\.\\DISPLAY1 has 3840 x 2160 pixels and 2560 x "
              "1440 in coordinates.");
}

TEST_F(ScaledCoordinates, are_a_note_at_another_monitor) {
    examination.reading.process.dpiAwareness = DPI_AWARENESS_SYSTEM_AWARE;
    examination.reading.monitors[1].rectangle = {-1280, 0, 0, 720};
    EXPECT_THAT(findings(), ElementsAre("note scaled-coordinates"));
    EXPECT_THAT(theFinding("scaled-coordinates").seen,
                HasSubstr("aware of the system's DPI only. \\\\.\\DISPLAY2 has"));
}

TEST_F(ScaledCoordinates, are_found_by_one_side) {
    kitMonitor().rectangle = {0, 0, 3840, 2000};
    EXPECT_THAT(findings(), ElementsAre("note scaled-coordinates"));
}

TEST_F(ScaledCoordinates, are_not_found_without_a_rectangle_or_a_mode) {
    kitMonitor().rectangle = {};
    EXPECT_THAT(findings(), IsEmpty());
    examination.reading.monitors[1].currentMode.reset();
    EXPECT_THAT(findings(), ElementsAre("note unreadable-monitor"));
}

class SameName : public DoctorTest {};

TEST_F(SameName, is_a_warning_at_the_kit_monitor) {
    rename(1, L"KIT 27");
    EXPECT_THAT(findings(), ElementsAre("warning same-name"));
    EXPECT_EQ(theFinding("same-name").seen,
              "\\\\.\\DISPLAY1, \\\\.\\DISPLAY2 are all named \"KIT 27\".");
}

TEST_F(SameName, is_a_note_at_other_monitors) {
    examination.monitors.push_back(examination.monitors[1]);
    setText(examination.monitors[2].monitorId, L"SN-3");
    EXPECT_THAT(findings(), ElementsAre("note same-name"));
}

TEST_F(SameName, is_not_found_for_missing_names) {
    rename(1, L"");
    examination.monitors.push_back(examination.monitors[1]);
    setText(examination.monitors[2].monitorId, L"SN-3");
    EXPECT_THAT(findings(), IsEmpty());
}

class SameSerialNumber : public DoctorTest {};

TEST_F(SameSerialNumber, is_a_warning_at_the_kit_monitor) {
    setText(examination.monitors[1].monitorId, L"SN-1");
    EXPECT_THAT(findings(), ElementsAre("warning same-serial-number"));
    EXPECT_EQ(theFinding("same-serial-number").seen,
              "\\\\.\\DISPLAY1, \\\\.\\DISPLAY2 all have the serial number \"SN-1\".");
}

TEST_F(SameSerialNumber, is_a_note_at_other_monitors) {
    examination.monitors.push_back(examination.monitors[1]);
    setText(examination.monitors[2].friendlyName, L"Projector");
    EXPECT_THAT(findings(), ElementsAre("note same-serial-number"));
}

class WmiFailed : public DoctorTest {};

TEST_F(WmiFailed, names_the_step_and_its_result) {
    examination.reading.wmi.steps.back() = {"IWbemLocator::ConnectServer", accessDenied};
    examination.reading.wmi.objects.clear();
    setText(examination.status.monitor->monitorId, L"");
    EXPECT_THAT(findings(), ElementsAre("note wmi-failed"));
    EXPECT_EQ(theFinding("wmi-failed").seen,
              "WMI: IWbemLocator::ConnectServer returned 0x80041003 (WBEM_E_ACCESS_DENIED).");
}

TEST_F(WmiFailed, shows_how_many_monitors_were_reported_before) {
    examination.reading.wmi.steps.back() = {"IEnumWbemClassObject::Next", accessDenied};
    EXPECT_THAT(theFinding("wmi-failed").seen,
                HasSubstr("(WBEM_E_ACCESS_DENIED), after 2 monitors."));
}

TEST_F(WmiFailed, is_not_found_when_the_query_went_on) {
    examination.reading.wmi.steps.front() = {"CoInitializeSecurity", RPC_E_TOO_LATE};
    EXPECT_THAT(findings(), IsEmpty());
}

TEST_F(WmiFailed, is_not_found_when_the_reading_has_no_steps) {
    examination.reading.wmi = {};
    EXPECT_THAT(findings(), IsEmpty());
}

class MissingSerialNumber : public DoctorTest {};

TEST_F(MissingSerialNumber, shows_how_many_monitors_wmi_reported) {
    setText(examination.status.monitor->monitorId, L"");
    EXPECT_THAT(findings(), ElementsAre("note missing-serial-number"));
    EXPECT_THAT(theFinding("missing-serial-number").seen, HasSubstr("WMI reported 2 monitors."));
}

} // namespace
} // namespace vorlen::tool
