#pragma once

#include <string>

namespace simulation {

// Takes one line about a call that the image must not have made, such as one with a buffer that is
// not initialised. Called on the thread of that call, which then goes on.
using Reporter = void (*)(const std::string& line);

// Replaces the reporter. Before that, a report writes to standard error and ends the process.
void setReporter(Reporter reporter);

void report(const std::string& line);

// Reports unless the condition, whose text is given, holds.
void expect(bool holds, const char* condition, const std::string& reason = "");

} // namespace simulation

#define SIMULATION_EXPECT(condition, ...)                                                          \
    ::simulation::expect((condition), #condition __VA_OPT__(, ) __VA_ARGS__)
