#include "simulation/ole_values.h"

#include "simulation/expect.h"
#include "simulation/ole.h"

#include <mutex>

namespace simulation {

namespace {

// The block of memory that the variant owns, or null.
const void* ownedBy(const VARIANT& variant) {
    const VARTYPE type = V_VT(&variant);
    const bool owns = (type & VT_BYREF) == 0 && (type == VT_BSTR || (type & VT_ARRAY) != 0);
    return owns ? V_BYREF(&variant) : nullptr;
}

HRESULT failure(std::int64_t status) {
    return static_cast<HRESULT>(status);
}

} // namespace

OleValues::OleValues(Redirects& redirects, Journal& calls) : journal(calls) {
    redirects.replace<decltype(SysAllocString)>("SysAllocString", sysAllocString);
    redirects.replace<decltype(SysFreeString)>("SysFreeString", sysFreeString);
    redirects.replace<decltype(VariantInit)>("VariantInit", variantInit);
    redirects.replace<decltype(VariantClear)>("VariantClear", variantClear);
    redirects.replace<decltype(SafeArrayAccessData)>("SafeArrayAccessData", accessData);
    redirects.replace<decltype(SafeArrayUnaccessData)>("SafeArrayUnaccessData", unaccessData);
    redirects.replace<decltype(SafeArrayGetVartype)>("SafeArrayGetVartype", getVartype);
    redirects.replace<decltype(SafeArrayGetLBound)>("SafeArrayGetLBound", getLowerBound);
    redirects.replace<decltype(SafeArrayGetUBound)>("SafeArrayGetUBound", getUpperBound);
}

void OleValues::fill(VARIANT* variant, const VARIANT& value) {
    const std::lock_guard lock(mutex);
    const auto known = variants.find(variant);
    SIMULATION_EXPECT(known != variants.end(),
                      "a value was read into a variant that was not initialised");
    SIMULATION_EXPECT(V_VT(variant) == VT_EMPTY,
                      "a value was read into a variant that holds another one");
    *variant = value;
    variants[variant] = ownedBy(value);
}

std::vector<std::string> OleValues::outstanding() const {
    const std::lock_guard lock(mutex);
    std::vector<std::string> result(strings.size(), "BSTR");
    result.insert(result.end(), variants.size(), "VARIANT");
    result.insert(result.end(), accesses.size(), "access to a SAFEARRAY");
    return result;
}

BSTR WINAPI OleValues::sysAllocString(const OLECHAR* text) {
    if (get().journal.enter("SysAllocString")) {
        return nullptr;
    }
    const BSTR made = ole().sysAllocString(text);
    const std::lock_guard lock(get().mutex);
    get().strings.insert(made);
    return made;
}

void WINAPI OleValues::sysFreeString(BSTR text) {
    get().journal.enter("SysFreeString");
    const std::lock_guard lock(get().mutex);
    SIMULATION_EXPECT(text == nullptr || get().strings.erase(text) == 1,
                      "a string was freed that was not allocated or is already free");
    ole().sysFreeString(text);
}

void WINAPI OleValues::variantInit(VARIANTARG* variant) {
    get().journal.enter("VariantInit");
    const std::lock_guard lock(get().mutex);
    SIMULATION_EXPECT(get().variants.emplace(variant, nullptr).second,
                      "a variant was initialised again without having been cleared");
    ole().variantInit(variant);
}

HRESULT WINAPI OleValues::variantClear(VARIANTARG* variant) {
    get().journal.enter("VariantClear");
    const std::lock_guard lock(get().mutex);
    const auto known = get().variants.find(variant);
    if (known == get().variants.end()) {
        report("a variant was cleared that is already clear or was never initialised");
        return DISP_E_BADVARTYPE;
    }
    SIMULATION_EXPECT(ownedBy(*variant) == known->second,
                      "the value of a variant was taken out of it");
    const HRESULT result = ole().variantClear(variant);
    SIMULATION_EXPECT(result == S_OK, "a variant could not be cleared: its safe array is in use");
    get().variants.erase(known);
    return result;
}

HRESULT WINAPI OleValues::accessData(SAFEARRAY* array, void** data) {
    if (const auto status = get().journal.enter("SafeArrayAccessData")) {
        return failure(*status);
    }
    const HRESULT result = ole().safeArrayAccessData(array, data);
    if (SUCCEEDED(result)) {
        const std::lock_guard lock(get().mutex);
        get().accesses.insert(array);
    }
    return result;
}

HRESULT WINAPI OleValues::unaccessData(SAFEARRAY* array) {
    get().journal.enter("SafeArrayUnaccessData");
    const std::lock_guard lock(get().mutex);
    const auto access = get().accesses.find(array);
    if (access == get().accesses.end()) {
        report("SafeArrayUnaccessData was called without SafeArrayAccessData");
        return E_UNEXPECTED;
    }
    get().accesses.erase(access);
    return ole().safeArrayUnaccessData(array);
}

HRESULT WINAPI OleValues::getVartype(SAFEARRAY* array, VARTYPE* type) {
    const auto status = get().journal.enter("SafeArrayGetVartype");
    return status ? failure(*status) : ole().safeArrayGetVartype(array, type);
}

HRESULT WINAPI OleValues::getLowerBound(SAFEARRAY* array, UINT dimension, LONG* bound) {
    const auto status = get().journal.enter("SafeArrayGetLBound");
    return status ? failure(*status) : ole().safeArrayGetLBound(array, dimension, bound);
}

HRESULT WINAPI OleValues::getUpperBound(SAFEARRAY* array, UINT dimension, LONG* bound) {
    const auto status = get().journal.enter("SafeArrayGetUBound");
    return status ? failure(*status) : ole().safeArrayGetUBound(array, dimension, bound);
}

} // namespace simulation
