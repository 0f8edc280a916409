#include "tests/soak/process_state.h"
#include "tests/soak/system_counts.h"
#include "tests/support/library.h"
#include "tests/support/wine_test.h"

#include <windows.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string>
#include <vector>

namespace tests {
namespace {

using testing::HasSubstr;

struct Leak {
    const char* name;
    std::vector<std::string> reportedAs;
    void* (*take)();
    void (*give)(void* taken);
};

void close(void* handle) {
    CloseHandle(handle);
}

void* toPointer(DWORD slot) {
    return reinterpret_cast<void*>(static_cast<std::uintptr_t>(slot));
}

DWORD toSlot(void* pointer) {
    return static_cast<DWORD>(reinterpret_cast<std::uintptr_t>(pointer));
}

void* takeWindow() {
    return CreateWindowW(L"STATIC", L"", WS_CHILD, 0, 0, 1, 1, HWND_MESSAGE, nullptr, nullptr,
                         nullptr);
}

void CALLBACK ignoreEvent(HWINEVENTHOOK, DWORD, HWND, LONG, LONG, DWORD, DWORD) {}

void* takeEventHook() {
    return SetWinEventHook(EVENT_OBJECT_SHOW, EVENT_OBJECT_SHOW, nullptr, ignoreEvent, 0, 0,
                           WINEVENT_OUTOFCONTEXT);
}

DWORD WINAPI returnAtOnce(void*) {
    return 0;
}

void* takeThread() {
    return CreateThread(nullptr, 0, returnAtOnce, nullptr, CREATE_SUSPENDED, nullptr);
}

void giveThread(void* thread) {
    ResumeThread(thread);
    WaitForSingleObject(thread, INFINITE);
    CloseHandle(thread);
}

const std::vector<Leak> leaks = {
    {"CHeap",
     {"blocks of the C library's heap", "bytes of the C library's heap"},
     [] { return std::malloc(1); },
     std::free},
    {"ProcessHeap",
     {"blocks of the process heap", "bytes of the process heap"},
     [] { return HeapAlloc(GetProcessHeap(), 0, 1); },
     [](void* block) {
         HeapFree(GetProcessHeap(), 0, block);
     }},
    {"PrivateMemory",
     {"committed private memory"},
     [] { return VirtualAlloc(nullptr, 1, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE); },
     [](void* page) {
         VirtualFree(page, 0, MEM_RELEASE);
     }},
    {"Handle", {"handles: "}, [] { return CreateEventW(nullptr, TRUE, FALSE, nullptr); }, close},
    {"Menu",
     {"next user object"},
     [] { return static_cast<void*>(CreateMenu()); },
     [](void* menu) {
         DestroyMenu(static_cast<HMENU>(menu));
     }},
    {"Window",
     {"next user object"},
     takeWindow,
     [](void* window) {
         DestroyWindow(static_cast<HWND>(window));
     }},
    {"EventHook",
     {"next user object"},
     takeEventHook,
     [](void* hook) {
         UnhookWinEvent(static_cast<HWINEVENTHOOK>(hook));
     }},
    {"ThreadSlot",
     {"thread slots"},
     [] { return toPointer(TlsAlloc()); },
     [](void* slot) {
         TlsFree(toSlot(slot));
     }},
    {"FiberSlot",
     {"fiber slots"},
     [] { return toPointer(FlsAlloc(nullptr)); },
     [](void* slot) {
         FlsFree(toSlot(slot));
     }},
    {"Thread", {"threads", "handles: "}, takeThread, giveThread},
};

using ProcessStateUnderWine = WineTest;

// What is not reported would never be noticed.
TEST_F(ProcessStateUnderWine, reports_a_cycle_that_keeps_something) {
    for (const Leak& leak : leaks) {
        SCOPED_TRACE(leak.name);
        std::array<void*, 300> taken{};
        std::size_t count = 0;
        const testing::AssertionResult result =
            leavesNothingBehind(200, [&] { taken.at(count++) = leak.take(); });
        std::for_each_n(taken.begin(), count, leak.give);
        EXPECT_FALSE(result);
        for (const std::string& name : leak.reportedAs) {
            EXPECT_THAT(result.message(), HasSubstr(name));
        }
    }
}

TEST_F(ProcessStateUnderWine, reports_an_image_that_stays_loaded) {
    const ProcessState before;
    const Library library(product("vorlen_runtime.dll"));
    EXPECT_THAT(ProcessState().otherDifferencesFrom(before),
                testing::Contains(HasSubstr("loaded images")));
}

// Not every system counts.
TEST_F(ProcessStateUnderWine, has_the_counts_of_a_system_that_counts) {
    const std::int64_t handles = systemHandleCount();
    const std::int64_t objects = systemUserObjectCount();
    const HANDLE event = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    const HMENU menu = CreateMenu();
    EXPECT_EQ(systemHandleCount(), handles > 0 ? handles + 1 : 0);
    EXPECT_EQ(systemUserObjectCount(), objects > 0 ? objects + 1 : 0);
    DestroyMenu(menu);
    CloseHandle(event);
}

TEST_F(ProcessStateUnderWine, is_the_same_after_a_cycle_that_gives_everything_back) {
    EXPECT_TRUE(leavesNothingBehind(10, [] {
        for (const Leak& leak : leaks) {
            leak.give(leak.take());
        }
    }));
}

} // namespace
} // namespace tests
