// Replaces parts of GCC's C++ runtime. Linked statically into a library, the originals leak memory,
// handles and thread slots each time that a process loads and unloads the library.
//
// Symbol                       What the runtime's own definition costs
// __cxa_guard_acquire,
// __cxa_guard_release,
// __cxa_guard_abort            leaks a mutex and a condition variable for function-local statics
// __cxa_get_globals,
// __cxa_get_globals_fast       leak 13 heap blocks, a slot and 4 handles of a thread_local for each
//                              image that throws
// __verbose_terminate_handler  leaks nothing, but links a demangler and formatted output (72 KB) to
//                              print the exception; a host decides itself how it ends
//
// The linker takes our definitions because object files are linked before archives: it pulls a
// member of libstdc++.a only for a symbol that is still undefined. Beside that, __freeres gives
// back the 73 KB that the library sets aside for exceptions that are thrown when there is no
// memory.
//
// Checked with the libstdc++ of GCC 12, linked by GCC 12 and by Clang 14 with lld 14. With another
// version: see that the layout of __cxa_eh_globals and of guards is the same, that the symbols
// above are defined in the map file of a library by this file alone, and run the tests `soak`,
// `soak_real` and `lifecycle`.

#include <windows.h>

#include <cxxabi.h>

#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <exception>

#if _GLIBCXX_RELEASE != 12
#error "checked with the libstdc++ of GCC 12 only: see above what to check, then change this line"
#endif

// Memory that the library sets aside for exceptions that are thrown when there is none left.
namespace __gnu_cxx {
void __freeres();

void __verbose_terminate_handler() {
    std::abort();
}
} // namespace __gnu_cxx

namespace {

const struct ExceptionPool {
    ~ExceptionPool() { __gnu_cxx::__freeres(); }
} exceptionPool;

void WINAPI forgetExceptions(void* ofThread) {
    HeapFree(GetProcessHeap(), 0, ofThread);
}

// Not part of the slot, so that it can be read after the slot has been destroyed.
bool exceptionSlotIsFreed = false;

// The slot in which each thread finds its exceptions. The system gives back what a thread has there
// when the thread or the slot goes. A process has few such slots: should there be none left, it is
// one of another kind, in which 16 bytes stay behind for each thread that has thrown.
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

// Made before, and so destroyed after, everything else of the image that may throw.
[[gnu::init_priority(101)]] const ExceptionSlot exceptionSlot;

SRWLOCK guardLock{};
CONDITION_VARIABLE guardReleased{};

// A guard is 64 bits, of which compiled code looks at the first byte itself.
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

// The one-time initialisation of function-local statics, as the C++ ABI names it. The library's own
// makes locks that nobody ends.
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

// The exceptions that a thread has thrown and caught, as the C++ ABI lays them out.
struct __cxxabiv1::__cxa_eh_globals {
    void* caught;
    unsigned uncaughtCount;
};

// The library's own is a thread_local, for which it takes memory, a slot and handles in every image
// that throws, and never gives them back.
extern "C" __cxxabiv1::__cxa_eh_globals* __cxxabiv1::__cxa_get_globals() noexcept {
    using __cxxabiv1::__cxa_eh_globals;
    if (exceptionSlotIsFreed) {
        // The thread that unloads the image or ends the process is the only one left in here.
        static constinit __cxa_eh_globals atTheEnd{};
        return &atTheEnd;
    }
    const DWORD lastError = GetLastError();
    auto* globals = static_cast<__cxa_eh_globals*>(exceptionSlot.get());
    if (globals == nullptr) {
        globals = static_cast<__cxa_eh_globals*>(
            HeapAlloc(GetProcessHeap(), HEAP_ZERO_MEMORY, sizeof(__cxa_eh_globals)));
        if (globals == nullptr || !exceptionSlot.set(globals)) {
            std::terminate(); // as the library itself does
        }
    }
    SetLastError(lastError);
    return globals;
}

extern "C" __cxxabiv1::__cxa_eh_globals* __cxxabiv1::__cxa_get_globals_fast() noexcept {
    return __cxa_get_globals();
}
