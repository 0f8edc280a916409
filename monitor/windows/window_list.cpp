#include "monitor/windows/window_list.h"

#include "monitor/windows/capture_filter.h"
#include "monitor/windows/event_log.h"
#include "platform/combo_box.h"
#include "platform/last_error.h"

#include <algorithm>
#include <cstddef>
#include <exception>
#include <memory>
#include <utility>

namespace {

struct Seeding {
    WindowList& list;
    std::exception_ptr failure;
};

} // namespace

WindowList::WindowList() {
    delete Get();
    instance.Bind(*this);
    Seed();
    hook = EventHook(SetWinEventHook(EVENT_OBJECT_DESTROY, EVENT_OBJECT_UNCLOAKED, nullptr, OnEvent,
                                     0, 0, WINEVENT_OUTOFCONTEXT));
}

WindowList* WindowList::Get() {
    return ThreadObject<WindowList>::Get();
}

void WindowList::Seed() {
    Seeding seeding{*this, nullptr};
    EnumWindows(SeedWindow, reinterpret_cast<LPARAM>(&seeding));
    if (seeding.failure) {
        std::rethrow_exception(seeding.failure);
    }
    endFailureSeries();
}

// An exception must not cross the system's frames: it is kept until the enumeration has returned.
BOOL CALLBACK WindowList::SeedWindow(HWND hwnd, LPARAM parameter) {
    auto& seeding = *reinterpret_cast<Seeding*>(parameter);
    try {
        if (!seeding.failure && GetWindowTextLengthW(hwnd) >= 1) {
            const WindowInfo info(hwnd);
            if (IsCapturableWindow(info)) {
                seeding.list.AddWindow(info);
            }
        }
    } catch (...) {
        seeding.failure = std::current_exception();
    }
    return TRUE;
}

// The desktop sends thousands of location events a second through the hooked range: what cannot
// change the list is told from the event's numbers alone, or by a look whether it is listed.
void CALLBACK WindowList::OnEvent(HWINEVENTHOOK, DWORD event, HWND hwnd, LONG object, LONG child,
                                  DWORD, DWORD) {
    // Intended: the object of a destruction is not looked at.
    const bool gone = event == EVENT_OBJECT_DESTROY;
    const bool appeared = (event == EVENT_OBJECT_SHOW || event == EVENT_OBJECT_UNCLOAKED) &&
                          object == OBJID_WINDOW && hwnd != nullptr;
    if (child != CHILDID_SELF || !(gone || appeared)) {
        return;
    }
    // The thread may be about to ask for the error of a call of its own.
    const LastErrorKeeper lastErrorKeeper;
    try {
        if (gone ? HandleDestruction(hwnd) : HandleAppearance(hwnd)) {
            endFailureSeries();
        }
    } catch (...) {
        // The system called and has no use for it.
        logEventFailure(std::current_exception());
    }
}

// Whether a window was removed.
bool WindowList::HandleDestruction(HWND hwnd) {
    WindowList* const list = Get();
    return list != nullptr && list->RemoveWindow(hwnd);
}

// Whether the window was looked at. Asking for its title may run a window procedure of the host,
// which may destroy or replace the list: the window goes to the list that the thread has then.
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

// Intended: a window that is listed already keeps the title that it had when it appeared.
void WindowList::AddWindow(const WindowInfo& info) {
    if (IsListed(info.hwnd)) {
        return;
    }
    windows.push_back(info);
    try {
        places.emplace(info.hwnd, windows.size() - 1);
        order.Append();
    } catch (...) {
        places.erase(info.hwnd);
        windows.pop_back();
        throw;
    }
    ++revision;
    NotifyComboBoxes([&](HWND comboBox) { appendToComboBox(comboBox, info.title); });
}

bool WindowList::RemoveWindow(HWND hwnd) {
    const auto found = places.find(hwnd);
    if (found == places.end()) {
        return false;
    }
    const std::size_t place = found->second;
    const std::size_t index = order.TakenBefore(place);
    places.erase(found);
    Vacate(place);
    ++revision;
    NotifyComboBoxes([&](HWND comboBox) { deleteFromComboBox(comboBox, index); });
    return true;
}

// To those that are registered now: one that is registered while another handles the message shows
// the change already. The message may also destroy the list.
template <typename Send>
void WindowList::NotifyComboBoxes(const Send& send) {
    const std::weak_ptr<void> alive = lifetime;
    const std::size_t count = comboBoxes.size();
    for (std::size_t i = 0; i < count && !alive.expired(); ++i) {
        send(comboBoxes[i]);
    }
}

// Gaps are closed once they are as many as the windows, so that a removal costs the same on average
// however many windows there are, and whenever somebody wants to see the windows.
void WindowList::Vacate(std::size_t place) noexcept {
    WindowInfo released = std::move(windows[place]);
    windows[place].hwnd = nullptr;
    order.Vacate(place);
    if (windows.size() >= 2 * places.size()) {
        CloseGaps();
    }
}

void WindowList::CloseGaps() const noexcept {
    if (windows.size() == places.size()) {
        return;
    }
    std::erase_if(windows, [](const WindowInfo& info) { return info.hwnd == nullptr; });
    for (std::size_t place = 0; place < windows.size(); ++place) {
        places.find(windows[place].hwnd)->second = place;
    }
    order.CloseGaps();
}

const std::vector<WindowInfo>& WindowList::GetCurrentWindows() const noexcept {
    CloseGaps();
    return windows;
}

void WindowList::RegisterComboBoxForUpdates(HWND comboBox) {
    comboBoxes.push_back(comboBox);
    ForceUpdateComboBox(comboBox);
}

void WindowList::ForceUpdateComboBox(HWND comboBox) {
    const std::weak_ptr<void> alive = lifetime;
    resetComboBox(comboBox);
    if (alive.expired()) {
        return;
    }
    const std::size_t count = GetCurrentWindows().size();
    // By index and with copies: the control may let windows appear or go, or destroy the list,
    // while it handles a message. Windows that appear are sent to it as they are added.
    for (std::size_t i = 0; !alive.expired() && i < std::min(count, GetCurrentWindows().size());
         ++i) {
        const std::wstring title = windows[i].title;
        appendToComboBox(comboBox, title);
    }
}
