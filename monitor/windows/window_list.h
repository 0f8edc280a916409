#pragma once

#include "monitor/windows/window_info.h"
#include "platform/owners.h"
#include "platform/thread_object.h"

#include <windows.h>

#include <cstdint>
#include <memory>
#include <unordered_set>
#include <vector>

// The capturable top-level windows, in the order in which they were added, and the combo boxes
// that show their titles. A thread has at most one list, which is used and destroyed on that
// thread. It follows the desktop only while that thread retrieves messages. Windows are added when
// they are shown or uncloaked, and removed when they are destroyed. No other event changes the
// list.
class WindowList {
public:
    // Becomes the calling thread's list, reads the windows of the desktop and installs the event
    // hook. Deletes the thread's earlier list first. When the system installs no hook, the list
    // stays as it was read. After an exception the thread has no list and no hook.
    WindowList();
    ~WindowList() = default;
    WindowList(const WindowList&) = delete;
    WindowList& operator=(const WindowList&) = delete;

    // The calling thread's list, or null.
    static WindowList* Get();

    // Whether a constructor is reading the windows, for which window procedures of the host may be
    // called. Another list must not be constructed then: it would delete the unfinished one.
    static bool IsReading() { return reading; }

    // The windows, valid until the thread next retrieves messages. A title is the one that the
    // window had when it was added.
    const std::vector<WindowInfo>& GetCurrentWindows() const { return windows; }

    // A number that changes whenever a window is added or removed.
    std::uint64_t GetRevision() const { return revision; }

    // Fills the combo box with the titles, and sends it every later change. It stays the caller's
    // and must not sort its entries. Registered twice, it receives each change twice. Its
    // procedure may destroy the list, which then sends no further message. Its procedure may also
    // cause windows to be added or removed; its entries may differ from the list then. Throws
    // _com_error when the combo box replies with an error.
    void RegisterComboBoxForUpdates(HWND comboBox);

private:
    static void CALLBACK OnEvent(HWINEVENTHOOK hook, DWORD event, HWND hwnd, LONG object,
                                 LONG child, DWORD thread, DWORD time);

    void Seed();
    static bool HandleAppearance(HWND hwnd);
    static bool HandleDestruction(HWND hwnd);
    bool IsListed(HWND hwnd) const { return windowSet.contains(hwnd); }
    void AddWindow(const WindowInfo& info);
    bool RemoveWindow(HWND hwnd);
    void ForceUpdateComboBox(HWND comboBox);
    template <typename Send>
    void NotifyComboBoxes(const Send& send);

    static inline bool reading = false;

    std::vector<HWND> comboBoxes;          // in order of registration, duplicates kept
    std::vector<WindowInfo> windows;       // in the order in which they were added
    std::unordered_set<HWND> windowSet{8}; // the handles of windows
    std::uint64_t revision = 0;
    // In this order: the destructor releases the hook first and then clears the thread's list.
    vorlen::ThreadObject<WindowList> instance;
    vorlen::EventHook hook; // null when the system installed none
    // Expires with the list: functions that run code of the host check it afterwards.
    std::shared_ptr<void> lifetime = std::make_shared<char>();
};
