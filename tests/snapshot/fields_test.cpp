#include "snapshot/fields.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace tests {
namespace {

using namespace snapshot;

// Converts to the type of any member.
struct Anything {
    template <typename Member>
    operator Member() const {
        return Member();
    }
};

template <typename Record, std::size_t... numbers>
constexpr bool hasMembers(std::index_sequence<numbers...>) {
    return requires {
        Record{(static_cast<void>(numbers), Anything())...};
    };
}

// The number of members that the initialisation of an aggregate takes.
template <typename Record, std::size_t number = 1>
constexpr std::size_t memberCount() {
    if constexpr (hasMembers<Record>(std::make_index_sequence<number>())) {
        return memberCount<Record, number + 1>();
    } else {
        return number - 1;
    }
}

template <typename Type>
class Fields : public testing::Test {};

using Records = testing::Types<snapshot::Rectangle, DisplayMode, CurrentMode, Monitor, AdapterId,
                               SourceName, TargetName, PreferredMode, AdvancedColor, Rational,
                               DisplayPath, PathMode, DisplayConfiguration, WmiStep, WmiProperty,
                               WmiObject, Wmi, Window, Process, Reading>;
TYPED_TEST_SUITE(Fields, Records);

TYPED_TEST(Fields, names_every_member_of_the_record) {
    std::size_t count = 0;
    forEachField<TypeParam>([&](const auto&) { ++count; });
    EXPECT_EQ(count, memberCount<TypeParam>());
}

static_assert(!isRecord<std::int32_t> && !isRecord<std::wstring> &&
              !isRecord<std::vector<Monitor>> && isRecord<Monitor>);

} // namespace
} // namespace tests
