#pragma once

#include "monitor/display/monitor_info.h"
#include "platform/thread_object.h"

#include <vector>

// The monitors of the last Update and the combo boxes that show their names. One per thread, used
// and destroyed on the thread that made it.
class MonitorList {
public:
    // Becomes the calling thread's list; throws std::exception when the thread has one already. The
    // list stays empty until the first Update. includeAllDisplays: see EnumerateAllMonitors.
    explicit MonitorList(bool includeAllDisplays);
    ~MonitorList() = default;
    MonitorList(const MonitorList&) = delete;
    MonitorList& operator=(const MonitorList&) = delete;

    // The calling thread's list, or null.
    static MonitorList* Get();

    // Reads the monitors anew; what EnumerateAllMonitors throws leaves them as they were.
    // Registered combo boxes keep the names that they show.
    void Update();

    // The records of the last Update, valid until the next.
    const std::vector<MonitorInfo>& GetMonitors() const { return monitors; }

    // The desktop rectangle of any monitor as the system reports it now; zeros for a handle that is
    // not that of a monitor.
    RECT GetMonitorRect(HMONITOR monitor) const;

    // Remembers the combo box, which stays the caller's, and fills it with the device names. Throws
    // _com_error when the combo box answers with an error.
    void RegisterComboBoxForUpdates(HWND comboBox);

private:
    void ForceUpdateComboBox(HWND comboBox);

    std::vector<HWND> comboBoxes; // in order of registration, duplicates kept
    std::vector<MonitorInfo> monitors;
    bool includeAllDisplays = false;
    ThreadObject<MonitorList> instance; // last, so that the thread's list is cleared first
};
