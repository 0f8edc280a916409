// That each number of a structure of the system arrives in its field.

#include "simulation/import_redirect.h"
#include "snapshot/parts.h"
#include "snapshot/recording.h"
#include "tests/support/simulation.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <iterator>
#include <string>
#include <vector>

namespace tests {
namespace {

using snapshot::DisplayConfiguration;
using snapshot::DisplayPath;
using snapshot::PathMode;
using snapshot::Reading;

constexpr LUID sourceAdapter{11, -12};
constexpr LUID targetAdapter{13, -14};
constexpr UINT32 sourceId = 15;
constexpr UINT32 targetId = 16;

bool isAbout(const DISPLAYCONFIG_DEVICE_INFO_HEADER& header, const LUID& adapter, UINT32 id,
             std::size_t size) {
    return header.adapterId.LowPart == adapter.LowPart &&
           header.adapterId.HighPart == adapter.HighPart && header.id == id && header.size == size;
}

template <typename Enumeration>
Enumeration enumerator(UINT32 number) {
    return static_cast<Enumeration>(number);
}

LONG WINAPI getSizes(UINT32 flags, UINT32* paths, UINT32* modes) {
    *paths = 1;
    *modes = 2;
    return flags == QDC_ONLY_ACTIVE_PATHS ? ERROR_SUCCESS : ERROR_INVALID_PARAMETER;
}

void fill(DISPLAYCONFIG_PATH_INFO& path) {
    path.sourceInfo.adapterId = sourceAdapter;
    path.sourceInfo.id = sourceId;
    path.sourceInfo.modeInfoIdx = 21;
    path.sourceInfo.statusFlags = 22;
    path.targetInfo.adapterId = targetAdapter;
    path.targetInfo.id = targetId;
    path.targetInfo.modeInfoIdx = 23;
    path.targetInfo.outputTechnology = DISPLAYCONFIG_OUTPUT_TECHNOLOGY_INTERNAL;
    path.targetInfo.rotation = DISPLAYCONFIG_ROTATION_ROTATE270;
    path.targetInfo.scaling = DISPLAYCONFIG_SCALING_ASPECTRATIOCENTEREDMAX;
    path.targetInfo.refreshRate = {60000, 1001};
    path.targetInfo.scanLineOrdering = DISPLAYCONFIG_SCANLINE_ORDERING_INTERLACED;
    path.targetInfo.targetAvailable = TRUE;
    path.targetInfo.statusFlags = 24;
    path.flags = 25;
}

void fill(DISPLAYCONFIG_MODE_INFO (&modes)[2]) {
    modes[0].infoType = DISPLAYCONFIG_MODE_INFO_TYPE_SOURCE;
    modes[0].adapterId = sourceAdapter;
    modes[0].id = sourceId;
    modes[0].sourceMode = {31, 32, DISPLAYCONFIG_PIXELFORMAT_NONGDI, {-33, -34}};
    modes[1].infoType = DISPLAYCONFIG_MODE_INFO_TYPE_TARGET;
    modes[1].adapterId = targetAdapter;
    modes[1].id = targetId;
    DISPLAYCONFIG_VIDEO_SIGNAL_INFO& signal = modes[1].targetMode.targetVideoSignalInfo;
    signal.pixelRate = 533'250'000'000;
    signal.hSyncFreq = {41, 42};
    signal.vSyncFreq = {43, 44};
    signal.activeSize = {45, 46};
    signal.totalSize = {47, 48};
    signal.videoStandard = 49;
    signal.scanLineOrdering = DISPLAYCONFIG_SCANLINE_ORDERING_PROGRESSIVE;
}

LONG WINAPI query(UINT32, UINT32*, DISPLAYCONFIG_PATH_INFO* paths, UINT32*,
                  DISPLAYCONFIG_MODE_INFO* modes, DISPLAYCONFIG_TOPOLOGY_ID*) {
    fill(*paths);
    DISPLAYCONFIG_MODE_INFO filled[2]{};
    fill(filled);
    std::copy(std::begin(filled), std::end(filled), modes);
    return ERROR_SUCCESS;
}

template <typename Information>
Information& as(DISPLAYCONFIG_DEVICE_INFO_HEADER* header) {
    return *static_cast<Information*>(static_cast<void*>(header));
}

LONG describe(DISPLAYCONFIG_SOURCE_DEVICE_NAME& name) {
    std::ranges::copy(L"device", name.viewGdiDeviceName);
    return isAbout(name.header, sourceAdapter, sourceId, 84) ? 51 : -1;
}

LONG describe(DISPLAYCONFIG_TARGET_DEVICE_NAME& name) {
    name.flags.value = 0x61;
    name.edidManufactureId = 0x62;
    name.edidProductCodeId = 0x63;
    name.connectorInstance = 64;
    std::ranges::copy(L"friendly", name.monitorFriendlyDeviceName);
    std::ranges::copy(L"path", name.monitorDevicePath);
    return isAbout(name.header, sourceAdapter, targetId, 420) ? 52 : -1;
}

LONG describe(DISPLAYCONFIG_TARGET_PREFERRED_MODE& mode) {
    mode.width = 71;
    mode.height = 72;
    return isAbout(mode.header, targetAdapter, targetId, sizeof(mode)) ? 53 : -1;
}

LONG describe(DISPLAYCONFIG_GET_ADVANCED_COLOR_INFO& color) {
    color.value = 0x81;
    color.colorEncoding = DISPLAYCONFIG_COLOR_ENCODING_YCBCR420;
    color.bitsPerColorChannel = 82;
    return isAbout(color.header, targetAdapter, targetId, sizeof(color)) ? 54 : -1;
}

LONG WINAPI getDeviceInfo(DISPLAYCONFIG_DEVICE_INFO_HEADER* header) {
    switch (header->type) {
    case DISPLAYCONFIG_DEVICE_INFO_GET_SOURCE_NAME:
        return describe(as<DISPLAYCONFIG_SOURCE_DEVICE_NAME>(header));
    case DISPLAYCONFIG_DEVICE_INFO_GET_TARGET_NAME:
        return describe(as<DISPLAYCONFIG_TARGET_DEVICE_NAME>(header));
    case DISPLAYCONFIG_DEVICE_INFO_GET_TARGET_PREFERRED_MODE:
        return describe(as<DISPLAYCONFIG_TARGET_PREFERRED_MODE>(header));
    case DISPLAYCONFIG_DEVICE_INFO_GET_ADVANCED_COLOR_INFO:
        return describe(as<DISPLAYCONFIG_GET_ADVANCED_COLOR_INFO>(header));
    default:
        return ERROR_NOT_SUPPORTED;
    }
}

DisplayPath expectedPath() {
    DisplayPath path;
    path.flags = 25;
    path.sourceAdapter = {11, -12};
    path.sourceId = sourceId;
    path.sourceModeIndex = 21;
    path.sourceStatusFlags = 22;
    path.targetAdapter = {13, -14};
    path.targetId = targetId;
    path.targetModeIndex = 23;
    path.targetStatusFlags = 24;
    path.targetAvailable = true;
    path.outputTechnology = 0x80000000;
    path.rotation = 4;
    path.scaling = 4;
    path.refreshRate = {60000, 1001};
    path.scanLineOrdering = 2;
    path.sourceName = {51, L"device"};
    path.targetName = {52, 0x61, 0x62, 0x63, 64, L"friendly", L"path"};
    path.preferredMode = {53, 71, 72};
    path.advancedColor = {54, 0x81, 3, 82};
    return path;
}

std::vector<PathMode> expectedModes() {
    PathMode source;
    source.infoType = 1;
    source.adapter = {11, -12};
    source.id = sourceId;
    source.width = 31;
    source.height = 32;
    source.pixelFormat = 5;
    source.x = -33;
    source.y = -34;
    PathMode target;
    target.infoType = 2;
    target.adapter = {13, -14};
    target.id = targetId;
    target.pixelRate = 533'250'000'000;
    target.horizontalFrequency = {41, 42};
    target.verticalFrequency = {43, 44};
    target.activeWidth = 45;
    target.activeHeight = 46;
    target.totalWidth = 47;
    target.totalHeight = 48;
    target.videoStandard = 49;
    target.scanLineOrdering = 1;
    return {source, target};
}

// As text, which names the fields that differ.
std::string textOf(const DisplayConfiguration& configuration) {
    Reading reading;
    reading.displayConfiguration = configuration;
    return toRecording(reading);
}

std::string textOf(const std::vector<snapshot::Monitor>& monitors) {
    Reading reading;
    reading.monitors = monitors;
    return toRecording(reading);
}

class ReadNumbers : public testing::Test {
protected:
    template <typename Function>
    void replace(const std::string& name, Function* replacement) {
        redirects.emplace_back(GetModuleHandleW(nullptr), name, addressOf(replacement));
    }

private:
    std::deque<ImportRedirect> redirects;
};

TEST_F(ReadNumbers, of_paths_and_their_modes) {
    replace("GetDisplayConfigBufferSizes", getSizes);
    replace("QueryDisplayConfig", query);
    replace("DisplayConfigGetDeviceInfo", getDeviceInfo);
    const DisplayConfiguration expected{0, 1, 2, 0, {expectedPath()}, expectedModes()};
    EXPECT_EQ(textOf(snapshot::readDisplayConfiguration()), textOf(expected));
}

BOOL WINAPI enumMonitors(HDC, LPCRECT, MONITORENUMPROC visit, LPARAM parameter) {
    return visit(reinterpret_cast<HMONITOR>(0x91), nullptr, nullptr, parameter);
}

BOOL WINAPI getMonitorInfo(HMONITOR, LPMONITORINFO info) {
    auto& extended = *static_cast<MONITORINFOEXW*>(static_cast<void*>(info));
    extended.rcMonitor = {-101, -102, 103, 104};
    extended.rcWork = {-111, -112, 113, 114};
    extended.dwFlags = MONITORINFOF_PRIMARY;
    std::ranges::copy(L"device", extended.szDevice);
    return TRUE;
}

// The current settings and two modes, which differ in every number.
BOOL WINAPI enumSettings(LPCWSTR device, DWORD number, LPDEVMODEW mode) {
    const DWORD base = number == ENUM_CURRENT_SETTINGS ? 1000 : number * 100;
    mode->dmPosition = {-7, -8};
    mode->dmPelsWidth = base + 1;
    mode->dmPelsHeight = base + 2;
    mode->dmDisplayFrequency = base + 3;
    mode->dmBitsPerPel = base + 4;
    mode->dmDisplayOrientation = base + 5;
    mode->dmDisplayFixedOutput = base + 6;
    mode->dmDisplayFlags = number == 1 ? DM_INTERLACED : ~DWORD{DM_INTERLACED};
    return device == std::wstring(L"device") && (number == ENUM_CURRENT_SETTINGS || number < 2);
}

TEST_F(ReadNumbers, of_monitors_and_their_modes) {
    replace("EnumDisplayMonitors", enumMonitors);
    replace("GetMonitorInfoW", getMonitorInfo);
    replace("EnumDisplaySettingsW", enumSettings);
    const snapshot::Monitor expected{
        0x91,
        true,
        L"device",
        {-101, -102, 103, 104},
        {-111, -112, 113, 114},
        true,
        snapshot::CurrentMode{-7, -8, {1001, 1002, 1003, 1004, 1005, 1006, false}},
        {{1, 2, 3, 4, 5, 6, false}, {101, 102, 103, 104, 105, 106, true}}};
    EXPECT_EQ(textOf(snapshot::readMonitors()), textOf({expected}));
}

} // namespace
} // namespace tests
