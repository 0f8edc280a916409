#pragma once

#include <windows.h>

#include <oleauto.h>

#include <cstdint>
#include <string>
#include <vector>

namespace simulation {

// Values as properties of WMI objects have them, made by OLE's own functions. Each belongs to who
// asked for it, and is released with VariantClear.

// A string; zeros inside are kept.
VARIANT stringVariant(const std::wstring& text);

// A string variant without a string.
VARIANT nullStringVariant();

// An array of 32-bit integers, as WMI delivers its arrays of 16-bit ones; with any lower bound.
VARIANT integerArrayVariant(const std::vector<std::int32_t>& elements, LONG lowerBound = 0);

// The same, one element for every unit of the text.
VARIANT unitsVariant(const std::wstring& text);

// A variant that claims to hold an array of one type and holds one of another, whose bytes are all
// those given.
VARIANT arrayVariant(VARTYPE claimedType, VARTYPE elementType,
                     const std::vector<SAFEARRAYBOUND>& bounds, std::uint8_t byte = 'A');

} // namespace simulation
