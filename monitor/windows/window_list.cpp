#include "monitor/windows/window_list.h"

#include "monitor/windows/capture_filter.h"
#include "monitor/windows/event_log.h"
#include "platform/combo_box.h"
#include "platform/for_each.h"
#include "platform/scope.h"

#include <algorithm>
#include <cstddef>
#include <exception>
#include <memory>
#include <utility>

WindowList::WindowList() {
    delete Get();
    instance.Bind(*this);
    {
        const vorlen::ScopedFlag marked(reading);
        Seed();
    }
    hook.reset(SetWinEventHook(EVENT_OBJECT_DESTROY, EVENT_OBJECT_UNCLOAKED, nullptr, OnEvent, 0, 0,
                               WINEVENT_OUTOFCONTEXT));
}

WindowList* WindowList::Get() {
    return vorlen::ThreadObject<WindowList>::Get();
}

void WindowList::Seed() {
    vorlen::forEachWindow([this](HWND hwnd) {
        // Most windows have no title: the two texts are not read for them.
        if (GetWindowTextLengthW(hwnd) < 1) {
            return;
        }
        const WindowInfo info(hwnd);
        if (IsCapturableWindow(info)) {
            AddWindow(info);
        }
    });
    endFailureSeries();
}

// The desktop sends thousands of location events a second through the hooked range. An event that
// cannot change the list is dropped before any platform call: by its numbers, or because of
// whether the window is listed.
void CALLBACK WindowList::OnEvent(HWINEVENTHOOK, DWORD event, HWND hwnd, LONG object, LONG child,
                                  DWORD, DWORD) {
    // Intended: the object of a destruction is not checked.
    const bool destroyed = event == EVENT_OBJECT_DESTROY;
    const bool appeared = (event == EVENT_OBJECT_SHOW || event == EVENT_OBJECT_UNCLOAKED) &&
                          object == OBJID_WINDOW && hwnd != nullptr;
    if (child != CHILDID_SELF || !(destroyed || appeared)) {
        return;
    }
    // Windows may call this between a failed call of the host and its GetLastError().
    const vorlen::LastErrorKeeper lastErrorKeeper;
    try {
        if (destroyed ? HandleDestruction(hwnd) : HandleAppearance(hwnd)) {
            endFailureSeries();
        }
    } catch (...) {
        // The caller is the system, which must not receive an exception.
        logEventFailure(std::current_exception());
    }
}

// Returns whether the window was removed.
bool WindowList::HandleDestruction(HWND hwnd) {
    WindowList* const list = Get();
    return list != nullptr && list->RemoveWindow(hwnd);
}

// Returns whether the window was read. Reading its title may run a window procedure of the host,
// which may destroy or replace the list: the window is added to the list that the thread has then.
bool WindowList::HandleAppearance(HWND hwnd) {
    const WindowList* const list = Get();
    if (list == nullptr || list->IsListed(hwnd) || GetAncestor(hwnd, GA_ROOT) != hwnd ||
        GetWindowTextLengthW(hwnd) < 1) {
        return false;
    }
    const WindowInfo info(hwnd);
    if (IsCapturableWindow(info)) {
        if (WindowList* const current = Get()) {
            current->AddWindow(info);
        }
    }
    return true;
}

// Intended: a window that is already listed keeps the title that it had when it was added.
void WindowList::AddWindow(const WindowInfo& info) {
    if (IsListed(info.hwnd)) {
        return;
    }
    windows.push_back(info);
    try {
        windowSet.insert(info.hwnd);
    } catch (...) {
        windows.pop_back();
        throw;
    }
    ++revision;
    NotifyComboBoxes([&](HWND comboBox) { vorlen::appendToComboBox(comboBox, info.title); });
}

bool WindowList::RemoveWindow(HWND hwnd) {
    if (windowSet.erase(hwnd) == 0) {
        return false;
    }
    const auto found = std::ranges::find(windows, hwnd, &WindowInfo::hwnd);
    const auto index = static_cast<std::size_t>(found - windows.begin());
    windows.erase(found);
    ++revision;
    NotifyComboBoxes([=](HWND comboBox) { vorlen::deleteFromComboBox(comboBox, index); });
    return true;
}

// Sends to the combo boxes that are registered at the call. A combo box that is registered while
// another one handles its message is filled from the changed list. A message may also destroy the
// list.
template <typename Send>
void WindowList::NotifyComboBoxes(const Send& send) {
    const std::weak_ptr<void> alive = lifetime;
    const std::size_t count = comboBoxes.size();
    for (std::size_t i = 0; i < count && !alive.expired(); ++i) {
        send(comboBoxes[i]);
    }
}

void WindowList::RegisterComboBoxForUpdates(HWND comboBox) {
    comboBoxes.push_back(comboBox);
    ForceUpdateComboBox(comboBox);
}

void WindowList::ForceUpdateComboBox(HWND comboBox) {
    const std::weak_ptr<void> alive = lifetime;
    vorlen::resetComboBox(comboBox);
    if (alive.expired()) {
        return;
    }
    const std::size_t count = windows.size();
    // By index and with copies: while the combo box handles a message, windows may be added or
    // removed, and the list may be destroyed. AddWindow sends it the windows that are added.
    for (std::size_t i = 0; !alive.expired() && i < std::min(count, windows.size()); ++i) {
        const std::wstring title = windows[i].title;
        vorlen::appendToComboBox(comboBox, title);
    }
}
