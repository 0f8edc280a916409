#include "monitor/display/monitor_identification.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace tests {
namespace {

using namespace std::string_literals;

TEST(WmiInstancePrefix, is_the_device_path_from_its_class_to_its_interface_with_backslashes) {
    EXPECT_EQ(wmiInstancePrefix(LR"(\\?\DISPLAY#VLN0001#5&1a2b&0&UID257#{e6f07b5f-ee97})"),
              LR"(DISPLAY\VLN0001\5&1a2b&0&UID257)");
}

TEST(WmiInstancePrefix, is_empty_without_the_word_display) {
    EXPECT_EQ(wmiInstancePrefix(LR"(\\?\MONITOR#VLN0001#1#{0})"), L"");
    EXPECT_EQ(wmiInstancePrefix({}), L"");
}

TEST(WmiInstancePrefix, is_empty_for_another_case_of_display) {
    EXPECT_EQ(wmiInstancePrefix(LR"(\\?\display#VLN0001#1#{0})"), L"");
    EXPECT_EQ(wmiInstancePrefix(LR"(\\?\Display#VLN0001#1#{0})"), L"");
}

TEST(WmiInstancePrefix, is_empty_without_a_number_sign) {
    EXPECT_EQ(wmiInstancePrefix(LR"(\\?\DISPLAY\VLN0001)"), L"");
}

TEST(WmiInstancePrefix, is_empty_when_the_last_number_sign_lies_before_display) {
    EXPECT_EQ(wmiInstancePrefix(L"#1#2#DISPLAY"), L"");
}

TEST(WmiInstancePrefix, is_the_bare_word_when_the_number_sign_follows_at_once) {
    EXPECT_EQ(wmiInstancePrefix(L"DISPLAY#"), L"DISPLAY");
}

TEST(WmiInstancePrefix, starts_at_the_first_display) {
    EXPECT_EQ(wmiInstancePrefix(L"#DISPLAY#A#DISPLAY#B#c"), LR"(DISPLAY\A\DISPLAY\B)");
}

TEST(WmiInstancePrefix, ends_before_the_last_number_sign) {
    EXPECT_EQ(wmiInstancePrefix(L"DISPLAY#A##"), LR"(DISPLAY\A\)");
}

TEST(WmiInstancePrefix, takes_display_as_a_part_of_a_longer_word) {
    EXPECT_EQ(wmiInstancePrefix(L"MYDISPLAYS#A#b"), LR"(DISPLAYS\A)");
}

TEST(WmiInstancePrefix, keeps_zeros_in_the_path) {
    EXPECT_EQ(wmiInstancePrefix(L"DISPLAY#\0A#b"s), L"DISPLAY\\\0A"s);
}

// The rule as one would carry it out with a finger on the text.
std::wstring prefixByHand(const std::wstring& path) {
    const std::wstring word = L"DISPLAY";
    int start = -1;
    int lastSign = -1;
    const int size = static_cast<int>(path.size());
    for (int i = 0; i < size; ++i) {
        if (start < 0 && path.substr(static_cast<std::size_t>(i), word.size()) == word) {
            start = i;
        }
        if (path[static_cast<std::size_t>(i)] == L'#') {
            lastSign = i;
        }
    }
    std::wstring prefix;
    for (int i = start; start >= 0 && i < lastSign; ++i) {
        const wchar_t unit = path[static_cast<std::size_t>(i)];
        prefix += unit == L'#' ? L'\\' : unit;
    }
    return prefix;
}

TEST(WmiInstancePrefix, agrees_with_the_rule_carried_out_by_hand_for_100000_paths) {
    const std::vector<std::wstring> pieces = {
        L"DISPLAY", L"DISPLAY", L"#",   L"#",      L"display", L"DISP", L"LAY",    L"\\",
        L"VLN0001", L"{0}",     L"\0"s, L"\xD83D", L"D",       L"I",    L"\\\\?\\"};
    // NOLINTNEXTLINE(cert-msc32-c,cert-msc51-cpp): every run tries the same paths
    std::mt19937 random(20240229);
    std::uniform_int_distribution<std::size_t> length(0, 9);
    std::uniform_int_distribution<std::size_t> choice(0, pieces.size() - 1);
    std::size_t withPrefix = 0;
    for (int i = 0; i < 100'000; ++i) {
        std::wstring path;
        for (std::size_t left = length(random); left > 0; --left) {
            path += pieces[choice(random)];
        }
        const std::wstring expected = prefixByHand(path);
        withPrefix += expected.empty() ? 0u : 1u;
        ASSERT_EQ(wmiInstancePrefix(path), expected) << testing::PrintToString(path);
    }
    // Neither kind of path is rare among them.
    EXPECT_GT(withPrefix, 10'000u);
    EXPECT_LT(withPrefix, 90'000u);
}

} // namespace
} // namespace tests
