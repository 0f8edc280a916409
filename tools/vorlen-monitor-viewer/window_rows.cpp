#include "tools/vorlen-monitor-viewer/window_rows.h"

#include "platform/safe_text.h"
#include "platform/text.h"
#include "tools/vorlen-monitor/records.h"

#include <windows.h>

#include <algorithm>
#include <functional>

namespace vorlen::viewer {

namespace {

std::wstring cell(const std::string& text) {
    return toUtf16Lossy(spellControls(text));
}

bool contains(const std::wstring& text, const std::wstring& part) {
    return FindStringOrdinal(FIND_FROMSTART, text.data(), checkedLength(text.size()), part.data(),
                             checkedLength(part.size()), TRUE) >= 0;
}

bool precedes(const std::wstring& left, const std::wstring& right) {
    return CompareStringOrdinal(left.data(), checkedLength(left.size()), right.data(),
                                checkedLength(right.size()), TRUE) == CSTR_LESS_THAN;
}

bool precedes(const WindowLine& line, const WindowLine& other, Column column) {
    const auto index = static_cast<std::size_t>(column);
    return column == Column::handle ? std::less<>()(line.handle, other.handle)
                                    : precedes(line.cells[index], other.cells[index]);
}

} // namespace

bool WindowRows::setWindows(const std::vector<tool::WindowRow>& windows) {
    std::vector<WindowLine> now;
    for (const tool::WindowRow& window : windows) {
        if (window.reason) {
            now.push_back({window.handle,
                           {cell(window.title), cell(window.className), cell(*window.reason),
                            toUtf16Lossy(tool::hexadecimal(window.handle))}});
        }
    }
    if (now == all) {
        return false;
    }
    all = std::move(now);
    show();
    return true;
}

void WindowRows::setFilter(const std::wstring& text) {
    filter = text;
    show();
}

void WindowRows::setOrder(const Order& order) {
    currentOrder = order;
    show();
}

void WindowRows::show() {
    shown.clear();
    std::ranges::copy_if(all, std::back_inserter(shown), [this](const WindowLine& line) {
        return filter.empty() || std::ranges::any_of(line.cells, [this](const std::wstring& text) {
                   return contains(text, filter);
               });
    });
    std::ranges::stable_sort(shown, [this](const WindowLine& left, const WindowLine& right) {
        return currentOrder.descending ? precedes(right, left, currentOrder.column)
                                       : precedes(left, right, currentOrder.column);
    });
}

std::optional<std::size_t> WindowRows::selected() const {
    const auto found = std::ranges::find(shown, selectedWindow, &WindowLine::handle);
    return selectedWindow != nullptr && found != shown.end()
               ? std::optional(static_cast<std::size_t>(found - shown.begin()))
               : std::nullopt;
}

void WindowRows::select(std::optional<std::size_t> line) {
    selectedWindow = line && *line < shown.size() ? shown[*line].handle : nullptr;
}

} // namespace vorlen::viewer
