#pragma once

#include <cstdint>

namespace vorlen {

enum VLStatus : std::int32_t; // in full in vorlen/status.h, at the price of a copy of its tables

// The outcome of the last MonitorData::checkMonitorStatus of the process; UNKNOWN_STATUS before the
// first. Outlives the service. Service thread.
VLStatus lastMonitorStatus();

} // namespace vorlen
