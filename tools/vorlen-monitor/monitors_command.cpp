#include "tools/vorlen-monitor/monitors_command.h"

#include "tools/vorlen-monitor/libraries.h"
#include "tools/vorlen-monitor/records.h"
#include "tools/vorlen-monitor/table.h"
#include "tools/vorlen-monitor/text.h"

#include <nlohmann/json.hpp>

namespace vorlen::tool {

std::vector<MonitorListItem> readMonitors(const Service& service) {
    return readRecords(service.function<decltype(::getMonitorList)>("getMonitorList"));
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

nlohmann::ordered_json monitorJson(const MonitorListItem& monitor) {
    return {{"handle", hexadecimal(monitor.handle)},
            {"deviceName", fieldText(monitor.deviceName)},
            {"friendlyName", fieldText(monitor.friendlyName)},
            {"monitorId", fieldText(monitor.monitorId)},
            {"x", monitor.x},
            {"y", monitor.y},
            {"width", monitor.width},
            {"height", monitor.height},
            {"refreshRate", monitor.refreshRate}};
}

nlohmann::ordered_json monitorsJson(const std::vector<MonitorListItem>& monitors) {
    auto array = nlohmann::ordered_json::array();
    for (const MonitorListItem& monitor : monitors) {
        array.push_back(monitorJson(monitor));
    }
    return array;
}

} // namespace vorlen::tool
