#pragma once

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tests {

// The messages of the failures that the function notes on the calling thread, instead of their
// being failures of the running test. Unlike EXPECT_NONFATAL_FAILURE it keeps no record of its own.
template <typename Function>
std::vector<std::string> failuresOf(Function function) {
    testing::TestPartResultArray results;
    {
        const testing::ScopedFakeTestPartResultReporter reporter(
            testing::ScopedFakeTestPartResultReporter::INTERCEPT_ONLY_CURRENT_THREAD, &results);
        function();
    }
    std::vector<std::string> messages;
    for (int i = 0; i < results.size(); ++i) {
        messages.emplace_back(results.GetTestPartResult(i).message());
    }
    return messages;
}

} // namespace tests
