#include "tests/tools/doctor/doctor_test.h"
#include "vorlen/status.h"

#include <windows.h>

namespace vorlen::tool {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

snapshot::DisplayMode mode(std::int32_t width, std::int32_t height, std::int32_t hertz) {
    snapshot::DisplayMode made;
    made.width = width;
    made.height = height;
    made.frequency = hertz;
    return made;
}

class UnreadableMonitor : public DoctorTest {};

TEST_F(UnreadableMonitor, is_a_note_when_its_information_fails) {
    examination.reading.monitors[1] = {};
    EXPECT_THAT(findings(), ElementsAre("note unreadable-monitor"));
    EXPECT_EQ(theFinding("unreadable-monitor").seen, "GetMonitorInfoW failed for a monitor.");
}

// The monitor that is missing in the list may be the kit monitor.
TEST_F(UnreadableMonitor, may_explain_that_no_kit_monitor_is_recognised) {
    examination.reading.monitors[0] = {};
    recogniseNone();
    EXPECT_THAT(findings(), ElementsAre("error no-kit-monitor", "warning unreadable-monitor"));
}

TEST_F(UnreadableMonitor, is_a_note_when_another_monitor_has_no_mode) {
    examination.reading.monitors[1].currentMode.reset();
    EXPECT_THAT(findings(), ElementsAre("note unreadable-monitor"));
    EXPECT_EQ(theFinding("unreadable-monitor").seen,
              "EnumDisplaySettingsW returned no display mode for \\\\.\\DISPLAY2.");
}

TEST_F(UnreadableMonitor, prevents_3d_when_the_kit_monitor_has_no_mode) {
    setKitMode(0, 0, 0);
    kitMonitor().currentMode.reset();
    examination.reading.displayConfiguration.modes.clear();
    EXPECT_THAT(findings(), ElementsAre("error unreadable-monitor", "note not-examined"));
}

class ResolutionTooLow : public DoctorTest {
protected:
    ResolutionTooLow() { setKitMode(1920, 1080, 60); }

    Finding finding() { return theFinding("resolution-too-low"); }
};

TEST_F(ResolutionTooLow, shows_both_sizes_and_the_best_mode) {
    EXPECT_THAT(findings(), ElementsAre("error resolution-too-low"));
    EXPECT_EQ(finding().seen,
              "The kit monitor \\\\.\\DISPLAY1 \"KIT 27\" shows 1920 x 1080 pixels, and at least "
              "3840 x 2160 are required. The best mode that it offers over HDMI is 3840 x 2160 at "
              "60 Hz.");
    EXPECT_THAT(finding().advice, HasSubstr("Choose 3840 x 2160 at 60 Hz under Settings"));
}

TEST_F(ResolutionTooLow, advises_another_cable_when_no_mode_is_enough) {
    kitMonitor().offeredModes = {mode(1920, 1080, 144), mode(3840, 2160, 30), mode(2560, 1440, 60)};
    EXPECT_THAT(finding().seen,
                HasSubstr("The best mode that it offers over HDMI is 3840 x 2160 at 30 Hz. That "
                          "is not enough."));
    EXPECT_THAT(finding().advice, HasSubstr("another cable"));
}

TEST_F(ResolutionTooLow, says_when_the_monitor_offers_no_mode) {
    kitMonitor().offeredModes.clear();
    EXPECT_THAT(finding().seen, HasSubstr("Windows lists no mode that it offers."));
    EXPECT_THAT(finding().advice, HasSubstr("driver"));
}

TEST_F(ResolutionTooLow, does_not_name_an_unknown_connection) {
    examination.reading.displayConfiguration = {};
    EXPECT_THAT(finding().seen, HasSubstr("The best mode that it offers is 3840 x 2160 at 60 Hz."));
}

TEST_F(ResolutionTooLow, is_explained_by_a_rotation) {
    setKitMode(2160, 3840, 60);
    kitMonitor().currentMode->mode.orientation = 1;
    kitTarget().activeWidth = 3840;
    kitTarget().activeHeight = 2160;
    EXPECT_THAT(findings(), ElementsAre("error rotated-picture"));
}

TEST_F(ResolutionTooLow, is_reported_beside_a_rotation_that_is_not_the_reason) {
    kitPath().rotation = 3;
    EXPECT_THAT(findings(), ElementsAre("error resolution-too-low", "error rotated-picture"));
}

TEST_F(ResolutionTooLow, is_reported_in_portrait_when_landscape_is_too_small_too) {
    setKitMode(1080, 1920, 60);
    kitPath().rotation = 2;
    EXPECT_THAT(findings(), Contains("error resolution-too-low"));
}

TEST_F(ResolutionTooLow, is_reported_for_a_monitor_that_is_no_longer_listed) {
    examination.status.monitor.reset();
    EXPECT_THAT(findings(), ElementsAre("error resolution-too-low"));
    EXPECT_EQ(finding().seen, "The monitor that the check judged is no longer listed.");
}

// The library read the information of the monitor, at another time.
TEST_F(ResolutionTooLow, is_reported_for_a_monitor_without_information) {
    const std::uint64_t handle = kitMonitor().handle;
    kitMonitor() = {};
    kitMonitor().handle = handle;
    EXPECT_THAT(findings(), ElementsAre("error resolution-too-low", "note unreadable-monitor"));
}

class BestMode : public DoctorTest {
protected:
    BestMode() { setKitMode(1920, 1080, 60); }

    std::string of(std::vector<snapshot::DisplayMode> modes) {
        kitMonitor().offeredModes = std::move(modes);
        const std::string seen = theFinding("resolution-too-low").seen;
        const std::string head = " over HDMI is ";
        const std::size_t start = seen.find(head) + head.size();
        return seen.substr(start, seen.find('.', start) - start);
    }
};

TEST_F(BestMode, passes_the_check) {
    EXPECT_EQ(of({mode(5120, 2880, 30), mode(3840, 2160, 59)}), "3840 x 2160 at 59 Hz");
}

TEST_F(BestMode, passes_the_check_with_both_sides) {
    kitPath().preferredMode.status = ERROR_NOT_SUPPORTED;
    EXPECT_EQ(of({mode(7680, 1440, 120), mode(2880, 5120, 120), mode(3840, 2160, 60)}),
              "3840 x 2160 at 60 Hz");
}

TEST_F(BestMode, has_the_size_of_the_panel) {
    kitPath().preferredMode = {0, 3840, 2160};
    EXPECT_EQ(of({mode(7680, 4320, 60), mode(3840, 2160, 60), mode(4096, 2160, 120)}),
              "3840 x 2160 at 60 Hz");
}

TEST_F(BestMode, has_the_highest_rate_of_its_size) {
    EXPECT_EQ(of({mode(3840, 2160, 60), mode(3840, 2160, 120), mode(3840, 2160, 100)}),
              "3840 x 2160 at 120 Hz");
}

TEST_F(BestMode, is_not_interlaced) {
    auto interlaced = mode(3840, 2160, 60);
    interlaced.interlaced = true;
    EXPECT_EQ(of({interlaced, mode(3840, 2160, 30)}), "3840 x 2160 at 30 Hz");
    EXPECT_EQ(of({interlaced}), "3840 x 2160 at 60 Hz, interlaced");
}

TEST_F(BestMode, is_measured_without_its_rotation) {
    auto portrait = mode(2160, 3840, 60);
    portrait.orientation = 3;
    EXPECT_EQ(of({portrait, mode(3840, 2160, 30)}), "2160 x 3840 at 60 Hz");
}

class RefreshRateTooLow : public DoctorTest {};

TEST_F(RefreshRateTooLow, shows_the_rate_and_the_best_mode) {
    setKitMode(3840, 2160, 30);
    EXPECT_THAT(findings(), ElementsAre("error refresh-rate-too-low"));
    EXPECT_EQ(
        theFinding("refresh-rate-too-low").seen,
        "The kit monitor \\\\.\\DISPLAY1 \"KIT 27\" is refreshed at 30 Hz, and at least 59 Hz "
        "are required. The best mode that it offers over HDMI is 3840 x 2160 at 60 Hz.");
}

TEST_F(RefreshRateTooLow, advises_another_cable_when_no_mode_is_enough) {
    setKitMode(3840, 2160, 30);
    kitMonitor().offeredModes = {mode(3840, 2160, 30), mode(1920, 1080, 60)};
    const Finding finding = theFinding("refresh-rate-too-low");
    EXPECT_THAT(finding.seen, HasSubstr("is 3840 x 2160 at 30 Hz. That is not enough."));
    EXPECT_THAT(finding.advice, HasSubstr("another cable"));
}

TEST_F(RefreshRateTooLow, explains_a_rate_that_stands_for_the_default) {
    for (const int rate : {0, 1}) {
        setKitMode(3840, 2160, rate);
        EXPECT_THAT(theFinding("refresh-rate-too-low").seen,
                    HasSubstr("Hz, which stands for the default of the hardware"));
    }
}

TEST_F(RefreshRateTooLow, is_reported_for_a_monitor_that_is_no_longer_listed) {
    examination.status = {false, MONITOR_REFRESH_RATE_INCORRECT, std::nullopt};
    EXPECT_THAT(findings(), ElementsAre("error refresh-rate-too-low"));
}

class RefreshRateBelow60 : public DoctorTest {};

TEST_F(RefreshRateBelow60, is_a_note_with_the_exact_rate) {
    setKitMode(3840, 2160, 59);
    kitPath().refreshRate = {60000, 1001};
    EXPECT_THAT(findings(), ElementsAre("note refresh-rate-below-60"));
    EXPECT_THAT(theFinding("refresh-rate-below-60").seen, HasSubstr("is refreshed at 59.94 Hz."));
}

TEST_F(RefreshRateBelow60, does_not_say_that_a_monitor_passes_that_does_not) {
    setKitMode(1920, 1080, 59);
    EXPECT_THAT(findings(), ElementsAre("error resolution-too-low", "note refresh-rate-below-60"));
    EXPECT_THAT(theFinding("refresh-rate-below-60").meaning,
                AllOf(HasSubstr("is enough for the check"), Not(HasSubstr("check passes"))));
}

TEST_F(RefreshRateBelow60, is_a_note_without_an_exact_rate) {
    setKitMode(3840, 2160, 59);
    kitPath().refreshRate = {0, 0};
    EXPECT_THAT(theFinding("refresh-rate-below-60").seen, HasSubstr("is refreshed at 59 Hz."));
}

TEST_F(RefreshRateBelow60, is_not_reported_for_a_rate_that_is_too_low) {
    setKitMode(3840, 2160, 58);
    EXPECT_THAT(findings(), ElementsAre("error refresh-rate-too-low"));
}

TEST_F(RefreshRateBelow60, is_not_reported_for_60_hz_and_more) {
    kitPath().refreshRate = {59996, 1000};
    EXPECT_THAT(findings(), IsEmpty());
    setKitMode(3840, 2160, 144);
    EXPECT_THAT(findings(), IsEmpty());
}

class InterlacedMode : public DoctorTest {};

TEST_F(InterlacedMode, prevents_3d_when_the_path_says_so) {
    for (const std::uint32_t order : {2U, 3U}) {
        kitPath().scanLineOrdering = order;
        EXPECT_THAT(findings(), ElementsAre("error interlaced-mode"));
    }
    kitPath().scanLineOrdering = 0;
    EXPECT_THAT(findings(), IsEmpty());
}

TEST_F(InterlacedMode, prevents_3d_when_the_display_mode_says_so) {
    kitMonitor().currentMode->mode.interlaced = true;
    EXPECT_THAT(findings(), ElementsAre("error interlaced-mode"));
    EXPECT_THAT(theFinding("interlaced-mode").advice, HasSubstr("Choose 3840 x 2160 at 60 Hz"));
}

} // namespace
} // namespace vorlen::tool
