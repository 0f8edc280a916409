#include "platform/image.h"

#include <system_error>

namespace vorlen {

namespace {

BOOL findThisImage(DWORD flags, HMODULE& image) {
    return GetModuleHandleExW(flags | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                              reinterpret_cast<LPCWSTR>(&findThisImage), &image);
}

} // namespace

HMODULE referenceThisImage() {
    HMODULE image = nullptr;
    if (findThisImage(0, image) == FALSE) {
        throw std::system_error(static_cast<int>(GetLastError()), std::system_category());
    }
    return image;
}

void pinThisImage() noexcept {
    HMODULE image = nullptr;
    findThisImage(GET_MODULE_HANDLE_EX_FLAG_PIN, image);
}

} // namespace vorlen
