#pragma once

#include "runtime/registration.h"

namespace vorlen {

// The tables of functions that the runtime is given, ready to be copied.
MonitorWrapper makeMonitorWrapper();
WindowEnumWrapper makeWindowEnumWrapper();

} // namespace vorlen
