#include "monitor/service/narrow.h"

#include <algorithm>

namespace vorlen {

std::string narrow(std::wstring_view text) {
    std::string bytes(text.size(), '\0');
    std::transform(text.begin(), text.end(), bytes.begin(),
                   [](wchar_t unit) { return static_cast<char>(unit & 0xFF); });
    return bytes;
}

} // namespace vorlen
