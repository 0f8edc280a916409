#include "tests/identification/identification_test.h"
#include "tests/identification/worker_threads.h"
#include "tests/support/allocations.h"
#include "tests/support/signal.h"

#include <comdef.h>

#include <cerrno>
#include <new>
#include <system_error>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class QueryExceptions : public IdentificationTest {
protected:
    void SetUp() override {
        IdentificationTest::SetUp();
        attach(devicePath(L"VLN0001", L"1"));
        desktop.wmi.add(instanceName(L"VLN0001", L"1"), L"SN-1");
    }

    // Nothing of the failed call was cached: the next one asks, and finds.
    void expectFullQueryNow() {
        EXPECT_THAT(desktop.wmi.outstanding(), IsEmpty());
        EXPECT_THAT(identify(), ElementsAre(L"SN-1"));
        EXPECT_EQ(desktop.journal.count("IWbemServices::ExecQuery"), 1u);
        EXPECT_THAT(desktop.wmi.outstanding(), IsEmpty());
    }
};

class UnbuiltQueryText : public QueryExceptions, public testing::WithParamInterface<std::size_t> {};

TEST_P(UnbuiltQueryText, reaches_the_caller_as_a_com_error_and_nothing_is_cached) {
    desktop.journal.fail("SysAllocString", GetParam());
    const WorkerThreads workers(module.image());
    try {
        module.exports->updateMonitorList();
        ADD_FAILURE() << "no exception reached the caller";
    } catch (const _com_error& error) {
        EXPECT_EQ(error.Error(), E_OUTOFMEMORY);
    }
    EXPECT_EQ(workers.started(), 1u);
    EXPECT_EQ(workers.running(), 0u);
    EXPECT_EQ(workers.unclosedHandles(), 0u);
    EXPECT_EQ(desktop.journal.count("CoUninitialize"), 1u);
    EXPECT_EQ(desktop.journal.count("IWbemServices::ExecQuery"), 0u);
    expectFullQueryNow();
}

INSTANTIATE_TEST_SUITE_P(number, UnbuiltQueryText, testing::Range(std::size_t{1}, std::size_t{4}));

TEST_F(QueryExceptions, a_thread_that_cannot_be_started_is_a_system_error_and_nothing_is_cached) {
    {
        WorkerThreads workers(module.image());
        workers.failNextStart = EAGAIN;
        try {
            module.exports->updateMonitorList();
            ADD_FAILURE() << "no exception reached the caller";
        } catch (const std::system_error& error) {
            // The category is the library's own, which this program has another copy of.
            EXPECT_EQ(error.code().value(), EAGAIN);
        }
        EXPECT_EQ(workers.started(), 0u);
        EXPECT_THAT(desktop.wmi.calls(), IsEmpty());
    }
    expectFullQueryNow();
}

TEST_F(QueryExceptions, a_thread_that_cannot_be_waited_for_is_a_system_error) {
    {
        WorkerThreads workers(module.image());
        workers.failNextWait = ERROR_INVALID_HANDLE;
        EXPECT_THROW(module.exports->updateMonitorList(), std::system_error);
        EXPECT_EQ(workers.started(), 1u);
        EXPECT_EQ(workers.unclosedHandles(), 0u);
    }
    expectFullQueryNow();
}

bool isLoaded(HMODULE image) {
    HMODULE found = nullptr;
    return GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                                  GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                              reinterpret_cast<LPCWSTR>(image), &found) != FALSE;
}

TEST_F(QueryExceptions, a_thread_that_goes_on_keeps_the_library_loaded_until_it_ends) {
    WorkerThreads workers(module.image());
    workers.failNextWait = ERROR_INVALID_HANDLE;
    workers.failsAtOnce = true;
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

// Every request for memory of an enumeration that asks WMI fails in turn.
TEST_F(QueryExceptions, exhausted_memory_reaches_the_caller_wherever_it_is_met) {
    const std::wstring serialNumber(40, L'7');
    std::size_t request = 0;
    for (bool failed = true; failed;) {
        // A path of its own each time: what was found once is not asked for again.
        const std::wstring instance = L"exhausted " + std::to_wstring(++request);
        desktop.displayPaths.all[0].devicePath = devicePath(L"VLN0001", instance);
        desktop.wmi.provider.instances.clear();
        desktop.wmi.add(instanceName(L"VLN0001", instance), serialNumber);

        const WorkerThreads workers(module.image());
        Allocations allocations({module.image()});
        allocations.failRequest(request);
        try {
            module.exports->updateMonitorList();
            failed = allocations.hasFailed();
            EXPECT_FALSE(failed) << "the failure of request " << request << " was swallowed";
        } catch (const std::bad_alloc&) {
            EXPECT_TRUE(allocations.hasFailed());
        }
        EXPECT_THAT(desktop.wmi.outstanding(), IsEmpty()) << "request " << request;
        EXPECT_EQ(workers.running(), 0u);
        EXPECT_EQ(workers.unclosedHandles(), 0u);
    }
    EXPECT_GT(request, 20u);
    EXPECT_THAT(identify(), ElementsAre(serialNumber));
}

} // namespace
} // namespace tests
