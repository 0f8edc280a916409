#include "platform/file.h"

#include <algorithm>
#include <cstddef>
#include <limits>

namespace vorlen {

bool writeAll(HANDLE file, std::string_view bytes) {
    constexpr std::size_t most = std::numeric_limits<DWORD>::max();
    while (!bytes.empty()) {
        DWORD written = 0;
        const auto length = static_cast<DWORD>(std::min(bytes.size(), most));
        // For a pipe, WriteFile may write a part of the bytes and report success.
        if (WriteFile(file, bytes.data(), length, &written, nullptr) == FALSE) {
            return false;
        }
        if (written == 0) {
            SetLastError(ERROR_WRITE_FAULT);
            return false;
        }
        bytes.remove_prefix(written);
    }
    return true;
}

} // namespace vorlen
