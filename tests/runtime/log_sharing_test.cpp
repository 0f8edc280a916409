#include "tests/runtime/runtime_fixtures.h"
#include "tests/support/allocations.h"
#include "tests/support/signal.h"

#include <gmock/gmock.h>

#include <thread>
#include <vector>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::UnorderedElementsAreArray;

void joinAll(std::vector<std::thread>& threads) {
    for (std::thread& thread : threads) {
        thread.join();
    }
}

class SharedLog : public LoggerTest {
protected:
    SharedLog() { fileName.set(file.wstring()); }
};

TEST_F(SharedLog, is_one_for_all_images) {
    one->log(level_enum::error, "first");
    two->log(level_enum::error, "second");
    one->log(level_enum::error, "third");
    EXPECT_NE(one->loggerAddress(), two->loggerAddress());
    EXPECT_THAT(linesOnStandardError(), ElementsAre("error first", "error second", "error third"));
    EXPECT_THAT(withoutTimes(linesInFile()),
                ElementsAre("error first", "error second", "error third"));
}

TEST_F(SharedLog, stays_open_when_one_of_the_images_is_unloaded) {
    one->log(level_enum::error, "first");
    two->log(level_enum::error, "second");
    one.reset();
    two->log(level_enum::error, "third");
    one.emplace("runtime/logging_image_one.dll");
    one->log(level_enum::error, "fourth");
    EXPECT_THAT(withoutTimes(linesInFile()),
                ElementsAre("error first", "error second", "error third", "error fourth"));
}

TEST_F(SharedLog, gets_lines_of_an_image_that_is_being_unloaded) {
    one->logWhenUnloaded("last words");
    unload();
    EXPECT_THAT(withoutTimes(linesInFile()), ElementsAre("error last words"));
}

TEST_F(SharedLog, leaves_no_memory_when_the_runtime_is_unloaded) {
    level.set(L"loud");
    const Allocations memory({runtime->image()});
    one->registerCallback([](int, const char*) {});
    one->log(level_enum::error, "message");
    EXPECT_GT(memory.outstanding(), 0u);
    unload();
    EXPECT_EQ(memory.outstanding(), 0u);
}

TEST_F(SharedLog, is_set_up_once_by_threads_that_log_first_together) {
    level.set(L"loud");
    constexpr int threadCount = 8;
    Gate ready(threadCount);
    std::vector<std::thread> threads;
    threads.reserve(threadCount);
    for (int i = 0; i < threadCount; ++i) {
        threads.emplace_back([&, image = i % 2 == 0 ? &*one : &*two] {
            ready.pass();
            image->log(level_enum::info, "message");
        });
    }
    joinAll(threads);
    EXPECT_EQ(complaints().size(), 1u);
    EXPECT_EQ(linesInFile().size(), 8u);
}

// Promise (Runtime and its log): All modules and the host share one log. Lines of several threads
// come out whole, and in the same order on standard error and in the file.
TEST_F(SharedLog, keeps_lines_of_several_threads_whole_and_in_order) {
    constexpr int threadCount = 4;
    constexpr int lineCount = 100;
    std::vector<std::string> expected;
    Gate ready(threadCount);
    std::vector<std::thread> threads;
    for (int i = 0; i < threadCount; ++i) {
        const std::string text(static_cast<std::size_t>(100 * i + 1), static_cast<char>('a' + i));
        for (int line = 0; line < lineCount; ++line) {
            expected.push_back("error " + text + std::to_string(line));
        }
        threads.emplace_back([&ready, text, image = i % 2 == 0 ? &*one : &*two] {
            ready.pass();
            for (int line = 0; line < lineCount; ++line) {
                image->log(level_enum::error, text + std::to_string(line));
            }
        });
    }
    joinAll(threads);
    const auto lines = withoutTimes(linesInFile());
    EXPECT_EQ(lines, linesOnStandardError());
    EXPECT_THAT(lines, UnorderedElementsAreArray(expected));
}

} // namespace
} // namespace tests
