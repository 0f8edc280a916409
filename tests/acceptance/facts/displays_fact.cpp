// Facts about monitors and the display configuration.

#include "platform/for_each.h"
#include "platform/text.h"
#include "tests/acceptance/facts/answers.h"
#include "tests/acceptance/facts/finding.h"

#include <windows.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <optional>
#include <regex>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace tests {
namespace {

struct Screen {
    std::wstring deviceName;
    RECT rectangle{};
    std::optional<DEVMODEW> mode;
};

std::optional<DEVMODEW> modeOf(const std::wstring& deviceName) {
    DEVMODEW mode{};
    mode.dmSize = sizeof(mode);
    return EnumDisplaySettingsW(deviceName.c_str(), ENUM_CURRENT_SETTINGS, &mode) != FALSE
               ? std::optional(mode)
               : std::nullopt;
}

std::vector<Screen> screens() {
    std::vector<Screen> all;
    vorlen::forEachMonitor([&](HMONITOR monitor) {
        MONITORINFOEXW info{};
        info.cbSize = sizeof(info);
        if (GetMonitorInfoW(monitor, &info) != FALSE) {
            const std::wstring name = vorlen::textOf(info.szDevice);
            all.push_back({name, info.rcMonitor, modeOf(name)});
        }
    });
    return all;
}

// The same screens for a thread with the awareness.
std::vector<Screen> screensFor(DPI_AWARENESS_CONTEXT awareness) {
    const DPI_AWARENESS_CONTEXT before = SetThreadDpiAwarenessContext(awareness);
    std::vector<Screen> all = screens();
    SetThreadDpiAwarenessContext(before);
    return all;
}

// Fact: What does `EnumDisplaySettingsW` give for an empty device name?
// Relied on by: `monitor/display/display_settings.cpp`
// Simulated: nothing
TEST(DisplaySettings, of_an_empty_device_name) {
    const auto mode = modeOf(L"");
    if (!mode) {
        return answer("nothing");
    }
    const bool isPrimary = mode->dmPosition.x == 0 && mode->dmPosition.y == 0;
    answer(isPrimary ? "those of the primary monitor" : "those of another monitor");
}

// Fact: What does `GetMonitorInfoW` return for a handle of no monitor?
// Relied on by: `monitor/display/display_settings.cpp`
// Simulated: 0
TEST(DisplaySettings, of_a_handle_of_no_monitor) {
    MONITORINFOEXW info{};
    info.cbSize = sizeof(info);
    const auto none = reinterpret_cast<HMONITOR>(INT_PTR{0x7EDCBA98});
    answer(std::to_string(GetMonitorInfoW(none, &info)));
    detail("last error", std::to_string(GetLastError()));
}

// Fact: Does `EnumDisplaySettingsW` give the same numbers to a program that is not aware of DPI?
// Relied on by: `monitor/display/display_settings.cpp`, `docs/host-guide.md`
// Simulated: yes
TEST(DisplaySettings, for_a_program_that_is_not_aware_of_dpi) {
    const auto unaware = screensFor(DPI_AWARENESS_CONTEXT_UNAWARE);
    const auto aware = screensFor(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE);
    ASSERT_EQ(unaware.size(), aware.size());
    bool sameRectangles = true;
    bool sameModes = true;
    for (std::size_t i = 0; i < aware.size(); ++i) {
        sameRectangles = sameRectangles && EqualRect(&unaware[i].rectangle, &aware[i].rectangle);
        ASSERT_EQ(unaware[i].mode.has_value(), aware[i].mode.has_value());
        sameModes = sameModes && (!aware[i].mode ||
                                  (unaware[i].mode->dmPelsWidth == aware[i].mode->dmPelsWidth &&
                                   unaware[i].mode->dmPelsHeight == aware[i].mode->dmPelsHeight &&
                                   unaware[i].mode->dmPosition.x == aware[i].mode->dmPosition.x));
    }
    if (sameRectangles) {
        return notMeasured("no monitor is scaled: set the scale of one to 150 %, and run this "
                           "again");
    }
    answer(sameModes ? "yes" : "no");
}

struct Configuration {
    LONG sizes = ERROR_SUCCESS;
    LONG query = ERROR_SUCCESS;
    UINT32 announced = 0;
    std::vector<DISPLAYCONFIG_PATH_INFO> paths;
};

// As the library reads it, with room for this many modes less than announced.
Configuration readConfiguration(UINT32 modesLess = 0) {
    Configuration read;
    UINT32 modeCount = 0;
    read.sizes = GetDisplayConfigBufferSizes(QDC_ONLY_ACTIVE_PATHS, &read.announced, &modeCount);
    if (read.sizes != ERROR_SUCCESS || modeCount < modesLess) {
        return read;
    }
    UINT32 pathCount = read.announced;
    modeCount -= modesLess;
    read.paths.resize(pathCount);
    std::vector<DISPLAYCONFIG_MODE_INFO> modes(modeCount);
    read.query = QueryDisplayConfig(QDC_ONLY_ACTIVE_PATHS, &pathCount, read.paths.data(),
                                    &modeCount, modes.data(), nullptr);
    if (read.query == ERROR_SUCCESS) {
        read.paths.resize(pathCount);
    }
    return read;
}

LONG requestSourceName(const DISPLAYCONFIG_PATH_INFO& path, std::wstring& deviceName) {
    DISPLAYCONFIG_SOURCE_DEVICE_NAME name{};
    name.header = {DISPLAYCONFIG_DEVICE_INFO_GET_SOURCE_NAME, sizeof(name),
                   path.sourceInfo.adapterId, path.sourceInfo.id};
    const LONG status = DisplayConfigGetDeviceInfo(&name.header);
    deviceName = vorlen::textOf(name.viewGdiDeviceName);
    return status;
}

// With the adapter id of the source, as the library asks.
LONG requestTargetName(const DISPLAYCONFIG_PATH_INFO& path, std::wstring& devicePath) {
    DISPLAYCONFIG_TARGET_DEVICE_NAME name{};
    name.header = {DISPLAYCONFIG_DEVICE_INFO_GET_TARGET_NAME, sizeof(name),
                   path.sourceInfo.adapterId, path.targetInfo.id};
    const LONG status = DisplayConfigGetDeviceInfo(&name.header);
    devicePath = vorlen::textOf(name.monitorDevicePath);
    return status;
}

class DisplayConfiguration : public testing::Test {
protected:
    void SetUp() override {
        detail("sizes", std::to_string(configuration.sizes));
        detail("query", std::to_string(configuration.query));
        detail("paths", std::to_string(configuration.paths.size()));
        if (configuration.paths.empty()) {
            notMeasured("this session has no display path: run this on the desktop of the machine, "
                        "not over a remote connection");
        }
    }

    const Configuration configuration = readConfiguration();
};

// Fact: How many paths does `GetDisplayConfigBufferSizes` announce?
// Relied on by: `monitor/display/display_paths.cpp`
// Simulated: as many as there are
TEST_F(DisplayConfiguration, announces_its_paths) {
    answer(configuration.announced == configuration.paths.size() ? "as many as there are"
                                                                 : "more than there are");
}

// Fact: What does `QueryDisplayConfig` return when it gets room for one mode less?
// Relied on by: `monitor/display/display_paths.cpp`
// Simulated: 122
TEST_F(DisplayConfiguration, read_into_too_little_room) {
    answer(std::to_string(readConfiguration(1).query));
}

// Fact: Has every monitor a path with its device name?
// Relied on by: `monitor/display/enumeration.cpp`
// Simulated: yes
TEST_F(DisplayConfiguration, names_every_monitor) {
    std::set<std::wstring> named;
    for (const auto& path : configuration.paths) {
        std::wstring deviceName;
        requestSourceName(path, deviceName);
        named.insert(deviceName);
    }
    const auto all = screens();
    const auto count = std::count_if(all.begin(), all.end(), [&](const Screen& screen) {
        return named.contains(screen.deviceName);
    });
    detail("monitors", std::to_string(all.size()));
    detail("with a path", std::to_string(count));
    answer(static_cast<std::size_t>(count) == all.size() ? "yes" : "no");
}

// Fact: What does the request for the name of a target return with the adapter id of the source?
// Relied on by: `monitor/display/display_paths.cpp`
// Simulated: 0
TEST_F(DisplayConfiguration, names_a_target_by_the_adapter_of_its_source) {
    std::set<std::string> results;
    bool sameAdapters = true;
    for (const auto& path : configuration.paths) {
        std::wstring devicePath;
        results.insert(std::to_string(requestTargetName(path, devicePath)));
        sameAdapters =
            sameAdapters && path.sourceInfo.adapterId.LowPart == path.targetInfo.adapterId.LowPart;
    }
    detail("adapters of source and target", sameAdapters ? "the same" : "different");
    answer(joined(results, "no path"));
}

// Fact: Do both requests for names fail for a path that is all zeros?
// Relied on by: `monitor/display/display_paths.cpp`
// Simulated: yes
TEST_F(DisplayConfiguration, names_nothing_of_a_path_of_zeros) {
    std::wstring text;
    const LONG source = requestSourceName({}, text);
    const LONG target = requestTargetName({}, text);
    detail("source", std::to_string(source));
    detail("target", std::to_string(target));
    answer(source != ERROR_SUCCESS && target != ERROR_SUCCESS ? "yes" : "no");
}

// Fact: Which form has the device path of a monitor?
// Relied on by: `monitor/display/monitor_identification.cpp`
// Simulated: \\?\DISPLAY#model#instance#{interface}
TEST_F(DisplayConfiguration, names_device_paths_of_one_form) {
    const std::wregex usual(LR"(\\\\\?\\DISPLAY#[^#]+#[^#]+#\{[0-9A-Fa-f-]+\})");
    std::set<std::string> forms;
    for (const auto& path : configuration.paths) {
        std::wstring devicePath;
        if (requestTargetName(path, devicePath) == ERROR_SUCCESS) {
            const std::wstring letters = std::regex_replace(devicePath, std::wregex(L"\\w+"), L"x");
            forms.insert(std::regex_match(devicePath, usual)
                             ? R"(\\?\DISPLAY#model#instance#{interface})"
                             : "another: " + vorlen::toUtf8Lossy(letters));
        }
    }
    answer(joined(forms, "no device path"));
}

// Fact: Which whole number does `EnumDisplaySettingsW` give for a rate such as 59.94 Hz?
// Relied on by: `monitor/service/status_check.cpp`, `docs/host-guide.md`
// Simulated: -
TEST_F(DisplayConfiguration, has_rates_that_are_no_whole_numbers) {
    std::set<std::string> found;
    for (const auto& path : configuration.paths) {
        std::wstring deviceName;
        requestSourceName(path, deviceName);
        const auto mode = modeOf(deviceName);
        const auto& rate = path.targetInfo.refreshRate;
        const double exact = rate.Denominator == 0 ? 0 : double(rate.Numerator) / rate.Denominator;
        if (mode && std::abs(exact - std::round(exact)) > 0.005) {
            detail("rate", std::to_string(exact) + " is given as " +
                               std::to_string(mode->dmDisplayFrequency));
            found.insert(mode->dmDisplayFrequency == static_cast<DWORD>(exact) ? "the lower one"
                         : mode->dmDisplayFrequency == static_cast<DWORD>(std::lround(exact))
                             ? "the nearest one"
                             : "another one");
        }
    }
    if (found.empty()) {
        return notMeasured("every monitor has a rate that is a whole number: choose 59.94 Hz for "
                           "one, and run this again");
    }
    answer(joined(found, ""));
}

// Asks again and again on a thread of its own, and collects the distinct outcomes.
class Asker {
public:
    Asker() : thread([this] { ask(); }) {}
    ~Asker() { stop(); }
    Asker(const Asker&) = delete;
    Asker& operator=(const Asker&) = delete;

    void stop() {
        ended = true;
        if (thread.joinable()) {
            thread.join();
        }
    }
    std::set<LONG> failures; // to be read after stop()
    int questions = 0;

private:
    void ask() {
        while (!ended) {
            const Configuration configuration = readConfiguration();
            ++questions;
            for (const LONG status : {configuration.sizes, configuration.query}) {
                if (status != ERROR_SUCCESS) {
                    failures.insert(status);
                }
            }
        }
    }

    std::atomic<bool> ended = false;
    std::thread thread;
};

bool isSame(const Screen& one, const Screen& other) {
    const auto& first = one.mode;
    const auto& second = other.mode;
    return one.deviceName == other.deviceName && EqualRect(&one.rectangle, &other.rectangle) &&
           first.has_value() == second.has_value() &&
           (!first || (first->dmPelsWidth == second->dmPelsWidth &&
                       first->dmPelsHeight == second->dmPelsHeight &&
                       first->dmDisplayFrequency == second->dmDisplayFrequency &&
                       first->dmDisplayOrientation == second->dmDisplayOrientation));
}

// Whether the monitors and the number of their paths are read twice as before, within a minute.
bool settleAs(const std::vector<Screen>& before, std::size_t paths) {
    constexpr DWORD betweenReadings = 50; // milliseconds
    const ULONGLONG end = GetTickCount64() + 60'000;
    int same = 0;
    while (same < 2 && GetTickCount64() < end) {
        const bool isAsBefore = std::ranges::equal(screens(), before, isSame) &&
                                readConfiguration().paths.size() == paths;
        same = isAsBefore ? same + 1 : 0;
        Sleep(betweenReadings);
    }
    return same == 2;
}

// Fact: Can the display configuration be read while a display mode is set? (The mode is the one
// that the monitor has; the screen may be dark for a moment.)
// Relied on by: `monitor/display/display_paths.cpp`
// Simulated: -
TEST_F(DisplayConfiguration, is_read_during_a_change) {
    const auto all = screens();
    ASSERT_FALSE(all.empty());
    auto mode = all.front().mode; // all of it: a monitor may be turned
    ASSERT_TRUE(mode.has_value());
    Asker asker;
    const LONG result = ChangeDisplaySettingsExW(all.front().deviceName.c_str(), &*mode, nullptr,
                                                 CDS_RESET, nullptr);
    asker.stop();
    if (!settleAs(all, configuration.paths.size())) {
        ChangeDisplaySettingsExW(nullptr, nullptr, nullptr, 0, nullptr); // what the user has stored
        FAIL() << "the displays were not as before";
    }
    if (result != DISP_CHANGE_SUCCESSFUL) {
        return notMeasured("the mode could not be set: " + std::to_string(result));
    }
    std::vector<std::string> numbers;
    for (const LONG status : asker.failures) {
        numbers.push_back(std::to_string(status));
    }
    detail("questions", std::to_string(asker.questions));
    detail("failures", joined(numbers, "none"));
    answer(asker.failures.empty() ? "always" : "not always");
}

} // namespace
} // namespace tests
