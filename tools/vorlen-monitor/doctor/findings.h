#pragma once

#include "tools/vorlen-monitor/doctor/examination.h"
#include "tools/vorlen-monitor/doctor/finding.h"

#include <span>
#include <vector>

// The doctor's findings: one function for each. Every function leaves the code of its findings
// empty. docs/support.md has a section for each code.
namespace vorlen::tool {

struct FindingRule {
    const char* code;
    std::vector<Finding> (*find)(const Examination& examination);
};

// Every function with its code, in the order in which findings of one severity are shown.
std::span<const FindingRule> findingRules();

// All findings, the most severe first.
std::vector<Finding> examine(const Examination& examination);

// Why no kit monitor is recognised (recognition_findings.cpp). The last two also report when one
// is.
std::vector<Finding> noKitMonitor(const Examination& examination);
std::vector<Finding> kitNameDiffers(const Examination& examination);
std::vector<Finding> genericName(const Examination& examination);
std::vector<Finding> missingName(const Examination& examination);
std::vector<Finding> displayConfigurationFailed(const Examination& examination);
std::vector<Finding> clonedMonitor(const Examination& examination);

// The display mode of the kit monitor (mode_findings.cpp). The first reports other monitors, too.
std::vector<Finding> unreadableMonitor(const Examination& examination);
std::vector<Finding> resolutionTooLow(const Examination& examination);
std::vector<Finding> refreshRateTooLow(const Examination& examination);
std::vector<Finding> refreshRateBelow60(const Examination& examination);
std::vector<Finding> interlacedMode(const Examination& examination);

// What happens to the picture on its way to the panel of the kit monitor (picture_findings.cpp).
std::vector<Finding> rotatedPicture(const Examination& examination);
std::vector<Finding> scaledPicture(const Examination& examination);
std::vector<Finding> notThePanelSize(const Examination& examination);
std::vector<Finding> colourNotRgb(const Examination& examination);
std::vector<Finding> notExamined(const Examination& examination);

// Session, process and identities (desktop_findings.cpp).
std::vector<Finding> remoteSession(const Examination& examination);
std::vector<Finding> scaledCoordinates(const Examination& examination);
std::vector<Finding> sameName(const Examination& examination);
std::vector<Finding> sameSerialNumber(const Examination& examination);
std::vector<Finding> wmiFailed(const Examination& examination);
std::vector<Finding> missingSerialNumber(const Examination& examination);

// Windows that a user may miss (window_findings.cpp).
std::vector<Finding> windowNotCapturable(const Examination& examination);
std::vector<Finding> windowNotListed(const Examination& examination);

} // namespace vorlen::tool
