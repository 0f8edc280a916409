#include "tools/vorlen-monitor/windows_command.h"

#include "platform/for_each.h"
#include "platform/text.h"
#include "snapshot/reading.h"
#include "tools/vorlen-monitor/libraries.h"
#include "tools/vorlen-monitor/records.h"
#include "tools/vorlen-monitor/table.h"
#include "tools/vorlen-monitor/text.h"
#include "vorlen/diagnostics.h"
#include "vorlen/monitor.h"

#include <windows.h>

#include <nlohmann/json.hpp>

#include <array>

namespace vorlen::tool {

namespace {

std::string titleOf(HWND window) {
    std::wstring title(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    title.resize(static_cast<std::size_t>(
        GetWindowTextW(window, title.data(), static_cast<int>(title.size()))));
    return toUtf8Lossy(title);
}

std::string classNameOf(HWND window) {
    std::array<wchar_t, 257> name{}; // a class name has at most 256 characters
    const int length = GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    return toUtf8Lossy({name.data(), static_cast<std::size_t>(length)});
}

std::vector<WindowRow> windowsOfThisSession() {
    std::vector<WindowRow> rows;
    forEachWindow([&](HWND window) {
        rows.push_back({window, titleOf(window), classNameOf(window), std::nullopt});
    });
    return rows;
}

std::vector<WindowRow> windowsOf(const snapshot::Reading& reading) {
    std::vector<WindowRow> rows;
    for (const snapshot::Window& window : reading.windows) {
        rows.push_back({handleOf<HWND>(window.handle), toUtf8Lossy(window.title),
                        toUtf8Lossy(window.className), std::nullopt});
    }
    return rows;
}

} // namespace

std::vector<WindowRow> readCapturableWindows(const Service& service) {
    std::vector<WindowRow> rows;
    for (const WindowListItem& window :
         readRecords(service.function<decltype(::getWindowList)>("getWindowList"))) {
        rows.push_back(
            {window.handle, fieldText(window.title), fieldText(window.className), std::nullopt});
    }
    return rows;
}

std::vector<WindowRow> readAllWindows(const Service& service, const snapshot::Reading* reading) {
    auto* const getReasonNotCapturable =
        service.function<decltype(monitor_internal::getReasonNotCapturable)>(
            "getReasonNotCapturable");
    std::vector<WindowRow> rows = reading != nullptr ? windowsOf(*reading) : windowsOfThisSession();
    for (WindowRow& row : rows) {
        if (const char* const reason = getReasonNotCapturable(row.handle)) {
            row.reason = reason;
        }
    }
    return rows;
}

std::string windowsTable(const std::vector<WindowRow>& windows, bool withReasons) {
    if (windows.empty()) {
        return withReasons ? "The desktop has no window.\n"
                           : "No window can be shown on the kit monitor.\n";
    }
    using Align = Table::Align;
    std::vector<Table::Column> columns = {
        {"HANDLE", Align::left}, {"CLASS NAME", Align::left}, {"TITLE", Align::left}};
    if (withReasons) {
        columns.insert(columns.begin() + 1, {"CAPTURABLE", Align::left});
    }
    Table table(std::move(columns));
    for (const WindowRow& window : windows) {
        std::vector<std::string> cells = {hexadecimal(window.handle), window.className,
                                          window.title};
        if (withReasons) {
            cells.insert(cells.begin() + 1, window.reason ? "no: " + *window.reason : "yes");
        }
        table.addRow(cells);
    }
    return table.text();
}

nlohmann::ordered_json windowJson(const WindowRow& window) {
    return {{"handle", hexadecimal(window.handle)},
            {"title", window.title},
            {"className", window.className}};
}

nlohmann::ordered_json windowsJson(const std::vector<WindowRow>& windows, bool withReasons) {
    auto array = nlohmann::ordered_json::array();
    for (const WindowRow& window : windows) {
        auto& object = array.emplace_back(windowJson(window));
        if (withReasons) {
            object["reason"] = nullptr;
            if (window.reason) {
                object["reason"] = *window.reason;
            }
        }
    }
    return array;
}

} // namespace vorlen::tool
