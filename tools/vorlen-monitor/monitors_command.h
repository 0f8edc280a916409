#pragma once

#include "vorlen/monitor.h"

#include <nlohmann/json_fwd.hpp>

#include <string>
#include <vector>

namespace vorlen::tool {

class Service;

// Every monitor of the desktop, in the order of the library.
std::vector<MonitorListItem> readMonitors(const Service& service);

// A table with a line of headings and a line for each monitor, or a sentence when the list is
// empty.
std::string monitorsTable(const std::vector<MonitorListItem>& monitors);

// An object whose keys are the names of the record's fields, and an array with one such object for
// each monitor.
nlohmann::ordered_json monitorJson(const MonitorListItem& monitor);
nlohmann::ordered_json monitorsJson(const std::vector<MonitorListItem>& monitors);

} // namespace vorlen::tool
