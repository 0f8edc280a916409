#pragma once

#include <windows.h>

#include <oleauto.h>

#include <cstdint>
#include <string>
#include <vector>

namespace simulation {

// Values of properties of WMI objects, made by the functions of oleaut32.dll. The caller owns the
// returned variant and releases it with VariantClear.

// A string; zeros inside are kept.
VARIANT stringVariant(const std::wstring& text);

// A variant of type VT_BSTR with a null pointer.
VARIANT nullStringVariant();

// An array of 32-bit integers: WMI returns arrays of 16-bit integers like that.
VARIANT integerArrayVariant(const std::vector<std::int32_t>& elements, LONG lowerBound = 0);

// The same, with one element for each unit of the text.
VARIANT unitsVariant(const std::wstring& text);

// A variant whose type says an array of claimedType, and that holds an array of elementType. Every
// byte of the elements has the given value.
VARIANT arrayVariant(VARTYPE claimedType, VARTYPE elementType,
                     const std::vector<SAFEARRAYBOUND>& bounds, std::uint8_t byte = 'A');

} // namespace simulation
