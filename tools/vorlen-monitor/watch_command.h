#pragma once

#include "tools/vorlen-monitor/changes.h"
#include "tools/vorlen-monitor/command_line.h"
#include "tools/vorlen-monitor/libraries.h"
#include "tools/vorlen-monitor/output.h"
#include "tools/vorlen-monitor/windows_command.h"
#include "vorlen/monitor.h"

#include <string>

namespace vorlen::tool {

// Prints a line for each monitor and window that exists at the start, appears, changes or
// disappears, until the duration has passed or Ctrl+C is pressed. Retrieves messages on the
// calling thread, the service thread. Restarts the window list once a second, unless eventsOnly is
// set.
void watch(const Service& service, const WatchOptions& options, const Output& output);

// How a change of the windows was found: in the list that follows events, or by its restart, which
// finds changes that no event had reported.
enum class WindowSource { events, restart };

// One line with its line feed: text, or one JSON object.
std::string changeLine(Change change, const MonitorListItem& monitor, bool json);
std::string changeLine(Change change, const WindowRow& window, WindowSource source, bool json);

} // namespace vorlen::tool
