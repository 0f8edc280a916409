#include "benchmark/cases.h"
#include "tests/fixtures/module_under_test.h"

#include <malloc.h>

#include <filesystem>
#include <string>

namespace bench {

namespace {

Row sizeOf(const std::string& file, double most) {
    return {.what = file + " on disk",
            .value = static_cast<double>(std::filesystem::file_size(tests::product(file))),
            .unit = "bytes",
            .atMost = most};
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

} // namespace

std::vector<Row> bytes(const Effort& /*effort*/) {
    return {sizeOf("libvorlen_monitor.dll", 215'000),
            sizeOf("vorlen_runtime.dll", 120'000),
            {.what = "heap after loading", .value = heapAfterLoading(), .unit = "bytes"}};
}

} // namespace bench
