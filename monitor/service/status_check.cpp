#include "monitor/service/status_check.h"

#include "monitor/service/monitor_data.h"
#include "platform/text.h"
#include "runtime/core.h"
#include "runtime/logger.h"
#include "vorlen/status.h"

#include <algorithm>
#include <memory>
#include <vector>

namespace vorlen {

namespace {

using log::level_enum;

constexpr std::int32_t minimumWidth = 3840;
constexpr std::int32_t minimumHeight = 2160;
// Intended: 59, although the text for users names 60 Hz. A monitor at 59.94 Hz reports 59.
constexpr std::int32_t minimumRefreshRate = 59;

log::vllogger* const logger = log::vllogger::instance();

VLStatus lastStatus = UNKNOWN_STATUS;

void logLine(level_enum level, const std::string& message) {
    logger->log(level, message, false);
}

bool isKitMonitor(const ui::MonitorInfo& monitor) {
    const std::string deviceName = lowBytes(monitor.deviceName);
    return !VorlenCore::Instance().GetVorlenModelName(deviceName).empty();
}

void describe(const ui::MonitorInfo& monitor) {
    logLine(level_enum::debug, "Monitor Info : " + toUtf8Strict(monitor.friendlyName) + ", " +
                                   toUtf8Strict(monitor.monitorId));
    logLine(level_enum::debug, "Monitor Resolution : " + std::to_string(monitor.width) + " x " +
                                   std::to_string(monitor.height));
    logLine(level_enum::debug, "Monitor FRAMERATE : " + std::to_string(monitor.refreshRate));
}

VLStatus judge(const ui::MonitorInfo& monitor) {
    if (monitor.width < minimumWidth || monitor.height < minimumHeight) {
        return MONITOR_RESOLUTION_INCORRECT;
    }
    if (monitor.refreshRate < minimumRefreshRate) {
        return MONITOR_REFRESH_RATE_INCORRECT;
    }
    return MONITOR_OK;
}

void logOutcome(VLStatus status) {
    if (status == MONITOR_OK) {
        logLine(level_enum::info, "The monitor exists.");
    } else if (status == MONITOR_RESOLUTION_INCORRECT) {
        logLine(level_enum::critical, "The monitor resolution is incorrect.");
    } else if (status == MONITOR_REFRESH_RATE_INCORRECT) {
        logLine(level_enum::critical, "The monitor framerate is not correct.");
    }
}

} // namespace

bool MonitorData::checkMonitorStatus() {
    RefreshMonitorListIfStale();
    // A copy: the runtime and callbacks of its log may refresh the list or run another check.
    const std::vector<ui::MonitorInfo> candidates = monitors;
    // They may also destroy the service.
    const std::weak_ptr<void> alive = lifetime;
    const auto keep = [&](HMONITOR monitor, VLStatus status) {
        if (!alive.expired()) {
            checkedMonitor = monitor;
        }
        lastStatus = status;
    };
    const auto kitMonitor = std::ranges::find_if(candidates, isKitMonitor);
    if (kitMonitor == candidates.end()) {
        keep(nullptr, MONITOR_NOT_CONNECTED);
        return false;
    }
    describe(*kitMonitor);
    const VLStatus status = judge(*kitMonitor);
    keep(kitMonitor->handle, status);
    logOutcome(status);
    return status == MONITOR_OK;
}

const ui::MonitorInfo* MonitorData::GetCheckedMonitor() const {
    if (checkedMonitor == nullptr) {
        return nullptr;
    }
    const auto found = std::ranges::find(monitors, checkedMonitor, &ui::MonitorInfo::handle);
    return found != monitors.end() ? &*found : nullptr;
}

VLStatus lastMonitorStatus() {
    return lastStatus;
}

} // namespace vorlen
