#include "tools/vorlen-monitor/recording_file.h"

#include "platform/safe_text.h"
#include "snapshot/recording.h"
#include "tools/vorlen-monitor/failure.h"

#include <windows.h>

#include <array>
#include <cstddef>
#include <memory>

namespace vorlen::tool {

namespace {

// Several times that of 100,000 windows. A device such as /dev/zero has no end.
constexpr std::size_t largestMegabytes = 256;

Failure failure(const std::string& file, const std::string& reason) {
    return {ExitCode::usage, "cannot replay \"" + file + "\": " + reason};
}

std::string contentOf(const std::string& file) {
    const HANDLE handle = CreateFileW(toUtf16Lossy(file).c_str(), GENERIC_READ, FILE_SHARE_READ,
                                      nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE) {
        throw failure(file, systemError(GetLastError()));
    }
    const std::unique_ptr<void, decltype(&CloseHandle)> owner(handle, CloseHandle);
    std::string content;
    std::array<char, 4096> part{};
    for (;;) {
        DWORD length = 0;
        if (ReadFile(handle, part.data(), static_cast<DWORD>(part.size()), &length, nullptr) ==
            FALSE) {
            throw failure(file, systemError(GetLastError()));
        }
        if (length == 0) {
            return content;
        }
        content.append(part.data(), length);
        if (content.size() > largestMegabytes * 1024 * 1024) {
            throw failure(file, "it is larger than " + std::to_string(largestMegabytes) +
                                    " MB: it is not a recording");
        }
    }
}

} // namespace

snapshot::Reading readRecording(const std::string& file) {
    try {
        return snapshot::fromRecording(contentOf(file));
    } catch (const snapshot::RecordingError& error) {
        throw failure(file, error.what());
    }
}

} // namespace vorlen::tool
