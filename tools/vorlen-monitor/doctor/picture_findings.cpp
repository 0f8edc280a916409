#include "tools/vorlen-monitor/doctor/findings.h"
#include "tools/vorlen-monitor/doctor/kit_monitor.h"
#include "tools/vorlen-monitor/doctor/words.h"
#include "vorlen/status.h"

#include <windows.h>

namespace vorlen::tool {

namespace {

constexpr const char* lensesNeedPixels =
    "The lenses in front of the panel need every pixel of the picture at its own place. ";

// Empty for a path that does not scale, or whose scaling is not known.
std::string scalingText(std::uint32_t scaling) {
    switch (scaling) {
    case DISPLAYCONFIG_SCALING_CENTERED:
        return "centred";
    case DISPLAYCONFIG_SCALING_STRETCHED:
        return "stretched";
    case DISPLAYCONFIG_SCALING_ASPECTRATIOCENTEREDMAX:
        return "scaled with its aspect ratio";
    case DISPLAYCONFIG_SCALING_CUSTOM:
        return "scaled by a setting of the driver";
    default:
        return {};
    }
}

std::string whyPanelIsUnknown(const snapshot::PreferredMode& mode) {
    return mode.status != ERROR_SUCCESS ? displayStatusText(mode.status)
                                        : "it prefers " + sizeText({mode.width, mode.height});
}

bool isAdvancedColorEnabled(const snapshot::AdvancedColor& color) {
    return (color.flags & 2) != 0;
}

} // namespace

std::vector<Finding> rotatedPicture(const Examination& examination) {
    const std::optional<KitMonitor> kit = kitMonitorOf(examination);
    if (!kit || quarterTurns(*kit) == 0) {
        return {};
    }
    return {{Severity::error,
             described(*kit) + " shows a picture of " +
                 sizeText({kit->item.width, kit->item.height}) + " pixels that is rotated by " +
                 std::to_string(quarterTurns(*kit) * 90) + " degrees.",
             std::string(lensesNeedPixels) +
                 "A rotated picture gives no 3-D picture. In portrait it does not pass the check, "
                 "either (code 18).",
             "Choose Landscape under Settings > System > Display > Display orientation.",
             {deviceNameOf(*kit)}}};
}

std::vector<Finding> scaledPicture(const Examination& examination) {
    const std::optional<KitMonitor> kit = kitMonitorOf(examination);
    if (!kit || kit->path == nullptr) {
        return {};
    }
    const std::optional<Size> picture = pictureSize(*kit);
    const std::optional<Size> signal = signalSize(*kit);
    const std::string scaling = scalingText(kit->path->scaling);
    const bool sizesAreKnown = picture && signal;
    if (sizesAreKnown ? *picture == *signal : scaling.empty()) {
        return {};
    }
    const std::string how = scaling.empty() ? "" : " It is " + scaling + ".";
    return {{sizesAreKnown ? Severity::error : Severity::warning,
             sizesAreKnown
                 ? described(*kit) + " has a desktop of " + sizeText(*picture) +
                       " pixels, and the graphics card sends " + sizeText(*signal) + "." + how
                 : described(*kit) + " has a picture of unknown size." + how,
             std::string(lensesNeedPixels) + "A scaled picture gives no 3-D picture.",
             "Choose the resolution marked as recommended under Settings > System > Display > "
             "Display resolution. In the settings program of the graphics card, switch scaling and "
             "enlarged resolutions off.",
             {deviceNameOf(*kit)}}};
}

// A monitor that does not pass the check for its size has a finding for that.
std::vector<Finding> notThePanelSize(const Examination& examination) {
    const std::optional<KitMonitor> kit = kitMonitorOf(examination);
    if (!kit || examination.status.code == MONITOR_RESOLUTION_INCORRECT) {
        return {};
    }
    const std::optional<Size> panel = panelSize(*kit);
    const std::optional<Size> signal = signalSize(*kit) ? signalSize(*kit) : pictureSize(*kit);
    if (!panel || !signal || *panel == *signal) {
        return {};
    }
    return {{Severity::error,
             described(*kit) + " receives " + sizeText(*signal) + " pixels, and its panel has " +
                 sizeText(*panel) + ".",
             std::string(lensesNeedPixels) +
                 "The monitor scales a picture of another size, which gives no 3-D picture.",
             "Choose " + sizeText(*panel) +
                 " under Settings > System > Display > Display resolution. If it is not offered, "
                 "use another cable or port.",
             {deviceNameOf(*kit)}}};
}

std::vector<Finding> colourNotRgb(const Examination& examination) {
    const std::optional<KitMonitor> kit = kitMonitorOf(examination);
    if (!kit || kit->path == nullptr) {
        return {};
    }
    const snapshot::AdvancedColor& color = kit->path->advancedColor;
    if (color.status != ERROR_SUCCESS || color.encoding == DISPLAYCONFIG_COLOR_ENCODING_RGB) {
        return {};
    }
    return {
        {Severity::error,
         described(*kit) + " receives its picture as " + encodingText(color.encoding) + " with " +
             std::to_string(color.bitsPerChannel) + " bits for each channel" +
             (isAdvancedColorEnabled(color) ? ", and HDR is on." : "."),
         "The lenses show single colours of a pixel to each eye. A colour format other than RGB "
         "mixes them (code 20).",
         "Choose RGB as output colour format in the settings program of the graphics card. If "
         "it is not offered, choose fewer bits for each channel, switch HDR off, or use another "
         "cable.",
         {deviceNameOf(*kit)}}};
}

std::vector<Finding> notExamined(const Examination& examination) {
    const std::optional<KitMonitor> kit = kitMonitorOf(examination);
    if (!kit) {
        return {};
    }
    std::vector<std::string> missing;
    if (kit->path == nullptr) {
        missing = {"its display path"};
    } else {
        if (!signalSize(*kit)) {
            missing.emplace_back("the signal that it receives");
        }
        if (!panelSize(*kit)) {
            missing.push_back("the size of its panel (" +
                              whyPanelIsUnknown(kit->path->preferredMode) + ")");
        }
        if (const std::int32_t status = kit->path->advancedColor.status; status != ERROR_SUCCESS) {
            missing.push_back("its colour format (" + displayStatusText(status) + ")");
        }
    }
    if (missing.empty()) {
        return {};
    }
    return {{Severity::note,
             described(*kit) + " was not examined completely. Windows did not report: " +
                 enumerated(missing) + ".",
             "The picture may be scaled, of another size than the panel, or not RGB, although no "
             "finding says so.",
             "Look at the size, rate and colour format under Settings > System > Display > "
             "Advanced display.",
             {deviceNameOf(*kit)}}};
}

} // namespace vorlen::tool
