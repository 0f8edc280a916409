// Part of every test program: after each test, every heap of the process is still sound. Under Wine
// with WINEDEBUG=warn+heap each block has guarded ends and freed ones are filled, so that this
// finds what was written outside of a block; a block that is freed twice is reported at once, as a
// line that fails the test program.

#include <windows.h>

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace {

std::vector<HANDLE> processHeaps() {
    std::vector<HANDLE> heaps(GetProcessHeaps(0, nullptr));
    heaps.resize(GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data()));
    return heaps;
}

class HeapCheck : public testing::EmptyTestEventListener {
    void OnTestEnd(const testing::TestInfo&) override {
        for (const HANDLE heap : processHeaps()) {
            EXPECT_TRUE(HeapValidate(heap, 0, nullptr)) << "something wrote outside of its block";
        }
    }
};

[[maybe_unused]] const auto* const heapCheck = [] {
    auto check = std::make_unique<HeapCheck>();
    testing::UnitTest::GetInstance()->listeners().Append(check.get());
    return check.release(); // now GoogleTest's
}();

} // namespace
