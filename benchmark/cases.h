#pragma once

#include "benchmark/report.h"

#include <cstddef>
#include <vector>

namespace bench {

// The numbers of samples in one process. ./bench --quick takes fewer.
struct Effort {
    std::size_t samples = 101;    // for work that takes microseconds or less
    std::size_t slowSamples = 21; // for work that takes milliseconds
};

// Each function measures one subject and returns its rows of the table.
std::vector<Row> windowListOfTheDesktop(const Effort& effort);
std::vector<Row> windowListBySize(const Effort& effort);
std::vector<Row> monitorListOfTheDesktop(const Effort& effort);
std::vector<Row> monitorUpdateBySize(const Effort& effort);
std::vector<Row> windowEvents(const Effort& effort);
std::vector<Row> start(const Effort& effort);
std::vector<Row> bytes(const Effort& effort);

} // namespace bench
