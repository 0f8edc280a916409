#pragma once

#include "snapshot/reading.h"

#include <string>

namespace vorlen::tool {

// The reading in a file that `vorlen-monitor record` or a person has written. Throws a Failure that
// names the file when it cannot be read or is not a recording.
snapshot::Reading readRecording(const std::string& file);

} // namespace vorlen::tool
