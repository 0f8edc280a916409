#include "tests/support/account.h"
#include "tests/support/failures_of.h"
#include "tests/support/wine_test.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <new>

namespace tests {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

std::vector<std::string> failuresAgainst(const Account& account) {
    return failuresOf([&] { account.expectSettled(0ms); });
}

using AccountUnderWine = WineTest;

TEST_F(AccountUnderWine, is_settled_when_everything_was_freed) {
    const Account account;
    ::operator delete(::operator new(1));
    CloseHandle(CreateEventW(nullptr, FALSE, FALSE, nullptr));
    TlsFree(TlsAlloc());
    account.expectSettled(0ms);
}

TEST_F(AccountUnderWine, reports_memory_that_was_kept) {
    const Account account;
    void* const block = ::operator new(12345);
    const auto failures = failuresAgainst(account);
    EXPECT_THAT(failures, ElementsAre(HasSubstr("blocks of these sizes: 12345")));
    ::operator delete(block);
}

TEST_F(AccountUnderWine, reports_memory_that_is_missing) {
    void* const block = ::operator new(1);
    const Account account;
    ::operator delete(block);
    const auto failures = failuresAgainst(account);
    EXPECT_THAT(failures, ElementsAre(HasSubstr("blocks of the C library's heap are taken")));
}

TEST_F(AccountUnderWine, allows_blocks_that_are_left_on_purpose) {
    const Account account;
    void* const block = ::operator new(1);
    expectBlocksLeft(1);
    account.expectSettled(0ms);
    ::operator delete(block);
    const auto failures = failuresAgainst(account);
    EXPECT_THAT(failures, ElementsAre(HasSubstr("1 more are expected")));
    expectBlocksLeft(0);
}

TEST_F(AccountUnderWine, reports_a_handle_that_was_kept) {
    const Account account;
    const HANDLE event = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    const auto failures = failuresAgainst(account);
    EXPECT_THAT(failures, ElementsAre(HasSubstr("a handle was not closed")));
    CloseHandle(event);
}

TEST_F(AccountUnderWine, reports_a_thread_slot_that_was_kept) {
    const Account account;
    const DWORD slot = TlsAlloc();
    const auto failures = failuresAgainst(account);
    EXPECT_THAT(failures, ElementsAre(HasSubstr("a slot of thread-local storage")));
    TlsFree(slot);
}

// What an account reports of code that gives nothing back.
std::vector<std::string> failuresOfLeaks(bool systemHasAccounts) {
    const Account account(systemHasAccounts);
    void* const block = ::operator new(1);
    const HANDLE event = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    const DWORD slot = TlsAlloc();
    std::vector<std::string> failures = failuresAgainst(account);
    TlsFree(slot);
    CloseHandle(event);
    ::operator delete(block);
    return failures;
}

TEST_F(AccountUnderWine, reports_each_kind_that_was_kept) {
    EXPECT_THAT(failuresOfLeaks(true), SizeIs(3));
}

TEST(AccountOnWindows, counts_nothing_of_the_process) {
    EXPECT_THAT(failuresOfLeaks(false), IsEmpty());
}

} // namespace
} // namespace tests
