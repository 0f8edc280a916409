#include "simulation/variants.h"

#include "simulation/ole.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>

namespace simulation {

namespace {

VARIANT variantOf(VARTYPE type, void* value) {
    VARIANT variant;
    ole().variantInit(&variant);
    V_VT(&variant) = type;
    V_BYREF(&variant) = value;
    return variant;
}

SAFEARRAY* makeArray(VARTYPE elementType, std::vector<SAFEARRAYBOUND> bounds) {
    SAFEARRAY* const array =
        ole().safeArrayCreate(elementType, static_cast<UINT>(bounds.size()), bounds.data());
    if (array == nullptr) {
        throw std::runtime_error("a safe array cannot be made");
    }
    return array;
}

} // namespace

VARIANT stringVariant(const std::wstring& text) {
    return variantOf(VT_BSTR,
                     ole().sysAllocStringLen(text.c_str(), static_cast<UINT>(text.size())));
}

VARIANT nullStringVariant() {
    return variantOf(VT_BSTR, nullptr);
}

VARIANT integerArrayVariant(const std::vector<std::int32_t>& elements, LONG lowerBound) {
    SAFEARRAY* const array = makeArray(VT_I4, {{static_cast<ULONG>(elements.size()), lowerBound}});
    if (!elements.empty()) {
        std::ranges::copy(elements, static_cast<std::int32_t*>(array->pvData));
    }
    return variantOf(VT_ARRAY | VT_I4, array);
}

VARIANT unitsVariant(const std::wstring& text) {
    return integerArrayVariant({text.begin(), text.end()});
}

VARIANT arrayVariant(VARTYPE claimedType, VARTYPE elementType,
                     const std::vector<SAFEARRAYBOUND>& bounds, std::uint8_t byte) {
    SAFEARRAY* const array = makeArray(elementType, bounds);
    std::size_t size = array->cbElements;
    for (const SAFEARRAYBOUND& bound : bounds) {
        size *= bound.cElements;
    }
    if (size != 0) {
        std::memset(array->pvData, byte, size);
    }
    return variantOf(static_cast<VARTYPE>(VT_ARRAY | claimedType), array);
}

} // namespace simulation
