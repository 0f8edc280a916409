#include "monitor/display/monitor_info.h"
#include "tests/fixtures/mangled_names.h"
#include "tests/fixtures/module_test.h"
#include "tests/support/other_thread.h"

#include <gmock/gmock.h>

#include <cstddef>
#include <type_traits>

namespace tests {
namespace {

using testing::ElementsAre;

// The layout in which the record crosses the boundary of the library.
constexpr std::size_t textSize = sizeof(std::wstring);
static_assert(offsetof(MonitorInfo, hMonitor) == 0);
static_assert(offsetof(MonitorInfo, deviceName) == 8);
static_assert(offsetof(MonitorInfo, friendlyName) == 8 + textSize);
static_assert(offsetof(MonitorInfo, devicePath) == 8 + 2 * textSize);
static_assert(offsetof(MonitorInfo, monitorId) == 8 + 3 * textSize);
static_assert(offsetof(MonitorInfo, reservedText) == 8 + 4 * textSize);
static_assert(offsetof(MonitorInfo, x) == 8 + 5 * textSize);
static_assert(offsetof(MonitorInfo, refreshRate) == 8 + 5 * textSize + 16);
static_assert(std::is_nothrow_move_constructible_v<MonitorInfo>);

// The C++ functions that the library exports for single monitors. They need no service.
class SingleMonitorTest : public ModuleTest {
protected:
    SingleMonitorTest() {
        const Library library(product("libvorlen_monitor.dll"));
        library.resolve(getName, mangled::getNameOfMonitor);
        library.resolve(getPath, mangled::getPathOfMonitor);
        library.resolve(getBasicInfo, mangled::getMonitorBasicInfo);

        desktop.monitors.add(display1, wideMode);
        monitor = desktop.monitors.add(display2, smallMode).handle;
        desktop.displayPaths.add(display1, L"Model A", L"path of A");
        desktop.displayPaths.add(display2, L"Model B", L"path of B");
    }

    std::wstring (*getName)(HMONITOR) = nullptr;
    std::wstring (*getPath)(HMONITOR) = nullptr;
    void (*getBasicInfo)(HMONITOR, MonitorInfo&) = nullptr;
    HMONITOR monitor;
    const HMONITOR detached = reinterpret_cast<HMONITOR>(0x666);
};

// getMonitorName and getMonitorPath.
class MonitorName : public SingleMonitorTest {
protected:
    void expectNameAndPath(const std::wstring& name, const std::wstring& path) {
        EXPECT_EQ(getName(monitor), name);
        EXPECT_EQ(getPath(monitor), path);
    }
};

TEST_F(MonitorName, is_that_of_the_first_path_to_the_monitor) {
    desktop.displayPaths.add(display2, L"Second", L"path of the second");
    expectNameAndPath(L"Model B", L"path of B");
}

TEST_F(MonitorName, is_empty_for_a_detached_monitor) {
    EXPECT_EQ(getName(detached), L"");
    desktop.displayPaths.all[0].sourceNameStatus = ERROR_GEN_FAILURE;
    EXPECT_EQ(getName(detached), L"") << "the source without a name was taken for it";
    EXPECT_EQ(getPath(detached), L"");
}

TEST_F(MonitorName, is_empty_when_no_path_has_exactly_the_device_name) {
    desktop.displayPaths.all[1].gdiDeviceName = LR"(\\.\Display2)";
    expectNameAndPath(L"", L"");
}

TEST_F(MonitorName, is_found_behind_a_path_whose_source_has_no_name) {
    desktop.displayPaths.all[0].sourceNameStatus = ERROR_GEN_FAILURE;
    expectNameAndPath(L"Model B", L"path of B");
}

TEST_F(MonitorName, is_empty_when_the_first_target_has_none) {
    desktop.displayPaths.all[1].targetNameStatus = ERROR_GEN_FAILURE;
    desktop.displayPaths.add(display2, L"Second", L"not looked at");
    expectNameAndPath(L"", L"");
}

TEST_F(MonitorName, is_empty_when_the_configuration_cannot_be_read) {
    desktop.journal.failAll("QueryDisplayConfig", ERROR_INSUFFICIENT_BUFFER);
    expectNameAndPath(L"", L"");
    desktop.journal.failAll("GetDisplayConfigBufferSizes", ERROR_ACCESS_DENIED);
    expectNameAndPath(L"", L"");
}

TEST_F(MonitorName, ignores_the_status_of_a_configuration_that_was_written) {
    desktop.displayPaths.sizesStatus = ERROR_ACCESS_DENIED;
    expectNameAndPath(L"Model B", L"path of B");
    desktop.displayPaths.sizesStatus = ERROR_SUCCESS;
    desktop.displayPaths.queryStatus = ERROR_GEN_FAILURE;
    expectNameAndPath(L"Model B", L"path of B");
}

TEST_F(MonitorName, may_be_asked_for_on_any_thread) {
    module.init();
    onAnotherThread([this] {
        expectNameAndPath(L"Model B", L"path of B");
        MonitorInfo info;
        getBasicInfo(monitor, info);
        EXPECT_EQ(info.friendlyName, L"Model B");
    });
}

// getMonitorBasicInfo.
class MonitorBasicInfo : public SingleMonitorTest {
protected:
    MonitorBasicInfo() {
        info.hMonitor = reinterpret_cast<HMONITOR>(0x77);
        info.deviceName = L"device";
        info.friendlyName = L"friendly";
        info.devicePath = L"path";
        info.monitorId = L"id";
        info.reservedText = L"reserved";
        info.x = info.y = info.width = info.height = info.refreshRate = 99;
    }

    void expectNumbers(const DisplayMode& mode) const {
        EXPECT_EQ(info.x, mode.x);
        EXPECT_EQ(info.y, mode.y);
        EXPECT_EQ(info.width, static_cast<std::int32_t>(mode.width));
        EXPECT_EQ(info.height, static_cast<std::int32_t>(mode.height));
        EXPECT_EQ(info.refreshRate, static_cast<std::int32_t>(mode.frequency));
    }

    void expectNames(const std::wstring& friendlyName, const std::wstring& devicePath) const {
        EXPECT_EQ(info.friendlyName, friendlyName);
        EXPECT_EQ(info.devicePath, devicePath);
    }

    MonitorInfo info;
};

TEST_F(MonitorBasicInfo, writes_settings_and_names_and_nothing_else) {
    getBasicInfo(monitor, info);
    expectNumbers(smallMode);
    expectNames(L"Model B", L"path of B");
    EXPECT_EQ(info.hMonitor, reinterpret_cast<HMONITOR>(0x77));
    EXPECT_EQ(info.deviceName, L"device");
    EXPECT_EQ(info.monitorId, L"id");
    EXPECT_EQ(info.reservedText, L"reserved");
}

TEST_F(MonitorBasicInfo, keeps_the_names_when_no_path_leads_to_the_monitor) {
    desktop.displayPaths.all.pop_back();
    getBasicInfo(monitor, info);
    expectNumbers(smallMode);
    expectNames(L"friendly", L"path");
}

TEST_F(MonitorBasicInfo, keeps_the_names_of_a_detached_monitor) {
    desktop.displayPaths.all[0].sourceNameStatus = ERROR_GEN_FAILURE;
    getBasicInfo(detached, info);
    expectNames(L"friendly", L"path");
}

TEST_F(MonitorBasicInfo, writes_the_settings_of_no_device_for_a_detached_monitor) {
    getBasicInfo(detached, info);
    expectNumbers({0, 0, 0, 0, 0});
    desktop.monitors.noNameIsFirst = true;
    getBasicInfo(detached, info);
    expectNumbers(wideMode);
}

TEST_F(MonitorBasicInfo, empties_the_names_when_the_target_has_none) {
    desktop.displayPaths.all[1].targetNameStatus = ERROR_GEN_FAILURE;
    getBasicInfo(monitor, info);
    expectNames(L"", L"");
}

TEST_F(MonitorBasicInfo, reads_settings_and_configuration_once_up_to_the_path) {
    desktop.displayPaths.add(display3, L"behind", L"not looked at");
    getBasicInfo(monitor, info);
    EXPECT_THAT(desktop.displayCalls(),
                ElementsAre("GetMonitorInfoW", "EnumDisplaySettingsW",
                            "GetDisplayConfigBufferSizes", "QueryDisplayConfig",
                            "DisplayConfigGetDeviceInfo", "DisplayConfigGetDeviceInfo",
                            "DisplayConfigGetDeviceInfo"));
}

} // namespace
} // namespace tests
