#include "tools/vorlen-monitor/monitors_command.h"

#include "tools/vorlen-monitor/table.h"
#include "tools/vorlen-monitor/text.h"

#include <nlohmann/json.hpp>

#include <array>
#include <charconv>

namespace vorlen::tool {

namespace {

std::string hexadecimal(const void* handle) {
    std::array<char, 2 * sizeof handle> digits{};
    const std::to_chars_result result = std::to_chars(digits.data(), digits.data() + digits.size(),
                                                      reinterpret_cast<std::uintptr_t>(handle), 16);
    return "0x" + std::string(digits.data(), result.ptr);
}

} // namespace

std::vector<MonitorListItem> readMonitors(decltype(::getMonitorList)* getMonitorList) {
    std::vector<MonitorListItem> monitors;
    int count = getMonitorList(nullptr, 0);
    // A copy that fills the array may have been cut off: a monitor can come after the size query.
    // One record more than needed tells.
    do {
        monitors.resize(static_cast<std::size_t>(count) + 1);
        count = getMonitorList(monitors.data(), static_cast<std::int32_t>(monitors.size()));
    } while (static_cast<std::size_t>(count) == monitors.size());
    monitors.resize(static_cast<std::size_t>(count));
    return monitors;
}

std::string monitorsTable(const std::vector<MonitorListItem>& monitors) {
    if (monitors.empty()) {
        return "The desktop has no monitor.\n";
    }
    using Align = Table::Align;
    Table table({{"HANDLE", Align::left},
                 {"DEVICE NAME", Align::left},
                 {"FRIENDLY NAME", Align::left},
                 {"MONITOR ID", Align::left},
                 {"X", Align::right},
                 {"Y", Align::right},
                 {"WIDTH", Align::right},
                 {"HEIGHT", Align::right},
                 {"HZ", Align::right}});
    for (const MonitorListItem& monitor : monitors) {
        table.addRow({hexadecimal(monitor.handle), fieldText(monitor.deviceName),
                      fieldText(monitor.friendlyName), fieldText(monitor.monitorId),
                      std::to_string(monitor.x), std::to_string(monitor.y),
                      std::to_string(monitor.width), std::to_string(monitor.height),
                      std::to_string(monitor.refreshRate)});
    }
    return table.text();
}

nlohmann::ordered_json monitorsJson(const std::vector<MonitorListItem>& monitors) {
    auto array = nlohmann::ordered_json::array();
    for (const MonitorListItem& monitor : monitors) {
        array.push_back({{"handle", hexadecimal(monitor.handle)},
                         {"deviceName", fieldText(monitor.deviceName)},
                         {"friendlyName", fieldText(monitor.friendlyName)},
                         {"monitorId", fieldText(monitor.monitorId)},
                         {"x", monitor.x},
                         {"y", monitor.y},
                         {"width", monitor.width},
                         {"height", monitor.height},
                         {"refreshRate", monitor.refreshRate}});
    }
    return array;
}

} // namespace vorlen::tool
