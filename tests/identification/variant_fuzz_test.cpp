#include "tests/identification/test_variant.h"

#include <algorithm>
#include <random>
#include <vector>

namespace tests {
namespace {

// What a generated value was made of, and the text that it stands for.
struct Sample {
    VARIANT value;
    std::wstring expected;
};

class Generator {
public:
    Sample next() {
        switch (number(0, 5)) {
        case 0:
            return string();
        case 1:
            return integers();
        case 2:
            return grid();
        case 3:
            return otherArray();
        case 4:
            return mislabelledArray();
        default:
            return scalar();
        }
    }

private:
    int number(int lowest, int highest) {
        return std::uniform_int_distribution(lowest, highest)(random);
    }

    // Zero now and then, small numbers mostly, and any bits at all.
    std::int32_t element() {
        switch (number(0, 9)) {
        case 0:
            return 0;
        case 1:
            return static_cast<std::int32_t>(random());
        case 2:
            return static_cast<std::int32_t>(random() & 0xFFFF0000);
        default:
            return number(1, 0xFFFF);
        }
    }

    std::vector<std::int32_t> elements(int count) {
        std::vector<std::int32_t> result(static_cast<std::size_t>(count));
        std::generate(result.begin(), result.end(), [this] { return element(); });
        return result;
    }

    static std::wstring upToZero(const std::vector<std::int32_t>& units, std::size_t count) {
        std::wstring text;
        for (std::size_t i = 0; i < count; ++i) {
            const auto unit = static_cast<std::uint32_t>(units[i]) % 0x10000;
            if (unit == 0) {
                return text;
            }
            text += static_cast<wchar_t>(unit);
        }
        return text;
    }

    Sample string() {
        if (number(0, 19) == 0) {
            return {nullStringVariant(), {}};
        }
        const std::vector<std::int32_t> units = elements(number(0, 20));
        std::wstring text;
        for (const std::int32_t unit : units) {
            text += static_cast<wchar_t>(unit);
        }
        return {stringVariant(text), upToZero(units, units.size())};
    }

    Sample integers() {
        const std::vector<std::int32_t> units = elements(number(0, 20));
        return {integerArrayVariant(units, number(-100, 100)), upToZero(units, units.size())};
    }

    // Two dimensions, of which the first is read.
    Sample grid() {
        const int columns = number(0, 5);
        const int rows = number(0, 3);
        const std::vector<std::int32_t> units = elements(columns * rows);
        const VARIANT value = arrayVariant(VT_I4, VT_I4,
                                           {{static_cast<ULONG>(columns), number(-9, 9)},
                                            {static_cast<ULONG>(rows), number(-9, 9)}});
        std::copy(units.begin(), units.end(), static_cast<std::int32_t*>(V_ARRAY(&value)->pvData));
        const auto readable = static_cast<std::size_t>(rows > 0 ? columns : 0);
        return {value, upToZero(units, readable)};
    }

    VARTYPE otherType() {
        const VARTYPE types[] = {VT_I1,  VT_UI1, VT_I2, VT_UI2, VT_UI4,  VT_I8,
                                 VT_UI8, VT_INT, VT_R4, VT_R8,  VT_BOOL, VT_UINT};
        return types[number(0, static_cast<int>(std::size(types)) - 1)];
    }

    Sample otherArray() {
        const VARTYPE type = otherType();
        return {arrayVariant(type, type, {{static_cast<ULONG>(number(0, 9)), number(-9, 9)}}), {}};
    }

    Sample mislabelledArray() {
        return {arrayVariant(VT_I4, otherType(), {{static_cast<ULONG>(number(0, 9)), 0}}), {}};
    }

    Sample scalar() {
        VARIANT value{};
        V_VT(&value) = number(0, 1) == 0 ? otherType() : static_cast<VARTYPE>(VT_I4);
        V_I4(&value) = element();
        return {value, {}};
    }

    // NOLINTNEXTLINE(cert-msc32-c,cert-msc51-cpp): every run tries the same values
    std::mt19937 random{19450509};
};

TEST(VariantText, agrees_with_what_100000_values_were_made_of) {
    Generator generator;
    std::size_t withText = 0;
    for (int i = 0; i < 100'000; ++i) {
        const Sample sample = generator.next();
        withText += sample.expected.empty() ? 0u : 1u;
        ASSERT_EQ(textAndRelease(sample.value), sample.expected) << "value " << i;
    }
    // Neither kind of value is rare among them.
    EXPECT_GT(withText, 10'000u);
    EXPECT_LT(withText, 90'000u);
}

} // namespace
} // namespace tests
