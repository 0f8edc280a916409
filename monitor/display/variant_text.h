#pragma once

#include <windows.h>

#include <oleauto.h>

#include <string>

// The text of a WMI property value, up to its first zero. The value is a string or an array of
// 32-bit integers, each of which holds one UTF-16 unit in its low 16 bits. Empty for other types
// and for an array that cannot be read. The value stays the caller's. Any thread.
std::wstring wstringFromVARIANT(VARIANT& value);
