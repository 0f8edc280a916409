#include "tools/vorlen-monitor/failure.h"

#include "platform/text.h"

#include <array>
#include <charconv>

namespace vorlen::tool {

namespace {

// An HRESULT is known by its hexadecimal number, another error by its decimal one.
std::string numberText(DWORD error) {
    if (SUCCEEDED(static_cast<HRESULT>(error))) {
        return std::to_string(error);
    }
    std::array<char, 16> text{};
    char* const end = std::to_chars(text.data(), text.data() + text.size(), error, 16).ptr;
    return "0x" + std::string(text.data(), end);
}

} // namespace

std::string unexpected(const std::exception* error) {
    return std::string("unexpected error: ") +
           (error != nullptr ? error->what() : "an exception of unknown type");
}

std::string systemError(DWORD error) {
    std::array<wchar_t, 512> buffer{};
    // The width mask joins the lines of a message to one line.
    const DWORD flags =
        FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK;
    const DWORD length = FormatMessageW(flags, nullptr, error, 0, buffer.data(),
                                        static_cast<DWORD>(buffer.size()), nullptr);
    std::string message = toUtf8Lossy({buffer.data(), length});
    message.erase(message.find_last_not_of(" .\r\n") + 1);
    const std::string number = "error " + numberText(error);
    return message.empty() ? number : number + ": " + message;
}

} // namespace vorlen::tool
