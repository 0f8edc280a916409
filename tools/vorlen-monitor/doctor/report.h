#pragma once

#include "tools/vorlen-monitor/doctor/finding.h"
#include "tools/vorlen-monitor/status_command.h"

#include <nlohmann/json_fwd.hpp>

#include <string>
#include <vector>

namespace vorlen::tool {

// As the doctor shows it, such as "error".
const char* nameOf(Severity severity);

// The outcome of the check as one line, then the findings, numbered, in lines of at most 100
// characters.
std::string doctorText(const MonitorStatus& status, const std::vector<Finding>& findings);

// The same as one object: "status" is that of statusJson(), "findings" an array.
nlohmann::ordered_json doctorJson(const MonitorStatus& status,
                                  const std::vector<Finding>& findings);

// Whether a finding is an error.
bool prevents3d(const std::vector<Finding>& findings);

} // namespace vorlen::tool
