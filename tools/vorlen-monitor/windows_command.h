#pragma once

#include <nlohmann/json_fwd.hpp>

#include <optional>
#include <string>
#include <vector>

namespace snapshot {
struct Reading;
}

namespace vorlen::tool {

class Service;

// A window as this command prints it. The texts are UTF-8.
struct WindowRow {
    void* handle;
    std::string title;
    std::string className;
    std::optional<std::string> reason; // why it is not capturable; nothing when it is capturable
};

// The capturable windows, in the order of the library's list.
std::vector<WindowRow> readCapturableWindows(const Service& service);

// Every top-level window of the reading (null: of the desktop of this session), in the system's
// order, with the reason of the library, which sees the same desktop.
std::vector<WindowRow> readAllWindows(const Service& service, const snapshot::Reading* reading);

// A table with a line for each window; withReasons adds a column with the reason.
std::string windowsTable(const std::vector<WindowRow>& windows, bool withReasons);

// An object with the window's handle and texts.
nlohmann::ordered_json windowJson(const WindowRow& window);

// An array with one such object for each window. withReasons adds the key "reason", which is null
// for a capturable window.
nlohmann::ordered_json windowsJson(const std::vector<WindowRow>& windows, bool withReasons);

} // namespace vorlen::tool
