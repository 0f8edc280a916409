#include "benchmark/priced_displays.h"

#include "benchmark/measurement.h"

#include <algorithm>
#include <chrono>
#include <cstdint>

namespace bench {

namespace {

// The share of the measured time that each call takes: a tenth, or less when QueryDisplayConfig is
// unusually slow, which limits the duration of the benchmark.
double shareOf(const std::map<std::string, double>& prices) {
    constexpr double longestForEachPath = 40'000; // nanoseconds
    return std::min(0.1, longestForEachPath / prices.at("QueryDisplayConfig"));
}

std::size_t callCount = 0;

void pay(double nanoseconds) {
    using Clock = std::chrono::steady_clock;
    ++callCount;
    const auto end =
        Clock::now() + std::chrono::nanoseconds(static_cast<std::int64_t>(nanoseconds));
    while (Clock::now() < end) {
    }
}

// The number of prices that a call costs: one, or for QueryDisplayConfig one for each path.
template <typename... Arguments>
double units(Arguments...) {
    return 1;
}

double units(UINT32, UINT32* pathCount, DISPLAYCONFIG_PATH_INFO*, UINT32*, DISPLAYCONFIG_MODE_INFO*,
             DISPLAYCONFIG_TOPOLOGY_ID*) {
    return *pathCount;
}

// The replacement of one function. It waits for the function's price and calls the original.
template <int identity, typename Function>
struct Priced;

template <int identity, typename Result, typename... Arguments>
struct Priced<identity, Result(Arguments...)> {
    static inline Result (*original)(Arguments...) = nullptr;
    static inline double price = 0;

    static Result call(Arguments... arguments) {
        pay(price * units(arguments...));
        return original(arguments...);
    }
};

BOOL CALLBACK keepFirst(HMONITOR monitor, HDC, RECT*, LPARAM parameter) {
    auto& first = *reinterpret_cast<HMONITOR*>(parameter);
    first = first == nullptr ? monitor : first;
    return TRUE;
}

// Calls of the real desktop, with arguments for which they succeed.
class DesktopCalls {
public:
    DesktopCalls() {
        enumerate();
        information.cbSize = sizeof(information);
        readInformation();
        mode.dmSize = sizeof(mode);
        querySizes();
        query();
        source.header = {DISPLAYCONFIG_DEVICE_INFO_GET_SOURCE_NAME, sizeof(source),
                         paths[0].sourceInfo.adapterId, paths[0].sourceInfo.id};
    }

    void enumerate() {
        EnumDisplayMonitors(nullptr, nullptr, keepFirst, reinterpret_cast<LPARAM>(&monitor));
    }
    void readInformation() { GetMonitorInfoW(monitor, &information); }
    void readMode() { EnumDisplaySettingsW(information.szDevice, ENUM_CURRENT_SETTINGS, &mode); }
    void querySizes() {
        GetDisplayConfigBufferSizes(QDC_ONLY_ACTIVE_PATHS, &pathCount, &modeCount);
    }
    void query() {
        QueryDisplayConfig(QDC_ONLY_ACTIVE_PATHS, &pathCount, paths, &modeCount, modes, nullptr);
    }
    void readName() { DisplayConfigGetDeviceInfo(&source.header); }

    UINT32 pathCount = 0;

private:
    HMONITOR monitor = nullptr;
    MONITORINFOEXW information{};
    DEVMODEW mode{};
    DISPLAYCONFIG_PATH_INFO paths[64]{};
    DISPLAYCONFIG_MODE_INFO modes[128]{};
    UINT32 modeCount = 0;
    DISPLAYCONFIG_SOURCE_DEVICE_NAME source{};
};

} // namespace

std::map<std::string, double> pricesOfTheDesktop(std::size_t samples) {
    DesktopCalls calls;
    const auto times = medians({{[&] {
                                    calls.enumerate();
                                }},
                                {[&] {
                                    calls.readInformation();
                                }},
                                {[&] {
                                    calls.readMode();
                                }},
                                {[&] {
                                    calls.querySizes();
                                }},
                                {[&] { calls.query(); },
                                 [&] {
                                     calls.querySizes();
                                 }},
                                {[&] {
                                    calls.readName();
                                }}},
                               samples);
    return {{"EnumDisplayMonitors", times[0]},
            {"GetMonitorInfoW", times[1]},
            {"EnumDisplaySettingsW", times[2]},
            {"GetDisplayConfigBufferSizes", times[3]},
            {"QueryDisplayConfig", times[4] / calls.pathCount},
            {"DisplayConfigGetDeviceInfo", times[5]}};
}

PricedDisplays::PricedDisplays(HMODULE image, const std::map<std::string, double>& prices) {
    const double share = shareOf(prices);
    const auto replace = [&]<int identity, typename Function>(
                             const char* name, Priced<identity, Function> /*replacement*/) {
        using Replacement = Priced<identity, Function>;
        Replacement::price = share * prices.at(name);
        const auto& redirect =
            redirects.emplace_back(image, name, simulation::addressOf(Replacement::call));
        Replacement::original = reinterpret_cast<Function*>(redirect.original());
    };
    replace("EnumDisplayMonitors", Priced<0, decltype(EnumDisplayMonitors)>());
    replace("GetMonitorInfoW", Priced<1, decltype(GetMonitorInfoW)>());
    replace("EnumDisplaySettingsW", Priced<2, decltype(EnumDisplaySettingsW)>());
    replace("GetDisplayConfigBufferSizes", Priced<3, decltype(GetDisplayConfigBufferSizes)>());
    replace("QueryDisplayConfig", Priced<4, decltype(QueryDisplayConfig)>());
    replace("DisplayConfigGetDeviceInfo", Priced<5, decltype(DisplayConfigGetDeviceInfo)>());
}

std::size_t PricedDisplays::calls() {
    return callCount;
}

} // namespace bench
