#include "tools/vorlen-monitor-viewer/main_window.h"

#include "platform/safe_text.h"
#include "tools/vorlen-monitor-viewer/clipboard.h"
#include "tools/vorlen-monitor-viewer/control_ids.h"
#include "tools/vorlen-monitor-viewer/controls.h"
#include "tools/vorlen-monitor-viewer/messages.h"
#include "tools/vorlen-monitor-viewer/save_dialog.h"
#include "tools/vorlen-monitor-viewer/texts.h"
#include "tools/vorlen-monitor/doctor/doctor_command.h"
#include "tools/vorlen-monitor/doctor/findings.h"
#include "tools/vorlen-monitor/doctor/report.h"
#include "tools/vorlen-monitor/failure.h"
#include "tools/vorlen-monitor/record_command.h"

#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <array>
#include <exception>
#include <utility>

namespace vorlen::viewer {

namespace {

constexpr const wchar_t* title = L"Vorlen monitor viewer";
constexpr DWORD windowStyle = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN;

constexpr UINT readingDone = WM_APP;
constexpr UINT logChanged = WM_APP + 1;

// The library's list of monitors may be 500 ms old, and not every change sends a message.
constexpr UINT_PTR monitorTimer = 1;
constexpr UINT monitorPeriod = 250; // milliseconds
// The reasons of all windows are asked for, which takes longer.
constexpr UINT_PTR windowTimer = 2;
constexpr UINT windowPeriod = 1000;

constexpr const wchar_t* readingNotice = L"Reading the desktop...";

constexpr DWORD dropDownList = WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWNLIST;
constexpr int dropDownHeight = 300; // at 96 DPI

LOGFONTW messageFont(UINT dpi) {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof(metrics);
    if (SystemParametersInfoForDpi(SPI_GETNONCLIENTMETRICS, sizeof(metrics), &metrics, 0, dpi) ==
        FALSE) {
        throw tool::Failure(tool::ExitCode::internal,
                            "cannot read the font: " + tool::systemError(GetLastError()));
    }
    return metrics.lfMessageFont;
}

int lineHeightOf(HWND window, HFONT font) {
    const HDC context = GetDC(window);
    TEXTMETRICW metrics{};
    {
        const Selection selected(context, font);
        GetTextMetricsW(context, &metrics);
    }
    ReleaseDC(window, context);
    return metrics.tmHeight;
}

bool isDropDownList(ControlId id) {
    return id == monitorBox || id == windowBox || id == orderBox;
}

// Places a combo box. The height that it is given includes its list. That of the closed box follows
// the height of its text.
void placeDropDownList(HWND box, const Area& area, int dpi) {
    MoveWindow(box, area.x, area.y, area.width, area.height + scaled(dropDownHeight, dpi), TRUE);
    const auto setTextHeight = [box](int height) {
        SendMessageW(box, CB_SETITEMHEIGHT, static_cast<WPARAM>(-1), height);
    };
    setTextHeight(area.height);
    RECT tooHigh{};
    GetWindowRect(box, &tooHigh);
    const int frameHeight = tooHigh.bottom - tooHigh.top - area.height;
    setTextHeight(area.height - frameHeight);
}

// Selects an entry of a combo box. While its list is open, the selected entry is the one under the
// pointer.
void selectEntry(HWND box, LRESULT index) {
    const LRESULT now = SendMessageW(box, CB_GETCURSEL, 0, 0);
    if (now != index && (now == CB_ERR || SendMessageW(box, CB_GETDROPPEDSTATE, 0, 0) == FALSE)) {
        SendMessageW(box, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
    }
}

Area areaOf(const RECT& rect) {
    return {rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top};
}

Area workAreaOf(HWND window) {
    MONITORINFO information{};
    information.cbSize = sizeof(information);
    GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTOPRIMARY), &information);
    return areaOf(information.rcWork);
}

} // namespace

MainWindow::MainWindow(const ViewedDesktop& viewed, LogCapture& captured)
    : desktop(viewed), log(captured) {
    registerWindowClass<MainWindow>(mainWindowClass,
                                    reinterpret_cast<HBRUSH>(INT_PTR{COLOR_BTNFACE + 1}));
    window.reset(checkedWindow(CreateWindowExW(WS_EX_CONTROLPARENT, mainWindowClass, title,
                                               windowStyle, CW_USEDEFAULT, CW_USEDEFAULT, 0, 0,
                                               nullptr, nullptr, GetModuleHandleW(nullptr), this)));
    reader.emplace(handle(), readingDone, [reading = desktop.reading()] {
        return reading != nullptr ? *reading : tool::readLiveDesktop();
    });
    makeControls();
    applyFont();
    const Area size = withFrame(preferredContents(metrics()));
    SetWindowPos(handle(), nullptr, 0, 0, size.width, size.height,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    fillWindowBox();
    windowListView->show(desktop.windows());
    monitors.update(desktop.monitors());
    showMonitors();
    log.notify(handle(), logChanged);
    showLog();
    if (desktop.reading() == nullptr) { // nothing changes on the desktop of a recording
        SetTimer(handle(), monitorTimer, monitorPeriod, nullptr);
        SetTimer(handle(), windowTimer, windowPeriod, nullptr);
    }
}

MainWindow::~MainWindow() {
    log.notify(nullptr, 0);
}

// The arrow keys move between the buttons of a group, which ends where the next one begins.
void MainWindow::makeControls() {
    makeControl(handle(), mapLabel, WC_STATICW, L"&Map of the monitors", 0);
    map.emplace(handle(), mapControl, monitors);
    lastFocus = map->handle();
    makeControl(handle(), detailsLabel, WC_STATICW, L"Selected monito&r", 0);
    makeTextField(handle(), detailsControl);
    makeControl(handle(), monitorBoxLabel, WC_STATICW, L"M&onitor:", 0);
    makeControl(handle(), monitorBox, WC_COMBOBOXW, L"", dropDownList);
    makeControl(handle(), windowBoxLabel, WC_STATICW, L"&Window:", 0);
    makeControl(handle(), windowBox, WC_COMBOBOXW, L"", dropDownList);
    makeControl(handle(), statusLabel, WC_STATICW, L"&Status of the kit monitor", 0);
    makeTextField(handle(), statusControl);
    makeControl(handle(), checkButton, WC_BUTTONW, L"&Check",
                WS_GROUP | WS_TABSTOP | BS_PUSHBUTTON);
    makeControl(handle(), logLabel, WC_STATICW, L"Lo&g", WS_GROUP);
    makeTextField(handle(), logControl);
    windowListView.emplace(handle());
    makeControl(handle(), redactBox, WC_BUTTONW, L"Without &titles, serial numbers and user's name",
                WS_GROUP | WS_TABSTOP | BS_AUTOCHECKBOX);
    makeControl(handle(), copyButton, WC_BUTTONW, L"Cop&y report",
                WS_GROUP | WS_TABSTOP | BS_PUSHBUTTON);
    makeControl(handle(), saveButton, WC_BUTTONW, L"Sa&ve recording...",
                WS_TABSTOP | BS_PUSHBUTTON);
    makeControl(handle(), noticeControl, WC_STATICW, L"", SS_PATHELLIPSIS | SS_NOPREFIX);
}

// The first window is selected.
void MainWindow::fillWindowBox() {
    const HWND box = GetDlgItem(handle(), windowBox);
    desktop.fillWindowBox(box);
    SendMessageW(box, CB_SETCURSEL, 0, 0);
    selectedWindow = desktop.listedWindow(0);
}

void MainWindow::applyFont() {
    const LOGFONTW description = messageFont(GetDpiForWindow(handle()));
    Font changed(CreateFontIndirectW(&description));
    for (HWND child = GetWindow(handle(), GW_CHILD); child != nullptr;
         child = GetWindow(child, GW_HWNDNEXT)) {
        SendMessageW(child, WM_SETFONT, reinterpret_cast<WPARAM>(changed.get()), TRUE);
    }
    font = std::move(changed); // no control uses the font before any more
    placeControls();
}

Metrics MainWindow::metrics() const {
    return {static_cast<int>(GetDpiForWindow(handle())), lineHeightOf(handle(), font.get())};
}

void MainWindow::placeControls() {
    RECT client{};
    GetClientRect(handle(), &client);
    const Metrics now = metrics();
    for (const auto& [id, area] : layOut(client.right, client.bottom, now)) {
        const HWND control = GetDlgItem(handle(), id);
        if (isDropDownList(id)) {
            placeDropDownList(control, area, now.dpi);
        } else {
            MoveWindow(control, area.x, area.y, area.width, area.height, TRUE);
        }
    }
    windowListView->fitColumns();
}

void MainWindow::show() {
    moveIntoMonitor();
    ShowWindow(handle(), SW_SHOWDEFAULT);
}

void MainWindow::showForPicture() const {
    ShowWindow(handle(), SW_SHOWNOACTIVATE);
}

Area MainWindow::withFrame(const Area& contents) const {
    RECT frame = {0, 0, contents.width, contents.height};
    AdjustWindowRectExForDpi(&frame, windowStyle, FALSE, WS_EX_CONTROLPARENT,
                             GetDpiForWindow(handle()));
    return areaOf(frame);
}

void MainWindow::moveIntoMonitor() const {
    RECT now{};
    GetWindowRect(handle(), &now);
    const Area place = movedInto(areaOf(now), workAreaOf(handle()));
    SetWindowPos(handle(), nullptr, place.x, place.y, place.width, place.height,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

LRESULT MainWindow::handleMessage(HWND target, UINT message, WPARAM wParam, LPARAM lParam) {
    if (!windowListView) { // the window is being made
        return DefWindowProcW(target, message, wParam, lParam);
    }
    switch (message) {
    case WM_SIZE:
        if (wParam != SIZE_MINIMIZED) {
            placeControls();
        }
        return 0;
    case WM_GETMINMAXINFO: {
        // On a small monitor, everything stays in reach although not all of it can be read.
        const Area least = movedInto(withFrame(smallestContents(metrics())), workAreaOf(target));
        reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize = {least.width, least.height};
        return 0;
    }
    case WM_DPICHANGED: {
        const auto* const suggested = reinterpret_cast<const RECT*>(lParam);
        SetWindowPos(target, nullptr, suggested->left, suggested->top,
                     suggested->right - suggested->left, suggested->bottom - suggested->top,
                     SWP_NOZORDER | SWP_NOACTIVATE);
        applyFont();
        return 0;
    }
    case WM_SETTINGCHANGE:
        applyFont();
        return 0;
    case WM_SYSCOLORCHANGE:
        for (HWND child = GetWindow(target, GW_CHILD); child != nullptr;
             child = GetWindow(child, GW_HWNDNEXT)) {
            SendMessageW(child, WM_SYSCOLORCHANGE, 0, 0);
        }
        return 0;
    case WM_DISPLAYCHANGE:
        desktop.updateMonitors();
        refreshMonitors();
        return 0;
    case WM_TIMER:
        handleTimer(wParam);
        return 0;
    case WM_COMMAND:
        handleCommand(LOWORD(wParam), HIWORD(wParam));
        return 0;
    case WM_NOTIFY: {
        auto* const notification = reinterpret_cast<NMHDR*>(lParam);
        if (notification->idFrom == windowList) {
            windowListView->handleNotification(*notification);
        }
        return 0;
    }
    case readingDone:
        if (reader->isDone()) {
            finishReading();
        }
        return 0;
    case logChanged:
        log.notify(target, logChanged);
        showLog();
        return 0;
    case WM_NEXTDLGCTL: // of a key that moves between controls
        SetFocus(LOWORD(lParam) != FALSE
                     ? reinterpret_cast<HWND>(wParam)
                     : GetNextDlgTabItem(target, GetFocus(), wParam != 0 ? TRUE : FALSE));
        return 0;
    case WM_ACTIVATE:
        // A window that is being minimised has lost the focus before.
        if (LOWORD(wParam) == WA_INACTIVE && IsChild(target, GetFocus()) != FALSE) {
            lastFocus = GetFocus();
        }
        return DefWindowProcW(target, message, wParam, lParam);
    case WM_SETFOCUS:
        SetFocus(lastFocus);
        return 0;
    case WM_CLOSE:
        if (IsWindowEnabled(target) == FALSE) { // a dialog waits for an answer
            SetForegroundWindow(GetLastActivePopup(target));
            return 0;
        }
        return DefWindowProcW(target, message, wParam, lParam);
    case WM_DESTROY:
        PostQuitMessage(0);
        return 0;
    case WM_NCDESTROY:
        static_cast<void>(window.release());
        return 0;
    default:
        return DefWindowProcW(target, message, wParam, lParam);
    }
}

void MainWindow::handleTimer(WPARAM timer) {
    if (timer == monitorTimer) {
        refreshMonitors();
    } else if (timer == windowTimer) {
        windowListView->show(desktop.windows());
        keepWindowSelection();
    }
}

void MainWindow::handleCommand(int id, int code) {
    switch (id) {
    case IDOK: // the Enter key
        if (const HWND focused = GetFocus();
            (SendMessageW(focused, WM_GETDLGCODE, 0, 0) & DLGC_BUTTON) != 0) {
            SendMessageW(focused, BM_CLICK, 0, 0);
        }
        break;
    case mapControl:
        showSelection();
        break;
    case monitorBox:
        if (code == CBN_SELCHANGE) {
            selectFromBox();
        }
        break;
    case windowBox:
        if (code == CBN_SELCHANGE) {
            selectedWindow = desktop.listedWindow(
                static_cast<int>(SendDlgItemMessageW(handle(), windowBox, CB_GETCURSEL, 0, 0)));
        }
        break;
    case filterControl:
        if (code == EN_CHANGE) {
            windowListView->handleFilter();
        }
        break;
    case orderBox:
        if (code == CBN_SELCHANGE) {
            windowListView->handleOrder();
        }
        break;
    case checkButton:
        examine([] {});
        break;
    case copyButton:
        copyReport();
        break;
    case saveButton:
        attempt([this] { saveRecording(); });
        break;
    default:
        break;
    }
}

void MainWindow::selectFromBox() {
    const LRESULT index = SendDlgItemMessageW(handle(), monitorBox, CB_GETCURSEL, 0, 0);
    if (index >= 0) {
        monitors.select(static_cast<std::size_t>(index));
        showSelection();
    }
}

// The module adds and deletes entries of the box.
void MainWindow::keepWindowSelection() {
    const HWND box = GetDlgItem(handle(), windowBox);
    if (selectedWindow == nullptr) {
        return;
    }
    const auto count = static_cast<int>(SendMessageW(box, CB_GETCOUNT, 0, 0));
    int index = 0;
    while (index < count && desktop.listedWindow(index) != selectedWindow) {
        ++index;
    }
    if (index == count) {
        selectedWindow = nullptr;
        index = -1;
    }
    selectEntry(box, index);
}

void MainWindow::refreshMonitors() {
    if (monitors.update(desktop.monitors())) {
        showMonitors();
    }
}

void MainWindow::showMonitors() {
    // The module does not change a box that it has filled.
    desktop.fillMonitorBox(GetDlgItem(handle(), monitorBox));
    showSelection();
    examine([] {});
}

void MainWindow::showSelection() {
    const auto selected = monitors.selected();
    selectEntry(GetDlgItem(handle(), monitorBox),
                selected ? static_cast<LRESULT>(*selected) : CB_ERR);
    setText(
        GetDlgItem(handle(), detailsControl),
        withLineBreaks(detailsText(monitors.selectedMonitor(), examination ? &findings : nullptr)));
    map->refresh();
}

void MainWindow::showLog() {
    const HWND field = GetDlgItem(handle(), logControl);
    std::string text;
    for (const std::string& line : log.lines().all()) {
        text += line + "\n";
    }
    // Another text moves the field to its start, and takes the selection away.
    DWORD selectionStart = 0;
    DWORD selectionEnd = 0;
    SendMessageW(field, EM_GETSEL, reinterpret_cast<WPARAM>(&selectionStart),
                 reinterpret_cast<LPARAM>(&selectionEnd));
    const LRESULT first = SendMessageW(field, EM_GETFIRSTVISIBLELINE, 0, 0);
    SetWindowTextW(field, withLineBreaks(text).c_str());
    if (GetFocus() == field) { // the user may be reading it
        SendMessageW(field, EM_SETSEL, selectionStart, static_cast<LPARAM>(selectionEnd));
        SendMessageW(field, EM_LINESCROLL, 0, first);
    } else {
        SendMessageW(field, EM_LINESCROLL, 0, SendMessageW(field, EM_GETLINECOUNT, 0, 0));
    }
}

void MainWindow::examine(Action then) {
    waiting.push_back(std::move(then));
    if (!reader->isReading()) {
        startReading();
    }
}

void MainWindow::startReading() {
    current = std::exchange(waiting, {});
    setText(GetDlgItem(handle(), noticeControl), readingNotice);
    reader->start();
}

void MainWindow::finishReading() {
    std::vector<Action> actions = std::exchange(current, {});
    std::string status;
    try {
        examination = desktop.examine(reader->take());
        findings = tool::examine(*examination);
        status = statusText(examination->status.code);
        if (const HWND notice = GetDlgItem(handle(), noticeControl);
            textOf(notice) == readingNotice) {
            setText(notice, L"");
        }
    } catch (const tool::Failure&) {
        throw;
    } catch (const std::exception& error) { // such as the name of a monitor that is not valid
        examination.reset();
        actions.clear();
        status = spellControls(tool::unexpected(&error));
        setText(GetDlgItem(handle(), noticeControl), L"The check failed.");
    }
    setText(GetDlgItem(handle(), statusControl), withLineBreaks(status));
    refreshMonitors(); // the check may have found another list
    showSelection();
    windowListView->show(desktop.windows());
    showLog();
    for (const Action& action : actions) {
        attempt(action);
    }
    if (!waiting.empty() && !reader->isReading()) {
        startReading();
    }
}

void MainWindow::copyReport() {
    examine([this, redacting = isRedacting()] {
        tool::Examination reported = *examination;
        if (redacting) {
            tool::redact(reported);
        }
        copyToClipboard(handle(), tool::doctorText(reported.status, tool::examine(reported)));
        setText(GetDlgItem(handle(), noticeControl), L"The report is copied.");
    });
}

void MainWindow::saveRecording() {
    const std::optional<std::string> file = askForRecordingFile(handle());
    if (!file) {
        return;
    }
    examine([this, name = *file, redacting = isRedacting()] {
        tool::writeRecording(tool::forRecording(examination->reading, redacting), name);
        setText(GetDlgItem(handle(), noticeControl), toUtf16Lossy("Saved " + spellControls(name)));
    });
}

// What the user can repeat does not end the viewer.
void MainWindow::attempt(const Action& action) const {
    try {
        action();
    } catch (const tool::Failure& failure) {
        MessageBoxW(handle(), toUtf16Lossy(spellControls(failure.what())).c_str(), title,
                    MB_OK | MB_ICONERROR);
    }
}

bool MainWindow::isRedacting() const {
    return IsDlgButtonChecked(handle(), redactBox) == BST_CHECKED;
}

} // namespace vorlen::viewer
