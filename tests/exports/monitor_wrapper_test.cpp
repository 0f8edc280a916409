#include "tests/fixtures/module_test.h"
#include "tests/fixtures/service_members.h"

#include <gmock/gmock.h>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using namespace std::chrono_literals;

// The functions through which the runtime reaches the service.
class MonitorWrapperTable : public RunningModuleTest {
protected:
    const vorlen::MonitorWrapper table = module.monitorWrapper();
};

TEST_F(MonitorWrapperTable, returns_the_services_own_list_of_monitors) {
    const auto& monitors = table.getMonitorList();
    EXPECT_EQ(&monitors, &cachedMonitors(service()));
    ASSERT_THAT(monitors, SizeIs(3));
    EXPECT_EQ(monitors[1].handle, desktop.monitors.all[1].handle);
    EXPECT_EQ(monitors[1].deviceName, display1);
    EXPECT_EQ(monitors[1].friendlyName, L"Model A");
    EXPECT_EQ(monitors[1].monitorId, L"");
    EXPECT_EQ(monitors[1].y, wideMode.y);
    EXPECT_EQ(monitors[1].refreshRate, 60);
}

TEST_F(MonitorWrapperTable, returns_the_cores_text_of_the_current_monitors_name) {
    module.runtime.setMonitorName("the name");
    EXPECT_EQ(table.getCurrentMonitorName(), module.runtime.monitorName().c_str());
}

TEST_F(MonitorWrapperTable, finds_the_kit_models_of_a_device_name) {
    module.runtime.makeModelKnown("Model A");
    EXPECT_THAT(table.getVorlenModelName(R"(\\.\DISPLAY1)"), ElementsAre("Model A"));
    EXPECT_THAT(table.getVorlenModelName(R"(\\.\DISPLAY2)"), IsEmpty());
    EXPECT_EQ(&table.getVorlenModelNameWide(display1),
              &table.getVorlenModelName(R"(\\.\DISPLAY1)"));
}

TEST_F(MonitorWrapperTable, takes_the_low_byte_of_each_unit_of_a_wide_name) {
    table.getVorlenModelNameWide(L"AB\u00E9\u3042");
    EXPECT_THAT(core.texts, ElementsAre("AB\xE9\x42"));
}

TEST_F(MonitorWrapperTable, gives_the_core_a_kit_model) {
    table.setVorlenModelName("Model C");
    EXPECT_THAT(core.names(), ElementsAre("Instance", "SetVorlenModelName"));
    EXPECT_THAT(table.getVorlenModelName(R"(\\.\DISPLAY3)"), ElementsAre("Model C"));
}

TEST_F(MonitorWrapperTable, returns_the_cores_text_of_a_camera) {
    core.cameraName = "camera of C";
    EXPECT_EQ(table.getVorlenCameraName("Model C"), core.cameraName.c_str());
    EXPECT_THAT(core.texts, ElementsAre("Model C"));
}

TEST_F(MonitorWrapperTable, reads_no_monitor_for_models_and_cameras) {
    desktop.clock.advance(1h);
    table.getVorlenModelName("device");
    table.getVorlenModelNameWide(L"device");
    table.setVorlenModelName("model");
    table.getVorlenCameraName("model");
    EXPECT_THAT(desktop.displayCalls(), IsEmpty());
}

} // namespace
} // namespace tests
