#pragma once

#include <windows.h>

namespace tests {

// The version of Wine, such as "8.0". Null on Windows.
inline const char* wineVersion() {
    using Function = const char* CDECL();
    const FARPROC address = GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version");
    auto* const function = reinterpret_cast<Function*>(reinterpret_cast<void*>(address));
    return function != nullptr ? function() : nullptr;
}

} // namespace tests
