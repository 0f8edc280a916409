#pragma once

#include <windows.h>

namespace vorlen {

// The image that this code is part of: the library, or a program that links its object files. Any
// thread.

// Adds a reference to the image, which stays loaded until the caller releases the reference with
// FreeLibrary or FreeLibraryAndExitThread. Throws std::system_error when the system adds none.
HMODULE referenceThisImage();

// Keeps the image loaded until the process ends. Has no effect while the image is being unloaded.
void pinThisImage() noexcept;

} // namespace vorlen
