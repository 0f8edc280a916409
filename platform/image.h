#pragma once

#include <windows.h>

// The image that this code is part of: the library, or a program that links its objects. Any
// thread.

// Takes one more reference to the image, which stays loaded until the reference is given back with
// FreeLibrary or FreeLibraryAndExitThread. Throws std::system_error when the system refuses.
HMODULE referenceThisImage();

// Keeps the image loaded until the process ends. Without effect while the image is being unloaded.
void pinThisImage() noexcept;
