#include "tests/acceptance/system.h"

#include "tests/support/wine.h"

#include <windows.h>

namespace tests {

namespace {

// Unlike GetVersionExW it does not depend on the manifest of the program.
OSVERSIONINFOEXW versionOfWindows() {
    OSVERSIONINFOEXW version{};
    version.dwOSVersionInfoSize = sizeof(version);
    using Read = LONG WINAPI(OSVERSIONINFOEXW*);
    const FARPROC read = GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "RtlGetVersion");
    if (read != nullptr) {
        reinterpret_cast<Read*>(reinterpret_cast<void*>(read))(&version);
    }
    return version;
}

std::string nameOf(const OSVERSIONINFOEXW& version) {
    constexpr DWORD firstOfWindows11 = 22'000;
    if (version.wProductType != VER_NT_WORKSTATION) {
        return "Windows Server";
    }
    if (version.dwMajorVersion == 10) {
        return version.dwBuildNumber >= firstOfWindows11 ? "Windows 11" : "Windows 10";
    }
    return "Windows " + std::to_string(version.dwMajorVersion);
}

bool isAdministrator() {
    HANDLE token = nullptr;
    TOKEN_ELEVATION elevation{};
    DWORD size = 0;
    if (OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token) != FALSE) {
        GetTokenInformation(token, TokenElevation, &elevation, sizeof(elevation), &size);
        CloseHandle(token);
    }
    return elevation.TokenIsElevated != 0;
}

} // namespace

System thisSystem() {
    if (const char* const wine = wineVersion()) {
        const std::string version = wine;
        return {"Wine " + version.substr(0, version.find('.')), version, isAdministrator()};
    }
    const OSVERSIONINFOEXW version = versionOfWindows();
    return {nameOf(version),
            std::to_string(version.dwMajorVersion) + '.' + std::to_string(version.dwMinorVersion) +
                '.' + std::to_string(version.dwBuildNumber),
            isAdministrator()};
}

} // namespace tests
