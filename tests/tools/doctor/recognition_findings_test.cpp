#include "tests/tools/doctor/doctor_test.h"

#include <windows.h>

namespace vorlen::tool {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::UnorderedElementsAre;

class NoKitMonitor : public DoctorTest {
protected:
    NoKitMonitor() {
        recogniseNone();
        examination.kitModels = {L"KIT 32"};
    }
};

TEST_F(NoKitMonitor, shows_every_name_and_the_given_models) {
    setText(examination.monitors[1].friendlyName, L"");
    EXPECT_THAT(theFinding("no-kit-monitor").seen,
                AllOf(HasSubstr("\\\\.\\DISPLAY1 \"KIT 27\", \\\\.\\DISPLAY2 without a name"),
                      HasSubstr("Given kit models: \"KIT 32\".")));
}

TEST_F(NoKitMonitor, says_when_no_model_was_given) {
    examination.kitModels.clear();
    EXPECT_THAT(findings(), ElementsAre("error no-kit-monitor"));
    EXPECT_THAT(theFinding("no-kit-monitor").seen,
                HasSubstr("No kit model is given in VORLEN_KIT_MODELS or with --kit-model."));
}

TEST_F(NoKitMonitor, says_when_there_is_no_monitor) {
    examination.monitors.clear();
    EXPECT_THAT(theFinding("no-kit-monitor").seen, HasSubstr("The library lists no monitor."));
}

class KitNameDiffers : public NoKitMonitor {
protected:
    std::string seenFor(std::wstring_view name) {
        rename(0, name);
        return theFinding("kit-name-differs").seen;
    }
};

TEST_F(KitNameDiffers, finds_a_difference_in_case) {
    EXPECT_EQ(seenFor(L"Kit 32"), "\\\\.\\DISPLAY1 is named \"Kit 32\", and the kit model "
                                  "\"KIT 32\". They differ in case.");
}

TEST_F(KitNameDiffers, finds_a_difference_in_spaces) {
    EXPECT_THAT(seenFor(L"KIT32"), HasSubstr("They differ in spaces."));
    EXPECT_THAT(seenFor(L"KIT\u00A032"), HasSubstr("They differ in spaces."));
}

TEST_F(KitNameDiffers, finds_a_difference_in_case_and_spaces) {
    EXPECT_THAT(seenFor(L"The kit32 X"), HasSubstr("They differ in case and spaces."));
}

TEST_F(KitNameDiffers, finds_it_at_a_cloned_output_and_without_a_device_name) {
    otherPath().sourceName = {ERROR_INVALID_PARAMETER, L""};
    rename(1, L"kit 32");
    EXPECT_THAT(theFinding("kit-name-differs").seen, HasSubstr("A monitor without a device name"));
}

TEST_F(KitNameDiffers, does_not_report_another_name) {
    rename(0, L"KIT 3");
    EXPECT_THAT(findings(), ElementsAre("error no-kit-monitor"));
}

TEST_F(KitNameDiffers, does_not_report_a_name_that_contains_the_model) {
    rename(0, L"A KIT 32 B");
    EXPECT_THAT(findings(), ElementsAre("error no-kit-monitor"));
}

TEST_F(KitNameDiffers, ignores_a_model_of_spaces_only) {
    examination.kitModels = {L"   "};
    EXPECT_THAT(findings(), ElementsAre("error no-kit-monitor"));
}

class GenericName : public NoKitMonitor {};

TEST_F(GenericName, is_that_of_a_driver) {
    rename(1, L"Generic PnP Monitor");
    EXPECT_THAT(findings(), ElementsAre("error no-kit-monitor", "warning generic-name"));
    EXPECT_EQ(theFinding("generic-name").seen, "\\\\.\\DISPLAY2 is named \"Generic PnP Monitor\".");
}

class MissingName : public NoKitMonitor {
protected:
    MissingName() {
        rename(0, L"");
        EXPECT_THAT(findings(), ElementsAre("error no-kit-monitor", "warning missing-name"));
    }

    std::string seen() { return theFinding("missing-name").seen; }
};

TEST_F(MissingName, can_be_what_the_monitor_reports) {
    EXPECT_EQ(seen(),
              "\\\\.\\DISPLAY1 has no name. All requests succeeded, and the name is empty.");
}

// The panels of most portable computers have no name.
TEST_F(MissingName, is_a_note_for_the_panel_of_a_portable_computer) {
    for (const auto connection :
         {DISPLAYCONFIG_OUTPUT_TECHNOLOGY_INTERNAL,
          DISPLAYCONFIG_OUTPUT_TECHNOLOGY_DISPLAYPORT_EMBEDDED,
          DISPLAYCONFIG_OUTPUT_TECHNOLOGY_UDI_EMBEDDED, DISPLAYCONFIG_OUTPUT_TECHNOLOGY_LVDS}) {
        kitPath().outputTechnology = static_cast<std::uint32_t>(connection);
        EXPECT_THAT(findings(), ElementsAre("error no-kit-monitor", "note missing-name"));
    }
    EXPECT_THAT(theFinding("missing-name").meaning, HasSubstr("most have no name"));
    kitPath().targetName.status = ERROR_GEN_FAILURE;
    EXPECT_THAT(findings(), ElementsAre("error no-kit-monitor", "warning missing-name"));
}

TEST_F(MissingName, comes_from_a_failed_request_for_the_target) {
    kitPath().targetName.status = ERROR_GEN_FAILURE;
    EXPECT_THAT(
        seen(),
        HasSubstr("The request for the target name failed with status 31 (ERROR_GEN_FAILURE)."));
}

TEST_F(MissingName, comes_from_a_failed_request_for_the_source) {
    kitPath().sourceName = {ERROR_INVALID_PARAMETER, L""};
    EXPECT_THAT(seen(), HasSubstr("No display path has its device name. The request for the source "
                                  "name of a path failed with status 87"));
}

TEST_F(MissingName, comes_from_a_missing_path) {
    kitPath().sourceName.gdiDeviceName = L"\\\\.\\DISPLAY7";
    EXPECT_THAT(seen(),
                AllOf(HasSubstr("No display path has its device name."), Not(HasSubstr("failed"))));
}

class DisplayConfigurationFailed : public NoKitMonitor {
protected:
    DisplayConfigurationFailed() {
        rename(0, L"");
        rename(1, L"");
        examination.reading.displayConfiguration = {};
    }

    snapshot::DisplayConfiguration& configuration() {
        return examination.reading.displayConfiguration;
    }
};

TEST_F(DisplayConfigurationFailed, names_the_query_and_what_was_announced) {
    configuration().announcedPaths = 2;
    configuration().announcedModes = 4;
    configuration().queryStatus = ERROR_INSUFFICIENT_BUFFER;
    EXPECT_EQ(theFinding("display-configuration-failed").seen,
              "GetDisplayConfigBufferSizes announced 2 paths and 4 modes, and QueryDisplayConfig "
              "returned status 122 (ERROR_INSUFFICIENT_BUFFER).");
}

TEST_F(DisplayConfigurationFailed, names_the_request_for_the_sizes) {
    configuration().sizesStatus = ERROR_ACCESS_DENIED;
    EXPECT_EQ(theFinding("display-configuration-failed").seen,
              "GetDisplayConfigBufferSizes returned status 5 (ERROR_ACCESS_DENIED).");
}

TEST_F(DisplayConfigurationFailed, explains_all_missing_names) {
    configuration().queryStatus = ERROR_INSUFFICIENT_BUFFER;
    EXPECT_THAT(findings(),
                ElementsAre("error no-kit-monitor", "warning display-configuration-failed"));
}

class ClonedMonitor : public DoctorTest {
protected:
    // The second output shows the picture of the first.
    ClonedMonitor() {
        otherPath().sourceName.gdiDeviceName = L"\\\\.\\DISPLAY1";
        examination.reading.monitors.pop_back();
        examination.monitors.pop_back();
    }
};

TEST_F(ClonedMonitor, prevents_3d_when_it_is_the_kit_monitor) {
    EXPECT_THAT(findings(), ElementsAre("error cloned-monitor"));
    EXPECT_EQ(theFinding("cloned-monitor").seen,
              "The picture of \\\\.\\DISPLAY1 is shown on 2 monitors: \"KIT 27\", \"Office\".");
    EXPECT_THAT(theFinding("cloned-monitor").meaning, HasSubstr("code 22"));
}

TEST_F(ClonedMonitor, prevents_3d_when_only_the_runtime_knows_the_kit_monitor) {
    examination.kitModels.clear();
    EXPECT_THAT(findings(), ElementsAre("error cloned-monitor"));
}

TEST_F(ClonedMonitor, prevents_3d_when_a_name_contains_a_kit_model) {
    recogniseNone();
    kitPath().targetName.friendlyName = L"Office";
    otherPath().targetName.friendlyName = L"A KIT 27 B";
    EXPECT_THAT(findings(), Contains("error cloned-monitor"));
}

TEST_F(ClonedMonitor, can_hide_the_kit_monitor_from_the_library) {
    kitPath().targetName.friendlyName = L"Office";
    otherPath().targetName.friendlyName = L"KIT 27";
    setText(examination.monitors[0].friendlyName, L"Office");
    recogniseNone();
    EXPECT_THAT(findings(), UnorderedElementsAre("error no-kit-monitor", "error cloned-monitor"));
}

// The kit's own runtime knows models that are not given here.
TEST_F(ClonedMonitor, may_hide_a_kit_monitor_whose_model_was_not_given) {
    examination.kitModels.clear();
    recogniseNone();
    EXPECT_THAT(findings(), ElementsAre("error no-kit-monitor", "warning cloned-monitor"));
    EXPECT_THAT(theFinding("cloned-monitor").meaning, HasSubstr("may be the kit monitor"));
}

TEST_F(ClonedMonitor, is_a_note_beside_the_kit_monitor) {
    snapshot::DisplayPath third = otherPath();
    otherPath().sourceName.gdiDeviceName = third.sourceName.gdiDeviceName = L"\\\\.\\DISPLAY2";
    examination.reading.displayConfiguration.paths.push_back(third);
    EXPECT_THAT(findings(), ElementsAre("note cloned-monitor"));
}

TEST_F(ClonedMonitor, is_not_reported_for_paths_without_a_device_name) {
    kitPath().sourceName = {ERROR_INVALID_PARAMETER, L""};
    otherPath().sourceName = {ERROR_INVALID_PARAMETER, L""};
    EXPECT_THAT(findings(), Not(Contains(HasSubstr("cloned-monitor"))));
}

class Recognition : public DoctorTest {};

// With a kit monitor, the names of other monitors are of no interest.
TEST_F(Recognition, is_not_examined_when_a_kit_monitor_is_recognised) {
    rename(1, L"kit27");
    EXPECT_THAT(findings(), IsEmpty());
    rename(1, L"Generic PnP Monitor");
    EXPECT_THAT(findings(), IsEmpty());
    rename(1, L"");
    EXPECT_THAT(findings(), IsEmpty());
}

} // namespace
} // namespace vorlen::tool
