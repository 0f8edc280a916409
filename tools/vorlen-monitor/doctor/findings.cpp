#include "tools/vorlen-monitor/doctor/findings.h"

#include <algorithm>

namespace vorlen::tool {

namespace {

constexpr FindingRule rules[] = {
    {"no-kit-monitor", noKitMonitor},
    {"kit-name-differs", kitNameDiffers},
    {"generic-name", genericName},
    {"missing-name", missingName},
    {"display-configuration-failed", displayConfigurationFailed},
    {"cloned-monitor", clonedMonitor},
    {"unreadable-monitor", unreadableMonitor},
    {"resolution-too-low", resolutionTooLow},
    {"refresh-rate-too-low", refreshRateTooLow},
    {"refresh-rate-below-60", refreshRateBelow60},
    {"interlaced-mode", interlacedMode},
    {"rotated-picture", rotatedPicture},
    {"scaled-picture", scaledPicture},
    {"not-the-panel-size", notThePanelSize},
    {"colour-not-rgb", colourNotRgb},
    {"not-examined", notExamined},
    {"remote-session", remoteSession},
    {"scaled-coordinates", scaledCoordinates},
    {"same-name", sameName},
    {"same-serial-number", sameSerialNumber},
    {"wmi-failed", wmiFailed},
    {"missing-serial-number", missingSerialNumber},
    {"window-not-capturable", windowNotCapturable},
    {"window-not-listed", windowNotListed},
};

} // namespace

std::span<const FindingRule> findingRules() {
    return rules;
}

std::vector<Finding> examine(const Examination& examination) {
    std::vector<Finding> findings;
    for (const FindingRule& rule : rules) {
        for (Finding& finding : rule.find(examination)) {
            finding.code = rule.code;
            findings.push_back(std::move(finding));
        }
    }
    std::ranges::stable_sort(findings, {}, &Finding::severity);
    return findings;
}

} // namespace vorlen::tool
