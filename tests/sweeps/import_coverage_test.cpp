#include "simulation/loaded_image.h"
#include "tests/fixtures/mangled_names.h"
#include "tests/fixtures/module_under_test.h"
#include "tests/support/simulation.h"
#include "tests/sweeps/failures.h"
#include "tests/sweeps/operations.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <set>
#include <string>

namespace tests {
namespace {

struct Exclusion {
    const char* reason;
    std::set<std::string> functions;
};

// What the sweeps leave out, and why.
const Exclusion exclusions[] = {
    {"has no way to fail",
     {"AcquireSRWLockExclusive", "ReleaseSRWLockExclusive", "GetLastError", "SetLastError",
      "TlsGetValue", "WakeAllConditionVariable", "SleepConditionVariableSRW", "CoUninitialize",
      "VariantInit", "SysFreeString", "SysStringLen", "SafeArrayGetDim",
      "FreeLibraryAndExitThread"}},
    {"never fails on a system that the library runs on",
     {"QueryPerformanceCounter", "QueryPerformanceFrequency"}},
    {"fails only for what the library does not hand to it: a variant or an array that is in use",
     {"VariantClear", "SafeArrayUnaccessData"}},
    {"gives back a reference that the library has, where a thread could not be started",
     {"FreeLibrary"}},
    {"fails in the allocation sweep", {"malloc", "calloc", "realloc"}},
    {"is called while the library is loaded or unloaded, before and after its table can be changed",
     {"FlsAlloc", "FlsFree", "TlsAlloc", "TlsFree", "Vorlen_RegisterModuleVersion",
      "Vorlen_RegisterModuleInit", "Vorlen_RegisterModuleCleanup", mangled::registerMonitorWrapper,
      mangled::registerWindowEnumWrapper, mangled::constructLogger, mangled::destroyLogger}},
    {"is called by a member of the service to which no export, table or event leads",
     {mangled::setMonitorName}},
    {"is called where an exception is thrown, and cannot be reported by another one",
     {"FlsGetValue", "FlsSetValue", "GetProcessHeap", "HeapAlloc", "HeapFree", "RaiseException",
      "RtlCaptureContext", "RtlLookupFunctionEntry", "RtlUnwindEx", "RtlVirtualUnwind"}},
    {"belongs to the start of the C library",
     {"DeleteCriticalSection", "EnterCriticalSection", "InitializeCriticalSection",
      "LeaveCriticalSection", "GetCurrentThreadId", "GetSystemTimeAsFileTime", "GetModuleHandleW",
      "GetProcAddress", "LoadLibraryW", "Sleep", "VirtualProtect", "VirtualQuery"}},
    {"belongs to the texts of std::system_error, which is complete without the system's",
     {"FormatMessageA", "IsDBCSLeadByteEx", "LocalFree", "MultiByteToWideChar",
      "WideCharToMultiByte"}},
    {"belongs to the thread library of the toolchain, which the library does not use",
     {"CreateEventA", "GetTickCount64", "SetEvent", "WaitForMultipleObjects"}},
};

// Beside memory and threads, the library asks the C library only for what cannot fail, such as
// copying and comparing; what else is imported serves the toolchain's own libraries.
bool isHarmlessPartOfCLibrary(const Import& import) {
    return import.library == "msvcrt.dll" && import.function != "_beginthreadex";
}

bool isExcluded(const Import& import) {
    return isHarmlessPartOfCLibrary(import) ||
           std::any_of(std::begin(exclusions), std::end(exclusions),
                       [&](const Exclusion& exclusion) {
                           return exclusion.functions.contains(import.function);
                       });
}

TEST(Imports, fail_in_the_sweeps_or_are_excluded_with_a_reason) {
    const ModuleUnderTest module;
    const auto imports = LoadedImage(module.image()).imports();
    ASSERT_GT(imports.size(), 100u);
    const auto failing = failingCalls();
    for (const Import& import : imports) {
        const bool fails = std::any_of(failing.begin(), failing.end(), [&](const auto& call) {
            return call.import == import.function;
        });
        EXPECT_NE(fails, isExcluded(import))
            << import.function << " of " << import.library
            << (fails ? " fails in the sweeps and is excluded from them"
                      : " neither fails in the sweeps nor is it excluded from them");
    }
}

// A call that no operation makes would never be seen to fail.
TEST(FailingCalls, are_each_made_by_an_operation) {
    SweepWorld world;
    world.start();
    // Those of the first start of the library, too.
    const auto first = world.desktop.journal.calls();
    std::set<std::string> made(first.begin(), first.end());
    world.stop();
    for (const Operation& operation : operations()) {
        prepare(world, operation);
        operation.run(world);
        const auto calls = world.desktop.journal.calls();
        made.insert(calls.begin(), calls.end());
        world.stop();
    }
    for (const FailingCall& failing : failingCalls()) {
        EXPECT_TRUE(made.contains(failing.call)) << failing.call;
    }
}

} // namespace
} // namespace tests
