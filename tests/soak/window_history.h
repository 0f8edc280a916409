#pragma once

#include "simulation/simulated_desktop.h"
#include "tests/soak/window_model.h"
#include "tests/support/simulation.h"

#include <windows.h>

#include <cstdint>
#include <random>

namespace tests {

// Changes the windows of a simulated desktop at random, in the same way for the same seed, and
// hands every event to the library and to the model.
class WindowHistory {
public:
    WindowHistory(SimulatedDesktop& simulatedDesktop, WindowModel& windowModel, std::uint32_t seed)
        : desktop(simulatedDesktop), model(windowModel), generator(seed) {}

    // Fills the desktop with windows of all kinds.
    void addWindows(int count);

    // One window may change, and one event is delivered.
    void happen();

private:
    bool oneIn(unsigned chances) { return generator() % chances == 0; }
    std::size_t below(std::size_t limit) { return generator() % limit; }
    SimulatedWindow& anyWindow();

    void furnish(SimulatedWindow& window);
    void change(SimulatedWindow& window);
    std::wstring anyTitle();
    std::wstring anyClassName();

    void deliver(DWORD event, HWND handle, LONG object = OBJID_WINDOW, LONG child = CHILDID_SELF);
    void deliverNoise(HWND handle);
    void endLife(SimulatedWindow& window);

    SimulatedDesktop& desktop;
    WindowModel& model;
    std::mt19937 generator;
};

} // namespace tests
