#pragma once

#include "simulation/monitors.h"
#include "tests/support/simulation.h"

namespace tests {

// Two modes that have no number in common.
inline constexpr DisplayMode wideMode{0, -200, 3840, 2160, 60};
inline constexpr DisplayMode smallMode{-1920, 100, 1280, 1024, 75};

inline constexpr const wchar_t* display1 = LR"(\\.\DISPLAY1)";
inline constexpr const wchar_t* display2 = LR"(\\.\DISPLAY2)";
inline constexpr const wchar_t* display3 = LR"(\\.\DISPLAY3)";

} // namespace tests
