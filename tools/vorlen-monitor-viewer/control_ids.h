#pragma once

namespace vorlen::viewer {

inline constexpr const wchar_t* mainWindowClass = L"VorlenMonitorViewer";
inline constexpr const wchar_t* mapClass = L"VorlenMonitorMap";

// The controls of the main window, in the order of the tab key. A label precedes its control.
enum ControlId : int {
    mapLabel = 100,
    mapControl,
    detailsLabel,
    detailsControl,
    monitorBoxLabel,
    monitorBox,
    windowBoxLabel,
    windowBox,
    statusLabel,
    statusControl,
    checkButton,
    logLabel,
    logControl,
    filterLabel,
    filterControl,
    orderLabel,
    orderBox,
    windowListLabel,
    windowList,
    redactBox,
    copyButton,
    saveButton,
    noticeControl,
};

} // namespace vorlen::viewer
