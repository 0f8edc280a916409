#include "monitor/platform/image.h"

#include <system_error>

HMODULE referenceThisImage() {
    HMODULE image = nullptr;
    if (GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                           reinterpret_cast<LPCWSTR>(&referenceThisImage), &image) == FALSE) {
        throw std::system_error(static_cast<int>(GetLastError()), std::system_category());
    }
    return image;
}
