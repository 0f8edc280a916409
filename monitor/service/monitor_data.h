#pragma once

#include "monitor/display/monitor_list.h"
#include "monitor/service/ui_records.h"
#include "monitor/windows/window_list.h"
#include "vorlen/monitor.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vorlen {

// The service: holds the lists of monitors and windows and passes monitors and names to the
// runtime's core. The module's init creates the one object. It belongs to the thread that created
// it, the service thread; nothing is locked. Functions throw what the standard library, the lists
// and the runtime throw.
//
// The runtime, callbacks of its log and procedures of the host's windows may call these functions
// while one of them runs. They may destroy the service only where a function says so.
class MonitorData {
public:
    // Makes a WindowList, takes over the calling thread's MonitorList or makes one, and reads the
    // desktop. After an exception the lists that it owned are destroyed.
    MonitorData();
    ~MonitorData() = default;
    MonitorData(const MonitorData&) = delete;
    MonitorData& operator=(const MonitorData&) = delete;

    // Reads the monitors, replaces the cached list and the core's list, and then notes the time.
    // After an exception the next call that needs the monitors reads them again. Does nothing
    // while another update runs: the core may call it while it receives the monitors.
    void UpdateMonitorList();

    // The cached monitors. Reads them again first when the list is stale: empty, 500 ms old or
    // older, or left by an update that threw. Valid until the next refresh. While an update runs,
    // returns the monitors that the update has passed to the core so far.
    const std::vector<ui::MonitorInfo>& GetMonitorList();

    // The core's name of the current monitor, after the same refresh. The text is the core's.
    const char* GetCurrentMonitorName();
    void SetCurrentMonitorName(const char* name);
    void SetCurrentMonitorName(const wchar_t* name);

    // The rectangle of the core's current monitor, after the same refresh. All zeros when the
    // core's index is not that of a cached monitor.
    _VLRect GetCurrentMonitorRect();

    // The core's model name; never refreshes.
    const std::string& GetMonitorModelName() const;
    void SetMonitorModelName(const std::string& name);

    // The kit models that the core finds in the monitor with this device name. The list is the
    // core's.
    const std::vector<std::string>& GetVorlenModelName(const char* deviceName) const;
    const std::vector<std::string>& GetVorlenModelName(const wchar_t* deviceName) const;
    void SetVorlenModelName(const char* modelName);
    void SetVorlenModelName(const wchar_t* modelName);

    // Switches the live window list on or off. The snapshot stays as it is when the list is
    // switched off; when it is switched on, a new list reads the windows, in the system's order. A
    // call from within that reading only decides whether the list is on or off after it. A window
    // procedure that runs during the reading may destroy the service.
    void UseWindowList(bool use);

    // Updates the snapshot from the live list. The snapshot stays as it is while the list is off.
    void UpdateWindowList();

    // The snapshot, updated first, in the order in which the windows were added. The reference is
    // valid as long as the service, the content until the next call.
    const std::vector<ui::WindowInfo>& GetWindowList();

    // Checks whether the kit monitor (the first that the core recognises, after the same refresh
    // as above) is set up as the kit requires. Logs what it judges, and keeps the outcome for
    // lastMonitorStatus. Throws std::range_error when a text of the monitor is not valid UTF-16;
    // the outcome stays unchanged then. The core may refresh the list during the check: the check
    // judges the list that it began with. The core and callbacks of the log may destroy the
    // service: the check still completes. Given: the name in lower camel case.
    bool checkMonitorStatus();

    // The monitor that the last check judged, as it is cached now. Null when the check judged no
    // monitor, or the monitor is no longer listed.
    const ui::MonitorInfo* GetCheckedMonitor() const;

    // The name of the camera that belongs to a kit model. The text is the core's.
    const char* GetVorlenCameraNameByVorlenModelName(const char* modelName) const;
    const char* GetVorlenCameraNameByVorlenModelName(const wchar_t* modelName) const;

private:
    void RefreshMonitorListIfStale();
    void ReplaceMonitors();

    std::unique_ptr<WindowList> windowList; // null while window tracking is off
    std::unique_ptr<MonitorList> monitorList;
    bool useWindowList = true;
    std::vector<ui::WindowInfo> windows;
    std::vector<ui::MonitorInfo> monitors;
    std::chrono::steady_clock::time_point lastMonitorUpdate;

    // Given: the fields above and their order. The fields below are the service's own.
    std::optional<std::uint64_t> windowsRevision; // of the live list when the snapshot was taken
    enum class Update { complete, running, abandoned } monitorUpdate = Update::complete;
    HMONITOR checkedMonitor = nullptr;
    // Expires with the service: functions that run code of the host check it afterwards.
    std::shared_ptr<void> lifetime = std::make_shared<char>();
};

} // namespace vorlen
