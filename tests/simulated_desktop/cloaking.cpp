#include "tests/simulated_desktop/cloaking.h"

#include "tests/simulated_desktop/platform_memory.h"
#include "tests/simulated_desktop/windows.h"

#include <dwmapi.h>
#include <gtest/gtest.h>

namespace tests {

Cloaking::Cloaking(Redirects& redirects, Journal& calls) : journal(calls) {
    redirects.replace<decltype(DwmGetWindowAttribute)>("DwmGetWindowAttribute", getAttribute);
}

HRESULT WINAPI Cloaking::getAttribute(HWND handle, DWORD attribute, PVOID value, DWORD size) {
    const auto planned = get().journal.enter("DwmGetWindowAttribute");
    EXPECT_EQ(attribute, 14u) << "the cloaking is to be asked for";
    EXPECT_EQ(size, 4u);
    EXPECT_TRUE(isZero(value, size)) << "the value was not zeroed first";
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

} // namespace tests
