// The benchmark: what the library costs, compared with a host's own code. ./bench runs it several
// times.

#include "benchmark/cases.h"

#include <CLI/CLI.hpp>
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

struct Case {
    const char* name;
    std::vector<bench::Row> (*measure)(const bench::Effort& effort);
};

constexpr Case cases[] = {
    // First: what the system loads once in a process is a part of it.
    {"starting", bench::start},
    {"the window list of a desktop with 200 windows", bench::windowListOfTheDesktop},
    {"window lists of 10 to 10000 windows", bench::windowListBySize},
    {"the monitor list of this desktop", bench::monitorListOfTheDesktop},
    {"refreshing lists of 1 to 64 monitors", bench::monitorUpdateBySize},
    {"window events", bench::windowEvents},
    {"bytes", bench::bytes},
};

std::vector<bench::Row> measureAll(const bench::Effort& effort) {
    std::vector<bench::Row> rows;
    for (std::size_t i = 0; i < std::size(cases); ++i) {
        std::fprintf(stderr, "[%u/%u] %s\n", static_cast<unsigned>(i + 1),
                     static_cast<unsigned>(std::size(cases)), cases[i].name);
        for (bench::Row& row : cases[i].measure(effort)) {
            rows.push_back(std::move(row));
        }
    }
    return rows;
}

void write(const std::string& file, const std::string& text) {
    std::ofstream stream(file, std::ios::binary);
    if (!(stream << text).flush()) {
        throw std::runtime_error("cannot write " + file + ": name a file in a folder that exists");
    }
}

} // namespace

int main(int argc, char** argv) {
    CLI::App app("Measures the library and compares it with a host's own code.", "bench");
    std::string file;
    bool quick = false;
    app.add_option("file", file, "write the results to this file, as JSON")->required();
    app.add_flag("--quick", quick, "take fewer samples");
    CLI11_PARSE(app, argc, argv);
    testing::InitGoogleTest(); // the test fixtures use it
    try {
        write(file, bench::toJson(measureAll(quick ? bench::Effort{15, 5} : bench::Effort{})));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "bench: %s\n", error.what());
        return EXIT_FAILURE;
    }
    return testing::UnitTest::GetInstance()->ad_hoc_test_result().Failed() ? EXIT_FAILURE
                                                                           : EXIT_SUCCESS;
}
