#pragma once

#include "simulation/current.h"
#include "simulation/import_redirect.h"
#include "tests/support/simulation.h"

#include <windows.h>

#include <objbase.h>

#include <atomic>
#include <cstddef>
#include <deque>

namespace tests {

// Gives an image that is on a simulated desktop the system's own COM and OLE back, and counts the
// locators of WMI that it makes.
class RealCom : private Current<RealCom> {
public:
    explicit RealCom(HMODULE image);

    std::size_t locatorsMade() const { return locators; }

private:
    friend class Current<RealCom>;
    static HRESULT WINAPI createInstance(REFCLSID classId, IUnknown* outer, DWORD context,
                                         REFIID iid, void** object);

    std::atomic<std::size_t> locators = 0;
    std::deque<ImportRedirect> redirects;
};

} // namespace tests
