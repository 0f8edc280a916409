// Part of every test program: a test that ends with more or less than it began with has failed.

#include "tests/support/account.h"
#include "tests/support/failures_of.h"
#include "tests/support/signal.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string_view>
#include <system_error>
#include <thread>
#include <vector>

namespace {

void throwAndCatch() {
    try {
        throw std::runtime_error("warm-up");
    } catch (const std::runtime_error& error) {
        static_cast<void>(error);
    }
}

void traceNested(int depth) {
    if (depth > 0) {
        SCOPED_TRACE(depth);
        traceNested(depth - 1);
    }
}

// Makes the libraries of this program take what they take once and keep, before the first test:
// C++'s library for exceptions, errors and as many threads as tests have at a time, GoogleTest for
// nested traces and intercepted failures.
class LibraryWarmUp final : public testing::Environment {
    static constexpr int threadsAtATime = 16;

    void SetUp() override {
        throwAndCatch();
        EXPECT_FALSE(std::generic_category().message(EAGAIN).empty());
        traceNested(8);
        EXPECT_TRUE(tests::failuresOf([] {}).empty());
        // The lock of the thread library takes a handle for good when threads first wait for it,
        // which those that end together do sooner or later.
        for (int round = 0; round < 10; ++round) {
            runThreadsAtATime();
        }
    }

    static void runThreadsAtATime() {
        tests::Gate allRunning(threadsAtATime);
        std::vector<std::thread> threads;
        for (int i = 0; i < threadsAtATime; ++i) {
            threads.emplace_back([&] {
                throwAndCatch();
                allRunning.pass();
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
    }
};

class Accountant final : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo&) override {
        tests::expectBlocksLeft(0);
        account.emplace();
    }

    // The fixture has been destroyed. GoogleTest itself keeps failures, and the output of a program
    // that died.
    void OnTestEnd(const testing::TestInfo& test) override {
        if (!test.result()->Failed() &&
            !std::string_view(test.test_suite_name()).ends_with("DeathTest")) {
            account->expectSettled();
        }
        account.reset();
    }

    std::optional<tests::Account> account;
};

[[maybe_unused]] const auto* const warmUp = testing::AddGlobalTestEnvironment(new LibraryWarmUp);

[[maybe_unused]] const auto* const accountant = [] {
    auto listener = std::make_unique<Accountant>();
    testing::UnitTest::GetInstance()->listeners().Append(listener.get());
    return listener.release(); // now GoogleTest's
}();

} // namespace
