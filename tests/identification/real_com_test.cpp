#include "tests/fixtures/locator_in_front.h"
#include "tests/identification/identification_test.h"
#include "tests/identification/real_com.h"

#include <objbase.h>

#include <optional>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// The monitors are simulated, COM and threads are the system's own.
class WmiQueryWithRealCom : public IdentificationTest {
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

TEST_F(WmiQueryWithRealCom, gets_the_text_from_a_locator_that_com_made) {
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
    EXPECT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK)
        << "the caller was left in an apartment";
    CoUninitialize();
}

// Promise (Threads and callbacks): The COM apartment of the calling thread does not matter, and
// stays as it is: WMI is asked on a thread of its own.
TEST_F(WmiQueryWithRealCom, leaves_the_apartment_of_the_caller_as_it_is) {
    const LocatorInFront inFront(provider);
    ASSERT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
    EXPECT_THAT(identify(), ElementsAre(L"SN-1"));
    APTTYPE type = APTTYPE_CURRENT;
    APTTYPEQUALIFIER qualifier = APTTYPEQUALIFIER_NONE;
    EXPECT_EQ(CoGetApartmentType(&type, &qualifier), S_OK);
    EXPECT_EQ(type, APTTYPE_MAINSTA);
    CoUninitialize();
}

// The system has no instances of the class, or none of this monitor.
TEST_F(WmiQueryWithRealCom, asks_the_systems_own_wmi_once) {
    EXPECT_THAT(identify(), ElementsAre(L""));
    EXPECT_EQ(com->locatorsMade(), 1u);
    EXPECT_THAT(identify(), ElementsAre(L""));
    EXPECT_EQ(com->locatorsMade(), 1u);
}

} // namespace
} // namespace tests
