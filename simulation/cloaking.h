#pragma once

#include "simulation/current.h"
#include "simulation/journal.h"
#include "simulation/redirects.h"

#include <windows.h>

namespace simulation {

// What DwmGetWindowAttribute tells of the windows: each answers with its own result and value, a
// failing result included. A planned failure is the result, and writes nothing.
class Cloaking : private Current<Cloaking> {
public:
    Cloaking(Redirects& redirects, Journal& calls);

private:
    friend class Current<Cloaking>;
    static HRESULT WINAPI getAttribute(HWND handle, DWORD attribute, PVOID value, DWORD size);

    Journal& journal;
};

} // namespace simulation
