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
    std::optional<std::string> refusal; // the test that kept it out; nothing when it is offered
};

// The windows that the library offers, in its order.
std::vector<WindowRow> readOfferedWindows(const Service& service);

// Every top-level window of the desktop, in the system's order, with what the library says of it.
std::vector<WindowRow> readAllWindows(const Service& service);

// For a person: one line per window, with the test that kept it out if refusals are asked for.
std::string windowsTable(const std::vector<WindowRow>& windows, bool withRefusals);

// For a program: an object with the window's handle and texts.
nlohmann::ordered_json windowJson(const WindowRow& window);

// An array with one such object per window; with refusals, each has a key reason, which is null for
// a window that is offered.
nlohmann::ordered_json windowsJson(const std::vector<WindowRow>& windows, bool withRefusals);

} // namespace vorlen::tool
