#include "tools/vorlen-monitor/text.h"

#include "platform/safe_text.h"
#include "platform/text.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace vorlen::tool {

std::string fieldText(const VLChar16 (&field)[VORLEN_MONITOR_TEXT_UNITS]) {
    return toUtf8Lossy(untilZero({field, VORLEN_MONITOR_TEXT_UNITS}));
}

std::size_t characterCount(std::string_view text) {
    // Every code point has exactly one byte that is not a continuation byte.
    return static_cast<std::size_t>(std::ranges::count_if(
        text, [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; }));
}

std::string jsonText(const nlohmann::ordered_json& document) {
    return spellControlsInJson(document.dump(2)) + "\n";
}

} // namespace vorlen::tool
