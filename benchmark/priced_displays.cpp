#include "benchmark/priced_displays.h"

#include "benchmark/measurement.h"

#include <chrono>
#include <vector>

namespace bench {

namespace {

constexpr double discount = 0.1;

std::size_t callCount = 0;

void pay(double nanoseconds) {
    using Clock = std::chrono::steady_clock;
    ++callCount;
    const auto end =
        Clock::now() + std::chrono::nanoseconds(static_cast<std::int64_t>(nanoseconds));
    while (Clock::now() < end) {
    }
}

// What a call costs, in units of its price: QueryDisplayConfig costs for each path.
template <typename... Arguments>
double units(Arguments...) {
    return 1;
}

double units(UINT32, UINT32* pathCount, DISPLAYCONFIG_PATH_INFO*, UINT32*, DISPLAYCONFIG_MODE_INFO*,
             DISPLAYCONFIG_TOPOLOGY_ID*) {
    return *pathCount;
}

// The redirected functions, each with its own original behind it.
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

} // namespace

std::map<std::string, double> pricesOfTheDesktop(std::size_t samples) {
    HMONITOR monitor = nullptr;
    const auto enumerate = [&] {
        EnumDisplayMonitors(nullptr, nullptr, keepFirst, reinterpret_cast<LPARAM>(&monitor));
    };
    enumerate();
    MONITORINFOEXW information{};
    information.cbSize = sizeof(information);
    DEVMODEW mode{};
    mode.dmSize = sizeof(mode);
    std::vector<DISPLAYCONFIG_PATH_INFO> paths(64);
    std::vector<DISPLAYCONFIG_MODE_INFO> modes(128);
    UINT32 pathCount = 0;
    UINT32 modeCount = 0;
    const auto querySizes = [&] {
        GetDisplayConfigBufferSizes(QDC_ONLY_ACTIVE_PATHS, &pathCount, &modeCount);
    };
    const auto query = [&] {
        QueryDisplayConfig(QDC_ONLY_ACTIVE_PATHS, &pathCount, paths.data(), &modeCount,
                           modes.data(), nullptr);
    };
    querySizes();
    query();
    DISPLAYCONFIG_SOURCE_DEVICE_NAME source{};
    source.header = {DISPLAYCONFIG_DEVICE_INFO_GET_SOURCE_NAME, sizeof(source),
                     paths[0].sourceInfo.adapterId, paths[0].sourceInfo.id};
    GetMonitorInfoW(monitor, &information);
    const auto times =
        medians({{enumerate},
                 {[&] {
                     GetMonitorInfoW(monitor, &information);
                 }},
                 {[&] {
                     EnumDisplaySettingsW(information.szDevice, ENUM_CURRENT_SETTINGS, &mode);
                 }},
                 {querySizes},
                 {query, querySizes},
                 {[&] {
                     DisplayConfigGetDeviceInfo(&source.header);
                 }}},
                samples);
    return {{"EnumDisplayMonitors", times[0]},
            {"GetMonitorInfoW", times[1]},
            {"EnumDisplaySettingsW", times[2]},
            {"GetDisplayConfigBufferSizes", times[3]},
            {"QueryDisplayConfig", times[4] / pathCount},
            {"DisplayConfigGetDeviceInfo", times[5]}};
}

PricedDisplays::PricedDisplays(HMODULE image, const std::map<std::string, double>& prices) {
    const auto replace = [&]<int identity, typename Function>(
                             const char* name, Priced<identity, Function> /*replacement*/) {
        using Replacement = Priced<identity, Function>;
        Replacement::price = discount * prices.at(name);
        const auto& redirect =
            redirects.emplace_back(image, name, tests::addressOf(Replacement::call));
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
