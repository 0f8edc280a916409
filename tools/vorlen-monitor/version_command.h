#pragma once

#include <string>

namespace snapshot {
struct Reading;
}

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

// The same lines for the desktop of a reading. The first one is the reading's origin: the program
// that made it, with its version.
std::string versionText(const snapshot::Reading& reading);

// What is wrong when they do not match; empty when they do.
std::string versionWarning(const Versions& versions);

} // namespace vorlen::tool
