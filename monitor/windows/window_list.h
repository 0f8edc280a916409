#pragma once

#include "monitor/windows/window_info.h"
#include "platform/owners.h"
#include "platform/thread_object.h"

#include <windows.h>

#include <cstdint>
#include <memory>
#include <unordered_set>
#include <vector>

// The top-level windows that may be shown on the kit's monitor, in the order in which they
// appeared, and the combo boxes that mirror their titles. One per thread, used and destroyed on the
// thread that made it. It follows the desktop only while that thread retrieves messages; windows
// enter when they are shown or uncloaked and leave when they are destroyed, nothing else changes
// the list.
class WindowList {
public:
    // Becomes the calling thread's list, reads the windows of the desktop and installs the event
    // hook; a list that the thread has already is deleted first. Without a hook, should the system
    // refuse it, the list stays as read. A failure leaves neither hook nor thread's list behind.
    WindowList();
    ~WindowList() = default;
    WindowList(const WindowList&) = delete;
    WindowList& operator=(const WindowList&) = delete;

    // The calling thread's list, or null.
    static WindowList* Get();

    // The windows, valid until the thread next retrieves messages. Titles are those of the moment
    // at which the window appeared.
    const std::vector<WindowInfo>& GetCurrentWindows() const { return windows; }

    // Differs from the earlier number whenever the windows have changed.
    std::uint64_t GetRevision() const { return revision; }

    // Fills the combo box with the titles and keeps it in step from now on. It stays the caller's,
    // must not sort, and is sent each change twice if registered twice. Its procedure may destroy
    // the list, which then sends no further message. It may also let windows appear or go, but then
    // the combo box may end out of step. Throws _com_error when it answers with an error.
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

    std::vector<HWND> comboBoxes;          // in order of registration, duplicates kept
    std::vector<WindowInfo> windows;       // in order of appearance
    std::unordered_set<HWND> windowSet{8}; // the handles of windows
    std::uint64_t revision = 0;
    // In this order, so that the hook is released first, then the thread's list cleared.
    ThreadObject<WindowList> instance;
    vorlen::EventHook hook; // null when the system refused it
    // Expires with the list, for functions of the list that run code of the host.
    std::shared_ptr<void> lifetime = std::make_shared<char>();
};
