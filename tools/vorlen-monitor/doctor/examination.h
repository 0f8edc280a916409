#pragma once

#include "snapshot/reading.h"
#include "tools/vorlen-monitor/status_command.h"
#include "vorlen/monitor.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vorlen::tool {

// What the doctor examines: one reading of the desktop, and the library's answers on it.
struct Examination {
    snapshot::Reading reading;
    std::vector<MonitorListItem> monitors; // the library's list
    std::vector<void*> listedWindows;      // handles of the library's list
    MonitorStatus status;
    std::vector<std::wstring> kitModels; // those of VORLEN_KIT_MODELS and --kit-model
};

// The names in the value of VORLEN_KIT_MODELS, which ';' separates.
std::vector<std::wstring> kitModelsIn(std::wstring_view variable);

// Whether the library's check judged the monitor with this handle.
bool isJudged(const Examination& examination, std::uint64_t handle);

// Whether a monitor of this name is one of the given kit models.
bool namesKitModel(const Examination& examination, std::wstring_view friendlyName);

} // namespace vorlen::tool
