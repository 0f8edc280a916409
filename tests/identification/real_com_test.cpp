#include "tests/identification/identification_test.h"
#include "tests/identification/real_com.h"

#include <objbase.h>

#include <optional>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// The monitors are simulated, COM and threads are the system's own.
class RealComTest : public IdentificationTest {
protected:
    void SetUp() override {
        IdentificationTest::SetUp();
        attach(devicePath(L"VLN0001", L"1"));
        provider.add(instanceName(L"VLN0001", L"1"), L"SN-1");
        com.emplace(module.image());
    }

    Journal wmiCalls;
    WmiProvider provider{wmiCalls};
    std::optional<RealCom> com;
};

TEST_F(RealComTest, a_text_comes_from_a_locator_that_com_made) {
    const LocatorInFront inFront(provider);
    EXPECT_THAT(identify(), ElementsAre(L"SN-1"));
    EXPECT_THAT(wmiCalls.calls(),
                ElementsAre("IWbemLocator::ConnectServer", "IClientSecurity::SetBlanket",
                            "~IClientSecurity", "IWbemServices::ExecQuery",
                            "IEnumWbemClassObject::Next", "IWbemClassObject::Get(InstanceName)",
                            "IWbemClassObject::Get(SerialNumberID)", "~IWbemClassObject",
                            "IEnumWbemClassObject::Next", "~IEnumWbemClassObject", "~IWbemServices",
                            "~IWbemLocator"));
    EXPECT_THAT(provider.outstanding(), IsEmpty());
}

TEST_F(RealComTest, a_path_is_asked_for_once) {
    const LocatorInFront inFront(provider);
    identify();
    wmiCalls.clear();
    EXPECT_THAT(identify(), ElementsAre(L"SN-1"));
    EXPECT_THAT(wmiCalls.calls(), IsEmpty());
}

TEST_F(RealComTest, a_proxy_that_refuses_its_security_leaves_the_text_empty) {
    const LocatorInFront inFront(provider);
    wmiCalls.fail("IClientSecurity::SetBlanket", 1, E_ACCESSDENIED);
    EXPECT_THAT(identify(), ElementsAre(L""));
    EXPECT_EQ(wmiCalls.count("IWbemServices::ExecQuery"), 0u);
    EXPECT_THAT(provider.outstanding(), IsEmpty());
}

TEST_F(RealComTest, a_caller_in_a_single_threaded_apartment_gets_the_text_and_stays_there) {
    const LocatorInFront inFront(provider);
    ASSERT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
    EXPECT_THAT(identify(), ElementsAre(L"SN-1"));
    APTTYPE type = APTTYPE_CURRENT;
    APTTYPEQUALIFIER qualifier = APTTYPEQUALIFIER_NONE;
    EXPECT_EQ(CoGetApartmentType(&type, &qualifier), S_OK);
    EXPECT_EQ(type, APTTYPE_MAINSTA);
    CoUninitialize();
}

TEST_F(RealComTest, a_caller_without_an_apartment_is_left_without_one) {
    const LocatorInFront inFront(provider);
    EXPECT_THAT(identify(), ElementsAre(L"SN-1"));
    // Entering any apartment is still open to it.
    EXPECT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
    CoUninitialize();
}

// It has no instances of the class, or none of this monitor.
TEST_F(RealComTest, the_systems_own_wmi_is_asked_once_and_the_text_stays_empty) {
    EXPECT_THAT(identify(), ElementsAre(L""));
    EXPECT_EQ(com->locatorsMade(), 1u);
    EXPECT_THAT(identify(), ElementsAre(L""));
    EXPECT_EQ(com->locatorsMade(), 1u);
}

} // namespace
} // namespace tests
