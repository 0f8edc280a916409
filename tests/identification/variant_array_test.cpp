#include "tests/fixtures/guarded_memory.h"
#include "tests/identification/test_variant.h"

#include <vector>

namespace tests {
namespace {

// An array of 32-bit integers with these bounds, of which only so many elements can be read.
std::wstring textOfGuarded(const std::vector<SAFEARRAYBOUND>& bounds,
                           const std::vector<std::int32_t>& readable) {
    const GuardedMemory memory(readable.data(), readable.size() * sizeof(std::int32_t));
    SAFEARRAY* array = nullptr;
    const auto dimensions = static_cast<UINT>(bounds.size());
    EXPECT_EQ(SafeArrayAllocDescriptorEx(VT_I4, dimensions, &array), S_OK);
    // The first dimension stands last.
    std::copy(bounds.rbegin(), bounds.rend(), array->rgsabound);
    array->pvData = memory.data();

    VARIANT value{};
    V_VT(&value) = VT_ARRAY | VT_I4;
    V_ARRAY(&value) = array;
    const std::wstring text = wstringFromVARIANT(value);
    EXPECT_EQ(array->cLocks, 0u) << "the safe array is still in use";
    array->pvData = nullptr;
    EXPECT_EQ(SafeArrayDestroyDescriptor(array), S_OK);
    return text;
}

TEST(VariantArray, ends_at_its_first_zero) {
    EXPECT_EQ(textAndRelease(integerArrayVariant({'X', 'Y', 'Z', 0, 0})), L"XYZ");
    EXPECT_EQ(textAndRelease(integerArrayVariant({'X', 0, 'Y'})), L"X");
    EXPECT_EQ(textAndRelease(integerArrayVariant({0, 'X', 'Y', 'Z'})), L"");
}

TEST(VariantArray, gives_the_low_16_bits_of_each_element) {
    EXPECT_EQ(textAndRelease(integerArrayVariant({0x10058, -1, 0x7FFF0000, 'Z'})), L"X\xFFFF");
}

TEST(VariantArray, is_read_whatever_its_lower_bound_is) {
    const std::vector<std::int32_t> elements = {'a', 'b', 'c', 'd', 'e', 'f'};
    EXPECT_EQ(textAndRelease(integerArrayVariant(elements, -3)), L"abcdef");
    EXPECT_EQ(textOfGuarded({{6, -3}}, elements), L"abcdef");
    EXPECT_EQ(textOfGuarded({{6, 1'000'000}}, elements), L"abcdef");
}

TEST(VariantArray, may_have_no_elements) {
    EXPECT_EQ(textAndRelease(integerArrayVariant({}, 5)), L"");
    EXPECT_EQ(textOfGuarded({{0, 0}}, {}), L"");
    EXPECT_EQ(textOfGuarded({{0, -3}}, {}), L"");
}

TEST(VariantArray, is_read_neither_behind_its_bounds_nor_behind_a_zero) {
    EXPECT_EQ(textOfGuarded({{3, 0}}, {'X', 'Y', 'Z'}), L"XYZ");
    EXPECT_EQ(textOfGuarded({{1000, 0}}, {'X', 'Y', 0}), L"XY");
    EXPECT_EQ(textOfGuarded({{0xFFFFFFFF, -0x7FFFFFFF - 1}}, {'X', 0}), L"X");
}

TEST(VariantArray, is_read_along_the_first_of_its_dimensions) {
    EXPECT_EQ(textOfGuarded({{2, 0}, {3, 0}}, {'a', 'b', 'c', 'd', 'e', 'f'}), L"ab");
    EXPECT_EQ(textOfGuarded({{3, 1}, {2, -1}}, {'a', 'b', 'c', 'd', 'e', 'f'}), L"abc");
}

TEST(VariantArray, is_empty_when_one_dimension_is_empty) {
    EXPECT_EQ(textOfGuarded({{4, 0}, {0, 0}}, {}), L"");
    EXPECT_EQ(textOfGuarded({{4, 0}, {2, 0}, {0, 0}}, {}), L"");
}

TEST(VariantArray, is_empty_for_elements_of_another_type) {
    for (const VARTYPE type :
         {VT_I2, VT_UI2, VT_UI4, VT_INT, VT_UINT, VT_R4, VT_ERROR, VT_I8, VT_UI1}) {
        EXPECT_EQ(textAndRelease(arrayVariant(type, type, {{4, 0}})), L"") << type;
        EXPECT_EQ(textAndRelease(arrayVariant(VT_I4, type, {{4, 0}})), L"")
            << type << " under the type VT_I4";
    }
}

TEST(VariantArray, is_empty_when_it_is_missing) {
    VARIANT value{};
    V_VT(&value) = VT_ARRAY | VT_I4;
    EXPECT_EQ(wstringFromVARIANT(value), L"");
}

TEST(VariantArray, is_not_read_behind_a_reference) {
    VARIANT owner = integerArrayVariant({'X', 'Y', 'Z'});
    VARIANT value{};
    V_VT(&value) = VT_BYREF | VT_ARRAY | VT_I4;
    V_ARRAYREF(&value) = &V_ARRAY(&owner);
    EXPECT_EQ(textAndRelease(value), L"");
    EXPECT_EQ(VariantClear(&owner), S_OK);
}

TEST(VariantArray, stays_locked_by_another_user_of_it) {
    VARIANT value = integerArrayVariant({'X', 'Y', 'Z'});
    void* data = nullptr;
    ASSERT_EQ(SafeArrayAccessData(V_ARRAY(&value), &data), S_OK);
    EXPECT_EQ(wstringFromVARIANT(value), L"XYZ");
    EXPECT_EQ(V_ARRAY(&value)->cLocks, 1u);
    SafeArrayUnaccessData(V_ARRAY(&value));
    EXPECT_EQ(VariantClear(&value), S_OK);
}

} // namespace
} // namespace tests
