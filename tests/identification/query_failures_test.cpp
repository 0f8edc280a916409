#include "tests/identification/identification_test.h"

namespace tests {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

// A step of the query that fails, and all calls that are then made.
struct FailingStep {
    std::string testName;
    std::string call;
    HRESULT status;
    std::vector<std::string> expectedCalls;
};

class QueryFailures : public IdentificationTest, public testing::WithParamInterface<FailingStep> {
protected:
    void SetUp() override {
        IdentificationTest::SetUp();
        attach(devicePath(L"VLN0001", L"1"));
        desktop.wmi.add(instanceName(L"VLN0001", L"1"), L"SN-1");
    }
};

TEST_P(QueryFailures, leaves_the_text_empty_releases_everything_and_is_not_asked_again) {
    desktop.journal.fail(GetParam().call, 1, GetParam().status);
    EXPECT_THAT(identify(), ElementsAre(L""));
    EXPECT_THAT(desktop.wmi.calls(), ElementsAreArray(GetParam().expectedCalls));
    EXPECT_THAT(desktop.wmi.outstanding(), IsEmpty());

    EXPECT_THAT(identify(), ElementsAre(L""));
    EXPECT_THAT(desktop.wmi.calls(), IsEmpty());
}

const std::vector<FailingStep> failingSteps = {
    {"apartment", "CoInitializeEx", E_OUTOFMEMORY, {"CoInitializeEx"}},
    {"apartment_of_another_model", "CoInitializeEx", RPC_E_CHANGED_MODE, {"CoInitializeEx"}},
    {"security",
     "CoInitializeSecurity",
     E_ACCESSDENIED,
     {"CoInitializeEx", "CoInitializeSecurity", "CoUninitialize"}},
    {"locator",
     "CoCreateInstance",
     REGDB_E_CLASSNOTREG,
     {"CoInitializeEx", "CoInitializeSecurity", "CoCreateInstance", "CoUninitialize"}},
    {"server",
     "IWbemLocator::ConnectServer",
     E_ACCESSDENIED,
     {"CoInitializeEx", "CoInitializeSecurity", "CoCreateInstance", "IWbemLocator::ConnectServer",
      "~IWbemLocator", "CoUninitialize"}},
    {"blanket",
     "CoSetProxyBlanket",
     E_NOINTERFACE,
     {"CoInitializeEx", "CoInitializeSecurity", "CoCreateInstance", "IWbemLocator::ConnectServer",
      "CoSetProxyBlanket", "~IWbemServices", "~IWbemLocator", "CoUninitialize"}},
    {"query",
     "IWbemServices::ExecQuery",
     E_ACCESSDENIED,
     {"CoInitializeEx", "CoInitializeSecurity", "CoCreateInstance", "IWbemLocator::ConnectServer",
      "CoSetProxyBlanket", "IWbemServices::ExecQuery", "~IWbemServices", "~IWbemLocator",
      "CoUninitialize"}},
    {"enumerator",
     "IEnumWbemClassObject::Next",
     E_FAIL,
     {"CoInitializeEx", "CoInitializeSecurity", "CoCreateInstance", "IWbemLocator::ConnectServer",
      "CoSetProxyBlanket", "IWbemServices::ExecQuery", "IEnumWbemClassObject::Next",
      "~IEnumWbemClassObject", "~IWbemServices", "~IWbemLocator", "CoUninitialize"}},
    {"instance_name",
     "IWbemClassObject::Get(InstanceName)",
     E_FAIL,
     {"CoInitializeEx", "CoInitializeSecurity", "CoCreateInstance", "IWbemLocator::ConnectServer",
      "CoSetProxyBlanket", "IWbemServices::ExecQuery", "IEnumWbemClassObject::Next",
      "IWbemClassObject::Get(InstanceName)", "~IWbemClassObject", "IEnumWbemClassObject::Next",
      "~IEnumWbemClassObject", "~IWbemServices", "~IWbemLocator", "CoUninitialize"}},
    {"serial_number",
     "IWbemClassObject::Get(SerialNumberID)",
     E_FAIL,
     {"CoInitializeEx", "CoInitializeSecurity", "CoCreateInstance", "IWbemLocator::ConnectServer",
      "CoSetProxyBlanket", "IWbemServices::ExecQuery", "IEnumWbemClassObject::Next",
      "IWbemClassObject::Get(InstanceName)", "IWbemClassObject::Get(SerialNumberID)",
      "~IWbemClassObject", "IEnumWbemClassObject::Next", "~IEnumWbemClassObject", "~IWbemServices",
      "~IWbemLocator", "CoUninitialize"}},
};

INSTANTIATE_TEST_SUITE_P(of, QueryFailures, testing::ValuesIn(failingSteps),
                         [](const auto& step) { return step.param.testName; });

// What is left of a serial number whose array refuses a step of its reading.
class RefusedArray : public IdentificationTest, public testing::WithParamInterface<const char*> {};

TEST_P(RefusedArray, gives_an_empty_text_and_is_released) {
    attach(devicePath(L"VLN0001", L"1"));
    desktop.wmi.add(instanceName(L"VLN0001", L"1"), L"SN-1");
    desktop.journal.fail(GetParam(), 1, E_UNEXPECTED);
    EXPECT_THAT(identify(), ElementsAre(L""));
    EXPECT_EQ(desktop.journal.count(GetParam()), 1u);
    EXPECT_THAT(desktop.wmi.outstanding(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(by, RefusedArray,
                         testing::Values("SafeArrayGetVartype", "SafeArrayGetLBound",
                                         "SafeArrayGetUBound", "SafeArrayAccessData"),
                         [](const auto& step) { return std::string(step.param); });

class QueryAfterFailure : public IdentificationTest {};

TEST_F(QueryAfterFailure, goes_on_without_security_when_it_could_not_be_set_the_first_time) {
    attach(devicePath(L"VLN0001", L"1"));
    desktop.wmi.add(instanceName(L"VLN0001", L"1"), L"SN-1");
    desktop.wmi.add(instanceName(L"VLN0002", L"2"), L"SN-2");
    desktop.journal.failAll("CoInitializeSecurity", E_ACCESSDENIED);
    EXPECT_THAT(identify(), ElementsAre(L""));

    attach(devicePath(L"VLN0002", L"2"));
    EXPECT_THAT(identify(), ElementsAre(L"", L"SN-2"));
    EXPECT_EQ(desktop.journal.count("CoInitializeSecurity"), 0u);
}

TEST_F(QueryAfterFailure, tries_security_later_when_the_first_apartment_could_not_be_entered) {
    attach(devicePath(L"VLN0001", L"1"));
    desktop.journal.fail("CoInitializeEx", 1, E_OUTOFMEMORY);
    identify();
    EXPECT_EQ(desktop.journal.count("CoInitializeSecurity"), 0u);

    attach(devicePath(L"VLN0002", L"2"));
    identify();
    EXPECT_EQ(desktop.journal.count("CoInitializeSecurity"), 1u);
}

TEST_F(QueryAfterFailure, reads_the_next_object_when_a_name_cannot_be_read) {
    attach(devicePath(L"VLN0001", L"1"));
    attach(devicePath(L"VLN0002", L"2"));
    desktop.wmi.add(instanceName(L"VLN0001", L"1"), L"SN-1");
    desktop.wmi.add(instanceName(L"VLN0002", L"2"), L"SN-2");
    desktop.journal.fail("IWbemClassObject::Get(InstanceName)", 1, E_FAIL);
    EXPECT_THAT(identify(), ElementsAre(L"", L"SN-2"));
}

TEST_F(QueryAfterFailure, reads_the_next_object_when_a_serial_number_cannot_be_read) {
    attach(devicePath(L"VLN0001", L"1"));
    attach(devicePath(L"VLN0002", L"2"));
    desktop.wmi.add(instanceName(L"VLN0001", L"1"), L"SN-1");
    desktop.wmi.add(instanceName(L"VLN0002", L"2"), L"SN-2");
    desktop.journal.fail("IWbemClassObject::Get(SerialNumberID)", 1, E_FAIL);
    EXPECT_THAT(identify(), ElementsAre(L"", L"SN-2"));
}

TEST_F(QueryAfterFailure, keeps_what_it_has_read_when_the_enumerator_breaks_off) {
    attach(devicePath(L"VLN0001", L"1"));
    attach(devicePath(L"VLN0002", L"2"));
    desktop.wmi.add(instanceName(L"VLN0001", L"1"), L"SN-1");
    desktop.wmi.add(instanceName(L"VLN0002", L"2"), L"SN-2");
    desktop.journal.fail("IEnumWbemClassObject::Next", 2, E_FAIL);
    EXPECT_THAT(identify(), ElementsAre(L"SN-1", L""));
    EXPECT_THAT(desktop.wmi.outstanding(), IsEmpty());
}

} // namespace
} // namespace tests
