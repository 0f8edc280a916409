#pragma once

#include <cstdint>

namespace vorlen {

enum VLStatus : std::int32_t; // vorlen/status.h defines it; each inclusion also makes two tables

// The outcome of the last MonitorData::checkMonitorStatus since the library was loaded;
// UNKNOWN_STATUS before the first. Also without a service. Service thread.
VLStatus lastMonitorStatus();

} // namespace vorlen
