#include "tests/soak/window_model.h"

#include <algorithm>

namespace tests {

namespace {

bool isBlocked(const SimulatedWindow& window) {
    const std::wstring core = L"Windows.UI.Core.CoreWindow";
    return (window.title == L"Task View" && window.className == core) ||
           (window.title == L"DesktopWindowXamlSource" && window.className == core) ||
           (window.title == L"PopupHost" && window.className == L"Xaml_WindowedPopupClass");
}

bool isHiddenBySystem(const SimulatedWindow& window) {
    const bool matters = window.className == L"Windows.UI.Core.CoreWindow" ||
                         window.className == L"ApplicationFrameWindow";
    return matters && window.cloakingResult >= 0 && window.cloaked != 0;
}

} // namespace

void WindowModel::readDesktop() {
    listed.clear();
    for (const HWND handle : windows.order) {
        if (isCapturable(handle)) {
            append(handle);
        }
    }
}

void WindowModel::registerBox(HWND handle) {
    registrations.push_back(handle);
    Box& box = boxOf(handle);
    box.entries.clear();
    for (const Entry& entry : listed) {
        box.entries.push_back(entry.title);
    }
}

void WindowModel::receive(DWORD event, HWND handle, LONG object, LONG child) {
    if (event == EVENT_OBJECT_DESTROY && child == CHILDID_SELF) {
        if (isListed(handle)) {
            remove(handle);
        }
        return;
    }
    if (object != OBJID_WINDOW || child != CHILDID_SELF) {
        return;
    }
    if (event == EVENT_OBJECT_SHOW || event == EVENT_OBJECT_UNCLOAKED) {
        if (isCapturable(handle) && !isListed(handle)) {
            append(handle);
        }
    }
}

bool WindowModel::isListed(HWND handle) const {
    return std::any_of(listed.begin(), listed.end(),
                       [=](const Entry& entry) { return entry.handle == handle; });
}

bool WindowModel::isCapturable(HWND handle) const {
    const SimulatedWindow* const window = windows.find(handle);
    return window != nullptr && window->alive && !window->title.empty() &&
           handle != windows.shellWindow && window->visible && window->root == handle &&
           (window->style & WS_DISABLED) == 0 && (window->extendedStyle & WS_EX_TOOLWINDOW) == 0 &&
           !isHiddenBySystem(*window) && !isBlocked(*window);
}

void WindowModel::append(HWND handle) {
    const SimulatedWindow& window = *windows.find(handle);
    ++entered;
    listed.push_back({handle, window.title, window.className});
    for (const HWND registration : registrations) {
        boxOf(registration).entries.push_back(window.title);
    }
}

// A combo box without such an entry replies with an error: those behind it get no message.
void WindowModel::remove(HWND handle) {
    std::size_t index = 0;
    while (listed[index].handle != handle) {
        ++index;
    }
    const auto offset = static_cast<std::ptrdiff_t>(index);
    ++left;
    listed.erase(listed.begin() + offset);
    for (const HWND registration : registrations) {
        Box& box = boxOf(registration);
        if (index >= box.entries.size()) {
            ++refusals;
            return;
        }
        box.entries.erase(box.entries.begin() + offset);
    }
}

WindowModel::Box& WindowModel::boxOf(HWND handle) {
    const auto found = std::find_if(boxes.begin(), boxes.end(),
                                    [=](const Box& box) { return box.handle == handle; });
    return found != boxes.end() ? *found : boxes.emplace_back(Box{handle, {}});
}

} // namespace tests
