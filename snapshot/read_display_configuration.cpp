#include "platform/text.h"
#include "snapshot/parts.h"

#include <algorithm>
#include <cstddef>

namespace snapshot {

namespace {

AdapterId toAdapterId(const LUID& luid) {
    return {luid.LowPart, luid.HighPart};
}

Rational toRational(const DISPLAYCONFIG_RATIONAL& rational) {
    return {rational.Numerator, rational.Denominator};
}

// A request for information about a source or a target.
template <typename Information>
Information makeRequest(DISPLAYCONFIG_DEVICE_INFO_TYPE type, const LUID& adapter, UINT32 id) {
    Information information{};
    information.header.type = type;
    information.header.size = sizeof(information);
    information.header.adapterId = adapter;
    information.header.id = id;
    return information;
}

SourceName readSourceName(const DISPLAYCONFIG_PATH_SOURCE_INFO& source) {
    auto name = makeRequest<DISPLAYCONFIG_SOURCE_DEVICE_NAME>(
        DISPLAYCONFIG_DEVICE_INFO_GET_SOURCE_NAME, source.adapterId, source.id);
    const LONG status = DisplayConfigGetDeviceInfo(&name.header);
    return {status, vorlen::textOf(name.viewGdiDeviceName)};
}

TargetName readTargetName(const DISPLAYCONFIG_PATH_INFO& path) {
    // Intended: the adapter id of the source, as the library asks.
    auto name = makeRequest<DISPLAYCONFIG_TARGET_DEVICE_NAME>(
        DISPLAYCONFIG_DEVICE_INFO_GET_TARGET_NAME, path.sourceInfo.adapterId, path.targetInfo.id);
    TargetName result;
    result.status = DisplayConfigGetDeviceInfo(&name.header);
    result.flags = name.flags.value;
    result.edidManufactureId = name.edidManufactureId;
    result.edidProductCodeId = name.edidProductCodeId;
    result.connectorInstance = name.connectorInstance;
    result.friendlyName = vorlen::textOf(name.monitorFriendlyDeviceName);
    result.devicePath = vorlen::textOf(name.monitorDevicePath);
    return result;
}

PreferredMode readPreferredMode(const DISPLAYCONFIG_PATH_TARGET_INFO& target) {
    auto mode = makeRequest<DISPLAYCONFIG_TARGET_PREFERRED_MODE>(
        DISPLAYCONFIG_DEVICE_INFO_GET_TARGET_PREFERRED_MODE, target.adapterId, target.id);
    const LONG status = DisplayConfigGetDeviceInfo(&mode.header);
    return {status, static_cast<std::int32_t>(mode.width), static_cast<std::int32_t>(mode.height)};
}

AdvancedColor readAdvancedColor(const DISPLAYCONFIG_PATH_TARGET_INFO& target) {
    auto color = makeRequest<DISPLAYCONFIG_GET_ADVANCED_COLOR_INFO>(
        DISPLAYCONFIG_DEVICE_INFO_GET_ADVANCED_COLOR_INFO, target.adapterId, target.id);
    const LONG status = DisplayConfigGetDeviceInfo(&color.header);
    return {status, color.value, static_cast<std::uint32_t>(color.colorEncoding),
            color.bitsPerColorChannel};
}

DisplayPath readPath(const DISPLAYCONFIG_PATH_INFO& path) {
    const DISPLAYCONFIG_PATH_SOURCE_INFO& source = path.sourceInfo;
    const DISPLAYCONFIG_PATH_TARGET_INFO& target = path.targetInfo;
    DisplayPath result;
    result.flags = path.flags;
    result.sourceAdapter = toAdapterId(source.adapterId);
    result.sourceId = source.id;
    result.sourceModeIndex = source.modeInfoIdx;
    result.sourceStatusFlags = source.statusFlags;
    result.targetAdapter = toAdapterId(target.adapterId);
    result.targetId = target.id;
    result.targetModeIndex = target.modeInfoIdx;
    result.targetStatusFlags = target.statusFlags;
    result.targetAvailable = target.targetAvailable != FALSE;
    result.outputTechnology = static_cast<std::uint32_t>(target.outputTechnology);
    result.rotation = static_cast<std::uint32_t>(target.rotation);
    result.scaling = static_cast<std::uint32_t>(target.scaling);
    result.refreshRate = toRational(target.refreshRate);
    result.scanLineOrdering = static_cast<std::uint32_t>(target.scanLineOrdering);
    result.sourceName = readSourceName(source);
    result.targetName = readTargetName(path);
    result.preferredMode = readPreferredMode(target);
    result.advancedColor = readAdvancedColor(target);
    return result;
}

void fillSourceMode(const DISPLAYCONFIG_SOURCE_MODE& source, PathMode& mode) {
    mode.width = source.width;
    mode.height = source.height;
    mode.pixelFormat = static_cast<std::uint32_t>(source.pixelFormat);
    mode.x = source.position.x;
    mode.y = source.position.y;
}

void fillTargetMode(const DISPLAYCONFIG_VIDEO_SIGNAL_INFO& signal, PathMode& mode) {
    mode.pixelRate = signal.pixelRate;
    mode.horizontalFrequency = toRational(signal.hSyncFreq);
    mode.verticalFrequency = toRational(signal.vSyncFreq);
    mode.activeWidth = signal.activeSize.cx;
    mode.activeHeight = signal.activeSize.cy;
    mode.totalWidth = signal.totalSize.cx;
    mode.totalHeight = signal.totalSize.cy;
    mode.videoStandard = signal.videoStandard;
    mode.scanLineOrdering = static_cast<std::uint32_t>(signal.scanLineOrdering);
}

PathMode toPathMode(const DISPLAYCONFIG_MODE_INFO& info) {
    PathMode mode;
    mode.infoType = static_cast<std::uint32_t>(info.infoType);
    mode.adapter = toAdapterId(info.adapterId);
    mode.id = info.id;
    if (info.infoType == DISPLAYCONFIG_MODE_INFO_TYPE_SOURCE) {
        fillSourceMode(info.sourceMode, mode);
    } else if (info.infoType == DISPLAYCONFIG_MODE_INFO_TYPE_TARGET) {
        fillTargetMode(info.targetMode.targetVideoSignalInfo, mode);
    }
    return mode;
}

} // namespace

DisplayConfiguration readDisplayConfiguration() {
    DisplayConfiguration result;
    result.sizesStatus = GetDisplayConfigBufferSizes(QDC_ONLY_ACTIVE_PATHS, &result.announcedPaths,
                                                     &result.announcedModes);
    if (result.sizesStatus != ERROR_SUCCESS) {
        return result;
    }
    std::vector<DISPLAYCONFIG_PATH_INFO> paths(result.announcedPaths);
    std::vector<DISPLAYCONFIG_MODE_INFO> modes(result.announcedModes);
    UINT32 pathCount = result.announcedPaths;
    UINT32 modeCount = result.announcedModes;
    result.queryStatus = QueryDisplayConfig(QDC_ONLY_ACTIVE_PATHS, &pathCount, paths.data(),
                                            &modeCount, modes.data(), nullptr);
    if (result.queryStatus != ERROR_SUCCESS) {
        return result;
    }
    paths.resize(std::min<std::size_t>(pathCount, paths.size()));
    modes.resize(std::min<std::size_t>(modeCount, modes.size()));
    std::ranges::transform(paths, std::back_inserter(result.paths), readPath);
    std::ranges::transform(modes, std::back_inserter(result.modes), toPathMode);
    return result;
}

} // namespace snapshot
