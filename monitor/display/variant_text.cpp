#include "monitor/display/variant_text.h"

#include "platform/owners.h"

#include <cstddef>
#include <cstdint>
#include <cwchar>

namespace {

std::wstring textOfString(BSTR text) {
    if (text == nullptr) {
        return {};
    }
    return {text, wcsnlen(text, SysStringLen(text))};
}

bool holdsIntegers(SAFEARRAY* array) {
    VARTYPE elementType = VT_EMPTY;
    return array != nullptr && SUCCEEDED(SafeArrayGetVartype(array, &elementType)) &&
           elementType == VT_I4;
}

// The number of elements in a dimension (1 is the first); 0 when its bounds cannot be read.
std::int64_t elementsAlong(SAFEARRAY* array, UINT dimension) {
    LONG lower = 0;
    LONG upper = 0;
    if (FAILED(SafeArrayGetLBound(array, dimension, &lower)) ||
        FAILED(SafeArrayGetUBound(array, dimension, &upper))) {
        return 0;
    }
    return std::int64_t{upper} - lower + 1;
}

// The number of elements of the first dimension; 0 when another dimension is empty, because the
// array then has no element.
std::size_t readableElements(SAFEARRAY* array) {
    for (UINT dimension = 2; dimension <= SafeArrayGetDim(array); ++dimension) {
        if (elementsAlong(array, dimension) <= 0) {
            return 0;
        }
    }
    const std::int64_t count = elementsAlong(array, 1);
    return count > 0 ? static_cast<std::size_t>(count) : 0;
}

std::wstring textOfIntegers(SAFEARRAY* array) {
    std::wstring text;
    if (!holdsIntegers(array)) {
        return text;
    }
    const std::size_t count = readableElements(array);
    void* data = nullptr;
    if (FAILED(SafeArrayAccessData(array, &data))) {
        return text;
    }
    const vorlen::SafeArrayAccess access(array);
    const auto* const elements = static_cast<const std::int32_t*>(data);
    if (elements == nullptr) {
        return text;
    }
    for (std::size_t i = 0; i < count; ++i) {
        const auto unit = static_cast<wchar_t>(elements[i] & 0xFFFF);
        if (unit == L'\0') {
            break;
        }
        text.push_back(unit);
    }
    return text;
}

} // namespace

std::wstring wstringFromVARIANT(VARIANT& value) {
    switch (V_VT(&value)) {
    case VT_BSTR:
        return textOfString(V_BSTR(&value));
    case VT_ARRAY | VT_I4:
        return textOfIntegers(V_ARRAY(&value));
    default:
        return {};
    }
}
