#pragma once

#include "simulation/import_redirect.h"

#include <windows.h>

#include <cstddef>
#include <deque>
#include <map>
#include <string>

namespace bench {

// The time of each display function on the real desktop, in nanoseconds by name. The time of
// QueryDisplayConfig grows with the number of paths: its price is the time for one path.
std::map<std::string, double> pricesOfTheDesktop(std::size_t samples);

// While the object lives, makes the display functions of a simulated desktop take time in
// proportion to their prices, and counts their calls. Each call takes the same share of its price,
// at most a tenth. The share does not change the ratios between platform calls; it makes the
// library's own time a larger part of the total.
class PricedDisplays {
public:
    PricedDisplays(HMODULE image, const std::map<std::string, double>& prices);

    static std::size_t calls();

private:
    std::deque<simulation::ImportRedirect> redirects;
};

} // namespace bench
