#include "simulation/cloaking.h"

#include "simulation/expect.h"
#include "simulation/platform_memory.h"
#include "simulation/windows.h"

#include <dwmapi.h>

namespace simulation {

Cloaking::Cloaking(Redirects& redirects, Journal& calls) : journal(calls) {
    redirects.replace<decltype(DwmGetWindowAttribute)>("DwmGetWindowAttribute", getAttribute);
}

HRESULT WINAPI Cloaking::getAttribute(HWND handle, DWORD attribute, PVOID value, DWORD size) {
    const auto planned = get().journal.enter("DwmGetWindowAttribute");
    SIMULATION_EXPECT(attribute == 14u, "only DWMWA_CLOAKED may be read");
    SIMULATION_EXPECT(size == 4u);
    SIMULATION_EXPECT(isZero(value, size), "the value was not zeroed first");
    const SimulatedWindow* const window = Windows::ask(handle);
    if (planned) {
        return static_cast<HRESULT>(*planned);
    }
    if (window == nullptr) {
        return E_HANDLE;
    }
    *static_cast<DWORD*>(value) = window->cloaked;
    return window->cloakingResult;
}

} // namespace simulation
