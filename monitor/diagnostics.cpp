#include "vorlen/diagnostics.h"

#include "monitor/windows/capture_filter.h"

namespace vorlen::monitor_internal {

const char* getWindowRefusal(void* window) {
    return findRefusal(WindowInfo(static_cast<HWND>(window)));
}

} // namespace vorlen::monitor_internal
