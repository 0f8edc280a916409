#pragma once

#include "vorlen/monitor.h"

#include <nlohmann/json_fwd.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vorlen::tool {

class Service;

// The outcome of a check of the kit monitor's settings.
struct MonitorStatus {
    bool ok = false;
    std::int32_t code = 0;
    std::optional<MonitorListItem> monitor; // the one that was judged; nothing when none was
};

// Runs the check.
MonitorStatus readStatus(const Service& service);

// Adds model names to those that the runtime recognises; before the libraries are loaded. Throws a
// Failure for a name that cannot be one.
void addKitModels(const std::vector<std::string>& names);

// For a person: the code with its name, what it means, what to do, and the monitor.
std::string statusText(const MonitorStatus& status);

// For a program: one object.
nlohmann::ordered_json statusJson(const MonitorStatus& status);

} // namespace vorlen::tool
