#include "simulation/loaded_image.h"
#include "tests/fixtures/module_under_test.h"
#include "tests/support/simulation.h"
#include "tests/sweeps/exclusions.h"
#include "tests/sweeps/failures.h"
#include "tests/sweeps/operations.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>

namespace tests {
namespace {

TEST(Imports, of_the_library_each_fail_in_the_sweeps_or_are_excluded_with_a_reason) {
    const ModuleUnderTest module;
    const auto imports = LoadedImage(module.image()).imports();
    ASSERT_GT(imports.size(), 100u);
    const auto failing = failingCalls();
    for (const Import& import : imports) {
        const bool fails = std::any_of(failing.begin(), failing.end(), [&](const auto& call) {
            return call.import == import.function;
        });
        EXPECT_NE(fails, isExcluded(import))
            << import.function << " of " << import.library
            << (fails ? " fails in the sweeps and is excluded from them"
                      : " neither fails in the sweeps nor is it excluded from them");
    }
}

// A call that no operation makes would never be seen to fail.
TEST(FailingCalls, are_each_made_by_an_operation) {
    SweepWorld world;
    world.start();
    // Those of the first start of the library, too.
    const auto first = world.desktop.journal.calls();
    std::set<std::string> made(first.begin(), first.end());
    world.stop();
    for (const Operation& operation : operations()) {
        prepare(world, operation);
        operation.run(world);
        const auto calls = world.desktop.journal.calls();
        made.insert(calls.begin(), calls.end());
        world.stop();
    }
    for (const FailingCall& failing : failingCalls()) {
        EXPECT_TRUE(made.contains(failing.call)) << failing.call;
    }
}

} // namespace
} // namespace tests
