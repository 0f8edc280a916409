#pragma once

#include "vorlen/monitor.h"

#include <nlohmann/json_fwd.hpp>

#include <string>
#include <vector>

namespace vorlen::tool {

class Service;

// Every monitor of the desktop, in the library's order.
std::vector<MonitorListItem> readMonitors(const Service& service);

// For a person: one line per monitor under a line of headings, or a sentence when there is none.
std::string monitorsTable(const std::vector<MonitorListItem>& monitors);

// For a program: an object whose keys are the fields' names, or an array with one per monitor.
nlohmann::ordered_json monitorJson(const MonitorListItem& monitor);
nlohmann::ordered_json monitorsJson(const std::vector<MonitorListItem>& monitors);

} // namespace vorlen::tool
