#pragma once

#include <filesystem>

namespace tests {

// Runs the kit in the folder, prints its progress and writes acceptance-report.json there. The list
// tests/programs.json names the test programs in the folder tests and the time that each one has;
// the suites of the program "facts" run in processes of their own, each with this time. The
// products are in the folder bin. Returns whether everything has passed. Throws std::runtime_error,
// with a sentence for the user, when the kit is not complete or its folder cannot be used.
bool runAcceptance(const std::filesystem::path& kit);

} // namespace tests
