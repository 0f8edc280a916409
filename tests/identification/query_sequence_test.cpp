#include "tests/identification/identification_test.h"
#include "tests/identification/worker_threads.h"

#include <set>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class QuerySequence : public IdentificationTest {
protected:
    void attachOne() {
        attach(devicePath(L"VLN0001", L"1"));
        desktop.wmi.add(instanceName(L"VLN0001", L"1"), L"SN-1");
    }
};

TEST_F(QuerySequence, shows_the_serial_number_in_the_exported_list) {
    attachOne();
    EXPECT_THAT(identify(), ElementsAre(L"SN-1"));
}

TEST_F(QuerySequence, hands_the_serial_number_to_the_runtime_with_the_low_8_bits_of_every_unit) {
    attach(devicePath(L"VLN0001", L"1"));
    desktop.wmi.add(instanceName(L"VLN0001", L"1"), L"S\x0141\x20ACN");
    EXPECT_THAT(identify(), ElementsAre(L"S\x0141\x20ACN"));
    ASSERT_EQ(module.runtime.monitorItems().size(), 1u);
    EXPECT_EQ(module.runtime.monitorItems()[0].monitorId, "S\x41\xACN");
}

// Each call's arguments are checked where it is simulated.
TEST_F(QuerySequence, makes_these_calls_and_releases_everything_before_it_leaves_the_apartment) {
    attachOne();
    identify();
    EXPECT_THAT(desktop.wmi.calls(),
                ElementsAre("CoInitializeEx", "CoInitializeSecurity", "CoCreateInstance",
                            "IWbemLocator::ConnectServer", "CoSetProxyBlanket",
                            "IWbemServices::ExecQuery", "IEnumWbemClassObject::Next",
                            "IWbemClassObject::Get(InstanceName)",
                            "IWbemClassObject::Get(SerialNumberID)", "~IWbemClassObject",
                            "IEnumWbemClassObject::Next", "~IEnumWbemClassObject", "~IWbemServices",
                            "~IWbemLocator", "CoUninitialize"));
    EXPECT_THAT(desktop.wmi.outstanding(), IsEmpty());
}

TEST_F(QuerySequence, releases_every_string_variant_and_array_that_it_made_or_was_given) {
    attachOne();
    identify();
    const Journal& journal = desktop.journal;
    EXPECT_EQ(journal.count("SysAllocString"), 3u);
    EXPECT_EQ(journal.count("SysFreeString"), 3u);
    EXPECT_EQ(journal.count("VariantInit"), 2u);
    EXPECT_EQ(journal.count("VariantClear"), 2u);
    EXPECT_EQ(journal.count("SafeArrayAccessData"), 1u);
    EXPECT_EQ(journal.count("SafeArrayUnaccessData"), 1u);
    EXPECT_THAT(desktop.wmi.outstanding(), IsEmpty());
}

TEST_F(QuerySequence, sets_security_once_in_the_life_of_the_process) {
    attachOne();
    identify();
    EXPECT_EQ(desktop.journal.count("CoInitializeSecurity"), 1u);
    attach(devicePath(L"VLN0002", L"2"));
    identify();
    EXPECT_EQ(desktop.journal.count("CoCreateInstance"), 1u);
    EXPECT_EQ(desktop.journal.count("CoInitializeSecurity"), 0u);
}

TEST_F(QuerySequence, goes_on_when_the_host_has_set_the_security_of_its_process_already) {
    attachOne();
    desktop.journal.failAll("CoInitializeSecurity", RPC_E_TOO_LATE);
    EXPECT_THAT(identify(), ElementsAre(L"SN-1"));
}

TEST_F(QuerySequence, goes_on_in_an_apartment_that_was_entered_already_and_leaves_it_once) {
    attachOne();
    desktop.journal.fail("CoInitializeEx", 1, S_FALSE);
    EXPECT_THAT(identify(), ElementsAre(L"SN-1"));
    EXPECT_EQ(desktop.journal.count("CoUninitialize"), 1u);
}

TEST_F(QuerySequence, runs_on_one_thread_of_its_own_that_has_ended_when_the_list_is_there) {
    attachOne();
    std::set<DWORD> threads;
    for (const char* call : {"CoInitializeEx", "CoInitializeSecurity", "CoCreateInstance",
                             "IWbemServices::ExecQuery", "~IWbemLocator", "CoUninitialize"}) {
        desktop.journal.at(call, 1, [&] { threads.insert(GetCurrentThreadId()); });
    }
    const WorkerThreads workers(module.image());
    identify();
    EXPECT_EQ(threads.size(), 1u);
    EXPECT_FALSE(threads.contains(GetCurrentThreadId()));
    EXPECT_EQ(workers.started(), 1u);
    EXPECT_EQ(workers.running(), 0u);
    EXPECT_EQ(workers.unclosedHandles(), 0u);
}

TEST_F(QuerySequence, starts_no_thread_when_there_is_nothing_to_ask) {
    attachOne();
    identify();
    const WorkerThreads workers(module.image());
    identify();
    EXPECT_EQ(workers.started(), 0u);
}

TEST_F(QuerySequence, works_for_a_caller_in_a_single_threaded_apartment) {
    attachOne();
    desktop.wmi.enterSingleThreadedApartment();
    EXPECT_THAT(identify(), ElementsAre(L"SN-1"));
}

TEST_F(QuerySequence, reads_every_object_until_none_comes) {
    attachOne();
    attach(devicePath(L"VLN0002", L"2"));
    desktop.wmi.add(instanceName(L"VLN0002", L"2"), L"SN-2");
    attach(devicePath(L"VLN0003", L"3"));
    desktop.wmi.add(instanceName(L"VLN0003", L"3"), L"SN-3");
    EXPECT_THAT(identify(), ElementsAre(L"SN-1", L"SN-2", L"SN-3"));
    EXPECT_EQ(desktop.journal.count("IEnumWbemClassObject::Next"), 4u);
}

TEST_F(QuerySequence, takes_an_object_whatever_status_comes_with_it) {
    attachOne();
    desktop.wmi.provider.statusWithObject = E_FAIL;
    EXPECT_THAT(identify(), ElementsAre(L"SN-1"));
}

TEST_F(QuerySequence, ends_when_the_enumerator_reports_success_without_an_object) {
    attachOne();
    desktop.journal.fail("IEnumWbemClassObject::Next", 1, S_OK);
    EXPECT_THAT(identify(), ElementsAre(L""));
    EXPECT_EQ(desktop.journal.count("IEnumWbemClassObject::Next"), 1u);
    EXPECT_THAT(desktop.wmi.outstanding(), IsEmpty());
}

TEST_F(QuerySequence, ends_when_the_enumerator_counts_an_object_that_it_does_not_hand_out) {
    attachOne();
    desktop.wmi.provider.announcesOneTooMany = true;
    EXPECT_THAT(identify(), ElementsAre(L"SN-1"));
    EXPECT_EQ(desktop.journal.count("IEnumWbemClassObject::Next"), 2u);
    EXPECT_THAT(desktop.wmi.outstanding(), IsEmpty());
}

} // namespace
} // namespace tests
