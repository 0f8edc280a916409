#pragma once

#include "simulation/import_redirect.h"

#include <windows.h>

#include <cstddef>
#include <deque>
#include <map>
#include <string>

namespace bench {

// What the calls that ask about displays cost on the desktop that this runs on, in nanoseconds by
// name; QueryDisplayConfig for each path, in whose number its time grows.
std::map<std::string, double> pricesOfTheDesktop(std::size_t samples);

// Lets the calls that ask about displays take the time that they are said to cost, and counts them.
// Or rather at most a tenth of it, the same part of each, which changes no ratio but that of the
// library's own time, for the worse. While the object lives; it is to be put over a simulated
// desktop, which answers the calls.
class PricedDisplays {
public:
    PricedDisplays(HMODULE image, const std::map<std::string, double>& prices);

    static std::size_t calls();

private:
    std::deque<tests::ImportRedirect> redirects;
};

} // namespace bench
