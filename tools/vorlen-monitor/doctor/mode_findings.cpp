#include "platform/text.h"
#include "tools/vorlen-monitor/doctor/findings.h"
#include "tools/vorlen-monitor/doctor/kit_monitor.h"
#include "tools/vorlen-monitor/doctor/words.h"
#include "vorlen/status.h"

#include <windows.h>

namespace vorlen::tool {

namespace {

// What the monitor offers over its connection, as a sentence.
std::string offerText(const KitMonitor& kit) {
    const snapshot::DisplayMode* const best = bestOfferedMode(kit);
    if (best == nullptr) {
        return " Windows lists no mode that it offers.";
    }
    const std::string connection =
        kit.path != nullptr ? " over " + connectionText(kit.path->outputTechnology) : "";
    return " The best mode that it offers" + connection + " is " + modeText(*best) +
           (passes(*best) ? "." : ". That is not enough.");
}

std::string adviceForMode(const KitMonitor& kit) {
    const snapshot::DisplayMode* const best = bestOfferedMode(kit);
    if (best == nullptr) {
        return "Connect the monitor again, and install the driver of the graphics card.";
    }
    if (passes(*best)) {
        return "Choose " + modeText(*best) +
               " under Settings > System > Display: the size under Display resolution, the rate "
               "under Advanced display.";
    }
    return "Use another cable and another port, without switch, dock or adapter: " +
           sizeText(requiredSize) +
           " at 60 Hz needs HDMI 2.0 or DisplayPort 1.2 all the way from the graphics card to the "
           "monitor. The monitor's own menu may limit the input, too.";
}

std::vector<Finding> judgedMonitorIsNotListed() {
    return {{Severity::error, "The monitor that the check judged is no longer listed.",
             "Its mode cannot be examined.", "Repeat the command."}};
}

bool hasNoMode(const KitMonitor& kit) {
    return kit.monitor != nullptr && kit.monitor->informationRead && !kit.monitor->currentMode;
}

bool isLargeEnoughWithoutRotation(const KitMonitor& kit) {
    const std::optional<Size> size = pictureSize(kit);
    return quarterTurns(kit) % 2 != 0 && size && isLargeEnough(*size);
}

bool isInterlaced(std::uint32_t scanLineOrdering) {
    return scanLineOrdering == DISPLAYCONFIG_SCANLINE_ORDERING_INTERLACED_UPPERFIELDFIRST ||
           scanLineOrdering == DISPLAYCONFIG_SCANLINE_ORDERING_INTERLACED_LOWERFIELDFIRST;
}

} // namespace

std::vector<Finding> unreadableMonitor(const Examination& examination) {
    std::vector<Finding> findings;
    for (const snapshot::Monitor& monitor : examination.reading.monitors) {
        if (!monitor.informationRead) {
            const bool mayBeKitMonitor = examination.status.code == MONITOR_NOT_CONNECTED;
            findings.push_back(
                {mayBeKitMonitor ? Severity::warning : Severity::note,
                 "GetMonitorInfoW failed for a monitor.",
                 std::string("The library does not list this monitor. It was probably disconnected "
                             "while the desktop was read.") +
                     (mayBeKitMonitor ? " It may be the kit monitor." : ""),
                 "Repeat the command."});
        } else if (!monitor.currentMode) {
            const bool isKitMonitor = isJudged(examination, monitor.handle);
            findings.push_back(
                {isKitMonitor ? Severity::error : Severity::note,
                 "EnumDisplaySettingsW returned no display mode for " +
                     toUtf8Lossy(monitor.deviceName) + ".",
                 std::string("The library lists this monitor with size 0 x 0 and 0 Hz.") +
                     (isKitMonitor ? " The kit monitor does not pass then (code 18)." : ""),
                 "Repeat the command. If the result stays, connect the monitor again, and install "
                 "the driver of the graphics card.",
                 {toUtf8Lossy(monitor.deviceName)}});
        }
    }
    return findings;
}

// Rotation and a missing mode have findings of their own.
std::vector<Finding> resolutionTooLow(const Examination& examination) {
    if (examination.status.code != MONITOR_RESOLUTION_INCORRECT) {
        return {};
    }
    const std::optional<KitMonitor> kit = kitMonitorOf(examination);
    if (!kit) {
        return judgedMonitorIsNotListed();
    }
    if (hasNoMode(*kit) || isLargeEnoughWithoutRotation(*kit)) {
        return {};
    }
    return {{Severity::error,
             described(*kit) + " shows " + sizeText({kit->item.width, kit->item.height}) +
                 " pixels, and at least " + sizeText(requiredSize) + " are required." +
                 offerText(*kit),
             "The 3-D picture is made for single pixels of the panel. A smaller picture does not "
             "pass the check (code 18).",
             adviceForMode(*kit),
             {deviceNameOf(*kit)}}};
}

std::vector<Finding> refreshRateTooLow(const Examination& examination) {
    if (examination.status.code != MONITOR_REFRESH_RATE_INCORRECT) {
        return {};
    }
    const std::optional<KitMonitor> kit = kitMonitorOf(examination);
    if (!kit) {
        return judgedMonitorIsNotListed();
    }
    const std::int32_t rate = kit->item.refreshRate;
    return {
        {Severity::error,
         described(*kit) + " is refreshed at " + std::to_string(rate) + " Hz" +
             (rate == 0 || rate == 1 ? ", which stands for the default of the hardware" : "") +
             ", and at least " + std::to_string(requiredHertz) + " Hz are required." +
             offerText(*kit),
         "At this rate the 3-D picture follows the viewer's movements late. It does not pass the "
         "check (code 19).",
         adviceForMode(*kit),
         {deviceNameOf(*kit)}}};
}

std::vector<Finding> refreshRateBelow60(const Examination& examination) {
    const std::optional<KitMonitor> kit = kitMonitorOf(examination);
    if (!kit) {
        return {};
    }
    std::optional<std::uint64_t> exact;
    if (kit->path != nullptr) {
        exact = hundredthsOfHertz(kit->path->refreshRate);
    }
    if (exact ? *exact < 5900 || *exact >= 6000 : kit->item.refreshRate != 59) {
        return {};
    }
    return {{Severity::note,
             described(*kit) + " is refreshed at " +
                 (exact ? rateText(*exact) : std::string("59 Hz")) + ".",
             "The rate is enough for the check, which requires 59 Hz: 59.94 Hz is reported as 59. "
             "A video of 60 pictures a second loses one about every 17 seconds.",
             "If moving pictures stutter, choose 60 Hz under Settings > System > Display > "
             "Advanced display.",
             {deviceNameOf(*kit)}}};
}

std::vector<Finding> interlacedMode(const Examination& examination) {
    const std::optional<KitMonitor> kit = kitMonitorOf(examination);
    if (!kit) {
        return {};
    }
    const bool interlacedPath = kit->path != nullptr && isInterlaced(kit->path->scanLineOrdering);
    const bool interlacedDisplayMode = kit->monitor != nullptr && kit->monitor->currentMode &&
                                       kit->monitor->currentMode->mode.interlaced;
    if (!interlacedPath && !interlacedDisplayMode) {
        return {};
    }
    return {{Severity::error,
             described(*kit) + " is in an interlaced mode." + offerText(*kit),
             "Each refresh shows every second line only. The views for both eyes do not fit "
             "together, and there is no 3-D picture.",
             adviceForMode(*kit),
             {deviceNameOf(*kit)}}};
}

} // namespace vorlen::tool
