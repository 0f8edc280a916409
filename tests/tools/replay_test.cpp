#include "tests/fixtures/module_test.h"
#include "tools/vorlen-monitor/replay.h"

#include <dwmapi.h>
#include <gmock/gmock.h>

#include <limits>
#include <string>
#include <vector>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

std::wstring deviceName(std::size_t number) {
    return LR"(\\.\DISPLAY)" + std::to_wstring(number);
}

std::wstring devicePath(std::size_t number) {
    return LR"(\\?\DISPLAY#VLN0001#)" + std::to_wstring(number) + L"#{e6f07b5f}";
}

std::wstring instanceName(std::size_t number) {
    return LR"(DISPLAY\VLN0001\)" + std::to_wstring(number) + L"_0";
}

snapshot::WmiProperty textProperty(const std::wstring& name, const std::wstring& text) {
    return {.name = name, .result = S_OK, .type = VT_BSTR, .text = text};
}

snapshot::WmiProperty arrayProperty(const std::wstring& name, const std::wstring& text) {
    return {.name = name, .result = S_OK, .type = VT_ARRAY | VT_I4, .text = text};
}

// The shipped library on a reading.
class Replay : public ModuleTest {
protected:
    // The n-th monitor, with a path and a WMI object of its own: "Model n" with the number "SN-n".
    snapshot::Monitor& addMonitor(const snapshot::CurrentMode& mode = {}) {
        const std::size_t number = reading.monitors.size() + 1;
        snapshot::DisplayPath& path = reading.displayConfiguration.paths.emplace_back();
        path.sourceName.gdiDeviceName = deviceName(number);
        path.targetName.friendlyName = L"Model " + std::to_wstring(number);
        path.targetName.devicePath = devicePath(number);
        reading.wmi.objects.push_back(
            {{textProperty(L"InstanceName", instanceName(number)),
              arrayProperty(L"SerialNumberID", L"SN-" + std::to_wstring(number))}});
        snapshot::Monitor& monitor = reading.monitors.emplace_back();
        monitor.handle = 0x10000 + number;
        monitor.informationRead = true;
        monitor.deviceName = path.sourceName.gdiDeviceName;
        monitor.currentMode = mode;
        return monitor;
    }

    // A window that the library offers.
    snapshot::Window& addWindow(const std::wstring& title) {
        snapshot::Window& window = reading.windows.emplace_back();
        window.handle = 0x20000 + reading.windows.size();
        window.titleLength = static_cast<int>(title.size());
        window.title = title;
        window.className = L"ApplicationWindow";
        window.visible = true;
        window.root = window.handle;
        window.exists = true;
        return window;
    }

    void start() {
        vorlen::tool::replay(reading, desktop);
        module.init();
    }

    std::vector<MonitorListItem> monitors() const {
        std::vector<MonitorListItem> items(100);
        items.resize(static_cast<std::size_t>(module.exports->getMonitorList(items.data(), 100)));
        return items;
    }

    template <typename Text>
    std::vector<std::wstring> texts(Text MonitorListItem::*member) const {
        std::vector<std::wstring> result;
        for (const MonitorListItem& monitor : monitors()) {
            result.emplace_back(monitor.*member);
        }
        return result;
    }
    std::vector<std::wstring> names() const { return texts(&MonitorListItem::friendlyName); }
    std::vector<std::wstring> serialNumbers() const { return texts(&MonitorListItem::monitorId); }

    std::vector<WindowListItem> windows() const {
        std::vector<WindowListItem> items(100);
        items.resize(static_cast<std::size_t>(module.exports->getWindowList(items.data(), 100)));
        return items;
    }

    std::string reasonOf(const snapshot::Window& window) const {
        const char* const reason =
            module.exports->getReasonNotCapturable(reinterpret_cast<HWND>(window.handle));
        return reason != nullptr ? reason : "";
    }

    // The function of the system as the library calls it: through its import table.
    template <typename Function>
    Function* libraryCall(const char* name) const {
        return reinterpret_cast<Function*>(importedFunction(module.image(), name));
    }

    snapshot::Reading reading;
};

TEST_F(Replay, shows_the_monitors_in_their_order) {
    addMonitor({.x = -1080, .y = -200, .mode = {.width = 1080, .height = 1920, .frequency = 59}});
    addMonitor({.x = 0, .y = 0, .mode = {.width = 3840, .height = 2160, .frequency = 60}});
    start();
    const std::vector<MonitorListItem> shown = monitors();
    ASSERT_THAT(shown, SizeIs(2));
    EXPECT_EQ(shown[0].handle, reinterpret_cast<void*>(0x10001));
    EXPECT_EQ(shown[0].deviceName, deviceName(1));
    EXPECT_EQ(shown[0].friendlyName, std::wstring(L"Model 1"));
    EXPECT_EQ(shown[0].monitorId, std::wstring(L"SN-1"));
    EXPECT_EQ(shown[0].x, -1080);
    EXPECT_EQ(shown[0].y, -200);
    EXPECT_EQ(shown[0].width, 1080);
    EXPECT_EQ(shown[0].height, 1920);
    EXPECT_EQ(shown[0].refreshRate, 59);
    EXPECT_EQ(shown[1].handle, reinterpret_cast<void*>(0x10002));
    EXPECT_EQ(shown[1].friendlyName, std::wstring(L"Model 2"));
    EXPECT_EQ(shown[1].monitorId, std::wstring(L"SN-2"));
}

TEST_F(Replay, keeps_the_rectangle_of_a_monitor) {
    addMonitor().rectangle = {-10, -20, 30, 40};
    start();
    MONITORINFOEXW information{};
    information.cbSize = sizeof(information);
    auto* const ask = libraryCall<decltype(GetMonitorInfoW)>("GetMonitorInfoW");
    EXPECT_EQ(ask(reinterpret_cast<HMONITOR>(0x10001), &information), TRUE);
    EXPECT_EQ(information.rcMonitor.left, -10);
    EXPECT_EQ(information.rcMonitor.top, -20);
    EXPECT_EQ(information.rcMonitor.right, 30);
    EXPECT_EQ(information.rcMonitor.bottom, 40);
}

TEST_F(Replay, shows_a_monitor_without_settings) {
    addMonitor({.mode = {.width = 1920, .height = 1080, .frequency = 60}}).currentMode.reset();
    start();
    ASSERT_THAT(monitors(), SizeIs(1));
    EXPECT_EQ(monitors()[0].width, 0);
    EXPECT_EQ(monitors()[0].refreshRate, 0);
    EXPECT_THAT(names(), ElementsAre(L"Model 1"));
}

TEST_F(Replay, leaves_out_a_monitor_whose_information_was_not_read) {
    addMonitor();
    addMonitor().informationRead = false;
    start();
    EXPECT_THAT(names(), ElementsAre(L"Model 1"));
}

TEST_F(Replay, names_a_cloned_monitor_by_the_first_of_its_paths) {
    addMonitor();
    reading.displayConfiguration.paths.push_back(reading.displayConfiguration.paths.front());
    reading.displayConfiguration.paths.back().targetName.friendlyName = L"Clone";
    start();
    EXPECT_THAT(names(), ElementsAre(L"Model 1"));
}

TEST_F(Replay, leaves_a_name_empty_when_a_request_for_it_failed) {
    addMonitor();
    addMonitor();
    addMonitor();
    reading.displayConfiguration.paths[0].sourceName.status = ERROR_GEN_FAILURE;
    reading.displayConfiguration.paths[2].targetName.status = ERROR_INVALID_PARAMETER;
    start();
    EXPECT_THAT(names(), ElementsAre(L"", L"Model 2", L""));
}

TEST_F(Replay, knows_no_name_when_the_sizes_of_the_configuration_failed) {
    addMonitor();
    reading.displayConfiguration.sizesStatus = ERROR_ACCESS_DENIED;
    start();
    EXPECT_THAT(names(), ElementsAre(L""));
}

TEST_F(Replay, knows_no_name_when_the_query_of_the_configuration_failed) {
    addMonitor();
    reading.displayConfiguration.queryStatus = ERROR_INSUFFICIENT_BUFFER;
    start();
    EXPECT_THAT(names(), ElementsAre(L""));
}

TEST_F(Replay, announces_more_paths_than_the_system_filled) {
    addMonitor();
    reading.displayConfiguration.announcedPaths = 3;
    start();
    UINT32 paths = 0;
    UINT32 modes = 0;
    auto* const ask =
        libraryCall<decltype(GetDisplayConfigBufferSizes)>("GetDisplayConfigBufferSizes");
    EXPECT_EQ(ask(QDC_ONLY_ACTIVE_PATHS, &paths, &modes), ERROR_SUCCESS);
    EXPECT_EQ(paths, 3u);
    EXPECT_THAT(names(), ElementsAre(L"Model 1"));
}

TEST_F(Replay, reads_a_serial_number_as_text_or_array_only) {
    for (int i = 0; i < 3; ++i) {
        addMonitor();
    }
    reading.wmi.objects[0].properties[1] = textProperty(L"SerialNumberID", L"text");
    reading.wmi.objects[1].properties[1] = arrayProperty(L"SerialNumberID", L"array");
    reading.wmi.objects[2].properties[1].type = VT_ARRAY | VT_UI1;
    start();
    EXPECT_THAT(serialNumbers(), ElementsAre(L"text", L"array", L""));
}

TEST_F(Replay, knows_no_serial_number_without_its_property) {
    for (int i = 0; i < 4; ++i) {
        addMonitor();
    }
    reading.wmi.objects[0].properties.pop_back();
    reading.wmi.objects[1].properties[1].result = E_FAIL;
    reading.wmi.objects[2].properties[0].result = E_FAIL;
    start();
    EXPECT_THAT(serialNumbers(), ElementsAre(L"", L"", L"", L"SN-4"));
}

class ReplayOfWmiStep : public Replay, public testing::WithParamInterface<const char*> {};

TEST_P(ReplayOfWmiStep, knows_no_serial_number_when_it_failed) {
    addMonitor();
    reading.wmi.steps = {{.name = GetParam(), .result = E_ACCESSDENIED}};
    if (std::string(GetParam()) == "IEnumWbemClassObject::Next") {
        reading.wmi.objects.clear();
    }
    start();
    EXPECT_THAT(serialNumbers(), ElementsAre(L""));
}

INSTANTIATE_TEST_SUITE_P(Steps, ReplayOfWmiStep,
                         testing::Values("CoInitializeEx", "CoInitializeSecurity",
                                         "CoCreateInstance", "IWbemLocator::ConnectServer",
                                         "CoSetProxyBlanket", "IWbemServices::ExecQuery",
                                         "IEnumWbemClassObject::Next"));

TEST_F(Replay, returns_the_objects_that_preceded_a_failure) {
    addMonitor();
    addMonitor();
    reading.wmi.objects.pop_back();
    reading.wmi.steps = {{.name = "CoInitializeEx", .result = S_FALSE},
                         {.name = "CoInitializeSecurity", .result = RPC_E_TOO_LATE},
                         {.name = "IEnumWbemClassObject::Next", .result = E_FAIL}};
    start();
    EXPECT_THAT(serialNumbers(), ElementsAre(L"SN-1", L""));
}

TEST_F(Replay, shows_the_windows_in_their_order) {
    addWindow(L"first").handle = 0x70000;
    reading.windows.back().root = 0x70000;
    addWindow(L"second").className = L"Other";
    start();
    const std::vector<WindowListItem> shown = windows();
    ASSERT_THAT(shown, SizeIs(2));
    EXPECT_EQ(shown[0].handle, reinterpret_cast<void*>(0x70000));
    EXPECT_EQ(shown[0].title, std::wstring(L"first"));
    EXPECT_EQ(shown[0].className, std::wstring(L"ApplicationWindow"));
    EXPECT_EQ(shown[1].handle, reinterpret_cast<void*>(0x20002));
    EXPECT_EQ(shown[1].title, std::wstring(L"second"));
    EXPECT_EQ(shown[1].className, std::wstring(L"Other"));
}

TEST_F(Replay, gives_each_reason_that_excludes_a_window) {
    const auto cloaked = [](snapshot::Window& window) {
        window.className = L"ApplicationFrameWindow";
        window.cloaked = DWM_CLOAKED_SHELL;
    };
    addWindow(L"capturable");
    addWindow(L"no title").titleLength = 0;
    reading.shellWindow = addWindow(L"shell window").handle;
    addWindow(L"not visible").visible = false;
    addWindow(L"not a root window").root = 0x20001;
    addWindow(L"disabled").style = WS_DISABLED;
    addWindow(L"tool window").extendedStyle = WS_EX_TOOLWINDOW;
    addWindow(L"not a window").exists = false;
    cloaked(addWindow(L"cloaked"));
    addWindow(L"Task View").className = L"Windows.UI.Core.CoreWindow";
    cloaked(addWindow(L"cloaking not read"));
    reading.windows.back().cloakingResult = E_NOTIMPL;
    start();
    std::vector<std::string> reasons;
    for (const snapshot::Window& window : reading.windows) {
        reasons.push_back(reasonOf(window));
    }
    EXPECT_THAT(reasons,
                ElementsAre("", "no title", "shell window", "not visible", "not a root window",
                            "disabled", "tool window", "not a window", "cloaked", "blocked", ""));
}

TEST_F(Replay, keeps_a_title_that_is_shorter_than_its_length) {
    addWindow(L"").titleLength = 5;
    start();
    ASSERT_THAT(windows(), SizeIs(1));
    EXPECT_EQ(windows()[0].title, std::wstring());
}

// The library makes room for the length that the system reports.
TEST_F(Replay, takes_no_memory_for_a_length_that_no_title_has) {
    addWindow(L"a title").titleLength = std::numeric_limits<int>::max();
    addWindow(L"").titleLength = std::numeric_limits<int>::max();
    addWindow(L"cut").titleLength = 1;
    addWindow(L"no title").titleLength = -1;
    start();
    auto* const askLength = libraryCall<decltype(GetWindowTextLengthW)>("GetWindowTextLengthW");
    std::vector<int> lengths;
    for (const snapshot::Window& window : reading.windows) {
        lengths.push_back(askLength(reinterpret_cast<HWND>(window.handle)));
    }
    EXPECT_THAT(lengths, ElementsAre(7, 1, 1, -1));
    ASSERT_THAT(windows(), SizeIs(3));
    EXPECT_EQ(windows()[0].title, std::wstring(L"a title"));
    EXPECT_EQ(windows()[2].title, std::wstring(L"c"));
}

TEST_F(Replay, fills_combo_boxes_of_the_program) {
    addMonitor();
    addWindow(L"first");
    addWindow(L"second");
    start();
    const HWND parent =
        CreateWindowW(L"STATIC", L"", WS_POPUP, 0, 0, 50, 50, nullptr, nullptr, nullptr, nullptr);
    const HWND box = CreateWindowW(L"COMBOBOX", L"", WS_CHILD | CBS_DROPDOWNLIST, 0, 0, 50, 50,
                                   parent, nullptr, nullptr, nullptr);
    module.windowEnumWrapper().registerMonitorComboBox(box);
    EXPECT_EQ(SendMessageW(box, CB_GETCOUNT, 0, 0), 1);
    module.windowEnumWrapper().registerWindowComboBox(box);
    EXPECT_EQ(SendMessageW(box, CB_GETCOUNT, 0, 0), 2);
    DestroyWindow(parent);
}

TEST_F(Replay, takes_no_more_memory_for_further_calls) {
    addMonitor();
    addWindow(L"a");
    start();
    for (int i = 0; i < 10; ++i) {
        module.exports->restartWindowList();
        module.exports->updateMonitorList();
    }
    EXPECT_THAT(desktop.journal.calls(), IsEmpty());
    EXPECT_THAT(desktop.displayPaths.requests, IsEmpty());
    EXPECT_THAT(desktop.eventHooks.all, SizeIs(1));
}

} // namespace
} // namespace tests
