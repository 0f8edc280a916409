#include "benchmark/cases.h"
#include "benchmark/plain_windows.h"
#include "benchmark/simulated_module.h"
#include "simulation/loaded_image.h"
#include "tests/support/allocations.h"

#include <malloc.h>

#include <cstddef>
#include <filesystem>
#include <string>

namespace bench {

namespace {

constexpr std::size_t largestFile = 300 * 1024;

double fileSize() {
    wchar_t program[MAX_PATH]{};
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    return static_cast<double>(std::filesystem::file_size(
        std::filesystem::path(program).parent_path() / "../bin/libvorlen_monitor.dll"));
}

double mappedSize() {
    const tests::ModuleUnderTest module;
    return simulation::LoadedImage(module.image()).optionalHeader().SizeOfImage;
}

// The bytes in use of the C library's heap, which the library shares with its host.
double heapInUse() {
    auto* const heap = reinterpret_cast<HANDLE>(_get_heap_handle());
    double bytes = 0;
    PROCESS_HEAP_ENTRY entry{};
    while (HeapWalk(heap, &entry) != FALSE) {
        bytes += (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0 ? entry.cbData : 0;
    }
    return bytes;
}

double heapAfterLoading() {
    tests::ModuleUnderTest module;
    module.unload();
    const double before = heapInUse();
    module.load();
    return heapInUse() - before;
}

// The bytes that the library has allocated by init and not freed, on a desktop with so many
// monitors and windows.
double heapAfterInit(std::size_t monitorCount, std::size_t windowCount) {
    SimulatedModule simulated;
    simulated.addMonitors(monitorCount);
    const PlainWindows windows(simulated.module.image(), windowCount);
    const tests::Allocations allocations({simulated.module.image()});
    simulated.module.init();
    const auto held = static_cast<double>(allocations.outstandingBytes());
    simulated.module.cleanup();
    return held;
}

} // namespace

std::vector<Row> bytes(const Effort&) {
    constexpr std::size_t monitorCount = 64;
    constexpr std::size_t windowCount = 1'000;
    const double base = heapAfterInit(0, 0);
    const double size = fileSize();
    return {
        {"the library on disk", "", "< " + std::to_string(largestFile) + " bytes", size, "bytes",
         size < static_cast<double>(largestFile)},
        {"the library in memory", "", "", mappedSize(), "bytes", std::nullopt},
        {"heap after loading", "", "", heapAfterLoading(), "bytes", std::nullopt},
        {"more heap after init, no monitor, no window", "", "", base, "bytes", std::nullopt},
        {"heap for each monitor", "", "", (heapAfterInit(monitorCount, 0) - base) / monitorCount,
         "bytes", std::nullopt},
        {"heap for each window", "", "", (heapAfterInit(0, windowCount) - base) / windowCount,
         "bytes", std::nullopt},
    };
}

} // namespace bench
