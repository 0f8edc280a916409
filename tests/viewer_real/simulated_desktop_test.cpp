// The viewer on a simulated desktop, which the tests change.
#include "simulation/simulated_desktop.h"
#include "tests/fixtures/message_pump.h"
#include "tests/viewer_real/viewer_window.h"
#include "tools/vorlen-monitor-viewer/main_window.h"
#include "tools/vorlen-monitor-viewer/messages.h"
#include "tools/vorlen-monitor/libraries.h"
#include "tools/vorlen-monitor/replay.h"
#include "tools/vorlen-monitor/status_command.h"

#include <commctrl.h>
#include <gmock/gmock.h>

#include <array>
#include <optional>
#include <utility>

namespace tests {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;
using vorlen::tool::Library;
using namespace vorlen::viewer;

snapshot::Monitor monitorWith(std::uint64_t handle, const std::wstring& deviceName, int left,
                              int width, int height) {
    snapshot::Monitor monitor;
    monitor.handle = handle;
    monitor.informationRead = true;
    monitor.deviceName = deviceName;
    monitor.rectangle = {left, 0, left + width, height};
    monitor.currentMode = snapshot::CurrentMode{left, 0, {width, height, 60}};
    return monitor;
}

snapshot::DisplayPath pathOf(const std::wstring& deviceName, const std::wstring& name) {
    snapshot::DisplayPath path;
    path.sourceName.gdiDeviceName = deviceName;
    path.targetName.friendlyName = name;
    return path;
}

// The kit monitor "KIT 27" and to its right "Office"; a window that is capturable, and three that
// are not.
snapshot::Reading desktopWithKitMonitor() {
    snapshot::Reading reading;
    reading.monitors = {monitorWith(0x10001, LR"(\\.\DISPLAY1)", 0, 3840, 2160),
                        monitorWith(0x10002, LR"(\\.\DISPLAY2)", 3840, 1920, 1080)};
    reading.displayConfiguration.paths = {pathOf(LR"(\\.\DISPLAY1)", L"KIT 27"),
                                          pathOf(LR"(\\.\DISPLAY2)", L"Office")};
    for (const wchar_t* const title : {L"Letter", L"Alpha", L"beta", L"Gamma"}) {
        snapshot::Window window;
        window.handle = 0x20001 + reading.windows.size();
        window.root = window.handle;
        window.title = title;
        window.titleLength = static_cast<std::int32_t>(window.title.size());
        window.className = L"Frame";
        window.visible = reading.windows.empty();
        window.exists = true;
        if (!window.visible) {
            window.reason = "not visible";
        }
        reading.windows.push_back(window);
    }
    return reading;
}

class Viewer : public testing::Test {
protected:
    explicit Viewer(snapshot::Reading shown = desktopWithKitMonitor()) : reading(std::move(shown)) {
        vorlen::tool::setKitModels(L"KIT 27");
        vorlen::tool::replay(reading, simulated);
        service.emplace(nullptr);
        desktop.emplace(*service, &reading);
        window.emplace(*desktop, log);
        finishExamining(); // hidden: Wine needs seconds to hide a window with a frame
    }
    ~Viewer() override {
        EXPECT_NO_THROW(runMessages(handle(), [] { return true; })); // what a procedure has thrown
        window.reset();
        service.reset(); // while the desktop is still simulated
        vorlen::tool::setKitModels(L"");
    }

    HWND handle() const { return window->handle(); }

    void finishExamining() const {
        EXPECT_TRUE(pumpUntil([this] { return !window->isExamining(); }));
    }

    std::wstring map() const { return textOf(handle(), mapControl); }
    std::wstring details() const { return textOf(handle(), detailsControl); }
    std::wstring status() const { return textOf(handle(), statusControl); }
    std::wstring logText() const { return textOf(handle(), logControl); }

    void removeMonitor(std::size_t index) {
        simulated.monitors.all.erase(simulated.monitors.all.begin() +
                                     static_cast<std::ptrdiff_t>(index));
    }

    snapshot::Reading reading;
    LogCapture log;
    Library module = vorlen::tool::libraryBesideThisProgram(L"libvorlen_monitor.dll");
    simulation::SimulatedDesktop simulated{module.image()};
    std::optional<vorlen::tool::Service> service;
    std::optional<ViewedDesktop> desktop;
    std::optional<MainWindow> window;
};

TEST_F(Viewer, shows_monitors_status_windows_and_log) {
    EXPECT_THAT(map(), StartsWith(LR"(2 monitors. Selected: \\.\DISPLAY1, KIT 27, )"));
    EXPECT_THAT(details(), HasSubstr(L"Name: KIT 27\r\n"));
    EXPECT_EQ(status(), L"16 MONITOR_OK: OK.\r\n");
    EXPECT_THAT(comboBoxEntries(handle(), monitorBox),
                ElementsAre(LR"(\\.\DISPLAY1)", LR"(\\.\DISPLAY2)"));
    EXPECT_THAT(comboBoxEntries(handle(), windowBox), ElementsAre(L"Letter"));
    EXPECT_THAT(listedTitles(handle()), ElementsAre(L"Alpha", L"beta", L"Gamma"));
    EXPECT_THAT(logText(), HasSubstr(L"info The monitor exists.\r\n"));
}

TEST_F(Viewer, selects_monitors_with_the_keyboard) {
    pressKey(handle(), mapControl, VK_RIGHT);
    EXPECT_THAT(map(), HasSubstr(L"Selected: \\\\.\\DISPLAY2, Office"));
    EXPECT_THAT(details(), HasSubstr(L"Name: Office\r\n"));
    EXPECT_EQ(selectedEntry(handle(), monitorBox), LR"(\\.\DISPLAY2)");
    pressKey(handle(), mapControl, VK_RIGHT);
    EXPECT_THAT(map(), HasSubstr(L"Selected: \\\\.\\DISPLAY2, Office"));
    pressKey(handle(), mapControl, VK_HOME);
    EXPECT_THAT(map(), HasSubstr(L"Selected: \\\\.\\DISPLAY1, KIT 27"));
    pressKey(handle(), mapControl, VK_END);
    pressKey(handle(), mapControl, VK_LEFT);
    EXPECT_THAT(map(), HasSubstr(L"Selected: \\\\.\\DISPLAY1, KIT 27"));
}

TEST_F(Viewer, selects_the_monitor_under_the_pointer) {
    RECT area{};
    GetClientRect(GetDlgItem(handle(), mapControl), &area);
    SendDlgItemMessageW(handle(), mapControl, WM_LBUTTONDOWN, MK_LBUTTON,
                        MAKELPARAM(area.right * 8 / 10, area.bottom / 3));
    EXPECT_THAT(map(), HasSubstr(L"Selected: \\\\.\\DISPLAY2, Office"));
    SendDlgItemMessageW(handle(), mapControl, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(1, 1));
    EXPECT_THAT(map(), HasSubstr(L"Selected: \\\\.\\DISPLAY2, Office")) << "there is no monitor";
}

TEST_F(Viewer, selects_the_monitor_of_the_box) {
    choose(handle(), monitorBox, 1);
    EXPECT_THAT(map(), HasSubstr(L"Selected: \\\\.\\DISPLAY2, Office"));
    EXPECT_THAT(details(), HasSubstr(L"Name: Office\r\n"));
}

TEST_F(Viewer, takes_a_monitor_off_the_map_at_a_display_change) {
    removeMonitor(1);
    SendMessageW(handle(), WM_DISPLAYCHANGE, 32, MAKELPARAM(3840, 2160));
    EXPECT_THAT(map(), StartsWith(L"1 monitor."));
    EXPECT_THAT(comboBoxEntries(handle(), monitorBox), ElementsAre(LR"(\\.\DISPLAY1)"));
    EXPECT_EQ(comboBoxEntries(handle(), monitorBox), exportedDeviceNames(*service));
}

TEST_F(Viewer, keeps_the_selected_monitor_at_a_display_change) {
    choose(handle(), monitorBox, 1);
    removeMonitor(0);
    SendMessageW(handle(), WM_DISPLAYCHANGE, 32, 0);
    EXPECT_THAT(map(), StartsWith(L"1 monitor. Selected: \\\\.\\DISPLAY2, Office"));
    EXPECT_EQ(selectedEntry(handle(), monitorBox), LR"(\\.\DISPLAY2)");
}

TEST_F(Viewer, checks_again_at_a_display_change) {
    removeMonitor(0);
    SendMessageW(handle(), WM_DISPLAYCHANGE, 32, 0);
    finishExamining();
    EXPECT_THAT(status(), StartsWith(L"17 MONITOR_NOT_CONNECTED: "));
    EXPECT_THAT(status(), HasSubstr(L"\r\nPlease connect a Vorlen monitor for 3D viewing.\r\n"));
    EXPECT_THAT(details(), HasSubstr(L"error no-kit-monitor\r\n"));
}

snapshot::Reading desktopWithoutMonitors() {
    snapshot::Reading reading = desktopWithKitMonitor();
    reading.monitors.clear();
    reading.displayConfiguration.paths.clear();
    return reading;
}

class ViewerWithoutMonitors : public Viewer {
protected:
    ViewerWithoutMonitors() : Viewer(desktopWithoutMonitors()) {}
};

TEST_F(ViewerWithoutMonitors, shows_status_and_findings) {
    EXPECT_EQ(map(), L"0 monitors.");
    EXPECT_THAT(details(), StartsWith(L"The desktop has no monitor.\r\n\r\nFindings "));
    EXPECT_THAT(status(), StartsWith(L"17 MONITOR_NOT_CONNECTED: "));
}

TEST_F(Viewer, shows_that_the_last_monitor_has_gone) {
    window->showForPicture();
    removeMonitor(1);
    removeMonitor(0);
    SendMessageW(handle(), WM_DISPLAYCHANGE, 32, 0);
    finishExamining();
    EXPECT_EQ(map(), L"0 monitors.");
    EXPECT_THAT(details(), StartsWith(L"The desktop has no monitor.\r\n"));
    EXPECT_EQ(selectedEntry(handle(), monitorBox), L"");
    pressKey(handle(), mapControl, VK_RIGHT);
    EXPECT_NE(
        RedrawWindow(handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN | RDW_UPDATENOW),
        FALSE);
}

TEST_F(Viewer, runs_the_check_when_the_button_is_pressed) {
    simulated.monitors.all[0].mode->frequency = 30;
    service->function<decltype(::updateMonitorList)>("updateMonitorList")();
    press(handle(), checkButton);
    finishExamining();
    EXPECT_THAT(status(), StartsWith(L"19 MONITOR_REFRESH_RATE_INCORRECT: "));
    EXPECT_THAT(map(), HasSubstr(L"Refresh rate too low"));
    EXPECT_THAT(details(), AllOf(HasSubstr(L"Refresh rate: 30 Hz (too low)\r\n"),
                                 HasSubstr(L"error refresh-rate-too-low\r\n")));
    EXPECT_THAT(logText(), HasSubstr(L"critical The monitor framerate is not correct.\r\n"));
}

TEST_F(Viewer, shows_the_findings_about_the_selected_monitor_only) {
    simulated.monitors.all[0].mode->width = 1920;
    SendMessageW(handle(), WM_DISPLAYCHANGE, 32, 0);
    finishExamining();
    EXPECT_THAT(details(), HasSubstr(L"error resolution-too-low\r\n"));
    choose(handle(), monitorBox, 1);
    EXPECT_THAT(details(), Not(HasSubstr(L"resolution-too-low")));
}

// These tests have the manifest of the viewer. Wine does not tell version 2 from version 1.
TEST_F(Viewer, is_aware_of_the_dpi_of_each_monitor) {
    EXPECT_EQ(GetAwarenessFromDpiAwarenessContext(GetThreadDpiAwarenessContext()),
              DPI_AWARENESS_PER_MONITOR_AWARE);
    EXPECT_EQ(GetAwarenessFromDpiAwarenessContext(GetWindowDpiAwarenessContext(handle())),
              DPI_AWARENESS_PER_MONITOR_AWARE);
}

TEST_F(Viewer, takes_the_suggested_place_when_the_dpi_changes) {
    const RECT suggested = {20, 30, 1220, 930};
    SendMessageW(handle(), WM_DPICHANGED, MAKEWPARAM(96, 96), reinterpret_cast<LPARAM>(&suggested));
    RECT place{};
    GetWindowRect(handle(), &place);
    EXPECT_NE(EqualRect(&place, &suggested), FALSE);
    RECT client{};
    GetClientRect(handle(), &client);
    RECT list{};
    GetWindowRect(GetDlgItem(handle(), windowList), &list);
    MapWindowPoints(nullptr, handle(), reinterpret_cast<POINT*>(&list), 2);
    EXPECT_GT(list.right, client.right - 20) << "the controls were not placed again";
}

TEST_F(Viewer, is_not_smaller_than_its_contents_need) {
    SetWindowPos(handle(), nullptr, 0, 0, 10, 10, SWP_NOMOVE | SWP_NOZORDER);
    RECT client{};
    GetClientRect(handle(), &client);
    const Area smallest = smallestContents({static_cast<int>(GetDpiForWindow(handle())), 0});
    EXPECT_GE(client.right, smallest.width);
    EXPECT_GE(client.bottom, smallest.height);
}

TEST_F(Viewer, is_shown_inside_its_monitor) {
    RECT work{};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
    SetWindowPos(handle(), nullptr, work.right - 100, work.bottom - 100, work.right, 600,
                 SWP_NOZORDER);
    window->show();
    RECT place{};
    GetWindowRect(handle(), &place);
    EXPECT_EQ(place.left, work.left);
    EXPECT_EQ(place.right, work.right);
    EXPECT_EQ(place.bottom, work.bottom);
    EXPECT_EQ(place.bottom - place.top, 600);
}

TEST_F(Viewer, has_boxes_as_high_as_its_fields) {
    const auto heightOf = [this](int control) {
        RECT place{};
        GetWindowRect(GetDlgItem(handle(), control), &place);
        return place.bottom - place.top;
    };
    for (const int box : {monitorBox, windowBox, orderBox}) {
        EXPECT_EQ(heightOf(box), heightOf(filterControl)) << box;
    }
}

TEST_F(Viewer, filters_and_sorts_the_windows) {
    SetDlgItemTextW(handle(), filterControl, L"A");
    EXPECT_THAT(listedTitles(handle()), ElementsAre(L"Alpha", L"beta", L"Gamma"));
    SetDlgItemTextW(handle(), filterControl, L"a");
    choose(handle(), orderBox, 1); // by title, descending
    EXPECT_THAT(listedTitles(handle()), ElementsAre(L"Gamma", L"beta", L"Alpha"));
    SetDlgItemTextW(handle(), filterControl, L"alpha");
    EXPECT_THAT(listedTitles(handle()), ElementsAre(L"Alpha"));
    SetDlgItemTextW(handle(), filterControl, L"nothing");
    EXPECT_THAT(listedTitles(handle()), IsEmpty());
}

class ViewerLog : public Viewer {
protected:
    // Until the log has more lines than its field shows.
    ViewerLog() {
        for (int i = 0; i < 20; ++i) {
            addLines();
        }
    }

    void addLines() {
        press(handle(), checkButton);
        finishExamining();
    }

    LRESULT firstShownLine() const {
        return SendDlgItemMessageW(handle(), logControl, EM_GETFIRSTVISIBLELINE, 0, 0);
    }
};

TEST_F(ViewerLog, is_scrolled_to_its_end) {
    const LRESULT before = firstShownLine();
    EXPECT_GT(before, 0);
    addLines();
    EXPECT_GT(firstShownLine(), before);
}

TEST_F(ViewerLog, stays_where_the_user_reads_it) {
    window->show();
    const std::size_t before = logText().size();
    const HWND field = GetDlgItem(handle(), logControl);
    SetFocus(field);
    SendMessageW(field, EM_SETSEL, 2, 5);
    SendMessageW(field, EM_LINESCROLL, 0, 3 - firstShownLine());
    service->function<decltype(::checkMonitorStatus)>("checkMonitorStatus")();
    EXPECT_TRUE(pumpUntil([&] { return logText().size() > before; }));
    EXPECT_EQ(firstShownLine(), 3);
    EXPECT_EQ(SendMessageW(field, EM_GETSEL, 0, 0), MAKELONG(2, 5));
}

TEST_F(Viewer, gives_the_focus_back_to_the_control_that_had_it) {
    window->show();
    EXPECT_EQ(GetFocus(), GetDlgItem(handle(), mapControl));
    SetFocus(GetDlgItem(handle(), filterControl));
    SendMessageW(handle(), WM_ACTIVATE, WA_INACTIVE, 0);
    SetFocus(nullptr); // as Windows does before it minimises a window
    SendMessageW(handle(), WM_ACTIVATE, WA_INACTIVE, 0);
    SendMessageW(handle(), WM_ACTIVATE, WA_ACTIVE, 0);
    EXPECT_EQ(GetFocus(), GetDlgItem(handle(), filterControl));
}

TEST_F(Viewer, gives_the_map_the_focus_when_no_control_had_it) {
    window->show();
    SetFocus(nullptr);
    SendMessageW(handle(), WM_ACTIVATE, WA_INACTIVE, 0);
    SendMessageW(handle(), WM_ACTIVATE, WA_ACTIVE, 0);
    EXPECT_EQ(GetFocus(), GetDlgItem(handle(), mapControl));
}

TEST_F(Viewer, ignores_a_message_that_does_not_end_a_reading) {
    SendMessageW(handle(), WM_APP, 0, 0); // any program can send it
    EXPECT_EQ(status(), L"16 MONITOR_OK: OK.\r\n");
    press(handle(), checkButton);
    finishExamining();
}

snapshot::Reading desktopThatCannotBeChecked() {
    snapshot::Reading reading = desktopWithKitMonitor();
    // An unpaired surrogate: the check throws an exception.
    reading.displayConfiguration.paths[0].targetName.friendlyName = L"KIT 27 \xD800";
    return reading;
}

class ViewerOfFailingCheck : public Viewer {
protected:
    ViewerOfFailingCheck() : Viewer(desktopThatCannotBeChecked()) {}

    std::wstring notice() const { return textOf(handle(), noticeControl); }
};

TEST_F(ViewerOfFailingCheck, shows_the_reason_as_the_status) {
    EXPECT_THAT(status(), StartsWith(L"unexpected error: "));
    EXPECT_THAT(map(), StartsWith(LR"(2 monitors. Selected: \\.\DISPLAY1, KIT 27 )"));
    EXPECT_EQ(notice(), L"The check failed.");
}

TEST_F(ViewerOfFailingCheck, copies_no_report) {
    press(handle(), copyButton);
    finishExamining();
    EXPECT_EQ(notice(), L"The check failed.");
}

TEST_F(Viewer, keeps_its_notice_when_it_reads_a_changed_desktop) {
    press(handle(), copyButton);
    removeMonitor(1);
    service->function<decltype(::updateMonitorList)>("updateMonitorList")();
    finishExamining();
    EXPECT_THAT(map(), StartsWith(L"1 monitor."));
    EXPECT_EQ(textOf(handle(), noticeControl), L"The report is copied.");
}

TEST_F(Viewer, leaves_the_highlighted_monitor_of_an_open_box) {
    window->show();
    SendDlgItemMessageW(handle(), monitorBox, CB_SHOWDROPDOWN, TRUE, 0);
    SendDlgItemMessageW(handle(), monitorBox, CB_SETCURSEL, 1, 0);
    press(handle(), checkButton);
    EXPECT_NE(SendDlgItemMessageW(handle(), monitorBox, CB_GETDROPPEDSTATE, 0, 0), FALSE);
    finishExamining();
    EXPECT_EQ(selectedEntry(handle(), monitorBox), LR"(\\.\DISPLAY2)");
}

class ViewerWindowList : public Viewer {
protected:
    ViewerWindowList() { choose(handle(), orderBox, 0); } // by title

    LRESULT ask(UINT message, WPARAM wParam, LPARAM lParam) const {
        return SendDlgItemMessageW(handle(), windowList, message, wParam, lParam);
    }

    void select(int line) const {
        LVITEMW item{};
        item.state = item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
        ask(LVM_SETITEMSTATE, static_cast<WPARAM>(line), reinterpret_cast<LPARAM>(&item));
    }

    void update() const { SendMessageW(handle(), WM_TIMER, 2, 0); }
};

TEST_F(ViewerWindowList, keeps_its_place_when_the_selected_window_goes) {
    select(1);
    reading.windows.erase(reading.windows.begin() + 2);
    update();
    EXPECT_THAT(listedTitles(handle()), ElementsAre(L"Alpha", L"Gamma"));
    const auto all = static_cast<WPARAM>(-1);
    EXPECT_EQ(ask(LVM_GETNEXTITEM, all, LVNI_SELECTED), -1);
    EXPECT_EQ(ask(LVM_GETNEXTITEM, all, LVNI_FOCUSED), 1);
}

TEST_F(ViewerWindowList, shows_the_selected_window_after_sorting) {
    for (int i = 0; i < 200; ++i) {
        reading.windows.push_back(reading.windows.back());
        reading.windows.back().handle += 1;
    }
    reading.windows.back().title = L"zeta";
    update();
    select(202);
    ask(LVM_ENSUREVISIBLE, 202, FALSE);
    EXPECT_GT(ask(LVM_GETTOPINDEX, 0, 0), 0);
    choose(handle(), orderBox, 1); // descending
    EXPECT_EQ(listedTitles(handle()).front(), L"zeta");
    EXPECT_EQ(ask(LVM_GETTOPINDEX, 0, 0), 0);
}

TEST_F(ViewerWindowList, keeps_the_widths_of_columns_in_proportion) {
    const auto width = [this](WPARAM column) {
        return ask(LVM_GETCOLUMNWIDTH, column, 0);
    };
    ask(LVM_SETCOLUMNWIDTH, 1, width(0));
    ask(LVM_SETCOLUMNWIDTH, 0, 20);
    RECT place{};
    GetWindowRect(handle(), &place);
    SetWindowPos(handle(), nullptr, 0, 0, place.right - place.left + 300, place.bottom - place.top,
                 SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_GT(width(1), 5 * width(0));
    RECT list{};
    GetClientRect(GetDlgItem(handle(), windowList), &list);
    EXPECT_GT(width(0) + width(1) + width(2) + width(3), list.right * 9 / 10);
}

TEST_F(Viewer, goes_back_with_shift_and_tab) {
    window->show();
    SetFocus(GetDlgItem(handle(), checkButton));
    std::array<BYTE, 256> before{};
    GetKeyboardState(before.data());
    std::array<BYTE, 256> withShift = before;
    withShift[VK_SHIFT] = 0x80;
    SetKeyboardState(withShift.data());
    MSG tab{GetFocus(), WM_KEYDOWN, VK_TAB, 1, 0, {}};
    EXPECT_NE(IsDialogMessageW(handle(), &tab), FALSE);
    SetKeyboardState(before.data());
    EXPECT_EQ(GetFocus(), GetDlgItem(handle(), statusControl));
}

} // namespace
} // namespace tests
