#pragma once

#include "monitor/display/monitor_info.h"
#include "platform/thread_object.h"

#include <memory>
#include <vector>

// The monitors of the last Update and the combo boxes that show their names. A thread has at most
// one list, which is used and destroyed on that thread.
class MonitorList {
public:
    // Becomes the calling thread's list. Throws std::logic_error when the thread already has one.
    // The list is empty until the first Update. includeAllDisplays: see EnumerateAllMonitors.
    explicit MonitorList(bool includeAllDisplays);
    ~MonitorList() = default;
    MonitorList(const MonitorList&) = delete;
    MonitorList& operator=(const MonitorList&) = delete;

    // The calling thread's list, or null.
    static MonitorList* Get();

    // Reads the monitors. When EnumerateAllMonitors throws, the list stays unchanged. Registered
    // combo boxes keep the names that they show.
    void Update();

    // The records of the last Update, valid until the next.
    const std::vector<MonitorInfo>& GetMonitors() const { return monitors; }

    // The rectangle of any monitor in desktop coordinates, as the system reports it now. All zeros
    // when the handle is not a monitor's.
    RECT GetMonitorRect(HMONITOR monitor) const;

    // Keeps the handle of the combo box, which stays the caller's, and fills it with the device
    // names. Throws _com_error when the combo box replies with an error. The procedure of the combo
    // box may destroy the list, which then sends no further message.
    void RegisterComboBoxForUpdates(HWND comboBox);

private:
    void ForceUpdateComboBox(HWND comboBox);

    std::vector<HWND> comboBoxes; // in order of registration, duplicates kept
    std::vector<MonitorInfo> monitors;
    bool includeAllDisplays;
    vorlen::ThreadObject<MonitorList> instance; // after the members above: cleared before they end
    // Expires with the list, which the procedure of a combo box may destroy.
    std::shared_ptr<void> lifetime = std::make_shared<char>();
};
