#include "monitor/display/monitor_identification.h"

#include <gtest/gtest.h>

#include <string>

namespace tests {
namespace {

using namespace std::string_literals;

struct Path {
    std::wstring path;
    std::wstring prefix;
};

// From the first "DISPLAY" up to the last '#', with a backslash for each '#' between them.
TEST(WmiInstancePrefix, is_taken_from_the_device_path) {
    const Path paths[] = {
        {LR"(\\?\DISPLAY#VLN0001#5&1a2b&0&UID257#{e6f07b5f-ee97})",
         LR"(DISPLAY\VLN0001\5&1a2b&0&UID257)"},
        {L"DISPLAY#", L"DISPLAY"},
        {L"DISPLAY#A##", LR"(DISPLAY\A\)"},
        {L"#DISPLAY#A#DISPLAY#B#c", LR"(DISPLAY\A\DISPLAY\B)"},
        {L"MYDISPLAYS#A#b", LR"(DISPLAYS\A)"},
        {L"DISPLAY#\0A#b"s, L"DISPLAY\\\0A"s},
    };
    for (const auto& [path, prefix] : paths) {
        EXPECT_EQ(wmiInstancePrefix(path), prefix);
    }
}

TEST(WmiInstancePrefix, is_empty_for_a_path_that_is_not_of_a_display) {
    for (const wchar_t* const path : {
             L"", LR"(\\?\MONITOR#VLN0001#1#{0})", LR"(\\?\display#VLN0001#1#{0})",
             LR"(\\?\Display#VLN0001#1#{0})",
             LR"(\\?\DISPLAY\VLN0001)", // no separator
             L"#1#2#DISPLAY",           // none behind the word
         }) {
        EXPECT_EQ(wmiInstancePrefix(path), L"") << testing::PrintToString(path);
    }
}

} // namespace
} // namespace tests
