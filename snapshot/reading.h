#pragma once

#include <windows.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

// One reading of a desktop: what Windows reports about monitors, windows and this process, failures
// included. Plain data: texts are UTF-16 as Windows gave them, numbers are those of the structures
// that are named, sizes and positions are in pixels.
namespace snapshot {

struct Rectangle {
    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t right = 0;
    std::int32_t bottom = 0;
};

// The fields of DEVMODEW that describe a display mode.
struct DisplayMode {
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::int32_t frequency = 0; // hertz; 0 and 1: the hardware's default
    std::int32_t bitsPerPixel = 0;
    std::int32_t orientation = 0; // DMDO_DEFAULT, DMDO_90, DMDO_180, DMDO_270
    std::int32_t fixedOutput = 0; // DMDFO_DEFAULT, DMDFO_STRETCH, DMDFO_CENTER
    bool interlaced = false;
};

struct CurrentMode {
    std::int32_t x = 0; // on the desktop
    std::int32_t y = 0;
    DisplayMode mode;
};

// A monitor of EnumDisplayMonitors.
struct Monitor {
    std::uint64_t handle = 0;
    bool informationRead = false; // GetMonitorInfoW succeeded; otherwise all that follows is empty
    std::wstring deviceName;
    Rectangle rectangle;
    Rectangle workArea;
    bool primary = false;
    std::optional<CurrentMode> currentMode; // nothing: EnumDisplaySettingsW failed
    std::vector<DisplayMode> offeredModes;
};

// Of an adapter of the display configuration.
struct AdapterId {
    std::uint32_t lowPart = 0;
    std::int32_t highPart = 0;
};

struct SourceName {
    std::int32_t status = 0; // of DisplayConfigGetDeviceInfo, as in the other requests
    std::wstring gdiDeviceName;
};

struct TargetName {
    std::int32_t status =
        0; // of the request with the adapter id of the source, as the library asks
    std::uint32_t flags = 0;
    std::uint32_t edidManufactureId = 0;
    std::uint32_t edidProductCodeId = 0;
    std::uint32_t connectorInstance = 0;
    std::wstring friendlyName;
    std::wstring devicePath;
};

struct PreferredMode {
    std::int32_t status = 0;
    std::int32_t width = 0;
    std::int32_t height = 0;
};

struct AdvancedColor {
    std::int32_t status = 0;
    std::uint32_t flags = 0;    // the bit field of DISPLAYCONFIG_GET_ADVANCED_COLOR_INFO
    std::uint32_t encoding = 0; // DISPLAYCONFIG_COLOR_ENCODING
    std::uint32_t bitsPerChannel = 0;
};

struct Rational {
    std::uint32_t numerator = 0;
    std::uint32_t denominator = 0;
};

// An active path of QueryDisplayConfig. The numbers without a comment are enumerations of
// DISPLAYCONFIG_PATH_SOURCE_INFO and DISPLAYCONFIG_PATH_TARGET_INFO.
struct DisplayPath {
    std::uint32_t flags = 0;
    AdapterId sourceAdapter;
    std::uint32_t sourceId = 0;
    std::uint32_t sourceModeIndex = 0;
    std::uint32_t sourceStatusFlags = 0;
    AdapterId targetAdapter;
    std::uint32_t targetId = 0;
    std::uint32_t targetModeIndex = 0;
    std::uint32_t targetStatusFlags = 0;
    bool targetAvailable = false;
    std::uint32_t outputTechnology = 0;
    std::uint32_t rotation = 0;
    std::uint32_t scaling = 0;
    Rational refreshRate; // hertz
    std::uint32_t scanLineOrdering = 0;
    SourceName sourceName;
    TargetName targetName;
    PreferredMode preferredMode;
    AdvancedColor advancedColor;
};

// A mode of QueryDisplayConfig: of a source or of a target, by infoType.
struct PathMode {
    std::uint32_t infoType = 0; // DISPLAYCONFIG_MODE_INFO_TYPE
    AdapterId adapter;
    std::uint32_t id = 0;
    // Of a source.
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::uint32_t pixelFormat = 0;
    std::int32_t x = 0;
    std::int32_t y = 0;
    // Of a target.
    std::uint64_t pixelRate = 0;
    Rational horizontalFrequency;
    Rational verticalFrequency;
    std::uint32_t activeWidth = 0;
    std::uint32_t activeHeight = 0;
    std::uint32_t totalWidth = 0;
    std::uint32_t totalHeight = 0;
    std::uint32_t videoStandard = 0;
    std::uint32_t scanLineOrdering = 0;
};

struct DisplayConfiguration {
    std::int32_t sizesStatus = 0; // of GetDisplayConfigBufferSizes
    std::uint32_t announcedPaths = 0;
    std::uint32_t announcedModes = 0;
    std::int32_t queryStatus = 0; // of QueryDisplayConfig
    std::vector<DisplayPath> paths;
    std::vector<PathMode> modes;
};

// A call of the WMI query: its name, such as "IWbemLocator::ConnectServer", and its HRESULT. The
// steps after a failed one are not made.
struct WmiStep {
    std::string name;
    std::int32_t result = 0;
};

// A property of a WMI object. The text is that of a string, of a number, or of an array of 16-bit
// characters as WmiMonitorID has them, up to its terminating zero.
struct WmiProperty {
    std::wstring name;
    std::int32_t result = 0; // of IWbemClassObject::Get
    std::uint32_t type = 0;  // of the variant
    std::wstring text;
};

struct WmiObject {
    std::vector<WmiProperty> properties;
};

// The query for serial numbers of monitors: every object of the class WmiMonitorID.
struct Wmi {
    std::vector<WmiStep> steps;
    std::vector<WmiObject> objects;
};

// A top-level window, with everything that the library's capture filter asks about it.
struct Window {
    std::uint64_t handle = 0;
    std::int32_t titleLength = 0; // of GetWindowTextLengthW, in units of UTF-16
    std::wstring title;
    std::wstring className;
    bool visible = false;
    std::int32_t style = 0;
    std::int32_t extendedStyle = 0;
    std::uint64_t root = 0;          // the handle of GetAncestor(GA_ROOT)
    bool exists = false;             // IsWindow, after everything else was read
    std::int32_t cloakingResult = 0; // HRESULT of DwmGetWindowAttribute
    std::uint32_t cloaked = 0;
    std::optional<std::string> reason; // the library's reason; nothing when it is capturable
};

// The program that made the reading, and its session.
struct Process {
    std::int32_t dpiAwareness = -1; // DPI_AWARENESS
    bool remoteSession = false;
    std::wstring userName;
    std::string windowsVersion; // such as "10.0.19045"
    std::string wineVersion;    // empty on Windows
    std::string moduleVersion;  // such as "2.0.4"
    std::string runtimeVersion;
    std::wstring kitModels; // the environment variable VORLEN_KIT_MODELS
};

struct Reading {
    std::string origin; // how it was made, for people: a program and its version, or "by hand"
    bool redacted = false;
    Process process;
    std::vector<Monitor> monitors; // in the system's order
    DisplayConfiguration displayConfiguration;
    Wmi wmi;
    std::uint64_t shellWindow = 0; // handle; 0 for none
    std::vector<Window> windows;   // in the system's order
};

} // namespace snapshot
