#include "tests/fixtures/module_test.h"

#include <gmock/gmock.h>

#include <cstddef>

namespace tests {
namespace {

using testing::ElementsAre;
using vorlen::MonitorWrapper;
using vorlen::WindowEnumWrapper;

// A runtime that was built apart finds the functions of the tables by their place alone.
constexpr std::size_t pointerSize = sizeof(void*);
static_assert(sizeof(MonitorWrapper) == 8 * pointerSize);
static_assert(offsetof(MonitorWrapper, getWindowList) == 0 * pointerSize);
static_assert(offsetof(MonitorWrapper, getMonitorList) == 1 * pointerSize);
static_assert(offsetof(MonitorWrapper, getCurrentMonitorName) == 2 * pointerSize);
static_assert(offsetof(MonitorWrapper, getVorlenModelName) == 3 * pointerSize);
static_assert(offsetof(MonitorWrapper, getVorlenModelNameWide) == 4 * pointerSize);
static_assert(offsetof(MonitorWrapper, setVorlenModelName) == 5 * pointerSize);
static_assert(offsetof(MonitorWrapper, getVorlenCameraName) == 6 * pointerSize);
static_assert(offsetof(MonitorWrapper, useWindowList) == 7 * pointerSize);
static_assert(sizeof(WindowEnumWrapper) == 5 * pointerSize);
static_assert(offsetof(WindowEnumWrapper, updateMonitorList) == 0 * pointerSize);
static_assert(offsetof(WindowEnumWrapper, registerWindowComboBox) == 1 * pointerSize);
static_assert(offsetof(WindowEnumWrapper, registerMonitorComboBox) == 2 * pointerSize);
static_assert(offsetof(WindowEnumWrapper, getWindowHandle) == 3 * pointerSize);
static_assert(offsetof(WindowEnumWrapper, getMonitorHandle) == 4 * pointerSize);

class Registration : public ModuleTest {};

// Promise (Loading, init, cleanup and unloading): Loading the library registers the module
// "monitor" 2.0.4, its two tables, init and cleanup with the runtime, once each. It makes no
// service.
TEST_F(Registration, is_made_once_while_the_library_is_loaded) {
    EXPECT_THAT(module.runtime.registrations(),
                ElementsAre("RegisterModuleVersion(monitor, 2, 0, 4)", "RegisterMonitorWrapper",
                            "RegisterWindowEnumWrapper", "RegisterModuleInit",
                            "RegisterModuleCleanup"));
    EXPECT_EQ(module.exports->getMonitorData(), nullptr);
}

TEST_F(Registration, is_repeated_when_the_library_is_loaded_again) {
    module.unload();
    module.load();
    EXPECT_EQ(module.runtime.registrations().size(), 10u);
}

} // namespace
} // namespace tests
