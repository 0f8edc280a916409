#pragma once

#include "tests/runtime/captured_standard_error.h"
#include "tests/runtime/logger_fixture.h"
#include "tests/fixtures/shipped_runtime.h"

#include <gtest/gtest.h>

#include <string>

namespace tests {

// A test of what the shipped runtime keeps for modules; what it complains of is captured.
class RegistrationTest : public testing::Test {
protected:
    // The one line that was written, without its end.
    std::string complaint() const {
        const std::string text = standardError.text();
        EXPECT_TRUE(text.ends_with("\r\n")) << text;
        return text.substr(0, text.find('\r'));
    }

    const TemporaryFolder folder;
    const CapturedStandardError standardError{folder.path / "standard error"};
    const ShippedRuntime runtime;
};

} // namespace tests
