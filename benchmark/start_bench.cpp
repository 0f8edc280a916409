#include "benchmark/cases.h"
#include "benchmark/measurement.h"
#include "benchmark/simulated_module.h"

#include <process.h>

namespace bench {

namespace {

constexpr const char* libraryFile = "../bin/libvorlen_monitor.dll";

// The time to map the file into the process and to unmap it, without running its code.
double mappingTime() {
    return nanosecondsOf(
        [] { const tests::Library file(libraryFile, tests::Library::Mapping::imageOnly); });
}

double loadingTime() {
    tests::ModuleUnderTest module;
    module.unload();
    return nanosecondsOf([&] { module.load(); });
}

unsigned __stdcall doNothing(void*) {
    return 0;
}

// The time to start a thread and to wait for its end, as the first list does.
double threadTime() {
    return nanosecondsOf([] {
        auto* const thread =
            reinterpret_cast<HANDLE>(_beginthreadex(nullptr, 0, doNothing, nullptr, 0, nullptr));
        WaitForSingleObject(thread, INFINITE);
        CloseHandle(thread);
    });
}

struct FirstList {
    double total;
    double waited; // waiting for WMI
};

FirstList firstListTime(DWORD wmiMilliseconds) {
    SimulatedModule simulated;
    simulated.addMonitors(2);
    FirstList result{};
    simulated.desktop.journal.at("IWbemServices::ExecQuery", 1, [&] {
        result.waited = nanosecondsOf([&] { Sleep(wmiMilliseconds); });
    });
    result.total = nanosecondsOf([&] {
        simulated.module.init();
        std::vector<MonitorListItem> items(2);
        simulated.module.exports->getMonitorList(items.data(), 2);
        use(items.data());
    });
    return result;
}

} // namespace

std::vector<Row> start(const Effort& effort) {
    std::vector<Row> rows;
    for (const DWORD wmiMilliseconds : {0U, 15U}) {
        std::vector<double> mapping;
        std::vector<double> thread;
        std::vector<double> loading;
        std::vector<double> listing;
        std::vector<double> waiting;
        for (std::size_t i = 0; i < effort.slowSamples; ++i) {
            mapping.push_back(mappingTime());
            thread.push_back(threadTime());
            loading.push_back(loadingTime());
            const FirstList first = firstListTime(wmiMilliseconds);
            listing.push_back(first.total - first.waited);
            waiting.push_back(first.waited);
        }
        const double own = median(loading) - median(mapping) + median(listing) - median(thread);
        rows.push_back(
            {"load, init, first list, WMI answering in " + std::to_string(wmiMilliseconds) + " ms",
             "",
             "< 1 ms without the platform's own",
             own / 1e6,
             "ms",
             own < 1e6,
             {{"mapping the file, ns", median(mapping)},
              {"loading, ns", median(loading)},
              {"starting a thread, ns", median(thread)},
              {"init and first list without WMI's answer, ns", median(listing)},
              {"WMI's answer, ns", median(waiting)}}});
    }
    return rows;
}

} // namespace bench
