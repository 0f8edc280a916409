#pragma once

#include <nlohmann/json_fwd.hpp>

#include <optional>
#include <string>
#include <vector>

namespace vorlen::tool {

class Service;

// A window as this command shows it, its texts in UTF-8.
struct WindowRow {
    void* handle;
    std::string title;
    std::string className;
    std::optional<std::string> reason; // why it is not capturable; nothing when it is capturable
};

// The capturable windows, in the order of the library.
std::vector<WindowRow> readCapturableWindows(const Service& service);

// Every top-level window of the desktop, in the system's order, with what the library says of it.
std::vector<WindowRow> readAllWindows(const Service& service);

// For a person: one line per window, with the reason if reasons are asked for.
std::string windowsTable(const std::vector<WindowRow>& windows, bool withReasons);

// For a program: an object with the window's handle and texts.
nlohmann::ordered_json windowJson(const WindowRow& window);

// An array with one such object per window; with reasons, each has a key reason, which is null for
// a capturable window.
nlohmann::ordered_json windowsJson(const std::vector<WindowRow>& windows, bool withReasons);

} // namespace vorlen::tool
