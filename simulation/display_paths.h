#pragma once

#include "simulation/current.h"
#include "simulation/journal.h"
#include "simulation/redirects.h"

#include <windows.h>

#include <string>
#include <vector>

namespace simulation {

// One active display path. The adapter ids of source and target differ unless a test makes them
// equal.
struct SimulatedPath {
    LUID sourceAdapter{};
    UINT32 sourceId = 0;
    LUID targetAdapter{};
    UINT32 targetId = 0;
    std::wstring gdiDeviceName;
    std::wstring friendlyName;
    std::wstring devicePath;
    LONG sourceNameStatus = ERROR_SUCCESS;
    LONG targetNameStatus = ERROR_SUCCESS;
};

// One request for the name of a path's source or target, with its arguments.
struct NameRequest {
    DISPLAYCONFIG_DEVICE_INFO_TYPE type;
    LUID adapter;
    UINT32 id;
};

// The display configuration behind GetDisplayConfigBufferSizes, QueryDisplayConfig and
// DisplayConfigGetDeviceInfo. A request for a name must give the adapter id of the path's source,
// and the id of the source or target. Other requests fail with ERROR_INVALID_PARAMETER.
class DisplayPaths : private Current<DisplayPaths> {
public:
    DisplayPaths(Redirects& redirects, Journal& calls);

    // Adds an active path after the others, with new ids.
    SimulatedPath& add(const std::wstring& gdiDeviceName, const std::wstring& friendlyName,
                       const std::wstring& devicePath);

    // In the system's order.
    std::vector<SimulatedPath> all;

    // By how much GetDisplayConfigBufferSizes exceeds the number of paths.
    UINT32 announcedTooMany = 0;

    // The results of GetDisplayConfigBufferSizes and QueryDisplayConfig after they have written
    // their output.
    LONG sizesStatus = ERROR_SUCCESS;
    LONG queryStatus = ERROR_SUCCESS;

    // All requests for names while the journal recorded.
    std::vector<NameRequest> requests;

private:
    friend class Current<DisplayPaths>;
    UINT32 pathCount() const { return static_cast<UINT32>(all.size()); }
    LONG nameSource(DISPLAYCONFIG_DEVICE_INFO_HEADER* header) const;
    LONG nameTarget(DISPLAYCONFIG_DEVICE_INFO_HEADER* header) const;
    static LONG WINAPI getBufferSizes(UINT32 flags, UINT32* pathCount, UINT32* modeCount);
    static LONG WINAPI query(UINT32 flags, UINT32* pathCount, DISPLAYCONFIG_PATH_INFO* paths,
                             UINT32* modeCount, DISPLAYCONFIG_MODE_INFO* modes,
                             DISPLAYCONFIG_TOPOLOGY_ID* topology);
    static LONG WINAPI getDeviceInfo(DISPLAYCONFIG_DEVICE_INFO_HEADER* header);

    Journal& journal;
    UINT32 lastId = 0;
};

} // namespace simulation
