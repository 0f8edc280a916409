#include "vorlen/monitor.h"

#include <new>

int getMonitorList(MonitorListItem*, int32_t) {
    throw std::bad_alloc();
}
