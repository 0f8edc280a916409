#pragma once

#include <string>

namespace vorlen::tool {

// The versions of program and libraries, such as "2.0.4"; "unknown" for a file that names none.
struct Versions {
    std::string command;
    std::string module;
    std::string runtime;
};

// Loads both libraries, without starting the service, and reads the versions of their files. Throws
// a Failure when a library cannot be loaded.
Versions readVersions();

// One line for each.
std::string versionText(const Versions& versions);

// What is wrong when they do not match; empty when they do.
std::string versionWarning(const Versions& versions);

} // namespace vorlen::tool
