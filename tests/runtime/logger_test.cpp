#include "tests/fixtures/mangled_names.h"
#include "tests/runtime/runtime_fixtures.h"

#include <windows.h>

#include <gmock/gmock.h>

#include <string>
#include <utility>
#include <vector>

namespace tests {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const std::vector<std::string> names = {"trace", "debug", "info", "warn", "error", "critical"};

std::vector<std::string> linesFrom(std::size_t threshold) {
    std::vector<std::string> lines;
    for (std::size_t i = threshold; i < names.size(); ++i) {
        lines.push_back(names[i] + " message");
    }
    return lines;
}

std::wstring wide(const std::string& ascii) {
    return {ascii.begin(), ascii.end()};
}

TEST_F(LoggerTest, sends_lines_from_the_named_level_on_to_standard_error) {
    std::vector<std::string> expected;
    for (std::size_t threshold = 0; threshold < names.size(); ++threshold) {
        unload();
        load();
        level.set(wide(names[threshold]));
        one->logByEachMember("message");
        const auto lines = linesFrom(threshold);
        expected.insert(expected.end(), lines.begin(), lines.end());
        EXPECT_EQ(linesOnStandardError(), expected) << names[threshold];
    }
    EXPECT_THAT(complaints(), IsEmpty());
}

// Promise (Runtime and its log): Lines from level `warn` on go to standard error, unless
// `VORLEN_LOG_LEVEL` names another level.
TEST_F(LoggerTest, sends_lines_from_warn_on_to_standard_error) {
    one->logByEachMember("message");
    EXPECT_EQ(linesOnStandardError(), linesFrom(3));
    EXPECT_THAT(complaints(), IsEmpty());
}

TEST_F(LoggerTest, takes_an_empty_variable_for_one_that_is_not_set) {
    level.set({});
    fileName.set({});
    one->logByEachMember("message");
    EXPECT_EQ(linesOnStandardError(), linesFrom(3));
    EXPECT_THAT(complaints(), IsEmpty());
}

TEST_F(LoggerTest, ends_lines_with_a_line_feed_alone) {
    one->log(level_enum::warn, "first");
    one->log(level_enum::error, "second");
    EXPECT_EQ(standardError.text(), "warn first\nerror second\n");
}

TEST_F(LoggerTest, reports_an_unknown_level_once_and_uses_warn) {
    for (const std::string& name :
         std::vector<std::string>{"loud", "WARN", "warning", "warn ", "3"}) {
        unload();
        load();
        level.set(wide(name));
        const std::size_t before = complaints().size();
        one->log(level_enum::info, "below");
        two->log(level_enum::warn, name);
        ASSERT_EQ(complaints().size(), before + 1);
        EXPECT_THAT(complaints().back(),
                    AllOf(HasSubstr("VORLEN_LOG_LEVEL is \"" + name + "\""),
                          HasSubstr("trace, debug, info, warn, error or critical")));
        EXPECT_EQ(linesOnStandardError().back(), "warn " + name);
    }
    EXPECT_EQ(linesOnStandardError().size(), 5u);
}

TEST_F(LoggerTest, spells_out_a_line_end_in_an_unknown_level) {
    level.set(L"loud\ncritical all is lost \u2028\u00E4");
    one->log(level_enum::info, "message");
    EXPECT_THAT(complaints(),
                ElementsAre(HasSubstr("\"loud<U+000A>critical all is lost <U+2028>\xC3\xA4\"")));
    EXPECT_THAT(linesOnStandardError(), IsEmpty());
}

TEST_F(LoggerTest, reads_the_variables_when_an_image_first_logs) {
    level.set(L"debug");
    one->log(level_enum::debug, "first");
    level.set(L"critical");
    two->log(level_enum::debug, "second");
    EXPECT_THAT(linesOnStandardError(), ElementsAre("debug first", "debug second"));
}

TEST_F(LoggerTest, writes_the_nearest_level_for_an_unknown_number) {
    level.set(L"trace");
    one->log(static_cast<level_enum>(-1), "below");
    one->log(static_cast<level_enum>(6), "above");
    EXPECT_THAT(linesOnStandardError(), ElementsAre("trace below", "critical above"));
}

TEST_F(LoggerTest, works_without_a_standard_error) {
    fileName.set(file.wstring());
    const HANDLE original = GetStdHandle(STD_ERROR_HANDLE);
    SetStdHandle(STD_ERROR_HANDLE, nullptr);
    one->log(level_enum::critical, "into nothing");
    SetStdHandle(STD_ERROR_HANDLE, original);
    one->log(level_enum::critical, "seen");
    EXPECT_THAT(linesOnStandardError(), ElementsAre("critical seen"));
    EXPECT_THAT(withoutTimes(linesInFile()), ElementsAre("critical into nothing", "critical seen"));
}

// Promise (Runtime and its log): A message takes one line: control characters, line separators and
// marks that turn the direction of the text are spelled out, such as `<U+000A>`.
TEST_F(LoggerTest, writes_a_message_on_one_line) {
    fileName.set(file.wstring());
    const std::pair<std::string, std::string> messages[] = {
        {"", ""},
        {R"(\\.\DISPLAY1, 100 %)", R"(\\.\DISPLAY1, 100 %)"},
        {"forged\r\ncritical line", "forged<U+000D><U+000A>critical line"},
        {std::string("a\0b", 3), "a<U+0000>b"},
        {"\xE2\x80\xA8 \xE6\x97\xA5", "<U+2028> \xE6\x97\xA5"}};
    for (const auto& [message, written] : messages) {
        one->log(level_enum::warn, message);
        EXPECT_EQ(linesOnStandardError().back(), "warn " + written);
        EXPECT_EQ(withoutTime(linesInFile().back()), "warn " + written);
    }
    EXPECT_EQ(linesInFile().size(), std::size(messages));
}

TEST_F(LoggerTest, is_exported_with_every_member) {
    for (const char* const member :
         {mangled::loggerInstance, mangled::constructLogger, mangled::destroyLogger,
          mangled::isInitialized, mangled::log, mangled::trace, mangled::debug, mangled::info,
          mangled::warn, mangled::error, mangled::critical, mangled::registerDebugCallback,
          mangled::debugCallback}) {
        void* address = nullptr;
        EXPECT_NO_THROW(runtime->resolve(address, member)) << member;
    }
}

HMODULE imageOf(const void* address) {
    HMODULE image = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                           GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       static_cast<LPCWSTR>(address), &image);
    return image;
}

TEST_F(LoggerTest, has_an_object_of_its_own_in_each_image) {
    vorlen::log::vllogger* (*instanceOfRuntime)() = nullptr;
    runtime->resolve(instanceOfRuntime, mangled::loggerInstance);
    EXPECT_EQ(imageOf(instanceOfRuntime()), runtime->image());
    EXPECT_EQ(imageOf(one->loggerAddress()), one->library.image());
    EXPECT_EQ(imageOf(two->loggerAddress()), two->library.image());
}

} // namespace
} // namespace tests
