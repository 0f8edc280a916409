#include "tests/soak/loaded_products.h"
#include "tests/soak/process_state.h"
#include "tests/support/wine_test.h"

#include <windows.h>

#include <gtest/gtest.h>

namespace tests {
namespace {

// Two combo boxes of the host, on a window that is capturable.
class HostWindow {
public:
    HostWindow()
        : window(CreateWindowW(L"STATIC", L"host", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50, nullptr,
                               nullptr, nullptr, nullptr)),
          monitorBox(addBox()), windowBox(addBox()) {}
    ~HostWindow() { DestroyWindow(window); }
    HostWindow(const HostWindow&) = delete;
    HostWindow& operator=(const HostWindow&) = delete;

private:
    HWND addBox() const {
        return CreateWindowW(L"COMBOBOX", L"", WS_CHILD | CBS_DROPDOWNLIST, 0, 0, 50, 50, window,
                             nullptr, nullptr, nullptr);
    }

public:
    const HWND window;
    const HWND monitorBox;
    const HWND windowBox;
};

using RealLoadCycles = WineTest;

TEST_F(RealLoadCycles, leave_nothing_behind) {
    const HostWindow host;
    EXPECT_TRUE(leavesNothingBehind(1'000, [&] {
        const LoadedProducts products;
        EXPECT_TRUE(products.initialize());
        products.useEverything(host.monitorBox, host.windowBox);
        products.shutdown();
    }));
}

} // namespace
} // namespace tests
