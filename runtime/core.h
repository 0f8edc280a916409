#pragma once

#include "vorlen/runtime.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace vorlen {

// Given: the name, and the order of the members.
// One monitor as a module hands it to the core. The texts hold the low 8 bits of each UTF-16 unit.
struct VORLEN_MONITOR_INFO {
    std::string deviceName;       // display device, such as \\.\DISPLAY1
    std::string friendlyName;     // name of the monitor's model; empty when unknown
    std::string monitorId;        // serial number text; empty when unknown
    std::int32_t x = 0;           // left edge on the desktop, pixels
    std::int32_t y = 0;           // top edge on the desktop, pixels
    std::int32_t width = 0;       // pixels
    std::int32_t height = 0;      // pixels
    std::int32_t refreshRate = 0; // hertz
};

// What the runtime knows of the desktop's monitors and of the kit's own models. One object for the
// process, used on the service thread only. References that it returns are its own: a text is valid
// until it is set anew, anything about monitors until the monitor list changes.
class VorlenCore {
public:
    // The process-wide object.
    VORLEN_RUNTIME_API static VorlenCore& Instance();

    ~VorlenCore() = default;
    VorlenCore(const VorlenCore&) = delete;
    VorlenCore& operator=(const VorlenCore&) = delete;

    VORLEN_RUNTIME_API void ClearMonitorList();
    VORLEN_RUNTIME_API void AddMonitorItem(VORLEN_MONITOR_INFO monitor);

    // The monitors added since the list was last cleared, in that order.
    VORLEN_RUNTIME_API const std::vector<VORLEN_MONITOR_INFO>& GetMonitorItems() const;

    // Index of the current monitor in the list: the first that is recognised as one of the kit's
    // models; -1 while there is none.
    std::int32_t GetMonitorIndex() const { return monitorIndex; }

    // The current monitor's name: the one that was set, else its friendly name, else empty.
    VORLEN_RUNTIME_API const std::string& GetMonitorName() const;
    VORLEN_RUNTIME_API void SetMonitorName(const std::string& name);

    // The kit monitor's model name: the one that was set, else the first that the current monitor
    // carries, else empty.
    VORLEN_RUNTIME_API const std::string& GetMonitorModelName() const;
    VORLEN_RUNTIME_API void SetMonitorModelName(const std::string& name);

    // Given: the name, although it takes that of a device.
    // The known models that the monitor with this device name carries in its friendly name, exactly
    // or as a part of it; empty when it carries none or is not listed.
    VORLEN_RUNTIME_API const std::vector<std::string>&
    GetVorlenModelName(const std::string& deviceName) const;

    // Makes one more model known. An empty name is refused with a line on standard error.
    VORLEN_RUNTIME_API void SetVorlenModelName(const std::string& modelName);

    // The camera that belongs to a model; this runtime knows of none and answers with an empty
    // text.
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
