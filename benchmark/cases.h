#pragma once

#include "benchmark/report.h"

#include <cstddef>
#include <vector>

namespace bench {

// How much is measured: ./bench --quick takes fewer samples.
struct Effort {
    std::size_t samples = 501;     // of what takes microseconds or less
    std::size_t slowSamples = 101; // of what takes milliseconds
};

// Each measures one subject and returns its lines of the table.
std::vector<Row> windowListOfTheDesktop(const Effort& effort);
std::vector<Row> windowListBySize(const Effort& effort);
std::vector<Row> monitorListOfTheDesktop(const Effort& effort);
std::vector<Row> monitorUpdateBySize(const Effort& effort);
std::vector<Row> windowEvents(const Effort& effort);
std::vector<Row> start(const Effort& effort);
std::vector<Row> bytes(const Effort& effort);

} // namespace bench
