#include "simulation/import_redirect.h"
#include "snapshot/read_desktop.h"
#include "snapshot/recording.h"
#include "tests/fixtures/locator_in_front.h"
#include "tests/fixtures/other_program.h"
#include "tests/support/simulation.h"
#include "tests/support/wine.h"

#include <windows.h>

#include <gmock/gmock.h>
#include <wbemidl.h>

#include <algorithm>
#include <string>
#include <thread>
#include <vector>

namespace tests {
namespace {

using snapshot::DisplayPath;
using snapshot::Monitor;
using snapshot::readDesktop;
using snapshot::Reading;
using snapshot::Window;
using snapshot::WmiStep;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::Not;

std::optional<std::string> noReason(HWND) {
    return std::nullopt;
}

Reading read() {
    return readDesktop(noReason);
}

std::uint64_t numberOf(HWND window) {
    return reinterpret_cast<std::uintptr_t>(window);
}

// While it lives, this program's calls of a system function go to the replacement.
struct Replaced {
    template <typename Function>
    Replaced(const std::string& name, Function* replacement)
        : redirect(GetModuleHandleW(nullptr), name, addressOf(replacement)) {}

    ImportRedirect redirect;
};

std::vector<std::string> namesOf(const std::vector<WmiStep>& steps) {
    std::vector<std::string> names;
    for (const WmiStep& step : steps) {
        names.push_back(step.name);
    }
    return names;
}

TEST(ReadDesktop, reads_every_monitor_with_its_modes) {
    const Reading reading = read();
    ASSERT_THAT(reading.monitors, Not(IsEmpty()));
    for (const Monitor& monitor : reading.monitors) {
        MONITORINFOEXW info{};
        info.cbSize = sizeof(info);
        ASSERT_TRUE(GetMonitorInfoW(reinterpret_cast<HMONITOR>(monitor.handle), &info));
        EXPECT_TRUE(monitor.informationRead);
        EXPECT_EQ(monitor.deviceName, info.szDevice);
        EXPECT_EQ(monitor.rectangle.left, info.rcMonitor.left);
        EXPECT_EQ(monitor.rectangle.bottom, info.rcMonitor.bottom);
        EXPECT_EQ(monitor.workArea.right, info.rcWork.right);
        EXPECT_EQ(monitor.primary, (info.dwFlags & MONITORINFOF_PRIMARY) != 0);
        ASSERT_TRUE(monitor.currentMode);
        EXPECT_EQ(monitor.currentMode->x, info.rcMonitor.left);
        EXPECT_EQ(monitor.currentMode->mode.width, info.rcMonitor.right - info.rcMonitor.left);
        EXPECT_THAT(monitor.offeredModes, Contains(Field(&snapshot::DisplayMode::width,
                                                         monitor.currentMode->mode.width)));
    }
    EXPECT_EQ(std::ranges::count(reading.monitors, true, &Monitor::primary), 1);
}

TEST(ReadDesktop, reads_the_display_path_of_every_monitor) {
    const Reading reading = read();
    EXPECT_EQ(reading.displayConfiguration.sizesStatus, ERROR_SUCCESS);
    EXPECT_EQ(reading.displayConfiguration.queryStatus, ERROR_SUCCESS);
    const auto& modes = reading.displayConfiguration.modes;
    for (const Monitor& monitor : reading.monitors) {
        const auto path = std::ranges::find_if(
            reading.displayConfiguration.paths, [&](const DisplayPath& candidate) {
                return candidate.sourceName.gdiDeviceName == monitor.deviceName;
            });
        ASSERT_NE(path, reading.displayConfiguration.paths.end());
        EXPECT_EQ(path->sourceName.status, ERROR_SUCCESS);
        EXPECT_EQ(path->targetName.status, ERROR_SUCCESS);
        EXPECT_NE(path->targetName.friendlyName, L"");
        EXPECT_NE(path->targetName.devicePath, L"");
        const auto& source = modes.at(path->sourceModeIndex);
        EXPECT_EQ(source.infoType, 1u); // DISPLAYCONFIG_MODE_INFO_TYPE_SOURCE
        EXPECT_EQ(source.width, static_cast<std::uint32_t>(monitor.currentMode->mode.width));
        EXPECT_EQ(source.x, monitor.currentMode->x);
        const auto& target = modes.at(path->targetModeIndex);
        EXPECT_EQ(target.infoType, 2u); // DISPLAYCONFIG_MODE_INFO_TYPE_TARGET
        EXPECT_EQ(target.activeWidth, static_cast<std::uint32_t>(monitor.currentMode->mode.width));
    }
}

TEST(ReadDesktop, reads_what_the_capture_filter_asks_about_windows) {
    OtherProgram program;
    const DWORD style = WS_POPUP | WS_VISIBLE | WS_DISABLED;
    const HWND visible = program.create(L"é あ \xD83D\xDE00", style, WS_EX_TOOLWINDOW);
    const HWND hidden = program.create(L"");
    const Reading reading = readDesktop([&](HWND window) {
        return window == hidden ? std::optional<std::string>("hidden") : std::nullopt;
    });
    const auto find = [&](HWND handle) {
        return *std::ranges::find(reading.windows, numberOf(handle), &Window::handle);
    };
    ASSERT_THAT(reading.windows, Contains(Field(&Window::handle, numberOf(visible))));
    const Window first = find(visible);
    EXPECT_EQ(first.titleLength, 6);
    EXPECT_EQ(first.title, L"é あ \xD83D\xDE00");
    EXPECT_EQ(first.className, OtherProgram::className);
    EXPECT_TRUE(first.visible);
    EXPECT_EQ(static_cast<DWORD>(first.style) & style, style);
    EXPECT_TRUE(first.extendedStyle & WS_EX_TOOLWINDOW);
    EXPECT_EQ(first.root, numberOf(visible));
    EXPECT_TRUE(first.exists);
    EXPECT_EQ(first.reason, std::nullopt);
    const Window second = find(hidden);
    EXPECT_EQ(second.titleLength, 0);
    EXPECT_EQ(second.title, L"");
    EXPECT_FALSE(second.visible);
    EXPECT_EQ(second.reason, "hidden");
    EXPECT_EQ(reading.shellWindow, numberOf(GetShellWindow()));
}

TEST(ReadDesktop, notes_that_a_window_was_destroyed_while_it_was_read) {
    OtherProgram program;
    const HWND window = program.create(L"short-lived");
    const Reading reading = readDesktop([&](HWND handle) {
        if (handle == window) {
            program.destroy(window);
        }
        return std::nullopt;
    });
    const auto found = std::ranges::find(reading.windows, numberOf(window), &Window::handle);
    ASSERT_NE(found, reading.windows.end());
    EXPECT_EQ(found->title, L"short-lived");
    EXPECT_FALSE(found->exists);
}

TEST(ReadDesktop, reads_the_result_of_the_question_for_cloaking) {
    OtherProgram program;
    const HWND window = program.create(L"");
    const Replaced call(
        "DwmGetWindowAttribute", +[](HWND, DWORD, PVOID value, DWORD) -> HRESULT {
            *static_cast<DWORD*>(value) = 2;
            return S_FALSE;
        });
    const Reading reading = read();
    const auto found = std::ranges::find(reading.windows, numberOf(window), &Window::handle);
    ASSERT_NE(found, reading.windows.end());
    EXPECT_EQ(found->cloakingResult, S_FALSE);
    EXPECT_EQ(found->cloaked, 2u);
}

TEST(ReadDesktop, reads_the_process_and_its_session) {
    SetEnvironmentVariableW(L"VORLEN_KIT_MODELS", L"ONE;TWO");
    const snapshot::Process process = read().process;
    SetEnvironmentVariableW(L"VORLEN_KIT_MODELS", nullptr);
    EXPECT_EQ(process.kitModels, L"ONE;TWO");
    EXPECT_THAT(process.dpiAwareness, testing::AllOf(testing::Ge(0), testing::Le(2)));
    EXPECT_EQ(process.remoteSession, GetSystemMetrics(SM_REMOTESESSION) != 0);
    wchar_t user[256]{};
    ASSERT_NE(GetEnvironmentVariableW(L"USERNAME", user, 256), 0u);
    EXPECT_EQ(process.userName, user);
    EXPECT_THAT(process.windowsVersion, MatchesRegex("\\d+\\.\\d+\\.\\d+"));
    const char* const wine = wineVersion();
    EXPECT_EQ(process.wineVersion, wine != nullptr ? wine : "");
    EXPECT_EQ(process.moduleVersion, "");
}

TEST(ReadDesktop, can_be_recorded) {
    const Reading reading = read();
    EXPECT_EQ(toRecording(snapshot::fromRecording(toRecording(reading))), toRecording(reading));
}

template <HRESULT result>
HRESULT WINAPI failSecurity(PSECURITY_DESCRIPTOR, LONG, SOLE_AUTHENTICATION_SERVICE*, void*, DWORD,
                            DWORD, void*, DWORD, void*) {
    return result;
}

class ReadDesktopWithWmi : public testing::Test {
protected:
    Journal journal;
    WmiProvider provider{journal};
};

TEST_F(ReadDesktopWithWmi, reads_every_object) {
    provider.add(LR"(DISPLAY\VLN0001\1_0)", L"SN-1");
    provider.add(LR"(DISPLAY\VLN0001\2_0)", L"");
    const LocatorInFront inFront(provider);
    const snapshot::Wmi wmi = read().wmi;
    EXPECT_THAT(namesOf(wmi.steps),
                ElementsAre("CoInitializeEx", "CoInitializeSecurity", "CoCreateInstance",
                            "IWbemLocator::ConnectServer", "CoSetProxyBlanket",
                            "IWbemServices::ExecQuery", "IEnumWbemClassObject::Next"));
    EXPECT_EQ(wmi.steps.back().result, WBEM_S_FALSE);
    ASSERT_EQ(wmi.objects.size(), 2u);
    const auto& properties = wmi.objects[0].properties;
    const auto property = [&](std::wstring_view name) {
        return *std::ranges::find(properties, name, &snapshot::WmiProperty::name);
    };
    EXPECT_EQ(property(L"InstanceName").text, LR"(DISPLAY\VLN0001\1_0)");
    EXPECT_EQ(property(L"InstanceName").type, static_cast<std::uint32_t>(VT_BSTR));
    EXPECT_EQ(property(L"SerialNumberID").text, L"SN-1");
    EXPECT_EQ(property(L"SerialNumberID").type, static_cast<std::uint32_t>(VT_ARRAY | VT_I4));
    EXPECT_EQ(property(L"UserFriendlyName").result, static_cast<HRESULT>(WBEM_E_NOT_FOUND));
    EXPECT_THAT(provider.outstanding(), IsEmpty());
}

TEST_F(ReadDesktopWithWmi, makes_no_step_after_a_failed_one) {
    const LocatorInFront inFront(provider);
    for (const char* const step : {"IWbemLocator::ConnectServer", "IWbemServices::ExecQuery",
                                   "IEnumWbemClassObject::Next"}) {
        journal.fail(step, 1, static_cast<HRESULT>(WBEM_E_ACCESS_DENIED));
        const snapshot::Wmi wmi = read().wmi;
        EXPECT_EQ(wmi.steps.back().name, step);
        EXPECT_EQ(wmi.steps.back().result, static_cast<HRESULT>(WBEM_E_ACCESS_DENIED));
        EXPECT_THAT(provider.outstanding(), IsEmpty());
    }
}

TEST_F(ReadDesktopWithWmi, ends_where_com_fails) {
    const Replaced call(
        "CoSetProxyBlanket",
        +[](IUnknown*, DWORD, DWORD, OLECHAR*, DWORD, DWORD, void*, DWORD) -> HRESULT {
            return E_ACCESSDENIED;
        });
    EXPECT_EQ(read().wmi.steps.back().name, "CoSetProxyBlanket");
    const Replaced noLocator(
        "CoCreateInstance", +[](REFCLSID, IUnknown*, DWORD, REFIID, void**) -> HRESULT {
            return S_OK; // without an object
        });
    EXPECT_EQ(read().wmi.steps.back().name, "CoCreateInstance");
    const Replaced noSecurity("CoInitializeSecurity", failSecurity<E_OUTOFMEMORY>);
    EXPECT_EQ(read().wmi.steps.back().name, "CoInitializeSecurity");
    const Replaced noApartment(
        "CoInitializeEx", +[](void*, DWORD) -> HRESULT { return E_UNEXPECTED; });
    const snapshot::Wmi wmi = read().wmi;
    ASSERT_EQ(wmi.steps.size(), 1u);
    EXPECT_EQ(wmi.steps[0].name, "CoInitializeEx");
    EXPECT_EQ(wmi.steps[0].result, E_UNEXPECTED);
}

// In the command, the library may have set it before.
TEST_F(ReadDesktopWithWmi, goes_on_when_security_was_set_before) {
    const Replaced call("CoInitializeSecurity", failSecurity<RPC_E_TOO_LATE>);
    const LocatorInFront inFront(provider);
    const snapshot::Wmi wmi = read().wmi;
    EXPECT_EQ(wmi.steps.at(1).result, RPC_E_TOO_LATE);
    EXPECT_EQ(wmi.steps.back().name, "IEnumWbemClassObject::Next");
}

TEST_F(ReadDesktopWithWmi, may_be_called_in_any_apartment) {
    const LocatorInFront inFront(provider);
    for (const DWORD model : {COINIT_APARTMENTTHREADED, COINIT_MULTITHREADED}) {
        std::thread([&] {
            ASSERT_EQ(CoInitializeEx(nullptr, model), S_OK);
            EXPECT_EQ(read().wmi.steps.back().name, "IEnumWbemClassObject::Next");
            CoUninitialize();
        }).join();
    }
}

TEST(ReadDesktopFailures, keep_a_monitor_without_information) {
    const Replaced call(
        "GetMonitorInfoW", +[](HMONITOR, LPMONITORINFO) -> BOOL { return FALSE; });
    const Reading reading = read();
    ASSERT_THAT(reading.monitors, Not(IsEmpty()));
    for (const Monitor& monitor : reading.monitors) {
        EXPECT_NE(monitor.handle, 0u);
        EXPECT_FALSE(monitor.informationRead);
        EXPECT_EQ(monitor.deviceName, L"");
        EXPECT_FALSE(monitor.currentMode);
        EXPECT_THAT(monitor.offeredModes, IsEmpty());
    }
}

TEST(ReadDesktopFailures, keep_a_monitor_without_settings) {
    const Replaced call(
        "EnumDisplaySettingsW", +[](LPCWSTR, DWORD, LPDEVMODEW) -> BOOL { return FALSE; });
    const Reading reading = read();
    ASSERT_THAT(reading.monitors, Not(IsEmpty()));
    for (const Monitor& monitor : reading.monitors) {
        EXPECT_TRUE(monitor.informationRead);
        EXPECT_FALSE(monitor.currentMode);
        EXPECT_THAT(monitor.offeredModes, IsEmpty());
    }
}

TEST(ReadDesktopFailures, keep_the_status_of_the_sizes) {
    const Replaced call(
        "GetDisplayConfigBufferSizes",
        +[](UINT32, UINT32*, UINT32*) -> LONG { return ERROR_ACCESS_DENIED; });
    const auto configuration = read().displayConfiguration;
    EXPECT_EQ(configuration.sizesStatus, ERROR_ACCESS_DENIED);
    EXPECT_EQ(configuration.queryStatus, ERROR_SUCCESS);
    EXPECT_THAT(configuration.paths, IsEmpty());
}

TEST(ReadDesktopFailures, keep_the_status_of_the_query) {
    const Replaced call(
        "QueryDisplayConfig",
        +[](UINT32, UINT32*, DISPLAYCONFIG_PATH_INFO*, UINT32*, DISPLAYCONFIG_MODE_INFO*,
            DISPLAYCONFIG_TOPOLOGY_ID*) -> LONG { return ERROR_INSUFFICIENT_BUFFER; });
    const auto configuration = read().displayConfiguration;
    EXPECT_EQ(configuration.sizesStatus, ERROR_SUCCESS);
    EXPECT_NE(configuration.announcedPaths, 0u);
    EXPECT_EQ(configuration.queryStatus, ERROR_INSUFFICIENT_BUFFER);
    EXPECT_THAT(configuration.paths, IsEmpty());
    EXPECT_THAT(configuration.modes, IsEmpty());
}

// A configuration with fewer paths than were announced is not continued with empty ones.
TEST(ReadDesktopFailures, keep_only_the_paths_that_were_written) {
    const Replaced call(
        "QueryDisplayConfig",
        +[](UINT32, UINT32* paths, DISPLAYCONFIG_PATH_INFO*, UINT32* modes,
            DISPLAYCONFIG_MODE_INFO*, DISPLAYCONFIG_TOPOLOGY_ID*) -> LONG {
            *paths = 1;
            *modes = 0;
            return ERROR_SUCCESS;
        });
    const auto configuration = read().displayConfiguration;
    EXPECT_EQ(configuration.paths.size(), 1u);
    EXPECT_THAT(configuration.modes, IsEmpty());
}

// Each request about a path fails in its own way: its status is its type.
LONG WINAPI failByType(DISPLAYCONFIG_DEVICE_INFO_HEADER* header) {
    return 1000 + static_cast<LONG>(header->type);
}

TEST(ReadDesktopFailures, keep_the_status_of_every_request_about_a_path) {
    const Replaced call("DisplayConfigGetDeviceInfo", failByType);
    const Reading reading = read();
    ASSERT_THAT(reading.displayConfiguration.paths, Not(IsEmpty()));
    for (const DisplayPath& path : reading.displayConfiguration.paths) {
        EXPECT_EQ(path.sourceName.status, 1001);
        EXPECT_EQ(path.targetName.status, 1002);
        EXPECT_EQ(path.preferredMode.status, 1003);
        EXPECT_EQ(path.advancedColor.status, 1009);
    }
}

} // namespace
} // namespace tests
