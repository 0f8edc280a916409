#include "runtime/logger.h"
#include "tests/fixtures/log_recorder.h"
#include "tests/fixtures/mangled_names.h"

#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <barrier>
#include <set>
#include <stdexcept>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

namespace tests {
namespace {

using testing::ElementsAre;
using vorlen::log::DebugCallback;
using vorlen::log::level_enum;
using vorlen::log::vllogger;

static_assert(std::is_same_v<std::underlying_type_t<level_enum>, std::int32_t>);
static_assert(static_cast<int>(level_enum::trace) == 0);
static_assert(static_cast<int>(level_enum::debug) == 1);
static_assert(static_cast<int>(level_enum::info) == 2);
static_assert(static_cast<int>(level_enum::warn) == 3);
static_assert(static_cast<int>(level_enum::error) == 4);
static_assert(static_cast<int>(level_enum::critical) == 5);

// Objects come from instance() only.
static_assert(!std::is_default_constructible_v<vllogger>);
static_assert(!std::is_copy_constructible_v<vllogger>);
static_assert(!std::is_destructible_v<vllogger>);

HMODULE thisProgram() {
    return GetModuleHandleW(nullptr);
}

// The first use of the program's logger, by eight threads at once.
class FirstUse {
public:
    FirstUse() {
        const ImportRedirect redirect(thisProgram(), mangled::constructLogger,
                                      addressOf(construct));
        constructor = reinterpret_cast<decltype(construct)*>(redirect.original());
        std::barrier allReady(static_cast<std::ptrdiff_t>(loggers.size()));
        std::vector<std::thread> threads;
        for (vllogger*& logger : loggers) {
            threads.emplace_back([&] {
                allReady.arrive_and_wait();
                logger = vllogger::instance();
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
    }

    std::array<vllogger*, 8> loggers{};
    static inline LONG constructions = 0;

private:
    // Microsoft's constructors return the object.
    static vllogger* construct(vllogger* logger) {
        InterlockedIncrement(&constructions);
        constructor(logger);
        return logger;
    }

    static inline decltype(construct)* constructor = nullptr;
};

const FirstUse& firstUse() {
    static const FirstUse use;
    return use;
}

vllogger& theLogger() {
    return *firstUse().loggers.front();
}

// The runtime's variable that holds the callback.
DebugCallback& storedCallback() {
    const FARPROC address =
        GetProcAddress(GetModuleHandleW(L"vorlen_runtime.dll"), mangled::debugCallback);
    if (address == nullptr) {
        throw std::runtime_error("the runtime does not export the debug callback");
    }
    return *reinterpret_cast<DebugCallback*>(reinterpret_cast<void*>(address));
}

TEST(Logger, is_made_once_when_threads_ask_at_the_same_time) {
    const auto& loggers = firstUse().loggers;
    EXPECT_EQ(std::set(loggers.begin(), loggers.end()), std::set{&theLogger()});
    EXPECT_NE(&theLogger(), nullptr);
    EXPECT_EQ(vllogger::instance(), &theLogger());
    EXPECT_EQ(FirstUse::constructions, 1);
}

TEST(Logger, is_initialized_when_its_leading_member_is_true) {
    vllogger& logger = theLogger();
    bool& leading = *reinterpret_cast<bool*>(&logger);
    const bool before = leading;
    leading = false;
    EXPECT_FALSE(logger.isInitialized());
    leading = true;
    EXPECT_TRUE(logger.isInitialized());
    leading = before;
}

struct Convenience {
    const char* name;
    int level;
    void (vllogger::*member)(const std::string& message);
};

class LoggerConvenience : public testing::TestWithParam<Convenience> {};

TEST_P(LoggerConvenience, calls_log_with_its_level_the_message_and_false) {
    vllogger& logger = theLogger();
    const std::string message("one line \0 \xC3\xA9", 13);
    Journal journal;
    const LogRecorder log(thisProgram(), journal);
    (logger.*GetParam().member)(message);
    EXPECT_THAT(log.lines, ElementsAre(LogLine{GetParam().level, message, false}));
    EXPECT_THAT(log.loggers, ElementsAre(&logger));
}

INSTANTIATE_TEST_SUITE_P(All, LoggerConvenience,
                         testing::Values(Convenience{"trace", 0, &vllogger::trace},
                                         Convenience{"debug", 1, &vllogger::debug},
                                         Convenience{"info", 2, &vllogger::info},
                                         Convenience{"warn", 3, &vllogger::warn},
                                         Convenience{"error", 4, &vllogger::error},
                                         Convenience{"critical", 5, &vllogger::critical}),
                         [](const auto& test) { return test.param.name; });

int callbackCalls = 0;

void countCall(int, const char*) {
    ++callbackCalls;
}

TEST(Logger, stores_and_clears_the_debug_callback_without_calling_it) {
    callbackCalls = 0;
    Journal journal;
    const LogRecorder log(thisProgram(), journal);
    vllogger::RegisterDebugCallback(countCall);
    EXPECT_EQ(storedCallback(), countCall);
    vllogger::RegisterDebugCallback(nullptr);
    EXPECT_EQ(storedCallback(), nullptr);
    vllogger::RegisterDebugCallback(nullptr);
    EXPECT_EQ(storedCallback(), nullptr);
    EXPECT_EQ(callbackCalls, 0);
    EXPECT_TRUE(log.lines.empty());
}

} // namespace
} // namespace tests
