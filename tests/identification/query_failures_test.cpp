#include "tests/identification/identification_test.h"

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// What the list shows after a failure of COM or WMI. FaultSweep shows that everything is released
// then.
class WmiQueryFailure : public IdentificationTest {
protected:
    // Of two monitors, so that a second object follows the first.
    void SetUp() override {
        IdentificationTest::SetUp();
        attach(devicePath(L"VLN0001", L"1"));
        attach(devicePath(L"VLN0002", L"2"));
        desktop.wmi.add(instanceName(L"VLN0001", L"1"), L"SN-1");
        desktop.wmi.add(instanceName(L"VLN0002", L"2"), L"SN-2");
    }

    // Attaches a third monitor, for which a query must be made.
    void attachAnother() {
        attach(devicePath(L"VLN0003", L"3"));
        desktop.wmi.add(instanceName(L"VLN0003", L"3"), L"SN-3");
    }
};

// A step without which nothing is read.
struct Step {
    std::string name;
    std::string call;
    HRESULT status;
};

class WmiQueryStep : public WmiQueryFailure, public testing::WithParamInterface<Step> {};

TEST_P(WmiQueryStep, leaves_texts_empty_when_it_fails_and_is_not_repeated) {
    desktop.journal.fail(GetParam().call, 1, GetParam().status);
    EXPECT_THAT(identify(), ElementsAre(L"", L""));
    EXPECT_EQ(desktop.journal.count(GetParam().call), 1u);

    EXPECT_THAT(identify(), ElementsAre(L"", L""));
    EXPECT_THAT(desktop.wmi.calls(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    of, WmiQueryStep,
    testing::Values(Step{"apartment", "CoInitializeEx", E_OUTOFMEMORY},
                    Step{"apartment_of_another_model", "CoInitializeEx", RPC_E_CHANGED_MODE},
                    Step{"security", "CoInitializeSecurity", E_ACCESSDENIED},
                    Step{"locator", "CoCreateInstance", REGDB_E_CLASSNOTREG},
                    Step{"server", "IWbemLocator::ConnectServer", E_ACCESSDENIED},
                    Step{"blanket", "CoSetProxyBlanket", E_NOINTERFACE},
                    Step{"query", "IWbemServices::ExecQuery", E_ACCESSDENIED},
                    Step{"enumerator", "IEnumWbemClassObject::Next", E_FAIL}),
    [](const auto& step) { return step.param.name; });

// A call without which one value is not read.
class WmiValueStep : public WmiQueryFailure, public testing::WithParamInterface<std::string> {};

TEST_P(WmiValueStep, leaves_one_text_empty_when_it_fails) {
    const std::string method = "IWbemClassObject::Get(" + GetParam() + ")";
    desktop.journal.fail(GetParam().starts_with("SafeArray") ? GetParam() : method, 1,
                         E_UNEXPECTED);
    EXPECT_THAT(identify(), ElementsAre(L"", L"SN-2"));
}

INSTANTIATE_TEST_SUITE_P(of, WmiValueStep,
                         testing::Values("InstanceName", "SerialNumberID", "SafeArrayGetVartype",
                                         "SafeArrayGetLBound", "SafeArrayGetUBound",
                                         "SafeArrayAccessData"),
                         [](const auto& step) { return step.param; });

TEST_F(WmiQueryFailure, keeps_what_was_read_before_the_enumerator_fails) {
    desktop.journal.fail("IEnumWbemClassObject::Next", 2, E_FAIL);
    EXPECT_THAT(identify(), ElementsAre(L"SN-1", L""));
}

TEST_F(WmiQueryFailure, does_not_set_security_again_when_it_could_not_be_set) {
    desktop.journal.failAll("CoInitializeSecurity", E_ACCESSDENIED);
    identify();
    attachAnother();
    EXPECT_THAT(identify(), ElementsAre(L"", L"", L"SN-3"));
    EXPECT_EQ(desktop.journal.count("CoInitializeSecurity"), 0u);
}

TEST_F(WmiQueryFailure, sets_security_later_when_no_apartment_was_entered) {
    desktop.journal.fail("CoInitializeEx", 1, E_OUTOFMEMORY);
    identify();
    EXPECT_EQ(desktop.journal.count("CoInitializeSecurity"), 0u);
    attachAnother();
    identify();
    EXPECT_EQ(desktop.journal.count("CoInitializeSecurity"), 1u);
}

} // namespace
} // namespace tests
