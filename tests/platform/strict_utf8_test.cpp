#include "platform/text.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

namespace tests {
namespace {

using vorlen::toUtf8;

// What the platform makes of the text; nothing when it is not UTF-16.
std::optional<std::string> platformUtf8(const std::wstring& text) {
    if (text.empty()) {
        return std::string();
    }
    const int units = static_cast<int>(text.size());
    std::string bytes(3 * text.size(), '\0');
    const int size =
        WideCharToMultiByte(CP_UTF8, WC_ERR_INVALID_CHARS, text.data(), units, bytes.data(),
                            static_cast<int>(bytes.size()), nullptr, nullptr);
    if (size == 0) {
        EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_NO_UNICODE_TRANSLATION));
        return std::nullopt;
    }
    bytes.resize(static_cast<std::size_t>(size));
    return bytes;
}

std::optional<std::string> ownUtf8(const std::wstring& text) {
    try {
        return toUtf8Strict(text);
    } catch (const std::range_error& error) {
        EXPECT_STREQ(error.what(), "bad conversion");
        return std::nullopt;
    }
}

std::string unitsOf(const std::wstring& text) {
    std::string units;
    for (const wchar_t unit : text) {
        units += std::to_string(static_cast<unsigned>(unit)) + " ";
    }
    return units;
}

struct Boundary {
    std::wstring text;
    std::string bytes;
};

TEST(Utf8, holds_at_the_boundaries_of_every_length) {
    const std::vector<Boundary> boundaries = {
        {std::wstring(1, L'\0'), std::string(1, '\0')},
        {L"\x01", "\x01"},
        {L"\x7F", "\x7F"},
        {L"\x80", "\xC2\x80"},
        {L"\xFF", "\xC3\xBF"},
        {L"\x7FF", "\xDF\xBF"},
        {L"\x800", "\xE0\xA0\x80"},
        {L"\xD7FF", "\xED\x9F\xBF"},
        {L"\xE000", "\xEE\x80\x80"},
        {L"\xFEFF", "\xEF\xBB\xBF"},
        {L"\xFFFD", "\xEF\xBF\xBD"},
        {L"\xFFFE", "\xEF\xBF\xBE"},
        {L"\xFFFF", "\xEF\xBF\xBF"},
        {L"\xD800\xDC00", "\xF0\x90\x80\x80"},
        {L"\xD800\xDFFF", "\xF0\x90\x8F\xBF"},
        {L"\xDBFF\xDC00", "\xF4\x8F\xB0\x80"},
        {L"\xDBFF\xDFFF", "\xF4\x8F\xBF\xBF"},
    };
    for (const auto& [text, bytes] : boundaries) {
        EXPECT_EQ(toUtf8Strict(text), bytes) << unitsOf(text);
    }
}

TEST(Utf8, of_nothing_is_nothing) {
    EXPECT_EQ(toUtf8Strict(L""), "");
}

TEST(Utf8, keeps_zero_units_inside_a_text) {
    EXPECT_EQ(toUtf8Strict(std::wstring_view(L"a\0b", 3)), std::string("a\0b", 3));
}

TEST(Utf8, refuses_an_unpaired_surrogate_wherever_it_stands) {
    for (const wchar_t* const text : {
             L"\xD83D",               // a high one alone
             L"\xDDA5",               // a low one alone
             L"\xD83D at the start",  //
             L"\xDDA5 at the start",  //
             L"in \xD83D the middle", //
             L"in \xDDA5 the middle", //
             L"at the end \xD83D",    //
             L"at the end \xDDA5",    //
             L"\xDDA5\xD83D",         // a pair in reverse
             L"\xD83D\xD83D\xDDA5",   // a high one before a pair
             L"\xD83D\xDDA5\xDDA5",   // a low one behind a pair
             L"\xD83D\xDDA5\xD83D",   // a high one behind a pair
             L"\xDBFF\xDBFF",         // the last high one twice
             L"\xD800\xE000",         // what follows is no surrogate any more
             L"\xD800\xD7FF",         // what follows is no surrogate yet
         }) {
        EXPECT_EQ(ownUtf8(text), std::nullopt) << unitsOf(text);
    }
}

TEST(Utf8, of_every_single_unit_is_what_the_platform_makes_of_it) {
    for (std::uint32_t unit = 0; unit <= 0xFFFF; ++unit) {
        const std::wstring text(1, static_cast<wchar_t>(unit));
        ASSERT_EQ(ownUtf8(text), platformUtf8(text)) << unit;
    }
}

TEST(Utf8, of_every_pair_at_its_boundaries_is_what_the_platform_makes_of_it) {
    const wchar_t edges[] = {L'a',   0xD7FF, 0xD800, 0xD801, 0xDBFE, 0xDBFF,
                             0xDC00, 0xDC01, 0xDFFE, 0xDFFF, 0xE000, 0xFFFF};
    for (const wchar_t first : edges) {
        for (const wchar_t second : edges) {
            const std::wstring text = {first, second};
            ASSERT_EQ(ownUtf8(text), platformUtf8(text)) << unitsOf(text);
        }
    }
}

// Units of every class, with enough pairs among them for long texts that are valid.
std::wstring generate(std::mt19937& random) {
    const auto below = [&](std::uint32_t limit) {
        return random() % limit;
    };
    const bool mayBreak = below(4) == 0;
    std::wstring text;
    for (std::uint32_t left = below(40); left > 0; --left) {
        const std::uint32_t highestUnit[] = {0x7F, 0x7FF, 0xD7FF};
        const std::uint32_t kind = below(mayBreak ? 7 : 5);
        if (kind < 3) {
            text += static_cast<wchar_t>(below(highestUnit[kind] + 1));
        } else if (kind == 3) {
            text += static_cast<wchar_t>(0xE000 + below(0x2000));
        } else if (kind == 4) {
            text += static_cast<wchar_t>(0xD800 + below(0x400));
            text += static_cast<wchar_t>(0xDC00 + below(0x400));
        } else {
            text += static_cast<wchar_t>(0xD800 + below(0x800));
        }
    }
    return text;
}

TEST(Utf8, of_generated_texts_is_what_the_platform_makes_of_them) {
    // NOLINTNEXTLINE(cert-msc51-cpp,cert-msc32-c): the same texts in every run
    std::mt19937 random(20041);
    int refused = 0;
    for (int i = 0; i < 100'000; ++i) {
        const std::wstring text = generate(random);
        const std::optional<std::string> bytes = ownUtf8(text);
        ASSERT_EQ(bytes, platformUtf8(text)) << unitsOf(text);
        refused += bytes ? 0 : 1;
    }
    // Both outcomes have to be tried often for the comparison to mean something.
    EXPECT_GT(refused, 10'000);
    EXPECT_LT(refused, 50'000);
}

} // namespace
} // namespace tests
