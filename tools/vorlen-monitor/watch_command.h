#pragma once

#include "tools/vorlen-monitor/changes.h"
#include "tools/vorlen-monitor/command_line.h"
#include "tools/vorlen-monitor/libraries.h"
#include "tools/vorlen-monitor/output.h"
#include "tools/vorlen-monitor/windows_command.h"
#include "vorlen/monitor.h"

#include <string>

namespace vorlen::tool {

// Prints a line for each monitor or window that is there at first, appears, changes or goes, until
// the time is over or Ctrl+C ends it. Retrieves messages on the calling thread, the service's, and
// restarts the list of windows once a second unless the options forbid it.
void watch(const Service& service, const WatchOptions& options, const Output& output);

// What brought a change of the windows to light: the library's list, which follows events, or its
// restart, which finds what no event had reported.
enum class WindowSource { events, restart };

// The lines, with their line feed: for a person, or one JSON object.
std::string changeLine(Change change, const MonitorListItem& monitor, bool json);
std::string changeLine(Change change, const WindowRow& window, WindowSource source, bool json);

} // namespace vorlen::tool
