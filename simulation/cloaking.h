#pragma once

#include "simulation/current.h"
#include "simulation/journal.h"
#include "simulation/redirects.h"

#include <windows.h>

namespace simulation {

// The cloaking of the simulated windows behind DwmGetWindowAttribute, which writes the window's
// value and returns the window's result, even when that is a failure. A planned failure is
// returned and nothing is written.
class Cloaking : private Current<Cloaking> {
public:
    Cloaking(Redirects& redirects, Journal& calls);

private:
    friend class Current<Cloaking>;
    static HRESULT WINAPI getAttribute(HWND handle, DWORD attribute, PVOID value, DWORD size);

    Journal& journal;
};

} // namespace simulation
