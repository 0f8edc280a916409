#include "vorlen/monitor.h"
#include "vorlen/runtime.h"

#include <stdio.h>

int main(void) {
    if (!Vorlen_Initialize()) {
        return 1;
    }
    printf("%d\n", getMonitorList(NULL, 0));
    Vorlen_Shutdown();
    return 0;
}
