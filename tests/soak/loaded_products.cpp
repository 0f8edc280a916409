#include "tests/soak/loaded_products.h"

#include "monitor/service/ui_records.h"
#include "tests/fixtures/mangled_names.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

namespace tests {

namespace {

// Longer than what a string keeps inside itself, like all texts here.
constexpr const char* modelName = "a kit model that some monitor carries";

} // namespace

LoadedProducts::LoadedProducts() {
    moduleLibrary.resolve(getMonitorName, mangled::getNameOfMonitor);
    moduleLibrary.resolve(getMonitorPath, mangled::getPathOfMonitor);
    moduleLibrary.resolve(getMonitorBasicInfo, mangled::getMonitorBasicInfo);
}

void LoadedProducts::useEverything(HWND monitorBox, HWND windowBox) const {
    ASSERT_NE(functions.getMonitorData(), nullptr);
    useMonitorTable();
    useWindowEnumTable(monitorBox, windowBox);
    useLists();
    useNames();
    useStatus();
    useSingleMonitor(runtimeLibrary.getWindowEnumWrapper()->getMonitorHandle(0));
}

void LoadedProducts::useLists() const {
    functions.updateMonitorList();
    const int monitorCount = functions.getMonitorList(nullptr, 0);
    EXPECT_GT(monitorCount, 0);
    std::vector<MonitorListItem> monitors(static_cast<std::size_t>(monitorCount));
    EXPECT_EQ(functions.getMonitorList(monitors.data(), monitorCount), monitorCount);
    const int windowCount = functions.getWindowList(nullptr, 0);
    EXPECT_GT(windowCount, 0);
    std::vector<WindowListItem> windows(static_cast<std::size_t>(windowCount));
    EXPECT_EQ(functions.getWindowList(windows.data(), windowCount), windowCount);
    EXPECT_EQ(functions.getReasonNotCapturable(windows[0].handle), nullptr);
    EXPECT_TRUE(functions.restartWindowList());
}

void LoadedProducts::useNames() const {
    functions.getMonitorModelName();
    const std::string name = "the name of a model that was set";
    functions.setVorlenMonitorModelName(name.data(), static_cast<std::int32_t>(name.size()));
    EXPECT_STREQ(functions.getVorlenMonitorModelName(), name.c_str());
    EXPECT_THROW(functions.setVorlenMonitorModelName(name.data(), -1), std::length_error);
    functions.getMonitorRect();
}

void LoadedProducts::useStatus() const {
    const bool passed = functions.checkMonitorStatus();
    EXPECT_EQ(functions.getLastMonitorStatus() == 16, passed);
    MonitorListItem checked{};
    functions.getCheckedMonitor(&checked);
}

void LoadedProducts::useSingleMonitor(HMONITOR monitor) const {
    EXPECT_NE(monitor, nullptr);
    MonitorInfo info;
    getMonitorBasicInfo(monitor, info);
    EXPECT_EQ(getMonitorName(monitor), info.friendlyName);
    EXPECT_EQ(getMonitorPath(monitor), info.devicePath);
}

void LoadedProducts::useMonitorTable() const {
    const vorlen::MonitorWrapper& table = *runtimeLibrary.getMonitorWrapper();
    table.setVorlenModelName(modelName);
    table.useWindowList(false);
    table.useWindowList(true);
    EXPECT_FALSE(table.getWindowList().empty());
    ASSERT_FALSE(table.getMonitorList().empty());
    const std::wstring deviceName = table.getMonitorList()[0].deviceName;
    const std::string narrowName(deviceName.begin(), deviceName.end());
    EXPECT_EQ(&table.getVorlenModelName(narrowName.c_str()),
              &table.getVorlenModelNameWide(deviceName.c_str()));
    EXPECT_NE(table.getCurrentMonitorName(), nullptr);
    EXPECT_STREQ(table.getVorlenCameraName(modelName), "");
}

void LoadedProducts::useWindowEnumTable(HWND monitorBox, HWND windowBox) const {
    const vorlen::WindowEnumWrapper& table = *runtimeLibrary.getWindowEnumWrapper();
    table.updateMonitorList();
    table.registerMonitorComboBox(monitorBox);
    table.registerWindowComboBox(windowBox);
    EXPECT_NE(table.getWindowHandle(0), nullptr);
}

} // namespace tests
