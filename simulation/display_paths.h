#pragma once

#include "simulation/current.h"
#include "simulation/journal.h"
#include "simulation/redirects.h"

#include <windows.h>

#include <string>
#include <vector>

namespace simulation {

// One active path of the display configuration. The adapters of its two ends differ unless a test
// makes them equal.
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

// One request for the name of a path's source or target, as it was asked.
struct NameRequest {
    DISPLAYCONFIG_DEVICE_INFO_TYPE type;
    LUID adapter;
    UINT32 id;
};

// The display configuration behind GetDisplayConfigBufferSizes, QueryDisplayConfig and
// DisplayConfigGetDeviceInfo. A name is found under the adapter of the path's source and the id of
// the end in question; a request for anything else fails as for a device that is not there.
class DisplayPaths : private Current<DisplayPaths> {
public:
    DisplayPaths(Redirects& redirects, Journal& calls);

    // Adds an active path behind the others, with ends of its own.
    SimulatedPath& add(const std::wstring& gdiDeviceName, const std::wstring& friendlyName,
                       const std::wstring& devicePath);

    // In the system's order.
    std::vector<SimulatedPath> all;

    // How many more paths are announced than there are when they are read.
    UINT32 announcedTooMany = 0;

    // What the two calls return although they have done their work.
    LONG sizesStatus = ERROR_SUCCESS;
    LONG queryStatus = ERROR_SUCCESS;

    // The requests for names so far.
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
