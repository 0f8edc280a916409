// Part of every test program, to make it end as a failure when it crashes: under Wine's debugger
// one that crashed on a thread other than its first can end with exit code 0.

#include <windows.h>

#include <cstdio>

namespace {

constexpr UINT crashExitCode = 3;

LONG WINAPI endProgram(EXCEPTION_POINTERS* exception) {
    // Not buffered, so that it is out before the end.
    static_cast<void>(std::fprintf(stderr, "The test program crashed: exception 0x%08lX at %p\n",
                                   exception->ExceptionRecord->ExceptionCode,
                                   exception->ExceptionRecord->ExceptionAddress));
    TerminateProcess(GetCurrentProcess(), crashExitCode);
    return EXCEPTION_CONTINUE_SEARCH;
}

[[maybe_unused]] const auto previousFilter = SetUnhandledExceptionFilter(endProgram);

} // namespace
