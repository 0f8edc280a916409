#include "tests/identification/identification_test.h"
#include "tests/identification/worker_threads.h"
#include "tests/support/signal.h"

#include <set>
#include <system_error>

namespace tests {
namespace {

using testing::ElementsAre;

// A query for one monitor. Each call's arguments are checked where it is simulated, and at the end
// of each test that everything was released.
class WmiQuery : public IdentificationTest {
protected:
    void SetUp() override {
        IdentificationTest::SetUp();
        attach(devicePath(L"VLN0001", L"1"));
        desktop.wmi.add(instanceName(L"VLN0001", L"1"), L"SN-1");
    }

    static bool isLoaded(HMODULE image) {
        HMODULE found = nullptr;
        return GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                                      GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                                  reinterpret_cast<LPCWSTR>(image), &found) != FALSE;
    }
};

TEST_F(WmiQuery, makes_these_calls_in_this_order) {
    EXPECT_THAT(identify(), ElementsAre(L"SN-1"));
    EXPECT_THAT(desktop.wmi.calls(),
                ElementsAre("CoInitializeEx", "CoInitializeSecurity", "CoCreateInstance",
                            "IWbemLocator::ConnectServer", "CoSetProxyBlanket",
                            "IWbemServices::ExecQuery", "IEnumWbemClassObject::Next",
                            "IWbemClassObject::Get(InstanceName)",
                            "IWbemClassObject::Get(SerialNumberID)", "~IWbemClassObject",
                            "IEnumWbemClassObject::Next", "~IEnumWbemClassObject", "~IWbemServices",
                            "~IWbemLocator", "CoUninitialize"));
}

TEST_F(WmiQuery, sets_the_security_of_the_process_once) {
    identify();
    EXPECT_EQ(desktop.journal.count("CoInitializeSecurity"), 1u);
    attach(devicePath(L"VLN0002", L"2"));
    identify();
    EXPECT_EQ(desktop.journal.count("CoCreateInstance"), 1u);
    EXPECT_EQ(desktop.journal.count("CoInitializeSecurity"), 0u);
}

TEST_F(WmiQuery, accepts_security_that_the_host_has_set) {
    desktop.journal.failAll("CoInitializeSecurity", RPC_E_TOO_LATE);
    EXPECT_THAT(identify(), ElementsAre(L"SN-1"));
}

TEST_F(WmiQuery, accepts_an_apartment_that_was_entered_and_leaves_it_once) {
    desktop.journal.fail("CoInitializeEx", 1, S_FALSE);
    EXPECT_THAT(identify(), ElementsAre(L"SN-1"));
    EXPECT_EQ(desktop.journal.count("CoUninitialize"), 1u);
}

TEST_F(WmiQuery, runs_on_a_thread_of_its_own_and_waits_for_its_end) {
    std::set<DWORD> ids;
    for (const char* call : {"CoInitializeEx", "CoInitializeSecurity", "CoCreateInstance",
                             "IWbemServices::ExecQuery", "~IWbemLocator", "CoUninitialize"}) {
        desktop.journal.at(call, 1, [&] { ids.insert(GetCurrentThreadId()); });
    }
    const WorkerThreads workers(module.image());
    identify();
    EXPECT_EQ(ids.size(), 1u);
    EXPECT_FALSE(ids.contains(GetCurrentThreadId()));
    EXPECT_EQ(workers.started(), 1u);
    EXPECT_EQ(workers.running(), 0u);
    identify();
    EXPECT_EQ(workers.started(), 1u) << "a thread was started with nothing to ask";
}

TEST_F(WmiQuery, keeps_the_library_loaded_when_it_cannot_be_waited_for) {
    WorkerThreads workers(module.image());
    workers.failNextWait = ERROR_INVALID_HANDLE;
    Signal querying;
    Signal mayGoOn;
    desktop.journal.at("CoInitializeEx", 1, [&] {
        querying.raise();
        mayGoOn.wait();
    });
    EXPECT_THROW(module.exports->updateMonitorList(), std::system_error);
    querying.wait();
    module.cleanup();
    const HMODULE image = module.image();
    module.unload();
    ASSERT_TRUE(isLoaded(image));
    mayGoOn.raise();
    workers.waitForAll();
    EXPECT_FALSE(isLoaded(image));
}

TEST_F(WmiQuery, takes_an_object_whatever_status_comes_with_it) {
    desktop.wmi.provider.statusWithObject = E_FAIL;
    EXPECT_THAT(identify(), ElementsAre(L"SN-1"));
}

TEST_F(WmiQuery, ends_when_a_counted_object_is_not_given) {
    desktop.wmi.provider.announcesOneTooMany = true;
    EXPECT_THAT(identify(), ElementsAre(L"SN-1"));
    EXPECT_EQ(desktop.journal.count("IEnumWbemClassObject::Next"), 2u);
}

} // namespace
} // namespace tests
