#pragma once

#include "snapshot/reading.h"
#include "tools/vorlen-monitor/doctor/kit_monitor.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// Numbers and names as findings show them, in UTF-8.
namespace vorlen::tool {

// In quotation marks; cut when it is long.
std::string inQuotes(std::wstring_view text);

// Separated by commas.
std::string enumerated(const std::vector<std::string>& texts);

// Such as "3840 x 2160".
std::string sizeText(const Size& size);

// Such as "3840 x 2160 at 60 Hz".
std::string modeText(const snapshot::DisplayMode& mode);

// Hundredths of a hertz, rounded; nothing for a rate that the system does not know.
std::optional<std::uint64_t> hundredthsOfHertz(const snapshot::Rational& rate);

// Such as "59.94 Hz".
std::string rateText(std::uint64_t hundredths);

// A result of a function for displays, such as "status 87 (ERROR_INVALID_PARAMETER)".
std::string displayStatusText(std::int32_t status);

// Such as "0x80041003 (WBEM_E_ACCESS_DENIED)".
std::string resultText(std::int32_t result);

// The connection of a monitor, such as "HDMI".
std::string connectionText(std::uint32_t outputTechnology);

// Such as "YCbCr 4:2:0".
std::string encodingText(std::uint32_t encoding);

} // namespace vorlen::tool
