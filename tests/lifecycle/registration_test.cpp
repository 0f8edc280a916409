#include "tests/fixtures/module_test.h"

#include <gmock/gmock.h>

#include <cstddef>

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

// A runtime that was built apart finds the functions by their place alone.
TEST_F(Registration, has_its_functions_in_the_slots_that_the_runtime_knows_them_by) {
    constexpr std::size_t slot = sizeof(void*);
    using vorlen::MonitorWrapper;
    EXPECT_EQ(offsetof(MonitorWrapper, getWindowList), 0 * slot);
    EXPECT_EQ(offsetof(MonitorWrapper, getMonitorList), 1 * slot);
    EXPECT_EQ(offsetof(MonitorWrapper, getCurrentMonitorName), 2 * slot);
    EXPECT_EQ(offsetof(MonitorWrapper, getVorlenModelName), 3 * slot);
    EXPECT_EQ(offsetof(MonitorWrapper, getVorlenModelNameWide), 4 * slot);
    EXPECT_EQ(offsetof(MonitorWrapper, setVorlenModelName), 5 * slot);
    EXPECT_EQ(offsetof(MonitorWrapper, getVorlenCameraName), 6 * slot);
    EXPECT_EQ(offsetof(MonitorWrapper, useWindowList), 7 * slot);

    using vorlen::WindowEnumWrapper;
    EXPECT_EQ(offsetof(WindowEnumWrapper, updateMonitorList), 0 * slot);
    EXPECT_EQ(offsetof(WindowEnumWrapper, registerWindowComboBox), 1 * slot);
    EXPECT_EQ(offsetof(WindowEnumWrapper, registerMonitorComboBox), 2 * slot);
    EXPECT_EQ(offsetof(WindowEnumWrapper, getWindowHandle), 3 * slot);
    EXPECT_EQ(offsetof(WindowEnumWrapper, getMonitorHandle), 4 * slot);
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
