#include "monitor/display/display_paths.h"

#include "monitor/display/display_settings.h"
#include "platform/text.h"

namespace {

struct PathArrays {
    std::vector<DISPLAYCONFIG_PATH_INFO> paths;
    std::vector<DISPLAYCONFIG_MODE_INFO> modes;
};

LONG allocate(PathArrays& arrays) {
    UINT32 pathCount = 0;
    UINT32 modeCount = 0;
    const LONG status = GetDisplayConfigBufferSizes(QDC_ONLY_ACTIVE_PATHS, &pathCount, &modeCount);
    arrays.paths.resize(pathCount);
    arrays.modes.resize(modeCount);
    return status;
}

// Array elements that the system does not fill stay zero. Requests for their names fail.
LONG fill(PathArrays& arrays) {
    auto pathCount = static_cast<UINT32>(arrays.paths.size());
    auto modeCount = static_cast<UINT32>(arrays.modes.size());
    return QueryDisplayConfig(QDC_ONLY_ACTIVE_PATHS, &pathCount, arrays.paths.data(), &modeCount,
                              arrays.modes.data(), nullptr);
}

LONG requestSourceName(const DISPLAYCONFIG_PATH_INFO& path,
                       DISPLAYCONFIG_SOURCE_DEVICE_NAME& name) {
    static_assert(sizeof(name) == 84);
    name.header.type = DISPLAYCONFIG_DEVICE_INFO_GET_SOURCE_NAME;
    name.header.size = sizeof(name);
    name.header.adapterId = path.sourceInfo.adapterId;
    name.header.id = path.sourceInfo.id;
    return DisplayConfigGetDeviceInfo(&name.header);
}

LONG requestTargetName(const DISPLAYCONFIG_PATH_INFO& path,
                       DISPLAYCONFIG_TARGET_DEVICE_NAME& name) {
    static_assert(sizeof(name) == 420);
    name.header.type = DISPLAYCONFIG_DEVICE_INFO_GET_TARGET_NAME;
    name.header.size = sizeof(name);
    // Intended: the adapter id of the source, not of the target.
    name.header.adapterId = path.sourceInfo.adapterId;
    name.header.id = path.targetInfo.id;
    return DisplayConfigGetDeviceInfo(&name.header);
}

DisplayPathInfo toInfo(const DISPLAYCONFIG_SOURCE_DEVICE_NAME& source,
                       const DISPLAYCONFIG_TARGET_DEVICE_NAME& target) {
    return {vorlen::textOf(source.viewGdiDeviceName),
            vorlen::textOf(target.monitorFriendlyDeviceName),
            vorlen::textOf(target.monitorDevicePath)};
}

DisplayPathInfo displayPathOf(HMONITOR monitor) {
    return findDisplayPath(readDeviceName(monitor).value_or(L"")).value_or(DisplayPathInfo{});
}

} // namespace

std::vector<DisplayPathInfo> getActiveDisplayPaths() {
    std::vector<DisplayPathInfo> result;
    PathArrays arrays;
    // Intended: one attempt only. After a failure, names are empty until the next refresh.
    if (allocate(arrays) != ERROR_SUCCESS || fill(arrays) != ERROR_SUCCESS) {
        return result;
    }
    result.reserve(arrays.paths.size());
    for (const DISPLAYCONFIG_PATH_INFO& path : arrays.paths) {
        DISPLAYCONFIG_SOURCE_DEVICE_NAME source{};
        DISPLAYCONFIG_TARGET_DEVICE_NAME target{};
        if (requestSourceName(path, source) == ERROR_SUCCESS &&
            requestTargetName(path, target) == ERROR_SUCCESS) {
            result.push_back(toInfo(source, target));
        }
    }
    return result;
}

std::optional<DisplayPathInfo> findDisplayPath(const std::wstring& deviceName) {
    PathArrays arrays;
    // Statuses are ignored: paths that the system does not write stay zero and match no name.
    allocate(arrays);
    fill(arrays);
    for (const DISPLAYCONFIG_PATH_INFO& path : arrays.paths) {
        DISPLAYCONFIG_SOURCE_DEVICE_NAME source{};
        requestSourceName(path, source);
        const std::wstring sourceName = vorlen::textOf(source.viewGdiDeviceName);
        // A failed request leaves the source name empty. The device name of a detached monitor is
        // empty, too: the two do not match.
        if (!sourceName.empty() && sourceName == deviceName) {
            DISPLAYCONFIG_TARGET_DEVICE_NAME target{};
            requestTargetName(path, target);
            return toInfo(source, target);
        }
    }
    return std::nullopt;
}

std::wstring getMonitorName(HMONITOR monitor) {
    return displayPathOf(monitor).friendlyName;
}

std::wstring getMonitorPath(HMONITOR monitor) {
    return displayPathOf(monitor).devicePath;
}
