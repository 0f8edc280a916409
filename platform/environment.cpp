#include "platform/environment.h"

#include <windows.h>

namespace vorlen {

std::wstring environmentText(const wchar_t* variable) {
    std::wstring text;
    // The variable can grow between the size query and the read.
    for (DWORD size = GetEnvironmentVariableW(variable, nullptr, 0); size > text.size();) {
        text.resize(size);
        size = GetEnvironmentVariableW(variable, text.data(), size);
        if (size < text.size()) {
            text.resize(size);
            return text;
        }
    }
    return {};
}

} // namespace vorlen
