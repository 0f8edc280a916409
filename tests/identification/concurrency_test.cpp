#include "monitor/display/monitor_identification.h"
#include "tests/identification/identification_test.h"
#include "tests/support/signal.h"

#include <atomic>
#include <thread>

namespace tests {
namespace {

using testing::ElementsAre;

// On the objects that are linked into this program: every test has paths of its own.
class MonitorIdThreads : public testing::Test {
protected:
    Journal journal;
    Redirects redirects{GetModuleHandleW(nullptr), {}};
    Wmi wmi{redirects, journal};
};

// Eight threads ask together for one of two paths each.
TEST_F(MonitorIdThreads, ask_once_for_each_path_one_query_at_a_time) {
    expectBlocksLeft(2 * blocksPerCachedPath);
    const std::wstring paths[] = {devicePath(L"VLN0001", L"threads 1"),
                                  devicePath(L"VLN0001", L"threads 2")};
    wmi.add(instanceName(L"VLN0001", L"threads 1"), L"SN-1");
    wmi.add(instanceName(L"VLN0001", L"threads 2"), L"SN-2");
    std::atomic<int> queries = 0;
    for (std::size_t query = 1; query <= 8; ++query) {
        journal.at("CoInitializeEx", query, [&] { EXPECT_EQ(++queries, 1) << "queries overlap"; });
        journal.at("CoUninitialize", query, [&] { --queries; });
    }

    Gate start(8);
    std::vector<std::wstring> texts(8);
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        threads.emplace_back([&, i] {
            start.pass();
            cacheMonitorIds({paths[i % 2]});
            texts[i] = getCachedMonitorId(paths[i % 2]);
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_THAT(
        texts, ElementsAre(L"SN-1", L"SN-2", L"SN-1", L"SN-2", L"SN-1", L"SN-2", L"SN-1", L"SN-2"));
    EXPECT_EQ(journal.count("IWbemServices::ExecQuery"), 2u);
}

TEST_F(MonitorIdThreads, wait_for_a_query_that_runs_when_they_look_a_path_up) {
    expectBlocksLeft(blocksPerCachedPath);
    const std::wstring path = devicePath(L"VLN0001", L"looked up during the query");
    wmi.add(instanceName(L"VLN0001", L"looked up during the query"), L"SN-1");
    Signal lookingUp;
    std::wstring answer;
    std::thread lookup;
    journal.at("IWbemServices::ExecQuery", 1, [&] {
        lookup = std::thread([&] {
            lookingUp.raise();
            answer = getCachedMonitorId(path);
        });
        lookingUp.wait();
    });
    cacheMonitorIds({path});
    lookup.join();
    EXPECT_EQ(answer, L"SN-1");
}

} // namespace
} // namespace tests
