#pragma once

#include "tools/vorlen-monitor/windows_command.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

// The windows that are not capturable, as the viewer lists them.
namespace vorlen::viewer {

enum class Column { title, className, reason, handle };
constexpr std::size_t columnCount = 4;

struct Order {
    Column column = Column::title;
    bool descending = false;

    friend bool operator==(const Order&, const Order&) = default;
};

struct WindowLine {
    void* handle = nullptr;
    std::array<std::wstring, columnCount> cells; // by Column

    friend bool operator==(const WindowLine&, const WindowLine&) = default;
};

// A list that can be sorted and filtered, in which the selected window stays selected.
class WindowRows {
public:
    // Takes the windows with a reason. Returns whether the lines have changed.
    bool setWindows(const std::vector<tool::WindowRow>& windows);

    // Only windows of which a cell has the text, in any case, are listed. Empty: all.
    void setFilter(const std::wstring& text);

    // Texts are ordered without regard to case, handles as numbers. Windows with the same cell keep
    // the system's order.
    void setOrder(const Order& order);
    const Order& order() const { return currentOrder; }

    const std::vector<WindowLine>& lines() const { return shown; }

    // The line of the selected window; nothing while it is not listed.
    std::optional<std::size_t> selected() const;

    // Nothing: no window is selected.
    void select(std::optional<std::size_t> line);

private:
    void show();

    std::vector<WindowLine> all; // in the system's order
    std::vector<WindowLine> shown;
    std::wstring filter;
    Order currentOrder;
    void* selectedWindow = nullptr;
};

} // namespace vorlen::viewer
