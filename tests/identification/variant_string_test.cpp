#include "tests/fixtures/guarded_memory.h"
#include "tests/identification/test_variant.h"

#include <vector>

namespace tests {
namespace {

using namespace std::string_literals;

// A string whose length says so many units, with nothing readable behind those given.
std::wstring textOfGuarded(const std::wstring& units, std::size_t claimedUnits) {
    const DWORD claimedBytes = static_cast<DWORD>(claimedUnits * sizeof(wchar_t));
    std::vector<std::byte> bytes(sizeof(claimedBytes) + units.size() * sizeof(wchar_t));
    std::memcpy(bytes.data(), &claimedBytes, sizeof(claimedBytes));
    std::memcpy(bytes.data() + sizeof(claimedBytes), units.data(), units.size() * sizeof(wchar_t));
    const GuardedMemory memory(bytes.data(), bytes.size());

    VARIANT value{};
    V_VT(&value) = VT_BSTR;
    V_BYREF(&value) = memory.data() + sizeof(claimedBytes);
    return wstringFromVARIANT(value);
}

TEST(VariantString, ends_at_its_first_zero) {
    EXPECT_EQ(textAndRelease(stringVariant(L"X\xD83D\xFFFF\x0100")), L"X\xD83D\xFFFF\x0100");
    EXPECT_EQ(textAndRelease(stringVariant(L"XY\0Z"s)), L"XY");
    EXPECT_EQ(textAndRelease(stringVariant(L"\0XYZ"s)), L"");
    EXPECT_EQ(textAndRelease(stringVariant({})), L"");
    EXPECT_EQ(textAndRelease(nullStringVariant()), L"");
}

TEST(VariantString, is_read_neither_behind_its_length_nor_behind_a_zero) {
    EXPECT_EQ(textOfGuarded(L"XYZ", 3), L"XYZ");
    EXPECT_EQ(textOfGuarded(L"XYZ", 2), L"XY");
    EXPECT_EQ(textOfGuarded({}, 0), L"");
    EXPECT_EQ(textOfGuarded(L"XYZ\0"s, 1000), L"XYZ");
}

TEST(VariantString, is_not_read_behind_a_reference) {
    BSTR text = SysAllocString(L"XYZ");
    VARIANT value{};
    V_VT(&value) = VT_BYREF | VT_BSTR;
    V_BSTRREF(&value) = &text;
    EXPECT_EQ(textAndRelease(value), L"");
    SysFreeString(text);
}

TEST(VariantString, is_empty_for_a_value_of_another_type) {
    for (const VARTYPE type : {VT_EMPTY, VT_NULL, VT_I2, VT_I4, VT_R8, VT_BOOL, VT_UI2, VT_UI4,
                               VT_INT, VT_UINT, VT_ERROR}) {
        VARIANT value{};
        V_VT(&value) = type;
        V_I4(&value) = 'X';
        EXPECT_EQ(textAndRelease(value), L"") << type;
    }
}

} // namespace
} // namespace tests
