#pragma once

#include <windows.h>

#include <exception>

// Enumerations of the system that call a function for each handle. An exception of the function
// must not cross the frames of the system: it is kept, the function is not called for the
// remaining handles, and the exception is rethrown when the enumeration has returned. The results
// of EnumWindows and EnumDisplayMonitors are ignored: after a failure, the function has been
// called for the handles that the system could enumerate. Any thread.

namespace vorlen {

template <typename Handle, typename Visit>
class Enumeration {
public:
    explicit Enumeration(Visit& function) : visit(function) {}

    LPARAM parameter() { return reinterpret_cast<LPARAM>(this); }

    static BOOL CALLBACK call(Handle handle, LPARAM parameter) noexcept {
        auto& self = *reinterpret_cast<Enumeration*>(parameter);
        if (!self.failure) {
            try {
                self.visit(handle);
            } catch (...) {
                self.failure = std::current_exception();
            }
        }
        return TRUE;
    }

    void rethrowFailure() const {
        if (failure) {
            std::rethrow_exception(failure);
        }
    }

private:
    Visit& visit;
    std::exception_ptr failure;
};

// Calls the function with the handle of each top-level window, in the system's order.
template <typename Visit>
void forEachWindow(Visit visit) {
    Enumeration<HWND, Visit> windows(visit);
    EnumWindows(Enumeration<HWND, Visit>::call, windows.parameter());
    windows.rethrowFailure();
}

// Calls the function with the handle of each monitor of the desktop, in the system's order.
template <typename Visit>
void forEachMonitor(Visit visit) {
    Enumeration<HMONITOR, Visit> monitors(visit);
    const MONITORENUMPROC call = [](HMONITOR monitor, HDC, RECT*, LPARAM parameter) -> BOOL {
        return Enumeration<HMONITOR, Visit>::call(monitor, parameter);
    };
    EnumDisplayMonitors(nullptr, nullptr, call, monitors.parameter());
    monitors.rethrowFailure();
}

} // namespace vorlen
