#include "tests/support/module_under_test.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace tests {

namespace {

RecordingRuntime& recordingRuntimeOf(const Library& library) {
    decltype(RecordingRuntime_Get)* getter = nullptr;
    library.resolve(getter, "RecordingRuntime_Get");
    return *getter();
}

// What the system takes once for the libraries that the module needs is taken before the first
// test.
class LoadingWarmUp final : public testing::Environment {
    void SetUp() override { const ModuleUnderTest module; }
};

[[maybe_unused]] const auto* const warmUp = testing::AddGlobalTestEnvironment(new LoadingWarmUp);

} // namespace

Exports::Exports(const Library& library) {
    library.resolve(checkMonitorStatus, "checkMonitorStatus");
    library.resolve(getMonitorList, "getMonitorList");
    library.resolve(getWindowList, "getWindowList");
    library.resolve(getMonitorModelName, "getMonitorModelName");
    library.resolve(getVorlenMonitorModelName, "getVorlenMonitorModelName");
    library.resolve(setVorlenMonitorModelName, "setVorlenMonitorModelName");
    library.resolve(getMonitorRect, "getMonitorRect");
    library.resolve(updateMonitorList, "updateMonitorList");
    library.resolve(getLastMonitorStatus, "getLastMonitorStatus");
    library.resolve(getCheckedMonitor, "getCheckedMonitor");
    library.resolve(getWindowRefusal, "getWindowRefusal");
    library.resolve(restartWindowList, "restartWindowList");
    library.resolve(getMonitorData, "_ZN6vorlen16monitor_internal14GetMonitorDataEv");
}

// The module finds the runtime by its base name among the loaded libraries, so that the recording
// one, loaded first, stands in for the shipped one beside the module.
ModuleUnderTest::ModuleUnderTest()
    : runtimeLibrary("recording_runtime/vorlen_runtime.dll"),
      runtime(recordingRuntimeOf(runtimeLibrary)) {
    load();
}

ModuleUnderTest::~ModuleUnderTest() {
    unload();
}

void ModuleUnderTest::unload() {
    exports.reset();
    moduleLibrary.reset();
}

void ModuleUnderTest::load() {
    const std::size_t before = runtime.registrations().size();
    moduleLibrary.emplace("../bin/libvorlen_monitor.dll");
    if (runtime.registrations().size() == before) {
        throw std::runtime_error("the module did not register with the recording runtime");
    }
    exports.emplace(*moduleLibrary);
}

} // namespace tests
