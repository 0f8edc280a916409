#pragma once

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tests {

// The messages of the failures that the function reports on the calling thread. They do not fail
// the running test. Unlike EXPECT_NONFATAL_FAILURE this keeps no memory.
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
