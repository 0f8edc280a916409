#include "tests/tools/doctor/doctor_test.h"

#include "tools/vorlen-monitor/doctor/findings.h"
#include "tools/vorlen-monitor/doctor/report.h"
#include "vorlen/status.h"

#include <windows.h>

#include <algorithm>
#include <iterator>

namespace vorlen::tool {

namespace {

MonitorListItem listed(const snapshot::Monitor& monitor, std::wstring_view name,
                       std::wstring_view serialNumber) {
    MonitorListItem item{};
    item.handle = reinterpret_cast<void*>(monitor.handle);
    setText(item.deviceName, monitor.deviceName);
    setText(item.friendlyName, name);
    setText(item.monitorId, serialNumber);
    item.width = monitor.currentMode->mode.width;
    item.height = monitor.currentMode->mode.height;
    item.refreshRate = monitor.currentMode->mode.frequency;
    return item;
}

snapshot::Monitor monitorWith(std::uint64_t handle, std::wstring_view deviceName, std::int32_t left,
                              std::int32_t width, std::int32_t height) {
    snapshot::Monitor monitor;
    monitor.handle = handle;
    monitor.informationRead = true;
    monitor.deviceName = deviceName;
    monitor.rectangle = {left, 0, left + width, height};
    snapshot::DisplayMode mode;
    mode.width = width;
    mode.height = height;
    mode.frequency = 60;
    monitor.currentMode = snapshot::CurrentMode{left, 0, mode};
    monitor.offeredModes = {mode};
    return monitor;
}

void connect(snapshot::DisplayConfiguration& configuration, const snapshot::Monitor& monitor,
             std::wstring_view name) {
    const auto width = static_cast<std::uint32_t>(monitor.currentMode->mode.width);
    const auto height = static_cast<std::uint32_t>(monitor.currentMode->mode.height);
    snapshot::DisplayPath path;
    path.sourceModeIndex = static_cast<std::uint32_t>(configuration.modes.size());
    path.targetModeIndex = path.sourceModeIndex + 1;
    path.outputTechnology = static_cast<std::uint32_t>(DISPLAYCONFIG_OUTPUT_TECHNOLOGY_HDMI);
    path.rotation = DISPLAYCONFIG_ROTATION_IDENTITY;
    path.scaling = DISPLAYCONFIG_SCALING_IDENTITY;
    path.refreshRate = {60, 1};
    path.scanLineOrdering = DISPLAYCONFIG_SCANLINE_ORDERING_PROGRESSIVE;
    path.sourceName.gdiDeviceName = monitor.deviceName;
    path.targetName.friendlyName = name;
    path.preferredMode.width = monitor.currentMode->mode.width;
    path.preferredMode.height = monitor.currentMode->mode.height;
    path.advancedColor.bitsPerChannel = 8;
    configuration.paths.push_back(path);

    snapshot::PathMode source;
    source.infoType = DISPLAYCONFIG_MODE_INFO_TYPE_SOURCE;
    source.width = width;
    source.height = height;
    configuration.modes.push_back(source);
    snapshot::PathMode target;
    target.infoType = DISPLAYCONFIG_MODE_INFO_TYPE_TARGET;
    target.activeWidth = width;
    target.activeHeight = height;
    configuration.modes.push_back(target);
}

} // namespace

void setText(VLChar16 (&field)[VORLEN_MONITOR_TEXT_UNITS], std::wstring_view text) {
    std::ranges::fill(field, L'\0');
    std::ranges::copy(text, std::begin(field));
}

DoctorTest::DoctorTest() {
    snapshot::Reading& reading = examination.reading;
    reading.monitors = {monitorWith(0x10001, L"\\\\.\\DISPLAY1", 0, 3840, 2160),
                        monitorWith(0x10002, L"\\\\.\\DISPLAY2", 3840, 1920, 1080)};
    connect(reading.displayConfiguration, reading.monitors[0], L"KIT 27");
    connect(reading.displayConfiguration, reading.monitors[1], L"Office");
    reading.wmi.steps = {{"CoInitializeEx", S_OK}, {"IWbemServices::ExecQuery", S_OK}};
    reading.wmi.objects.resize(2);
    reading.process.dpiAwareness = DPI_AWARENESS_PER_MONITOR_AWARE;
    examination.kitModels = {L"KIT 27"};
    examination.monitors = {listed(reading.monitors[0], L"KIT 27", L"SN-1"),
                            listed(reading.monitors[1], L"Office", L"SN-2")};
    examination.status = {true, MONITOR_OK, examination.monitors[0]};
}

void DoctorTest::setKitMode(std::int32_t width, std::int32_t height, std::int32_t hertz) {
    snapshot::DisplayMode& mode = kitMonitor().currentMode->mode;
    mode.width = width;
    mode.height = height;
    mode.frequency = hertz;
    kitMonitor().rectangle = {0, 0, width, height};
    kitSource().width = kitTarget().activeWidth = static_cast<std::uint32_t>(width);
    kitSource().height = kitTarget().activeHeight = static_cast<std::uint32_t>(height);
    kitPath().refreshRate = {static_cast<std::uint32_t>(hertz), 1};
    MonitorListItem& item = examination.monitors[0];
    item.width = width;
    item.height = height;
    item.refreshRate = hertz;
    const VLStatus code = width < 3840 || height < 2160 ? MONITOR_RESOLUTION_INCORRECT
                          : hertz < 59                  ? MONITOR_REFRESH_RATE_INCORRECT
                                                        : MONITOR_OK;
    examination.status = {code == MONITOR_OK, code, item};
}

void DoctorTest::recogniseNone() {
    examination.status = {false, MONITOR_NOT_CONNECTED, std::nullopt};
}

void DoctorTest::rename(std::size_t monitor, std::wstring_view name) {
    setText(examination.monitors[monitor].friendlyName, name);
    examination.reading.displayConfiguration.paths[monitor].targetName.friendlyName = name;
}

snapshot::Window& DoctorTest::addWindow(std::wstring_view title, const char* reason) {
    auto& windows = examination.reading.windows;
    snapshot::Window& window = windows.emplace_back();
    window.handle = window.root = 0x20000 + windows.size();
    window.title = title;
    window.visible = true;
    if (reason != nullptr) {
        window.reason = reason;
    } else {
        examination.listedWindows.push_back(reinterpret_cast<void*>(window.handle));
    }
    return window;
}

std::vector<std::string> DoctorTest::findings() const {
    std::vector<std::string> found;
    for (const Finding& finding : examine(examination)) {
        found.push_back(nameOf(finding.severity) + (" " + finding.code));
    }
    return found;
}

Finding DoctorTest::theFinding(std::string_view code) const {
    const std::vector<Finding> all = examine(examination);
    const auto found = std::ranges::find(all, code, &Finding::code);
    EXPECT_EQ(std::ranges::count(all, code, &Finding::code), 1) << code;
    return found != all.end() ? *found : Finding{Severity::note, "", "", ""};
}

} // namespace vorlen::tool
