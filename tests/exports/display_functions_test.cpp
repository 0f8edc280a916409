#include "monitor/display/monitor_info.h"
#include "tests/fixtures/module_test.h"
#include "tests/support/other_thread.h"

#include <gmock/gmock.h>

namespace tests {
namespace {

using testing::ElementsAre;

// The C++ functions that the library exports for single monitors. They need no service.
class SingleMonitorFunctions : public ModuleTest {
protected:
    SingleMonitorFunctions() {
        const Library library("../bin/libvorlen_monitor.dll");
        library.resolve(getName, "_Z14getMonitorNameB5cxx11P10HMONITOR__");
        library.resolve(getPath, "_Z14getMonitorPathB5cxx11P10HMONITOR__");
        library.resolve(getBasicInfo, "_Z19getMonitorBasicInfoP10HMONITOR__R11MonitorInfo");

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

class MonitorNameAndPath : public SingleMonitorFunctions {
protected:
    void expectNameAndPath(const std::wstring& name, const std::wstring& path) {
        EXPECT_EQ(getName(monitor), name);
        EXPECT_EQ(getPath(monitor), path);
    }
};

TEST_F(MonitorNameAndPath, are_those_of_the_path_to_the_monitor) {
    expectNameAndPath(L"Model B", L"path of B");
}

TEST_F(MonitorNameAndPath, are_those_of_the_first_path_of_a_duplicated_desktop) {
    desktop.displayPaths.add(display2, L"Second", L"path of the second");
    expectNameAndPath(L"Model B", L"path of B");
}

TEST_F(MonitorNameAndPath, are_empty_for_a_monitor_that_is_no_longer_attached) {
    EXPECT_EQ(getName(detached), L"");
    EXPECT_EQ(getPath(detached), L"");
}

TEST_F(MonitorNameAndPath, are_empty_for_a_detached_monitor_though_a_source_has_no_name_either) {
    desktop.displayPaths.all[0].sourceNameStatus = ERROR_GEN_FAILURE;
    EXPECT_EQ(getName(detached), L"");
    EXPECT_EQ(getPath(detached), L"");
}

TEST_F(MonitorNameAndPath, are_empty_when_no_path_leads_to_the_monitor) {
    desktop.displayPaths.all[1].gdiDeviceName = LR"(\\.\Display2)";
    expectNameAndPath(L"", L"");
}

TEST_F(MonitorNameAndPath, pass_over_a_path_whose_source_has_no_name) {
    desktop.displayPaths.all[0].sourceNameStatus = ERROR_GEN_FAILURE;
    expectNameAndPath(L"Model B", L"path of B");
}

TEST_F(MonitorNameAndPath, are_empty_when_the_target_has_no_name) {
    desktop.displayPaths.all[1].targetNameStatus = ERROR_GEN_FAILURE;
    desktop.displayPaths.add(display2, L"Second", L"not looked at");
    expectNameAndPath(L"", L"");
}

TEST_F(MonitorNameAndPath, are_empty_when_the_configuration_cannot_be_read) {
    desktop.journal.failAll("GetDisplayConfigBufferSizes", ERROR_ACCESS_DENIED);
    expectNameAndPath(L"", L"");
}

TEST_F(MonitorNameAndPath, are_empty_when_the_configuration_changes_meanwhile) {
    desktop.journal.failAll("QueryDisplayConfig", ERROR_INSUFFICIENT_BUFFER);
    expectNameAndPath(L"", L"");
}

TEST_F(MonitorNameAndPath, are_found_whatever_status_the_configuration_has) {
    desktop.displayPaths.sizesStatus = ERROR_ACCESS_DENIED;
    expectNameAndPath(L"Model B", L"path of B");
    desktop.displayPaths.sizesStatus = ERROR_SUCCESS;
    desktop.displayPaths.queryStatus = ERROR_GEN_FAILURE;
    expectNameAndPath(L"Model B", L"path of B");
}

TEST_F(MonitorNameAndPath, are_looked_for_though_sizes_and_device_name_are_not_known) {
    desktop.journal.fail("GetMonitorInfoW");
    desktop.journal.fail("GetDisplayConfigBufferSizes", 1, ERROR_ACCESS_DENIED);
    EXPECT_EQ(getName(monitor), L"");
    EXPECT_THAT(
        desktop.displayCalls(),
        ElementsAre("GetMonitorInfoW", "GetDisplayConfigBufferSizes", "QueryDisplayConfig"));
}

TEST_F(MonitorNameAndPath, cost_one_reading_of_the_configuration_up_to_the_path) {
    desktop.displayPaths.add(display3, L"behind", L"not looked at");
    getName(monitor);
    EXPECT_THAT(desktop.displayCalls(),
                ElementsAre("GetMonitorInfoW", "GetDisplayConfigBufferSizes", "QueryDisplayConfig",
                            "DisplayConfigGetDeviceInfo", "DisplayConfigGetDeviceInfo",
                            "DisplayConfigGetDeviceInfo"));
}

TEST_F(MonitorNameAndPath, ask_for_the_target_by_the_adapter_of_the_source) {
    getPath(monitor);
    const NameRequest request = desktop.displayPaths.requests.back();
    EXPECT_EQ(request.type, DISPLAYCONFIG_DEVICE_INFO_GET_TARGET_NAME);
    EXPECT_EQ(request.adapter.LowPart, desktop.displayPaths.all[1].sourceAdapter.LowPart);
    EXPECT_EQ(request.id, desktop.displayPaths.all[1].targetId);
}

TEST_F(MonitorNameAndPath, may_be_asked_for_on_any_thread_with_and_without_a_service) {
    onAnotherThread([this] { expectNameAndPath(L"Model B", L"path of B"); });
    module.init();
    onAnotherThread([this] { expectNameAndPath(L"Model B", L"path of B"); });
}

class MonitorBasicInfo : public SingleMonitorFunctions {
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

    MonitorInfo info;
};

TEST_F(MonitorBasicInfo, writes_the_settings_and_the_names_of_the_path) {
    getBasicInfo(monitor, info);
    expectNumbers(smallMode);
    EXPECT_EQ(info.friendlyName, L"Model B");
    EXPECT_EQ(info.devicePath, L"path of B");
}

TEST_F(MonitorBasicInfo, leaves_every_other_field_as_it_was) {
    getBasicInfo(monitor, info);
    EXPECT_EQ(info.hMonitor, reinterpret_cast<HMONITOR>(0x77));
    EXPECT_EQ(info.deviceName, L"device");
    EXPECT_EQ(info.monitorId, L"id");
    EXPECT_EQ(info.reservedText, L"reserved");
}

TEST_F(MonitorBasicInfo, writes_zeros_for_settings_that_cannot_be_read) {
    desktop.monitors.all[1].mode.reset();
    getBasicInfo(monitor, info);
    expectNumbers({0, 0, 0, 0, 0});
    EXPECT_EQ(info.friendlyName, L"Model B");
}

TEST_F(MonitorBasicInfo, keeps_the_names_when_no_path_leads_to_the_monitor) {
    desktop.displayPaths.all.pop_back();
    getBasicInfo(monitor, info);
    expectNumbers(smallMode);
    EXPECT_EQ(info.friendlyName, L"friendly");
    EXPECT_EQ(info.devicePath, L"path");
}

TEST_F(MonitorBasicInfo, keeps_the_names_of_a_detached_monitor) {
    desktop.displayPaths.all[0].sourceNameStatus = ERROR_GEN_FAILURE;
    getBasicInfo(detached, info);
    EXPECT_EQ(info.friendlyName, L"friendly");
    EXPECT_EQ(info.devicePath, L"path");
}

TEST_F(MonitorBasicInfo, has_the_settings_of_no_device_for_a_detached_monitor) {
    getBasicInfo(detached, info);
    expectNumbers({0, 0, 0, 0, 0});
    desktop.monitors.noNameIsFirst = true;
    getBasicInfo(detached, info);
    expectNumbers(wideMode);
}

TEST_F(MonitorBasicInfo, is_read_to_its_end_although_the_device_name_cannot_be_read) {
    desktop.journal.fail("GetMonitorInfoW");
    getBasicInfo(monitor, info);
    EXPECT_THAT(desktop.displayCalls(),
                ElementsAre("GetMonitorInfoW", "EnumDisplaySettingsW",
                            "GetDisplayConfigBufferSizes", "QueryDisplayConfig",
                            "DisplayConfigGetDeviceInfo", "DisplayConfigGetDeviceInfo"));
}

TEST_F(MonitorBasicInfo, has_the_names_whatever_status_the_configuration_has) {
    desktop.displayPaths.sizesStatus = ERROR_ACCESS_DENIED;
    desktop.displayPaths.queryStatus = ERROR_GEN_FAILURE;
    getBasicInfo(monitor, info);
    EXPECT_EQ(info.friendlyName, L"Model B");
    EXPECT_EQ(info.devicePath, L"path of B");
}

TEST_F(MonitorBasicInfo, empties_the_names_when_the_target_of_its_path_has_none) {
    desktop.displayPaths.all[1].targetNameStatus = ERROR_GEN_FAILURE;
    getBasicInfo(monitor, info);
    EXPECT_EQ(info.friendlyName, L"");
    EXPECT_EQ(info.devicePath, L"");
}

TEST_F(MonitorBasicInfo, may_be_asked_for_on_any_thread_with_and_without_a_service) {
    onAnotherThread([this] { getBasicInfo(monitor, info); });
    expectNumbers(smallMode);
    desktop.monitors.all[1].mode = wideMode;
    module.init();
    onAnotherThread([this] { getBasicInfo(monitor, info); });
    expectNumbers(wideMode);
}

TEST_F(MonitorBasicInfo, costs_one_reading_of_the_settings_and_of_the_configuration) {
    getBasicInfo(monitor, info);
    EXPECT_THAT(desktop.displayCalls(),
                ElementsAre("GetMonitorInfoW", "EnumDisplaySettingsW",
                            "GetDisplayConfigBufferSizes", "QueryDisplayConfig",
                            "DisplayConfigGetDeviceInfo", "DisplayConfigGetDeviceInfo",
                            "DisplayConfigGetDeviceInfo"));
}

} // namespace
} // namespace tests
