#pragma once

#include "vorlen/monitor.h"

#include <nlohmann/json_fwd.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vorlen::tool {

class Service;

// The outcome of the check of the kit monitor.
struct MonitorStatus {
    bool ok = false;
    std::int32_t code = 0;
    std::optional<MonitorListItem> monitor; // the kit monitor; nothing when none was recognised
};

// Runs the check and reads its outcome.
MonitorStatus readStatus(const Service& service);

// The value of VORLEN_KIT_MODELS of this process: the kit models for the runtime, which ';'
// separates.
std::wstring kitModels();

// Replaces VORLEN_KIT_MODELS of this process. To be called before the libraries are loaded.
void setKitModels(const std::wstring& models);

// Adds the names to VORLEN_KIT_MODELS of this process. To be called before the libraries are
// loaded. Throws a Failure for a name that is empty or contains ';'.
void addKitModels(const std::vector<std::string>& names);

// The code with its name and short text, without a line feed.
std::string statusLine(std::int32_t code);

// The same, the advice for users, and the monitor as a table.
std::string statusText(const MonitorStatus& status);

// All of it as one object.
nlohmann::ordered_json statusJson(const MonitorStatus& status);

} // namespace vorlen::tool
