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

// The monitor data service: the module's view of the desktop, and its way to the runtime's core.
// There is one, made by the module's init. It belongs to the thread that made it, the service
// thread; nothing is locked. Exceptions of the standard library, of the lists and of the runtime
// pass through.
//
// The runtime, its log and the procedures of the host's windows may call these functions while one
// of them runs. They may destroy the service only where a function says so.
class MonitorData {
public:
    // Makes a WindowList, takes over the calling thread's MonitorList or makes one, and reads the
    // desktop. A failure leaves nothing behind, neither object nor list.
    MonitorData();
    ~MonitorData();
    MonitorData(const MonitorData&) = delete;
    MonitorData& operator=(const MonitorData&) = delete;

    // Reads the monitors anew, replaces the cached list and the core's list by them, and notes the
    // time. After a failure the time is as before, so that the next question reads again. Does
    // nothing while an update runs: the core may ask while it is given the monitors.
    void UpdateMonitorList();

    // The cached monitors, read again first when they are stale; valid until the next refresh.
    // While an update runs, the monitors that it has handed to the core so far.
    const std::vector<ui::MonitorInfo>& GetMonitorList();

    // The core's name of the current monitor, after the same refresh. The core's text.
    const char* GetCurrentMonitorName();
    void SetCurrentMonitorName(const char* name);
    void SetCurrentMonitorName(const wchar_t* name);

    // The rectangle of the core's current monitor, after the same refresh; zeros when the core's
    // index names none of the cached monitors.
    _VLRect GetCurrentMonitorRect();

    // The core's model name; never refreshes.
    const std::string& GetMonitorModelName() const;
    void SetMonitorModelName(const std::string& name);

    // The kit models that the core finds in the monitor with this device name; the core's list.
    const std::vector<std::string>& GetVorlenModelName(const char* deviceName) const;
    const std::vector<std::string>& GetVorlenModelName(const wchar_t* deviceName) const;
    void SetVorlenModelName(const char* modelName);
    void SetVorlenModelName(const wchar_t* modelName);

    // Switches the live list of windows on or off. The last snapshot stays in place; a list that is
    // switched on again is read again, in the system's order. While it is read, switching it on
    // again does nothing, and switching it off leaves it off.
    void UseWindowList(bool use);

    // Brings the snapshot of the live list up to date; leaves it as it is while the list is off.
    void UpdateWindowList();

    // The snapshot, brought up to date first, in the order in which the windows appeared. The
    // reference is valid as long as the service, the content until the next call.
    const std::vector<ui::WindowInfo>& GetWindowList();

    // Whether the first monitor that the core recognises, read anew first when stale, is set up as
    // the kit requires. Logs what it judges, and keeps the outcome for lastMonitorStatus. A name
    // that is not UTF-16 leaves as std::range_error, with the outcome as it was. The core may have
    // the list read while it is asked: the check judges the list that it began with. The log may
    // destroy the service: the check completes all the same.
    // Given: the lower-case name.
    bool checkMonitorStatus();

    // The monitor that the last check judged, as it is cached now; null when it judged none or the
    // monitor has gone.
    const ui::MonitorInfo* GetCheckedMonitor() const;

    // The name of the camera that belongs to a kit model; the core's text.
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

    // The order of the fields so far is given; what follows is the service's own.
    std::optional<std::uint64_t> windowsRevision; // of the live list when the snapshot was taken
    // A live list is being made. Shared, since a window procedure may destroy the service then.
    std::shared_ptr<bool> readingWindows = std::make_shared<bool>(false);
    enum class Update { complete, running, abandoned } monitorUpdate = Update::complete;
    HMONITOR checkedMonitor = nullptr;
    // Expires with the service, for functions of the service that run code of the host.
    std::shared_ptr<void> lifetime = std::make_shared<char>();
};

} // namespace vorlen
