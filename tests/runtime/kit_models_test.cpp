#include "tests/runtime/runtime_fixtures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// The shipped runtime reads the variable when its core is made.
class KitModels : public testing::Test {
protected:
    // The models of the variable's value that a monitor with this friendly name carries.
    std::vector<std::string> modelsIn(const std::string& friendlyName) const {
        const LoadedCore core;
        core.add({"device", friendlyName, "", 0, 0, 0, 0, 0});
        return core.models("device");
    }

    const TemporaryFolder folder;
    const CapturedStandardError standardError{folder.path / "standard error"};
    const EnvironmentVariable variable{L"VORLEN_KIT_MODELS"};
};

TEST_F(KitModels, are_empty_without_a_value) {
    variable.unset();
    EXPECT_THAT(modelsIn("ONE"), IsEmpty());
    variable.set(std::wstring());
    EXPECT_THAT(modelsIn("ONE"), IsEmpty());
    EXPECT_EQ(standardError.text(), "");
}

TEST_F(KitModels, are_separated_by_semicolons_and_keep_their_order) {
    variable.set(L"TWO;ONE;Kit 32 x");
    EXPECT_THAT(modelsIn("ONE TWO THREE"), ElementsAre("TWO", "ONE"));
    EXPECT_THAT(modelsIn("my Kit 32 x"), ElementsAre("Kit 32 x"));
    EXPECT_EQ(standardError.text(), "");
}

TEST_F(KitModels, are_known_once_when_listed_twice) {
    variable.set(L"ONE;TWO;ONE");
    EXPECT_THAT(modelsIn("ONE TWO"), ElementsAre("ONE", "TWO"));
}

TEST_F(KitModels, keep_spaces_at_their_ends) {
    variable.set(L" ONE ");
    EXPECT_THAT(modelsIn("ONE"), IsEmpty());
    EXPECT_THAT(modelsIn("the ONE monitor"), ElementsAre(" ONE "));
}

TEST_F(KitModels, hold_the_low_bytes_as_monitor_names_do) {
    variable.set(L"\u00E9\u3042");
    EXPECT_THAT(modelsIn("\xE9\x42"), ElementsAre("\xE9\x42"));
}

TEST_F(KitModels, may_fill_a_long_variable) {
    std::wstring list;
    for (int i = 0; i < 2000; ++i) {
        list += L"model" + std::to_wstring(i) + L";";
    }
    variable.set(list + L"the last");
    EXPECT_THAT(modelsIn("the last"), ElementsAre("the last"));
}

TEST_F(KitModels, are_left_out_with_one_line_when_their_name_is_empty) {
    const std::string complaint =
        "vorlen_runtime: VORLEN_KIT_MODELS holds an empty name, which is left out: write model "
        "names separated by single ';', such as ONE;TWO\r\n";
    std::string expected;
    for (const wchar_t* const value : {L"ONE;;TWO", L";ONE;TWO", L"ONE;TWO;", L";;ONE;;TWO;;"}) {
        variable.set(value);
        EXPECT_THAT(modelsIn("ONE TWO"), ElementsAre("ONE", "TWO"));
        expected += complaint;
        EXPECT_EQ(standardError.text(), expected);
    }
    variable.set(L";");
    EXPECT_THAT(modelsIn("ONE TWO"), IsEmpty());
    EXPECT_EQ(standardError.text(), expected + complaint);
}

} // namespace
} // namespace tests
