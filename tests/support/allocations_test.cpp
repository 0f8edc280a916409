#include "tests/support/allocations.h"

#include <gtest/gtest.h>

#include <new>

namespace tests {
namespace {

HMODULE thisProgram() {
    return GetModuleHandleW(nullptr);
}

// Unlike a new-expression, a plain call is not optimised away.
void takeAndGiveBack() {
    ::operator delete(::operator new(1));
}

TEST(Allocations, counts_requests_and_outstanding_blocks) {
    std::size_t requests = 0;
    std::size_t whileHeld = 0;
    std::size_t afterwards = 0;
    {
        const Allocations allocations({thisProgram()});
        void* const block = ::operator new(1);
        whileHeld = allocations.outstanding();
        ::operator delete(block);
        requests = allocations.requests();
        afterwards = allocations.outstanding();
    }
    EXPECT_EQ(requests, 1u);
    EXPECT_EQ(whileHeld, 1u);
    EXPECT_EQ(afterwards, 0u);
}

TEST(Allocations, lets_the_chosen_request_fail) {
    bool failedEarly = true;
    bool secondFailed = false;
    bool failed = false;
    {
        Allocations allocations({thisProgram()});
        allocations.failRequest(2);
        takeAndGiveBack();
        failedEarly = allocations.hasFailed();
        try {
            takeAndGiveBack();
        } catch (const std::bad_alloc&) {
            secondFailed = true;
        }
        failed = allocations.hasFailed();
    }
    EXPECT_FALSE(failedEarly);
    EXPECT_TRUE(secondFailed);
    EXPECT_TRUE(failed);
}

TEST(Allocations, ignores_blocks_that_were_taken_before_it) {
    void* const block = ::operator new(1);
    std::size_t outstanding = 1;
    {
        const Allocations allocations({thisProgram()});
        ::operator delete(block);
        outstanding = allocations.outstanding();
    }
    EXPECT_EQ(outstanding, 0u);
}

TEST(Allocations, adds_up_the_sizes_of_outstanding_blocks) {
    std::size_t whileHeld = 0;
    std::size_t afterwards = 0;
    {
        const Allocations allocations({thisProgram()});
        void* const large = ::operator new(1000);
        void* const small = ::operator new(24);
        whileHeld = allocations.outstandingBytes();
        ::operator delete(large);
        afterwards = allocations.outstandingBytes();
        ::operator delete(small);
    }
    EXPECT_EQ(whileHeld, 1024u);
    EXPECT_EQ(afterwards, 24u);
}

} // namespace
} // namespace tests
