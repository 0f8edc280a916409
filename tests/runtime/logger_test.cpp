#include "tests/runtime/logger_fixture.h"

#include <windows.h>

#include <gmock/gmock.h>

#include <ostream>
#include <utility>

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

class Threshold : public LoggerTest, public testing::WithParamInterface<std::size_t> {};

TEST_P(Threshold, sends_lines_from_the_named_level_on_to_standard_error) {
    level.set(wide(names[GetParam()]));
    one->logByEachMember("message");
    EXPECT_EQ(linesOnStandardError(), linesFrom(GetParam()));
    EXPECT_THAT(complaints(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Levels, Threshold, testing::Range<std::size_t>(0, 6),
                         [](const auto& threshold) { return names[threshold.param]; });

TEST_F(LoggerTest, sends_lines_from_warn_on_to_standard_error_unless_told_otherwise) {
    one->logByEachMember("message");
    EXPECT_EQ(linesOnStandardError(), linesFrom(3));
    EXPECT_THAT(complaints(), IsEmpty());
}

TEST_F(LoggerTest, takes_empty_variables_for_variables_that_are_not_set) {
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

class WrongLevel : public LoggerTest, public testing::WithParamInterface<const char*> {};

TEST_P(WrongLevel, is_said_once_with_the_names_that_would_be_right_and_leaves_the_default) {
    level.set(wide(GetParam()));
    one->logByEachMember("message");
    two->log(level_enum::info, "below");
    two->log(level_enum::warn, "message");
    EXPECT_THAT(complaints(),
                ElementsAre(AllOf(HasSubstr("VORLEN_LOG_LEVEL is \"" + std::string(GetParam())),
                                  HasSubstr("trace, debug, info, warn, error or critical"))));
    auto expected = linesFrom(3);
    expected.emplace_back("warn message");
    EXPECT_EQ(linesOnStandardError(), expected);
}

INSTANTIATE_TEST_SUITE_P(Names, WrongLevel,
                         testing::Values("loud", "WARN", "warning", "warn ", " warn", "3", "off"));

TEST_F(LoggerTest, keeps_a_wrong_level_with_a_line_end_in_it_on_one_line) {
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

TEST_F(LoggerTest, is_initialised_for_every_image_once_it_is_there) {
    EXPECT_TRUE(one->isInitialized());
    EXPECT_TRUE(two->isInitialized());
}

TEST_F(LoggerTest, writes_the_nearest_level_for_a_number_that_is_none) {
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

struct Spelling {
    std::string message;
    std::string written;

    friend void PrintTo(const Spelling& spelling, std::ostream* stream) {
        *stream << spelling.written;
    }
};

class Message : public LoggerTest, public testing::WithParamInterface<Spelling> {};

TEST_P(Message, takes_one_line_on_standard_error_and_in_the_file) {
    fileName.set(file.wstring());
    one->log(level_enum::warn, GetParam().message);
    EXPECT_EQ(standardError.text(), "warn " + GetParam().written + "\n");
    EXPECT_THAT(withoutTimes(linesInFile()), ElementsAre("warn " + GetParam().written));
}

const Spelling spellings[] = {
    {"", ""},
    {R"(\\.\DISPLAY1, 100 %)", R"(\\.\DISPLAY1, 100 %)"},
    {"forged\ncritical line", "forged<U+000A>critical line"},
    {"forged\r\n2001-02-03T04:05:06.007Z critical line",
     "forged<U+000D><U+000A>2001-02-03T04:05:06.007Z critical line"},
    {std::string("a\0b", 3), "a<U+0000>b"},
    {"tab\tbell\aescape\x1B[2Jdelete\x7F",
     "tab<U+0009>bell<U+0007>escape<U+001B>[2Jdelete<U+007F>"},
    // The second block of controls: next line, and a terminal's escape in one character.
    {"\xC2\x85 \xC2\x9B", "<U+0085> <U+009B>"},
    // Separators of lines and paragraphs; right-to-left override and isolate with their ends; mark.
    {"\xE2\x80\xA8 \xE2\x80\xA9", "<U+2028> <U+2029>"},
    {"\xE2\x80\xAE \xE2\x81\xA6 \xE2\x81\xA9 \xE2\x80\xAC \xD8\x9C",
     "<U+202E> <U+2066> <U+2069> <U+202C> <U+061C>"},
    // A line end in too many bytes, which a lenient reader takes for one.
    {"\xC0\x8A \xE0\x80\x8A \xF0\x80\x80\x8A", "<U+000A> <U+000A> <U+000A>"},
    // Neighbours of what is spelled out, of one to four bytes.
    {"~ \xC2\xA0\xC3\xA4 \xE2\x80\x8D\xE6\x97\xA5 \xF0\x9F\x96\xA5",
     "~ \xC2\xA0\xC3\xA4 \xE2\x80\x8D\xE6\x97\xA5 \xF0\x9F\x96\xA5"},
    // No UTF-8: single bytes, characters cut short, and a line end behind one.
    {"\xE4\x80\xFF \xE2\x80", "\xE4\x80\xFF \xE2\x80"},
    {"\xE2\x80\n\xF0\x9F\n\xC3\n", "\xE2\x80<U+000A>\xF0\x9F<U+000A>\xC3<U+000A>"},
};

INSTANTIATE_TEST_SUITE_P(Spellings, Message, testing::ValuesIn(spellings));

// The members of vorlen::log::vllogger behind this prefix of their names, as GCC and Clang name
// them in export tables.
#define LOGGER "_ZN6vorlen3log8vllogger"
#define MESSAGE "ERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEE"

const std::vector<std::pair<std::string, std::string>> members = {
    {"instance", LOGGER "8instanceEv"},
    {"constructor", LOGGER "C1Ev"},
    {"destructor", LOGGER "D1Ev"},
    {"isInitialized", "_ZNK6vorlen3log8vllogger13isInitializedEv"},
    {"log", LOGGER "3logENS0_10level_enum" MESSAGE "b"},
    {"trace", LOGGER "5trace" MESSAGE},
    {"debug", LOGGER "5debug" MESSAGE},
    {"info", LOGGER "4info" MESSAGE},
    {"warn", LOGGER "4warn" MESSAGE},
    {"error", LOGGER "5error" MESSAGE},
    {"critical", LOGGER "8critical" MESSAGE},
    {"RegisterDebugCallback", LOGGER "21RegisterDebugCallbackEPFviPKcE"},
    {"debugCallback", LOGGER "13debugCallbackE"},
};

class LoggerMember : public LoggerTest, public testing::WithParamInterface<std::size_t> {};

TEST_P(LoggerMember, is_exported_by_the_runtime) {
    void* address = nullptr;
    EXPECT_NO_THROW(runtime->resolve(address, members[GetParam()].second));
}

INSTANTIATE_TEST_SUITE_P(All, LoggerMember, testing::Range<std::size_t>(0, members.size()),
                         [](const auto& member) { return members[member.param].first; });

HMODULE imageOf(const void* address) {
    HMODULE image = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                           GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       static_cast<LPCWSTR>(address), &image);
    return image;
}

TEST_F(LoggerTest, is_an_object_of_its_own_in_each_image) {
    vorlen::log::vllogger* (*instanceOfRuntime)() = nullptr;
    runtime->resolve(instanceOfRuntime, LOGGER "8instanceEv");
    EXPECT_EQ(imageOf(instanceOfRuntime()), runtime->image());
    EXPECT_EQ(imageOf(one->loggerAddress()), one->library.image());
    EXPECT_EQ(imageOf(two->loggerAddress()), two->library.image());
}

#undef LOGGER
#undef MESSAGE

} // namespace
} // namespace tests
