#pragma once

#include "runtime/registration.h"

namespace vorlen {

// The function tables that the module registers with the runtime, which copies them.
MonitorWrapper makeMonitorWrapper();
WindowEnumWrapper makeWindowEnumWrapper();

} // namespace vorlen
