#include "tests/support/module_test.h"

#include <gmock/gmock.h>

namespace tests {
namespace {

using testing::ElementsAre;

class Registration : public ModuleTest {};

TEST_F(Registration, announces_the_module_its_tables_and_its_functions_once_each_in_this_order) {
    EXPECT_THAT(module.runtime.registrations(),
                ElementsAre("RegisterModuleVersion(monitor, 2, 0, 4)", "RegisterMonitorWrapper",
                            "RegisterWindowEnumWrapper", "RegisterModuleInit",
                            "RegisterModuleCleanup"));
}

TEST_F(Registration, leaves_no_slot_of_the_tables_empty) {
    const vorlen::MonitorWrapper monitors = module.monitorWrapper();
    EXPECT_NE(monitors.getWindowList, nullptr);
    EXPECT_NE(monitors.getMonitorList, nullptr);
    EXPECT_NE(monitors.getCurrentMonitorName, nullptr);
    EXPECT_NE(monitors.getVorlenModelName, nullptr);
    EXPECT_NE(monitors.getVorlenModelNameWide, nullptr);
    EXPECT_NE(monitors.setVorlenModelName, nullptr);
    EXPECT_NE(monitors.getVorlenCameraName, nullptr);
    EXPECT_NE(monitors.useWindowList, nullptr);

    const vorlen::WindowEnumWrapper lists = module.windowEnumWrapper();
    EXPECT_NE(lists.updateMonitorList, nullptr);
    EXPECT_NE(lists.registerWindowComboBox, nullptr);
    EXPECT_NE(lists.registerMonitorComboBox, nullptr);
    EXPECT_NE(lists.getWindowHandle, nullptr);
    EXPECT_NE(lists.getMonitorHandle, nullptr);
}

TEST_F(Registration, has_eight_and_five_slots) {
    EXPECT_EQ(sizeof(vorlen::MonitorWrapper), 8 * sizeof(void*));
    EXPECT_EQ(sizeof(vorlen::WindowEnumWrapper), 5 * sizeof(void*));
}

TEST_F(Registration, makes_no_service) {
    EXPECT_EQ(module.exports->getMonitorData(), nullptr);
}

TEST_F(Registration, is_repeated_when_the_library_is_loaded_again) {
    module.unload();
    module.load();
    EXPECT_EQ(module.runtime.registrations().size(), 10u);
}

} // namespace
} // namespace tests
