#include "tools/vorlen-monitor/doctor/report.h"

#include "platform/safe_text.h"
#include "tools/vorlen-monitor/text.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <string_view>

namespace vorlen::tool {

namespace {

constexpr std::size_t lineLength = 100; // characters

// The head and the text, broken between words. Every further line is indented by the head's
// length. A word that does not fit into a line stays whole.
std::string paragraph(const std::string& head, std::string_view text) {
    std::string result;
    std::string line = head;
    bool atStart = true;
    while (!text.empty()) {
        const std::string_view word = text.substr(0, text.find(' '));
        text.remove_prefix(std::min(text.size(), word.size() + 1));
        if (!atStart && characterCount(line) + 1 + characterCount(word) > lineLength) {
            result += line + "\n";
            line = std::string(head.size(), ' ');
            atStart = true;
        }
        line += (atStart ? "" : " ") + std::string(word);
        atStart = false;
    }
    return result + line + "\n";
}

std::string findingText(std::size_t number, const Finding& finding) {
    return std::to_string(number) + ". " + nameOf(finding.severity) + " " + finding.code + "\n" +
           paragraph("   Seen:    ", spellControls(finding.seen)) +
           paragraph("   Meaning: ", finding.meaning) +
           paragraph("   Advice:  ", spellControls(finding.advice));
}

} // namespace

const char* nameOf(Severity severity) {
    switch (severity) {
    case Severity::error:
        return "error";
    case Severity::warning:
        return "warning";
    case Severity::note:
        break;
    }
    return "note";
}

std::string doctorText(const MonitorStatus& status, const std::vector<Finding>& findings) {
    std::string text = statusLine(status.code) + "\n";
    if (findings.empty()) {
        return text + "\nNo findings.\n";
    }
    std::size_t number = 0;
    for (const Finding& finding : findings) {
        text += "\n" + findingText(++number, finding);
    }
    return text;
}

nlohmann::ordered_json doctorJson(const MonitorStatus& status,
                                  const std::vector<Finding>& findings) {
    auto array = nlohmann::ordered_json::array();
    for (const Finding& finding : findings) {
        array.push_back({{"code", finding.code},
                         {"severity", nameOf(finding.severity)},
                         {"seen", finding.seen},
                         {"meaning", finding.meaning},
                         {"advice", finding.advice}});
    }
    return {{"status", statusJson(status)}, {"findings", array}};
}

bool prevents3d(const std::vector<Finding>& findings) {
    return std::ranges::any_of(
        findings, [](const Finding& finding) { return finding.severity == Severity::error; });
}

} // namespace vorlen::tool
