#include "tools/vorlen-monitor/doctor/words.h"

#include "platform/text.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <charconv>

namespace vorlen::tool {

namespace {

constexpr std::size_t longestQuotation = 80; // units of UTF-16

struct NamedNumber {
    std::uint32_t number;
    const char* name;
};

// Those that the functions for displays document.
constexpr NamedNumber displayStatuses[] = {
    {ERROR_ACCESS_DENIED, "ERROR_ACCESS_DENIED"},
    {ERROR_GEN_FAILURE, "ERROR_GEN_FAILURE"},
    {ERROR_NOT_SUPPORTED, "ERROR_NOT_SUPPORTED"},
    {ERROR_INVALID_PARAMETER, "ERROR_INVALID_PARAMETER"},
    {ERROR_INSUFFICIENT_BUFFER, "ERROR_INSUFFICIENT_BUFFER"},
};

// Frequent ones of WMI.
constexpr NamedNumber results[] = {
    {0x80041003, "WBEM_E_ACCESS_DENIED"},     {0x8004100C, "WBEM_E_NOT_SUPPORTED"},
    {0x8004100E, "WBEM_E_INVALID_NAMESPACE"}, {0x80041010, "WBEM_E_INVALID_CLASS"},
    {0x80040154, "REGDB_E_CLASSNOTREG"},      {0x80070005, "E_ACCESSDENIED"},
    {0x80070422, "ERROR_SERVICE_DISABLED"},   {0x800706BA, "RPC_S_SERVER_UNAVAILABLE"},
    {0x80010106, "RPC_E_CHANGED_MODE"},
};

constexpr NamedNumber connections[] = {
    {static_cast<std::uint32_t>(DISPLAYCONFIG_OUTPUT_TECHNOLOGY_HD15), "VGA"},
    {static_cast<std::uint32_t>(DISPLAYCONFIG_OUTPUT_TECHNOLOGY_DVI), "DVI"},
    {static_cast<std::uint32_t>(DISPLAYCONFIG_OUTPUT_TECHNOLOGY_HDMI), "HDMI"},
    {static_cast<std::uint32_t>(DISPLAYCONFIG_OUTPUT_TECHNOLOGY_DISPLAYPORT_EXTERNAL),
     "DisplayPort"},
    {static_cast<std::uint32_t>(DISPLAYCONFIG_OUTPUT_TECHNOLOGY_DISPLAYPORT_EMBEDDED),
     "embedded DisplayPort"},
    {static_cast<std::uint32_t>(DISPLAYCONFIG_OUTPUT_TECHNOLOGY_MIRACAST), "Miracast"},
    {static_cast<std::uint32_t>(DISPLAYCONFIG_OUTPUT_TECHNOLOGY_INDIRECT_WIRED),
     "an indirect connection, such as USB"},
    {static_cast<std::uint32_t>(DISPLAYCONFIG_OUTPUT_TECHNOLOGY_INDIRECT_VIRTUAL),
     "a virtual connection"},
    {static_cast<std::uint32_t>(DISPLAYCONFIG_OUTPUT_TECHNOLOGY_INTERNAL),
     "an internal connection"},
};

constexpr NamedNumber encodings[] = {
    {DISPLAYCONFIG_COLOR_ENCODING_RGB, "RGB"},
    {DISPLAYCONFIG_COLOR_ENCODING_YCBCR444, "YCbCr 4:4:4"},
    {DISPLAYCONFIG_COLOR_ENCODING_YCBCR422, "YCbCr 4:2:2"},
    {DISPLAYCONFIG_COLOR_ENCODING_YCBCR420, "YCbCr 4:2:0"},
    {DISPLAYCONFIG_COLOR_ENCODING_INTENSITY, "intensity"},
};

// Null for a number that the table does not have.
template <std::size_t count>
const char* nameIn(const NamedNumber (&table)[count], std::uint32_t number) {
    const auto* const found = std::ranges::find(table, number, &NamedNumber::number);
    return found != std::end(table) ? found->name : nullptr;
}

std::string withName(std::string number, const char* name) {
    return name != nullptr ? number + " (" + name + ")" : std::move(number);
}

} // namespace

std::string inQuotes(std::wstring_view text) {
    const std::string end = text.size() > longestQuotation ? "...\"" : "\"";
    return "\"" + toUtf8Lossy(text.substr(0, longestQuotation)) + end;
}

std::string enumerated(const std::vector<std::string>& texts) {
    std::string joined;
    for (const std::string& text : texts) {
        joined += (joined.empty() ? "" : ", ") + text;
    }
    return joined;
}

std::string sizeText(const Size& size) {
    return std::to_string(size.width) + " x " + std::to_string(size.height);
}

std::string modeText(const snapshot::DisplayMode& mode) {
    return sizeText({mode.width, mode.height}) + " at " + std::to_string(mode.frequency) + " Hz" +
           (mode.interlaced ? ", interlaced" : "");
}

std::optional<std::uint64_t> hundredthsOfHertz(const snapshot::Rational& rate) {
    if (rate.numerator == 0 || rate.denominator == 0) {
        return std::nullopt;
    }
    return (std::uint64_t{rate.numerator} * 100 + rate.denominator / 2) / rate.denominator;
}

std::string rateText(std::uint64_t hundredths) {
    std::string text = std::to_string(hundredths / 100);
    if (const std::uint64_t fraction = hundredths % 100; fraction != 0) {
        text += (fraction < 10 ? ".0" : ".") + std::to_string(fraction);
    }
    return text + " Hz";
}

std::string displayStatusText(std::int32_t status) {
    return withName("status " + std::to_string(status),
                    nameIn(displayStatuses, static_cast<std::uint32_t>(status)));
}

std::string resultText(std::int32_t result) {
    const auto bits = static_cast<std::uint32_t>(result);
    std::array<char, 8> digits{};
    const std::to_chars_result written =
        std::to_chars(digits.data(), digits.data() + digits.size(), bits, 16);
    return withName("0x" + std::string(digits.data(), written.ptr), nameIn(results, bits));
}

std::string connectionText(std::uint32_t outputTechnology) {
    const char* const name = nameIn(connections, outputTechnology);
    return name != nullptr ? name : "connection type " + std::to_string(outputTechnology);
}

std::string encodingText(std::uint32_t encoding) {
    const char* const name = nameIn(encodings, encoding);
    return name != nullptr ? name : "encoding " + std::to_string(encoding);
}

} // namespace vorlen::tool
