#include "platform/environment.h"
#include "snapshot/parts.h"

#include <lmcons.h>

#include <array>

namespace snapshot {

namespace {

// A function of ntdll that its import library does not declare, or that Windows does not have.
template <typename Function>
Function* functionOfNtdll(const char* name) {
    const FARPROC address = GetProcAddress(GetModuleHandleW(L"ntdll.dll"), name);
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(address));
}

// GetVersionExW returns the version that the program's manifest asks for.
std::string windowsVersion() {
    auto* const rtlGetVersion = functionOfNtdll<LONG WINAPI(OSVERSIONINFOW*)>("RtlGetVersion");
    OSVERSIONINFOW version{};
    version.dwOSVersionInfoSize = sizeof(version);
    if (rtlGetVersion == nullptr || rtlGetVersion(&version) != 0) {
        return {};
    }
    return std::to_string(version.dwMajorVersion) + "." + std::to_string(version.dwMinorVersion) +
           "." + std::to_string(version.dwBuildNumber);
}

std::string wineVersion() {
    auto* const wineGetVersion = functionOfNtdll<const char * CDECL()>("wine_get_version");
    return wineGetVersion != nullptr ? wineGetVersion() : std::string();
}

std::wstring userName() {
    std::array<wchar_t, UNLEN + 1> name{};
    auto units = static_cast<DWORD>(name.size());
    return GetUserNameW(name.data(), &units) != FALSE ? name.data() : std::wstring();
}

} // namespace

Process readProcess() {
    Process process;
    process.dpiAwareness = GetAwarenessFromDpiAwarenessContext(GetThreadDpiAwarenessContext());
    process.remoteSession = GetSystemMetrics(SM_REMOTESESSION) != 0;
    process.userName = userName();
    process.windowsVersion = windowsVersion();
    process.wineVersion = wineVersion();
    process.kitModels = vorlen::environmentText(L"VORLEN_KIT_MODELS");
    return process;
}

} // namespace snapshot
