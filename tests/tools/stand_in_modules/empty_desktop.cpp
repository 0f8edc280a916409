#include "vorlen/monitor.h"

int getMonitorList(MonitorListItem*, int32_t) {
    return 0;
}
