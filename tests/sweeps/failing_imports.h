#pragma once

#include "simulation/current.h"
#include "simulation/import_redirect.h"
#include "simulation/journal.h"
#include "tests/support/simulation.h"

#include <windows.h>

#include <cstdint>

namespace tests {

// The imports that a simulated desktop leaves to the system, made to fail as the journal plans it:
// threads, thread slots and references to the image. Each does its work first where leaving it
// undone would be a failure of the system that it does not have.
class FailingImports : private Current<FailingImports> {
public:
    FailingImports(HMODULE image, Journal& calls);

private:
    friend class Current<FailingImports>;
    using Procedure = unsigned(__stdcall*)(void*);
    static std::uintptr_t __cdecl beginThread(void* security, unsigned stackSize,
                                              Procedure procedure, void* parameter, unsigned flags,
                                              unsigned* threadId);
    static DWORD WINAPI waitFor(HANDLE object, DWORD timeout);
    static BOOL WINAPI close(HANDLE object);
    static BOOL WINAPI setThreadSlot(DWORD index, void* value);
    static BOOL WINAPI findImage(DWORD flags, LPCWSTR address, HMODULE* image);

    Journal& journal;
    ImportRedirect beginRedirect;
    ImportRedirect waitRedirect;
    ImportRedirect closeRedirect;
    ImportRedirect slotRedirect;
    ImportRedirect imageRedirect;
};

} // namespace tests
