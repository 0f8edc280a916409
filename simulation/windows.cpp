#include "simulation/windows.h"

#include "simulation/expect.h"
#include "simulation/platform_memory.h"

#include <algorithm>

namespace simulation {

namespace {

// Copies as many units as fit, and a terminating zero. Writes nothing after the zero. Returns the
// number of units copied without the zero.
int copyCut(const std::wstring& text, LPWSTR field, int units) {
    if (units <= 0) {
        return 0;
    }
    const std::size_t copied = std::min(text.size(), static_cast<std::size_t>(units) - 1);
    *std::copy_n(text.begin(), copied, field) = L'\0';
    return static_cast<int>(copied);
}

void expectZeroed(LPCWSTR field, int units) {
    SIMULATION_EXPECT(field != nullptr);
    SIMULATION_EXPECT(units >= 0);
    SIMULATION_EXPECT(isZero(field, static_cast<std::size_t>(units) * sizeof(*field)),
                      "the text was not zeroed first");
}

} // namespace

Windows::Windows(Redirects& redirects, Journal& calls) : journal(calls) {
    redirects.replace<decltype(EnumWindows)>("EnumWindows", enumerate);
    redirects.replace<decltype(GetWindowTextLengthW)>("GetWindowTextLengthW", getTextLength);
    redirects.replace<decltype(GetWindowTextW)>("GetWindowTextW", getText);
    redirects.replace<decltype(GetClassNameW)>("GetClassNameW", getClassName);
    redirects.replace<decltype(GetWindowLongW)>("GetWindowLongW", getLong);
    redirects.replace<decltype(GetAncestor)>("GetAncestor", getAncestor);
    redirects.replace<decltype(IsWindow)>("IsWindow", isWindow);
    redirects.replace<decltype(IsWindowVisible)>("IsWindowVisible", isVisible);
    redirects.replace<decltype(GetShellWindow)>("GetShellWindow", getShellWindow);
}

SimulatedWindow& Windows::add(const std::wstring& title, const std::wstring& className) {
    SimulatedWindow window;
    window.handle = reinterpret_cast<HWND>(0x30002 + 2 * all.size());
    window.title = title;
    window.className = className;
    window.root = window.handle;
    return add(window);
}

SimulatedWindow& Windows::add(const SimulatedWindow& window) {
    SimulatedWindow& added = all.emplace_back(window);
    byHandle.emplace(added.handle, &added);
    order.push_back(added.handle);
    return added;
}

SimulatedWindow* Windows::find(HWND handle) {
    const auto found = byHandle.find(handle);
    return found != byHandle.end() ? found->second : nullptr;
}

std::size_t Windows::callsAbout(HWND handle) const {
    const auto found = callCounts.find(handle);
    return found != callCounts.end() ? found->second : 0;
}

SimulatedWindow* Windows::ask(HWND handle) {
    ++get().callCounts[handle];
    SimulatedWindow* const window = get().find(handle);
    if (window != nullptr && window->alive) {
        return window;
    }
    SetLastError(ERROR_INVALID_WINDOW_HANDLE);
    return nullptr;
}

// A planned failure changes only the result: the callback has been called before.
BOOL WINAPI Windows::enumerate(WNDENUMPROC callback, LPARAM parameter) {
    const bool fails = get().journal.enter("EnumWindows").has_value();
    const std::vector<HWND> snapshot = get().order;
    for (const HWND handle : snapshot) {
        const SimulatedWindow* const window = get().find(handle);
        if (window != nullptr && window->alive) {
            try {
                SIMULATION_EXPECT(callback(handle, parameter) == TRUE,
                                  "the enumeration of the windows must not be stopped early");
            } catch (...) {
                report("an exception crossed the system's enumeration of the windows");
                throw;
            }
        }
    }
    return fails ? FALSE : TRUE;
}

int WINAPI Windows::getTextLength(HWND handle) {
    const auto planned = get().journal.enter("GetWindowTextLengthW");
    const SimulatedWindow* const window = ask(handle);
    if (planned) {
        return static_cast<int>(*planned);
    }
    if (window == nullptr) {
        return 0;
    }
    return window->titleLength.value_or(static_cast<int>(window->title.size()));
}

int WINAPI Windows::getText(HWND handle, LPWSTR text, int units) {
    const auto planned = get().journal.enter("GetWindowTextW");
    expectZeroed(text, units);
    const SimulatedWindow* const window = ask(handle);
    if (planned) {
        return static_cast<int>(*planned);
    }
    return window != nullptr ? copyCut(window->title, text, units) : 0;
}

int WINAPI Windows::getClassName(HWND handle, LPWSTR text, int units) {
    const auto planned = get().journal.enter("GetClassNameW");
    SIMULATION_EXPECT(units == 256);
    expectZeroed(text, units);
    const SimulatedWindow* const window = ask(handle);
    if (planned) {
        return static_cast<int>(*planned);
    }
    return window != nullptr ? copyCut(window->className, text, units) : 0;
}

LONG WINAPI Windows::getLong(HWND handle, int index) {
    const auto planned = get().journal.enter("GetWindowLongW");
    SIMULATION_EXPECT(index == -16 || index == -20,
                      "GetWindowLongW was called with the index " + std::to_string(index));
    const SimulatedWindow* const window = ask(handle);
    if (planned) {
        return static_cast<LONG>(*planned);
    }
    if (window == nullptr) {
        return 0;
    }
    return index == GWL_STYLE ? window->style : window->extendedStyle;
}

HWND WINAPI Windows::getAncestor(HWND handle, UINT kind) {
    const auto planned = get().journal.enter("GetAncestor");
    SIMULATION_EXPECT(kind == 2u, "only GA_ROOT may be read");
    const SimulatedWindow* const window = ask(handle);
    if (planned) {
        return reinterpret_cast<HWND>(*planned);
    }
    return window != nullptr ? window->root : nullptr;
}

BOOL WINAPI Windows::isWindow(HWND handle) {
    const auto planned = get().journal.enter("IsWindow");
    const SimulatedWindow* const window = ask(handle);
    if (planned) {
        return static_cast<BOOL>(*planned);
    }
    return window != nullptr && window->exists ? TRUE : FALSE;
}

BOOL WINAPI Windows::isVisible(HWND handle) {
    const auto planned = get().journal.enter("IsWindowVisible");
    const SimulatedWindow* const window = ask(handle);
    if (planned) {
        return static_cast<BOOL>(*planned);
    }
    return window != nullptr && window->visible ? TRUE : FALSE;
}

HWND WINAPI Windows::getShellWindow() {
    const auto planned = get().journal.enter("GetShellWindow");
    return planned ? reinterpret_cast<HWND>(*planned) : get().shellWindow;
}

} // namespace simulation
