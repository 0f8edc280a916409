#pragma once

#include "snapshot/reading.h"

#include <string>

namespace vorlen::tool {

// Reads the desktop, with the reasons and versions of the libraries, which are loaded for it and
// not initialised. Throws a Failure when a library cannot be loaded.
snapshot::Reading readLiveDesktop();

// The reading as a recording has it: with the kit models of this process, and redacted on request.
snapshot::Reading forRecording(snapshot::Reading reading, bool redact);

// Writes a recording of the reading to a file, whose name is UTF-8. Throws a Failure when it cannot
// be written; an existing file is unchanged then.
void writeRecording(const snapshot::Reading& reading, const std::string& fileName);

// What the recording contains, in two lines.
std::string recordingSummary(const snapshot::Reading& reading, const std::string& fileName);

} // namespace vorlen::tool
