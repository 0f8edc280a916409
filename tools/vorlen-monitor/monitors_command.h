#pragma once

#include "vorlen/monitor.h"

#include <nlohmann/json_fwd.hpp>

#include <string>
#include <vector>

namespace vorlen::tool {

// Every monitor of the desktop, in the library's order, also when their number changes meanwhile.
std::vector<MonitorListItem> readMonitors(decltype(::getMonitorList)* getMonitorList);

// For a person: one line per monitor under a line of headings, or a sentence when there is none.
std::string monitorsTable(const std::vector<MonitorListItem>& monitors);

// For a program: an array with one object per monitor. Its keys are the fields' names.
nlohmann::ordered_json monitorsJson(const std::vector<MonitorListItem>& monitors);

} // namespace vorlen::tool
