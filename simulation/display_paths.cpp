#include "simulation/display_paths.h"

#include "simulation/expect.h"
#include "simulation/platform_memory.h"

#include <algorithm>

namespace simulation {

namespace {

bool same(const LUID& a, const LUID& b) {
    return a.LowPart == b.LowPart && a.HighPart == b.HighPart;
}

// A path has one mode for its source and one for its target.
constexpr UINT32 modesPerPath = 2;

} // namespace

DisplayPaths::DisplayPaths(Redirects& redirects, Journal& calls) : journal(calls) {
    redirects.replace<decltype(GetDisplayConfigBufferSizes)>("GetDisplayConfigBufferSizes",
                                                             getBufferSizes);
    redirects.replace<decltype(QueryDisplayConfig)>("QueryDisplayConfig", query);
    redirects.replace<decltype(DisplayConfigGetDeviceInfo)>("DisplayConfigGetDeviceInfo",
                                                            getDeviceInfo);
}

SimulatedPath& DisplayPaths::add(const std::wstring& gdiDeviceName,
                                 const std::wstring& friendlyName, const std::wstring& devicePath) {
    SimulatedPath path;
    path.sourceAdapter = {0x5000 + lastId, 0x51};
    path.sourceId = 0x100 + lastId;
    path.targetAdapter = {0x7000 + lastId, 0x71};
    path.targetId = 0x200 + lastId;
    path.gdiDeviceName = gdiDeviceName;
    path.friendlyName = friendlyName;
    path.devicePath = devicePath;
    ++lastId;
    return all.emplace_back(path);
}

LONG WINAPI DisplayPaths::getBufferSizes(UINT32 flags, UINT32* pathCount, UINT32* modeCount) {
    SIMULATION_EXPECT(flags == 2u, "only the active paths may be read");
    if (const auto status = get().journal.enter("GetDisplayConfigBufferSizes")) {
        return static_cast<LONG>(*status);
    }
    *pathCount = get().pathCount() + get().announcedTooMany;
    *modeCount = modesPerPath * *pathCount;
    return get().sizesStatus;
}

LONG WINAPI DisplayPaths::query(UINT32 flags, UINT32* pathCount, DISPLAYCONFIG_PATH_INFO* paths,
                                UINT32* modeCount, DISPLAYCONFIG_MODE_INFO* modes,
                                // Its type is that of Windows' function.
                                // NOLINTNEXTLINE(readability-non-const-parameter)
                                DISPLAYCONFIG_TOPOLOGY_ID* topology) {
    SIMULATION_EXPECT(flags == 2u, "only the active paths may be read");
    SIMULATION_EXPECT(topology == nullptr, "the topology must be null for the active paths");
    SIMULATION_EXPECT(isZero(paths, *pathCount * sizeof(*paths)),
                      "the paths were not zeroed first");
    SIMULATION_EXPECT(isZero(modes, *modeCount * sizeof(*modes)),
                      "the modes were not zeroed first");
    if (const auto status = get().journal.enter("QueryDisplayConfig")) {
        return static_cast<LONG>(*status);
    }
    const UINT32 filled = get().pathCount();
    if (*pathCount < filled || *modeCount < modesPerPath * filled) {
        return ERROR_INSUFFICIENT_BUFFER;
    }
    for (const SimulatedPath& path : get().all) {
        paths->sourceInfo.adapterId = path.sourceAdapter;
        paths->sourceInfo.id = path.sourceId;
        paths->targetInfo.adapterId = path.targetAdapter;
        paths->targetInfo.id = path.targetId;
        paths->flags = DISPLAYCONFIG_PATH_ACTIVE;
        ++paths;
    }
    *pathCount = filled;
    *modeCount = modesPerPath * filled;
    return get().queryStatus;
}

LONG DisplayPaths::nameSource(DISPLAYCONFIG_DEVICE_INFO_HEADER* header) const {
    SIMULATION_EXPECT(header->size == 84u);
    const auto path = std::ranges::find_if(all, [=](const auto& candidate) {
        return same(candidate.sourceAdapter, header->adapterId) && candidate.sourceId == header->id;
    });
    if (path == all.end()) {
        return ERROR_INVALID_PARAMETER;
    }
    if (path->sourceNameStatus == ERROR_SUCCESS) {
        auto& name = *static_cast<DISPLAYCONFIG_SOURCE_DEVICE_NAME*>(static_cast<void*>(header));
        fillField(name.viewGdiDeviceName, path->gdiDeviceName);
    }
    return path->sourceNameStatus;
}

LONG DisplayPaths::nameTarget(DISPLAYCONFIG_DEVICE_INFO_HEADER* header) const {
    SIMULATION_EXPECT(header->size == 420u);
    const auto path = std::ranges::find_if(all, [=](const auto& candidate) {
        return same(candidate.sourceAdapter, header->adapterId) && candidate.targetId == header->id;
    });
    if (path == all.end()) {
        return ERROR_INVALID_PARAMETER;
    }
    if (path->targetNameStatus == ERROR_SUCCESS) {
        auto& name = *static_cast<DISPLAYCONFIG_TARGET_DEVICE_NAME*>(static_cast<void*>(header));
        fillField(name.monitorFriendlyDeviceName, path->friendlyName);
        fillField(name.monitorDevicePath, path->devicePath);
    }
    return path->targetNameStatus;
}

LONG WINAPI DisplayPaths::getDeviceInfo(DISPLAYCONFIG_DEVICE_INFO_HEADER* header) {
    if (get().journal.isRecording()) {
        get().requests.push_back({header->type, header->adapterId, header->id});
    }
    if (const auto status = get().journal.enter("DisplayConfigGetDeviceInfo")) {
        return static_cast<LONG>(*status);
    }
    switch (header->type) {
    case DISPLAYCONFIG_DEVICE_INFO_GET_SOURCE_NAME:
        return get().nameSource(header);
    case DISPLAYCONFIG_DEVICE_INFO_GET_TARGET_NAME:
        return get().nameTarget(header);
    default:
        report("DisplayConfigGetDeviceInfo was called with type " + std::to_string(header->type));
        return ERROR_INVALID_PARAMETER;
    }
}

} // namespace simulation
