#include "simulation/variants.h"
#include "tests/identification/identification_test.h"
#include "tests/support/simulation.h"

namespace tests {
namespace {

using testing::ElementsAre;

// Which WMI object belongs to which monitor.
class WmiMatching : public IdentificationTest {
protected:
    std::size_t serialNumbersRead() const {
        return desktop.journal.count("IWbemClassObject::Get(SerialNumberID)");
    }

    // Two monitors of one model: the prefix of the first begins that of the second.
    const std::wstring shorter = devicePath(L"VLN0001", L"1");
    const std::wstring longer = devicePath(L"VLN0001", L"12");
};

TEST_F(WmiMatching, gives_the_value_to_the_first_of_two_matching_monitors) {
    attach(shorter);
    attach(longer);
    desktop.wmi.add(instanceName(L"VLN0001", L"12"), L"SN-12");
    EXPECT_THAT(identify(), ElementsAre(L"SN-12", L""));
}

TEST_F(WmiMatching, gives_each_its_value_when_the_longer_prefix_is_first) {
    attach(longer);
    attach(shorter);
    desktop.wmi.add(instanceName(L"VLN0001", L"1"), L"SN-1");
    desktop.wmi.add(instanceName(L"VLN0001", L"12"), L"SN-12");
    EXPECT_THAT(identify(), ElementsAre(L"SN-12", L"SN-1"));
}

TEST_F(WmiMatching, gives_the_second_nothing_when_the_value_cannot_be_read) {
    attach(shorter);
    attach(longer);
    desktop.wmi.add(instanceName(L"VLN0001", L"12"), L"SN-12");
    desktop.journal.fail("IWbemClassObject::Get(SerialNumberID)", 1, E_FAIL);
    EXPECT_THAT(identify(), ElementsAre(L"", L""));
    EXPECT_EQ(serialNumbersRead(), 1u);
}

TEST_F(WmiMatching, keeps_the_value_of_the_last_readable_object) {
    attach(shorter);
    for (const wchar_t* const serialNumber : {L"first", L"second", L"third"}) {
        desktop.wmi.add(instanceName(L"VLN0001", L"1"), serialNumber);
    }
    desktop.journal.fail("IWbemClassObject::Get(SerialNumberID)", 3, E_FAIL);
    EXPECT_THAT(identify(), ElementsAre(L"second"));
}

TEST_F(WmiMatching, overwrites_a_value_by_a_later_empty_one) {
    attach(shorter);
    desktop.wmi.add(instanceName(L"VLN0001", L"1"), L"first");
    desktop.wmi.add(instanceName(L"VLN0001", L"1"), L"");
    EXPECT_THAT(identify(), ElementsAre(L""));
}

TEST_F(WmiMatching, gives_monitors_of_one_device_path_the_same_value) {
    attach(shorter);
    attach(shorter);
    desktop.wmi.add(instanceName(L"VLN0001", L"1"), L"SN-1");
    EXPECT_THAT(identify(), ElementsAre(L"SN-1", L"SN-1"));
}

TEST_F(WmiMatching, accepts_a_name_that_is_the_prefix_alone) {
    attach(shorter);
    desktop.wmi.add(LR"(DISPLAY\VLN0001\1)", L"SN-1");
    EXPECT_THAT(identify(), ElementsAre(L"SN-1"));
}

TEST_F(WmiMatching, reads_no_serial_number_of_an_object_that_does_not_match) {
    attach(shorter);
    for (const wchar_t* const name : {
             LR"(display\vln0001\1_0)", LR"(DISPLAY\vln0001\1_0)",       // in another case
             L"", LR"(DISPLAY\VLN0001\)",                                // too short
             LR"( DISPLAY\VLN0001\1_0)", LR"(ROOT\DISPLAY\VLN0001\1_0)", // not in front
             L"DISPLAY#VLN0001#1_0",                                     // other separators
         }) {
        desktop.wmi.add(name, L"SN-1");
    }
    EXPECT_THAT(identify(), ElementsAre(L""));
    EXPECT_EQ(desktop.journal.count("IWbemClassObject::Get(InstanceName)"), 7u);
    EXPECT_EQ(serialNumbersRead(), 0u);
}

// What becomes of other values: VariantString, VariantArray.
TEST_F(WmiMatching, reads_names_from_arrays_and_serial_numbers_from_strings) {
    attach(shorter);
    desktop.wmi.provider.instances.push_back(
        {[] { return unitsVariant(LR"(DISPLAY\VLN0001\1_0)"); },
         [] {
             return stringVariant(L"SN-1");
         }});
    EXPECT_THAT(identify(), ElementsAre(L"SN-1"));
}

} // namespace
} // namespace tests
