#pragma once

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

namespace tests {

// A fact is a test that asks the system a question. It reports what it found and fails only when it
// cannot ask. Above it stand three tags, which scripts/ledger reads:
//
//     // Fact: The question. It may continue
//     // in further comment lines.
//     // Relied on by: the files whose code or statements need the answer
//     // Simulated: what the simulated desktop answers, or - when it has no answer
//
// Neither answers nor details contain what belongs to the user, such as titles and serial numbers.

// What the running fact found: a short ASCII text without "|". The ledger compares it with the
// answer of the simulated desktop, so it does not depend on what this desktop shows.
inline void answer(const std::string& text) {
    testing::Test::RecordProperty("answer", text);
    std::printf("answer: %s\n", text.c_str());
}

// A number or an order of this desktop. It is not compared.
inline void detail(const std::string& name, const std::string& text) {
    testing::Test::RecordProperty("detail " + name, text);
    std::printf("%s: %s\n", name.c_str(), text.c_str());
}

// Instead of an answer: this desktop has nothing to ask about. The fact must return afterwards.
inline void notMeasured(const std::string& reason) {
    testing::Test::RecordProperty("not measured", reason);
    GTEST_SKIP() << reason;
}

} // namespace tests
