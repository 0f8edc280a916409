#pragma once

#include "tests/support/wine.h"

#include <gtest/gtest.h>

namespace tests {

// Tests of what a process holds, which only Wine can attribute to the code under test
// (tests/support/account.h). On Windows they are skipped; the property is the reason in a report.
class WineTest : public testing::Test {
protected:
    void SetUp() override {
        if (wineVersion() == nullptr) {
            constexpr const char* reason = "on Windows, libraries of the system take and give back "
                                           "memory and handles of the process at any time";
            RecordProperty("not measured", reason);
            GTEST_SKIP() << reason;
        }
    }
};

} // namespace tests
