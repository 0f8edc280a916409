#pragma once

#include <string>

namespace tests {

struct System {
    std::string name;           // such as "Windows 11" or "Wine 8": a column of docs/windows.md
    std::string version;        // such as "10.0.22631", or that of Wine
    bool administrator = false; // whether this program has the rights of one
};

System thisSystem();

} // namespace tests
