#pragma once

#include <string>

namespace simulation {

// Receives one line about a wrong call of the image, such as one with a buffer that is not
// initialised. Called on the thread of that call, which continues afterwards.
using Reporter = void (*)(const std::string& line);

// Replaces the reporter. The default one writes to standard error and ends the process.
void setReporter(Reporter reporter);

void report(const std::string& line);

// Reports the reason, or the text of the condition, when the condition does not hold.
void expect(bool holds, const char* condition, const std::string& reason = "");

} // namespace simulation

#define SIMULATION_EXPECT(condition, ...)                                                          \
    ::simulation::expect((condition), #condition __VA_OPT__(, ) __VA_ARGS__)
