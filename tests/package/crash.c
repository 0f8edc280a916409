/* A host that crashes inside the library: it gives it an address where nothing can be written. The
 * address of the fault is printed relative to the library. */
#include "vorlen/monitor.h"
#include "vorlen/runtime.h"

#include <windows.h>

#include <stdio.h>

static LONG CALLBACK report(EXCEPTION_POINTERS* fault) {
    const char* const base = (const char*)GetModuleHandleA("libvorlen_monitor.dll");
    const char* const address = (const char*)fault->ExceptionRecord->ExceptionAddress;
    if (fault->ExceptionRecord->ExceptionCode != EXCEPTION_ACCESS_VIOLATION) {
        return EXCEPTION_CONTINUE_SEARCH;
    }
    printf("0x%llx\n", (unsigned long long)(address - base));
    (void)fflush(stdout);
    ExitProcess(0);
}

int main(void) {
    if (!Vorlen_Initialize()) {
        return 1;
    }
    AddVectoredExceptionHandler(1, report);
    (void)getMonitorList((MonitorListItem*)8, 1);
    return 2; /* it did not crash */
}
