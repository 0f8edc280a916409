#include "tools/vorlen-monitor/json_text.h"

#include "platform/safe_text.h"

#include <nlohmann/json.hpp>

namespace vorlen::tool {

std::string jsonText(const nlohmann::ordered_json& document) {
    return spellControlsInJson(document.dump(2)) + "\n";
}

} // namespace vorlen::tool
