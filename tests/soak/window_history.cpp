#include "tests/soak/window_history.h"

#include <array>

namespace tests {

void WindowHistory::addWindows(int count) {
    for (int i = 0; i < count; ++i) {
        furnish(desktop.windows.add(L""));
    }
}

void WindowHistory::happen() {
    SimulatedWindow& window = anyWindow();
    if (!window.alive && oneIn(2)) {
        // The handle is used again.
        furnish(window);
        window.alive = true;
    } else if (oneIn(4)) {
        change(window);
    }
    switch (below(40)) {
    case 0:
    case 1:
        return endLife(window);
    case 2:
    case 3:
    case 4:
    case 5:
        return deliver(EVENT_OBJECT_SHOW, window.handle);
    case 6:
    case 7:
        return deliver(EVENT_OBJECT_UNCLOAKED, window.handle);
    default:
        return deliverNoise(window.handle);
    }
}

SimulatedWindow& WindowHistory::anyWindow() {
    return *desktop.windows.find(desktop.windows.order[below(desktop.windows.order.size())]);
}

void WindowHistory::furnish(SimulatedWindow& window) {
    window.title = anyTitle();
    window.className = anyClassName();
    window.visible = !oneIn(4);
    window.style = oneIn(8) ? WS_DISABLED : WS_VISIBLE;
    window.extendedStyle = oneIn(8) ? WS_EX_TOOLWINDOW : 0;
    window.root = oneIn(8) ? anyWindow().handle : window.handle;
    window.cloakingResult = oneIn(4) ? E_NOTIMPL : S_OK;
    window.cloaked = oneIn(2) ? 2 : 0;
}

void WindowHistory::change(SimulatedWindow& window) {
    switch (below(10)) {
    case 0:
        window.title = anyTitle();
        break;
    case 1:
        window.className = anyClassName();
        break;
    case 2:
        window.style ^= WS_DISABLED;
        break;
    case 3:
        window.extendedStyle ^= WS_EX_TOOLWINDOW;
        break;
    case 4:
        window.cloaked ^= 1;
        break;
    case 5:
        window.cloakingResult = window.cloakingResult == S_OK ? E_NOTIMPL : S_OK;
        break;
    case 6:
        window.root = window.root == window.handle ? nullptr : window.handle;
        break;
    case 7:
        desktop.windows.shellWindow = window.handle;
        break;
    default:
        window.visible = !window.visible;
        break;
    }
}

// Some are blocked under some class names, some are longer than a record.
std::wstring WindowHistory::anyTitle() {
    static const std::array<std::wstring, 4> known = {L"", L"Task View", L"DesktopWindowXamlSource",
                                                      L"PopupHost"};
    const std::size_t choice = below(12);
    if (choice < known.size()) {
        return known[choice];
    }
    std::wstring title = L"window " + std::to_wstring(generator());
    if (oneIn(50)) {
        title.resize(below(300), L'\xD83D');
    }
    return title;
}

std::wstring WindowHistory::anyClassName() {
    static const std::array<std::wstring, 5> known = {
        L"Windows.UI.Core.CoreWindow", L"ApplicationFrameWindow", L"Xaml_WindowedPopupClass",
        L"ApplicationWindow", std::wstring(255, L'c')};
    return known[below(known.size())];
}

void WindowHistory::deliver(DWORD event, HWND handle, LONG object, LONG child) {
    desktop.eventHooks.deliver(event, handle, object, child);
    model.receive(event, handle, object, child);
}

// Any event about any object: most change nothing, some report a destruction.
void WindowHistory::deliverNoise(HWND handle) {
    constexpr std::array<LONG, 4> objects = {OBJID_WINDOW, OBJID_CLIENT, OBJID_CARET, 1};
    if (oneIn(4)) {
        const DWORD event = EVENT_OBJECT_SHOW + static_cast<DWORD>(below(0x17));
        const LONG child = oneIn(2) ? CHILDID_SELF : 3;
        return deliver(event, oneIn(20) ? nullptr : handle, objects[below(objects.size())], child);
    }
    if (oneIn(20)) {
        // Of a part of the window, and so without effect.
        return deliver(EVENT_OBJECT_DESTROY, handle, OBJID_CLIENT, 1 + static_cast<LONG>(below(9)));
    }
    constexpr std::array<DWORD, 5> frequent = {EVENT_OBJECT_LOCATIONCHANGE, EVENT_OBJECT_NAMECHANGE,
                                               EVENT_OBJECT_HIDE, EVENT_OBJECT_CLOAKED,
                                               EVENT_OBJECT_STATECHANGE};
    deliver(frequent[below(frequent.size())], handle);
}

// With the event or without it; or the event comes for a window that stays.
void WindowHistory::endLife(SimulatedWindow& window) {
    window.alive = oneIn(8);
    if (!oneIn(8)) {
        deliver(EVENT_OBJECT_DESTROY, window.handle, oneIn(4) ? OBJID_CARET : OBJID_WINDOW);
    }
}

} // namespace tests
