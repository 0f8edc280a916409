#include "tests/sweeps/failing_imports.h"

#include <process.h>

#include <cerrno>

namespace tests {

FailingImports::FailingImports(HMODULE image, Journal& calls)
    : journal(calls), beginRedirect(image, "_beginthreadex", addressOf(beginThread)),
      waitRedirect(image, "WaitForSingleObject", addressOf(waitFor)),
      closeRedirect(image, "CloseHandle", addressOf(close)),
      slotRedirect(image, "TlsSetValue", addressOf(setThreadSlot)),
      imageRedirect(image, "GetModuleHandleExW", addressOf(findImage)) {}

std::uintptr_t __cdecl FailingImports::beginThread(void* security, unsigned stackSize,
                                                   Procedure procedure, void* parameter,
                                                   unsigned flags, unsigned* threadId) {
    if (const auto error = get().journal.enter("_beginthreadex")) {
        errno = static_cast<int>(*error);
        return 0;
    }
    return _beginthreadex(security, stackSize, procedure, parameter, flags, threadId);
}

// Waits all the same, so that the thread has ended before the next operation.
DWORD WINAPI FailingImports::waitFor(HANDLE object, DWORD timeout) {
    const auto error = get().journal.enter("WaitForSingleObject");
    const DWORD result = WaitForSingleObject(object, timeout);
    if (error) {
        SetLastError(static_cast<DWORD>(*error));
        return WAIT_FAILED;
    }
    return result;
}

BOOL WINAPI FailingImports::close(HANDLE object) {
    const bool fails = get().journal.enter("CloseHandle").has_value();
    const BOOL result = CloseHandle(object);
    return fails ? FALSE : result;
}

// The system may lack the memory for a thread's slots when the first value is stored, but has it
// for taking that value out again.
BOOL WINAPI FailingImports::setThreadSlot(DWORD index, void* value) {
    if (value != nullptr && get().journal.enter("TlsSetValue")) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return FALSE;
    }
    return TlsSetValue(index, value);
}

BOOL WINAPI FailingImports::findImage(DWORD flags, LPCWSTR address, HMODULE* image) {
    if (const auto error = get().journal.enter("GetModuleHandleExW")) {
        SetLastError(static_cast<DWORD>(*error));
        return FALSE;
    }
    // The simulated desktop's.
    auto* const find = reinterpret_cast<decltype(findImage)*>(get().imageRedirect.original());
    return find(flags, address, image);
}

} // namespace tests
