#pragma once

#include "vorlen/status.h"

namespace vorlen {

// The outcome of the last MonitorData::checkMonitorStatus of the process; UNKNOWN_STATUS before the
// first. Outlives the service. Service thread.
VLStatus lastMonitorStatus();

} // namespace vorlen
