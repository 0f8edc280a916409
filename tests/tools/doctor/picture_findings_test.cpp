#include "tests/tools/doctor/doctor_test.h"

#include <windows.h>

namespace vorlen::tool {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class RotatedPicture : public DoctorTest {};

TEST_F(RotatedPicture, prevents_3d_by_the_rotation_of_the_path) {
    kitPath().rotation = DISPLAYCONFIG_ROTATION_ROTATE180;
    EXPECT_THAT(findings(), ElementsAre("error rotated-picture"));
    EXPECT_EQ(theFinding("rotated-picture").seen,
              "The kit monitor \\\\.\\DISPLAY1 \"KIT 27\" shows a picture of 3840 x 2160 pixels "
              "that is rotated by 180 degrees.");
}

TEST_F(RotatedPicture, prevents_3d_by_the_orientation_of_the_mode) {
    examination.reading.displayConfiguration = {};
    kitMonitor().currentMode->mode.orientation = DMDO_180;
    EXPECT_THAT(findings(), ElementsAre("error rotated-picture", "note not-examined"));
}

TEST_F(RotatedPicture, is_found_in_a_portrait_mode_that_passes_the_check) {
    setKitMode(4320, 7680, 60);
    kitPath().rotation = DISPLAYCONFIG_ROTATION_ROTATE270;
    kitTarget().activeWidth = 7680;
    kitTarget().activeHeight = 4320;
    kitPath().preferredMode = {0, 7680, 4320};
    EXPECT_THAT(findings(), ElementsAre("error rotated-picture"));
    EXPECT_THAT(theFinding("rotated-picture").seen, HasSubstr("rotated by 270 degrees"));
}

TEST_F(RotatedPicture, is_not_found_for_a_rotation_that_windows_does_not_document) {
    kitPath().rotation = 7;
    EXPECT_THAT(findings(), IsEmpty());
}

TEST_F(RotatedPicture, is_no_scaled_one_when_only_the_mode_is_known) {
    setKitMode(2160, 3840, 60);
    kitPath().sourceModeIndex = DISPLAYCONFIG_PATH_MODE_IDX_INVALID;
    kitPath().rotation = DISPLAYCONFIG_ROTATION_ROTATE90;
    kitTarget().activeWidth = 3840;
    kitTarget().activeHeight = 2160;
    EXPECT_THAT(findings(), ElementsAre("error rotated-picture"));
}

class ScaledPicture : public DoctorTest {
protected:
    // An enlarged desktop, which passes the check.
    ScaledPicture() {
        setKitMode(7680, 4320, 60);
        kitTarget().activeWidth = 3840;
        kitTarget().activeHeight = 2160;
        kitPath().scaling = DISPLAYCONFIG_SCALING_STRETCHED;
    }
};

TEST_F(ScaledPicture, prevents_3d) {
    EXPECT_THAT(findings(), ElementsAre("error scaled-picture"));
    EXPECT_EQ(theFinding("scaled-picture").seen,
              "The kit monitor \\\\.\\DISPLAY1 \"KIT 27\" has a desktop of 7680 x 4320 pixels, and "
              "the graphics card sends 3840 x 2160. It is stretched.");
}

TEST_F(ScaledPicture, prevents_3d_whatever_the_path_says_about_scaling) {
    kitPath().scaling = DISPLAYCONFIG_SCALING_PREFERRED;
    EXPECT_THAT(findings(), ElementsAre("error scaled-picture"));
    kitPath().scaling = DISPLAYCONFIG_SCALING_CENTERED;
    EXPECT_THAT(theFinding("scaled-picture").seen, HasSubstr("It is centred."));
}

TEST_F(ScaledPicture, is_found_by_the_display_mode_without_a_source_mode) {
    kitPath().sourceModeIndex = DISPLAYCONFIG_PATH_MODE_IDX_INVALID;
    EXPECT_THAT(findings(), ElementsAre("error scaled-picture"));
}

TEST_F(ScaledPicture, may_spoil_3d_when_the_signal_is_unknown) {
    kitPath().targetModeIndex = kitPath().sourceModeIndex; // not a target's mode
    kitPath().preferredMode = {0, 7680, 4320};
    EXPECT_THAT(findings(), ElementsAre("warning scaled-picture", "note not-examined"));
    kitPath().scaling = DISPLAYCONFIG_SCALING_IDENTITY;
    EXPECT_THAT(findings(), ElementsAre("note not-examined"));
}

TEST_F(ScaledPicture, may_spoil_3d_when_the_desktop_is_unknown) {
    kitPath().sourceModeIndex = DISPLAYCONFIG_PATH_MODE_IDX_INVALID;
    kitMonitor().currentMode.reset();
    EXPECT_EQ(theFinding("scaled-picture").severity, Severity::warning);
    EXPECT_THAT(theFinding("scaled-picture").seen,
                HasSubstr("has a picture of unknown size. It is stretched."));
}

TEST_F(ScaledPicture, is_not_found_when_both_sizes_are_equal) {
    setKitMode(3840, 2160, 60);
    EXPECT_THAT(findings(), IsEmpty());
}

class NotThePanelSize : public DoctorTest {};

TEST_F(NotThePanelSize, prevents_3d) {
    kitPath().preferredMode = {0, 7680, 2160};
    EXPECT_THAT(findings(), ElementsAre("error not-the-panel-size"));
    EXPECT_EQ(theFinding("not-the-panel-size").seen,
              "The kit monitor \\\\.\\DISPLAY1 \"KIT 27\" receives 3840 x 2160 pixels, and its "
              "panel has 7680 x 2160.");
}

// An adapter may prefer the mode that it carries best. No kit monitor has such a small panel.
TEST_F(NotThePanelSize, is_not_found_for_a_preferred_mode_below_the_required) {
    kitPath().preferredMode = {0, 1920, 1080};
    EXPECT_THAT(findings(), ElementsAre("note not-examined"));
    EXPECT_THAT(theFinding("not-examined").seen,
                HasSubstr("did not report: the size of its panel (it prefers 1920 x 1080)."));
}

TEST_F(NotThePanelSize, is_found_by_the_display_mode_without_a_target_mode) {
    kitPath().targetModeIndex = DISPLAYCONFIG_PATH_MODE_IDX_INVALID;
    kitPath().preferredMode = {0, 7680, 2160};
    EXPECT_THAT(findings(), ElementsAre("error not-the-panel-size", "note not-examined"));
}

TEST_F(NotThePanelSize, is_left_to_the_resolution_that_is_too_low) {
    setKitMode(1920, 1080, 60);
    EXPECT_THAT(findings(), ElementsAre("error resolution-too-low"));
}

class ColourNotRgb : public DoctorTest {
protected:
    ColourNotRgb() {
        kitPath().advancedColor = {ERROR_SUCCESS, 0, DISPLAYCONFIG_COLOR_ENCODING_YCBCR420, 8};
    }
};

TEST_F(ColourNotRgb, prevents_3d) {
    EXPECT_THAT(findings(), ElementsAre("error colour-not-rgb"));
    EXPECT_EQ(theFinding("colour-not-rgb").seen,
              "The kit monitor \\\\.\\DISPLAY1 \"KIT 27\" receives its picture as YCbCr 4:2:0 with "
              "8 bits for each channel.");
    EXPECT_THAT(theFinding("colour-not-rgb").meaning, HasSubstr("code 20"));
}

TEST_F(ColourNotRgb, says_when_hdr_is_on) {
    kitPath().advancedColor.flags = 3; // supported and enabled
    EXPECT_THAT(theFinding("colour-not-rgb").seen, HasSubstr(", and HDR is on."));
}

TEST_F(ColourNotRgb, does_not_say_that_hdr_is_on_when_it_is_only_supported) {
    kitPath().advancedColor.flags = 1;
    EXPECT_THAT(theFinding("colour-not-rgb").seen, Not(HasSubstr("HDR")));
}

TEST_F(ColourNotRgb, is_not_found_when_windows_does_not_report_the_colour) {
    kitPath().advancedColor.status = ERROR_INVALID_PARAMETER;
    EXPECT_THAT(findings(), ElementsAre("note not-examined"));
}

class NotExamined : public DoctorTest {};

TEST_F(NotExamined, names_what_windows_did_not_report) {
    kitPath().targetModeIndex = DISPLAYCONFIG_PATH_MODE_IDX_INVALID;
    kitPath().preferredMode.status = ERROR_INVALID_PARAMETER;
    kitPath().advancedColor.status = ERROR_NOT_SUPPORTED;
    EXPECT_THAT(findings(), ElementsAre("note not-examined"));
    EXPECT_THAT(theFinding("not-examined").seen,
                HasSubstr("Windows did not report: the signal that it receives, the size of its "
                          "panel (status 87 (ERROR_INVALID_PARAMETER)), its colour format (status "
                          "50 (ERROR_NOT_SUPPORTED))."));
}

TEST_F(NotExamined, names_a_missing_display_path) {
    examination.reading.displayConfiguration = {};
    EXPECT_THAT(theFinding("not-examined").seen, HasSubstr("did not report: its display path."));
}

// A clone or a path with a failed request comes first in some configurations.
TEST_F(NotExamined, is_the_path_that_gives_the_library_the_name) {
    snapshot::DisplayPath failed = kitPath();
    failed.targetName = {};
    failed.targetName.status = ERROR_GEN_FAILURE;
    auto& paths = examination.reading.displayConfiguration.paths;
    paths.insert(paths.begin(), failed);
    paths.front().rotation = DISPLAYCONFIG_ROTATION_ROTATE90;
    EXPECT_THAT(findings(), ElementsAre("error cloned-monitor"));
}

} // namespace
} // namespace vorlen::tool
