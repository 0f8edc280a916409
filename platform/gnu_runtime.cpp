// Replaces parts of libstdc++ that cost too much when they are linked statically into a DLL. Most
// of them leak when the DLL is unloaded: a process that loads and unloads it many times would grow.
//
// Symbol                       What libstdc++'s definition costs
// __cxa_guard_acquire,
// __cxa_guard_release,
// __cxa_guard_abort            leak a mutex and a condition variable for function-local statics
// __cxa_get_globals,
// __cxa_get_globals_fast       leak 13 heap blocks, a TLS slot and 4 handles of a thread_local, in
//                              each image that has thrown an exception
// steady_clock::now            leaks nothing; reads the performance counter through the library for
//                              POSIX threads: 26 KB in every image that uses the clock
// __verbose_terminate_handler  leaks nothing; prints the exception and thereby adds a demangler and
//                              formatted output to every image: 72 KB. The message is the host's
//
// The linker uses the definitions of this file because object files are linked before archives: it
// takes a member of libstdc++.a only for a symbol that is still undefined. In addition, __freeres
// frees the 73 KB that libstdc++ reserves for exceptions that are thrown when memory is exhausted.
//
// Checked with the libstdc++ of GCC 12, linked by GCC 12 and by Clang 14 with lld 14. For another
// version: check that the layouts of __cxa_eh_globals and of guards are the same, check in the map
// file of a DLL that only this file defines the symbols above, and run the tests `soak`,
// `soak_real` and `lifecycle`.

#include <windows.h>

#include <cxxabi.h>

#include <atomic>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <exception>

#if _GLIBCXX_RELEASE != 12
#error "checked with the libstdc++ of GCC 12 only: see above what to check, then change this line"
#endif

namespace __gnu_cxx {
// NOLINTNEXTLINE(bugprone-reserved-identifier): the name is libstdc++'s
void __freeres();

void __verbose_terminate_handler() {
    std::abort();
}
} // namespace __gnu_cxx

// As libstdc++'s version: the ticks of the performance counter in nanoseconds, rounded down.
std::chrono::steady_clock::time_point std::chrono::steady_clock::now() noexcept {
    LARGE_INTEGER perSecond;
    LARGE_INTEGER ticks;
    QueryPerformanceFrequency(&perSecond);
    QueryPerformanceCounter(&ticks);
    // Divided first, because the product of all ticks and 10^9 has more than 64 bits.
    const seconds whole(ticks.QuadPart / perSecond.QuadPart);
    const long long rest = ticks.QuadPart % perSecond.QuadPart;
    return time_point(whole + nanoseconds(rest * std::nano::den / perSecond.QuadPart));
}

namespace {

const struct ExceptionPool {
    ExceptionPool() = default;
    ~ExceptionPool() { __gnu_cxx::__freeres(); }
    ExceptionPool(const ExceptionPool&) = delete;
    ExceptionPool& operator=(const ExceptionPool&) = delete;
} exceptionPool;

void WINAPI forgetExceptions(void* ofThread) {
    HeapFree(GetProcessHeap(), 0, ofThread);
}

// Not a member of the slot, so that it can be read after the slot has been destroyed.
bool exceptionSlotIsFreed = false;

// The slot that holds a pointer to each thread's exceptions. It is a fiber-local slot: its
// callback frees a thread's memory when the thread ends or the slot is freed. A process has few
// fiber-local slots. If none is left, a thread-local slot is used, which leaks 16 bytes for each
// thread that has thrown.
class ExceptionSlot {
public:
    ExceptionSlot()
        : fiberIndex(FlsAlloc(forgetExceptions)),
          threadIndex(isOfFibers() ? TLS_OUT_OF_INDEXES : TlsAlloc()) {}
    ~ExceptionSlot() {
        exceptionSlotIsFreed = true;
        isOfFibers() ? FlsFree(fiberIndex) : TlsFree(threadIndex);
    }
    ExceptionSlot(const ExceptionSlot&) = delete;
    ExceptionSlot& operator=(const ExceptionSlot&) = delete;

    void* get() const { return isOfFibers() ? FlsGetValue(fiberIndex) : TlsGetValue(threadIndex); }
    bool set(void* value) const {
        return (isOfFibers() ? FlsSetValue(fiberIndex, value) : TlsSetValue(threadIndex, value)) !=
               FALSE;
    }

private:
    bool isOfFibers() const { return fiberIndex != FLS_OUT_OF_INDEXES; }

    DWORD fiberIndex;
    DWORD threadIndex;
};

// Constructed before, and destroyed after, every other static object of the image.
[[gnu::init_priority(101)]] const ExceptionSlot exceptionSlot;

SRWLOCK guardLock{};
CONDITION_VARIABLE guardReleased{};

// A guard has 64 bits. Compiled code reads its first byte directly.
using Guard = std::int64_t;

std::uint8_t& isDone(Guard* guard) {
    return reinterpret_cast<std::uint8_t*>(guard)[0];
}

std::uint8_t& isInProgress(Guard* guard) {
    return reinterpret_cast<std::uint8_t*>(guard)[1];
}

void release(Guard* guard, std::uint8_t done) {
    AcquireSRWLockExclusive(&guardLock);
    std::atomic_ref(isDone(guard)).store(done, std::memory_order_release);
    isInProgress(guard) = 0;
    ReleaseSRWLockExclusive(&guardLock);
    WakeAllConditionVariable(&guardReleased);
}

} // namespace

// The one-time initialisation of function-local statics, as the C++ ABI defines it. libstdc++'s
// version creates locks that leak when the DLL is unloaded.
extern "C" int __cxa_guard_acquire(Guard* guard) {
    AcquireSRWLockExclusive(&guardLock);
    while (isDone(guard) == 0 && isInProgress(guard) != 0) {
        SleepConditionVariableSRW(&guardReleased, &guardLock, INFINITE, 0);
    }
    const int initialise = isDone(guard) == 0 ? 1 : 0;
    isInProgress(guard) = static_cast<std::uint8_t>(initialise);
    ReleaseSRWLockExclusive(&guardLock);
    return initialise;
}

extern "C" void __cxa_guard_release(Guard* guard) {
    release(guard, 1);
}

extern "C" void __cxa_guard_abort(Guard* guard) {
    release(guard, 0);
}

// The exceptions that a thread has thrown and caught, in the layout of the C++ ABI.
struct __cxxabiv1::__cxa_eh_globals {
    void* caught;
    unsigned uncaughtCount;
};

// libstdc++'s version is a thread_local, whose heap blocks, TLS slot and handles leak when the DLL
// is unloaded.
extern "C" __cxxabiv1::__cxa_eh_globals* __cxxabiv1::__cxa_get_globals() noexcept {
    using Globals = __cxxabiv1::__cxa_eh_globals;
    if (exceptionSlotIsFreed) {
        // Only the thread that unloads the image or ends the process still runs code of the image.
        static constinit Globals atTheEnd{};
        return &atTheEnd;
    }
    const DWORD lastError = GetLastError();
    auto* globals = static_cast<Globals*>(exceptionSlot.get());
    if (globals == nullptr) {
        globals =
            static_cast<Globals*>(HeapAlloc(GetProcessHeap(), HEAP_ZERO_MEMORY, sizeof(Globals)));
        if (globals == nullptr || !exceptionSlot.set(globals)) {
            std::terminate(); // as libstdc++ does
        }
    }
    SetLastError(lastError);
    return globals;
}

extern "C" __cxxabiv1::__cxa_eh_globals* __cxxabiv1::__cxa_get_globals_fast() noexcept {
    return __cxa_get_globals();
}
