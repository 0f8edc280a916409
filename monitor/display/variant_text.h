#pragma once

#include <windows.h>

#include <oleauto.h>

#include <string>

// The text of a WMI property value: of a string, or of an array of 32-bit integers that each hold
// one UTF-16 unit in their low 16 bits, in either case up to the first zero. Empty for every other
// type and for an array that cannot be read. The value stays the caller's. Any thread.
std::wstring wstringFromVARIANT(VARIANT& value);
