#include "monitor/display/monitor_identification.h"
#include "tests/identification/identification_test.h"
#include "tests/support/signal.h"

#include <chrono>
#include <thread>

namespace tests {
namespace {

using namespace std::chrono_literals;
using testing::Each;

// How long to look out for something that must not happen.
constexpr auto lookout = 200ms;

// On the objects that are linked into this program: every test has a path of its own.
class Concurrency : public testing::Test {
protected:
    Journal journal;
    Redirects redirects{GetModuleHandleW(nullptr), {}};
    Wmi wmi{redirects, journal};
};

TEST_F(Concurrency, eight_threads_that_ask_at_once_make_one_query_and_all_get_the_text) {
    expectBlocksLeft(blocksPerCachedPath);
    const std::wstring path = devicePath(L"VLN0001", L"asked by eight");
    wmi.add(instanceName(L"VLN0001", L"asked by eight"), L"SN-8");
    Signal secondQuery;
    journal.at("CoInitializeEx", 2, [&] { secondQuery.raise(); });
    journal.at("IWbemServices::ExecQuery", 1, [&] { EXPECT_FALSE(secondQuery.waitFor(lookout)); });

    Gate start(8);
    std::vector<std::wstring> texts(8);
    std::vector<std::thread> threads;
    threads.reserve(texts.size());
    for (std::wstring& text : texts) {
        threads.emplace_back([&] {
            start.pass();
            cacheMonitorIds({path});
            text = getCachedMonitorId(path);
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_THAT(texts, Each(L"SN-8"));
    EXPECT_EQ(journal.count("IWbemServices::ExecQuery"), 1u);
}

TEST_F(Concurrency, queries_of_different_threads_for_different_paths_run_one_after_the_other) {
    expectBlocksLeft(2 * blocksPerCachedPath);
    Signal secondQuery;
    journal.at("CoInitializeEx", 2, [&] { secondQuery.raise(); });
    journal.at("IWbemServices::ExecQuery", 1, [&] { EXPECT_FALSE(secondQuery.waitFor(lookout)); });

    Gate start(2);
    const auto ask = [&](const wchar_t* instance) {
        start.pass();
        cacheMonitorIds({devicePath(L"VLN0001", instance)});
    };
    std::thread first(ask, L"asked by the first");
    std::thread second(ask, L"asked by the second");
    first.join();
    second.join();
    EXPECT_EQ(journal.count("IWbemServices::ExecQuery"), 2u);
}

TEST_F(Concurrency, a_lookup_waits_for_the_query_that_runs) {
    expectBlocksLeft(blocksPerCachedPath);
    const std::wstring path = devicePath(L"VLN0001", L"looked up meanwhile");
    wmi.add(instanceName(L"VLN0001", L"looked up meanwhile"), L"SN-1");
    Signal answered;
    std::wstring answer;
    std::thread lookup;
    journal.at("IWbemServices::ExecQuery", 1, [&] {
        lookup = std::thread([&] {
            answer = getCachedMonitorId(path);
            answered.raise();
        });
        EXPECT_FALSE(answered.waitFor(lookout));
    });
    cacheMonitorIds({path});
    lookup.join();
    EXPECT_EQ(answer, L"SN-1");
}

} // namespace
} // namespace tests
