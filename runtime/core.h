#pragma once

#include "vorlen/runtime.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace vorlen {

// One monitor as a module passes it to the core. The texts hold the low 8 bits of each UTF-16
// unit.
// Given: the name, and the order of the members.
struct VORLEN_MONITOR_INFO {
    std::string deviceName;       // display device, such as \\.\DISPLAY1
    std::string friendlyName;     // name of the monitor's model; empty when unknown
    std::string monitorId;        // serial number text; empty when unknown
    std::int32_t x = 0;           // left edge, pixels, desktop coordinates
    std::int32_t y = 0;           // top edge, pixels, desktop coordinates
    std::int32_t width = 0;       // pixels
    std::int32_t height = 0;      // pixels
    std::int32_t refreshRate = 0; // hertz
};

// The runtime's list of monitors, its names, and the kit models that it knows. The process has one
// object, used only on the service thread. The object owns what its functions return references
// to: a name is valid until it is set again, data of monitors until the monitor list changes.
class VorlenCore {
public:
    // The only object.
    VORLEN_RUNTIME_API static VorlenCore& Instance();

    ~VorlenCore() = default;
    VorlenCore(const VorlenCore&) = delete;
    VorlenCore& operator=(const VorlenCore&) = delete;

    VORLEN_RUNTIME_API void ClearMonitorList();
    VORLEN_RUNTIME_API void AddMonitorItem(VORLEN_MONITOR_INFO monitor);

    // The monitors that were added since the list was last cleared, in that order.
    VORLEN_RUNTIME_API const std::vector<VORLEN_MONITOR_INFO>& GetMonitorItems() const;

    // The index of the current monitor in the list: the first monitor that is recognised as a kit
    // model. -1 when no monitor is.
    std::int32_t GetMonitorIndex() const { return monitorIndex; }

    // The current monitor's name: the one that was set, else the current monitor's friendly name,
    // else empty.
    VORLEN_RUNTIME_API const std::string& GetMonitorName() const;
    VORLEN_RUNTIME_API void SetMonitorName(const std::string& name);

    // The kit monitor's model name: the one that was set, else the first kit model of the current
    // monitor, else empty.
    VORLEN_RUNTIME_API const std::string& GetMonitorModelName() const;
    VORLEN_RUNTIME_API void SetMonitorModelName(const std::string& name);

    // The kit models of the monitor with this device name: the known models whose names its
    // friendly name contains. Empty when it contains none, or no monitor has the device name.
    // Given: the name, although the function takes a device name.
    VORLEN_RUNTIME_API const std::vector<std::string>&
    GetVorlenModelName(const std::string& deviceName) const;

    // Adds a model to the known ones. An empty name is ignored, and reported on standard error.
    VORLEN_RUNTIME_API void SetVorlenModelName(const std::string& modelName);

    // The name of the camera that belongs to a model. This runtime knows no camera and returns an
    // empty text.
    VORLEN_RUNTIME_API const std::string&
    GetDefaultCameraNameByModelName(const std::string& modelName) const;

private:
    VorlenCore();

    std::vector<std::string> ModelsIn(const std::string& friendlyName) const;
    void RecogniseMonitor(std::size_t index);

    std::vector<VORLEN_MONITOR_INFO> monitors;
    std::vector<std::vector<std::string>> modelsOfMonitor; // one entry per entry of monitors
    std::vector<std::string> knownModels;
    std::string monitorName;
    std::string monitorModelName;
    std::int32_t monitorIndex = -1;
};

} // namespace vorlen
