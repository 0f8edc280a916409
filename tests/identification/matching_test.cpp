#include "simulation/variants.h"
#include "tests/identification/identification_test.h"
#include "tests/support/simulation.h"

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Matching : public IdentificationTest {
protected:
    // An instance whose values are made by these.
    void add(std::function<VARIANT()> name, std::function<VARIANT()> serialNumber) {
        desktop.wmi.provider.instances.push_back({std::move(name), std::move(serialNumber)});
    }

    std::size_t serialNumbersRead() const {
        return desktop.journal.count("IWbemClassObject::Get(SerialNumberID)");
    }
};

// Two monitors of one model: the prefix of the first begins that of the second.
const std::wstring shorter = devicePath(L"VLN0001", L"1");
const std::wstring longer = devicePath(L"VLN0001", L"12");

TEST_F(Matching, of_two_prefixes_that_begin_a_name_only_the_first_in_the_list_gets_the_value) {
    attach(shorter);
    attach(longer);
    desktop.wmi.add(instanceName(L"VLN0001", L"12"), L"SN-12");
    EXPECT_THAT(identify(), ElementsAre(L"SN-12", L""));
}

TEST_F(Matching, the_longer_of_two_such_prefixes_gets_its_value_when_it_is_listed_first) {
    attach(longer);
    attach(shorter);
    desktop.wmi.add(instanceName(L"VLN0001", L"1"), L"SN-1");
    desktop.wmi.add(instanceName(L"VLN0001", L"12"), L"SN-12");
    EXPECT_THAT(identify(), ElementsAre(L"SN-12", L"SN-1"));
}

TEST_F(Matching, a_second_prefix_gets_nothing_when_the_first_ones_value_cannot_be_read) {
    attach(shorter);
    attach(longer);
    desktop.wmi.add(instanceName(L"VLN0001", L"12"), L"SN-12");
    desktop.journal.fail("IWbemClassObject::Get(SerialNumberID)", 1, E_FAIL);
    EXPECT_THAT(identify(), ElementsAre(L"", L""));
    EXPECT_EQ(serialNumbersRead(), 1u);
}

TEST_F(Matching, a_later_object_of_the_same_monitor_overwrites_the_text) {
    attach(shorter);
    desktop.wmi.add(instanceName(L"VLN0001", L"1"), L"first");
    desktop.wmi.add(instanceName(L"VLN0001", L"1"), L"second");
    EXPECT_THAT(identify(), ElementsAre(L"second"));
}

TEST_F(Matching, a_later_object_of_the_same_monitor_overwrites_the_text_with_an_empty_one) {
    attach(shorter);
    desktop.wmi.add(instanceName(L"VLN0001", L"1"), L"first");
    desktop.wmi.add(instanceName(L"VLN0001", L"1"), L"");
    EXPECT_THAT(identify(), ElementsAre(L""));
}

TEST_F(Matching, a_later_object_whose_value_cannot_be_read_leaves_the_text) {
    attach(shorter);
    desktop.wmi.add(instanceName(L"VLN0001", L"1"), L"first");
    desktop.wmi.add(instanceName(L"VLN0001", L"1"), L"second");
    desktop.journal.fail("IWbemClassObject::Get(SerialNumberID)", 2, E_FAIL);
    EXPECT_THAT(identify(), ElementsAre(L"first"));
}

TEST_F(Matching, monitors_that_share_a_device_path_share_the_text) {
    attach(shorter);
    attach(shorter);
    desktop.wmi.add(instanceName(L"VLN0001", L"1"), L"SN-1");
    EXPECT_THAT(identify(), ElementsAre(L"SN-1", L"SN-1"));
}

TEST_F(Matching, a_name_that_is_the_prefix_and_nothing_more_matches) {
    attach(shorter);
    desktop.wmi.add(LR"(DISPLAY\VLN0001\1)", L"SN-1");
    EXPECT_THAT(identify(), ElementsAre(L"SN-1"));
}

// The serial number of an object that is nobody's is not even read.
class NoMatch : public Matching, public testing::WithParamInterface<const wchar_t*> {};

TEST_P(NoMatch, leaves_the_text_empty_and_the_serial_number_unread) {
    attach(shorter);
    desktop.wmi.add(GetParam(), L"SN-1");
    EXPECT_THAT(identify(), ElementsAre(L""));
    EXPECT_EQ(desktop.journal.count("IWbemClassObject::Get(InstanceName)"), 1u);
    EXPECT_EQ(serialNumbersRead(), 0u);
    EXPECT_THAT(desktop.wmi.outstanding(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(lower_case, NoMatch,
                         testing::Values(LR"(display\vln0001\1_0)", LR"(DISPLAY\vln0001\1_0)"));
INSTANTIATE_TEST_SUITE_P(shorter_than_the_prefix, NoMatch,
                         testing::Values(L"", LR"(DISPLAY\VLN0001\)"));
INSTANTIATE_TEST_SUITE_P(prefix_not_in_front, NoMatch,
                         testing::Values(LR"( DISPLAY\VLN0001\1_0)",
                                         LR"(ROOT\DISPLAY\VLN0001\1_0)"));
INSTANTIATE_TEST_SUITE_P(separators_as_in_the_device_path, NoMatch,
                         testing::Values(L"DISPLAY#VLN0001#1_0"));

TEST_F(Matching, a_name_counts_up_to_its_first_zero) {
    attach(shorter);
    add([] { return stringVariant(LR"(DISPLAY\VLN0001)" + std::wstring(1, L'\0') + LR"(\1_0)"); },
        [] { return unitsVariant(L"SN-1"); });
    EXPECT_THAT(identify(), ElementsAre(L""));
    EXPECT_EQ(serialNumbersRead(), 0u);
}

TEST_F(Matching, a_name_without_a_string_is_nobodys) {
    attach(shorter);
    add(nullStringVariant, [] { return unitsVariant(L"SN-1"); });
    EXPECT_THAT(identify(), ElementsAre(L""));
    EXPECT_EQ(serialNumbersRead(), 0u);
}

TEST_F(Matching, a_name_that_comes_as_an_array_of_units_matches_as_well) {
    attach(shorter);
    add([] { return unitsVariant(LR"(DISPLAY\VLN0001\1_0)"); },
        [] { return unitsVariant(L"SN-1"); });
    EXPECT_THAT(identify(), ElementsAre(L"SN-1"));
}

TEST_F(Matching, a_serial_number_that_comes_as_a_string_is_taken) {
    attach(shorter);
    add([] { return stringVariant(LR"(DISPLAY\VLN0001\1_0)"); },
        [] { return stringVariant(L"SN-1"); });
    EXPECT_THAT(identify(), ElementsAre(L"SN-1"));
}

TEST_F(Matching, a_serial_number_of_another_type_gives_an_empty_text_and_is_released) {
    attach(shorter);
    add([] { return stringVariant(LR"(DISPLAY\VLN0001\1_0)"); },
        [] {
            return arrayVariant(VT_UI2, VT_UI2, {{4, 0}});
        });
    EXPECT_THAT(identify(), ElementsAre(L""));
    EXPECT_EQ(serialNumbersRead(), 1u);
    EXPECT_THAT(desktop.wmi.outstanding(), IsEmpty());
}

} // namespace
} // namespace tests
