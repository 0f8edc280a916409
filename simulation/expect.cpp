#include "simulation/expect.h"

#include <cstdio>
#include <exception>

namespace simulation {

namespace {

void endProcess(const std::string& line) {
    static_cast<void>(std::fprintf(stderr, "simulation: %s\n", line.c_str()));
    std::terminate();
}

Reporter current = endProcess;

} // namespace

void setReporter(Reporter reporter) {
    current = reporter;
}

void report(const std::string& line) {
    current(line);
}

void expect(bool holds, const char* condition, const std::string& reason) {
    if (!holds) {
        report(reason.empty() ? std::string(condition) + " does not hold" : reason);
    }
}

} // namespace simulation
