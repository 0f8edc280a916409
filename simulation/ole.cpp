#include "simulation/ole.h"

#include <stdexcept>
#include <string>

namespace simulation {

namespace {

template <typename Function>
void resolve(HMODULE library, Function*& function, const char* name) {
    const FARPROC address = GetProcAddress(library, name);
    if (address == nullptr) {
        throw std::runtime_error(std::string("oleaut32.dll does not export ") + name);
    }
    function = reinterpret_cast<Function*>(reinterpret_cast<void*>(address));
}

Ole resolveAll() {
    const HMODULE library = LoadLibraryW(L"oleaut32.dll");
    Ole functions{};
    resolve(library, functions.sysAllocString, "SysAllocString");
    resolve(library, functions.sysAllocStringLen, "SysAllocStringLen");
    resolve(library, functions.sysFreeString, "SysFreeString");
    resolve(library, functions.sysStringLen, "SysStringLen");
    resolve(library, functions.variantInit, "VariantInit");
    resolve(library, functions.variantClear, "VariantClear");
    resolve(library, functions.safeArrayCreate, "SafeArrayCreate");
    resolve(library, functions.safeArrayDestroy, "SafeArrayDestroy");
    resolve(library, functions.safeArrayAccessData, "SafeArrayAccessData");
    resolve(library, functions.safeArrayUnaccessData, "SafeArrayUnaccessData");
    resolve(library, functions.safeArrayGetVartype, "SafeArrayGetVartype");
    resolve(library, functions.safeArrayGetLBound, "SafeArrayGetLBound");
    resolve(library, functions.safeArrayGetUBound, "SafeArrayGetUBound");
    return functions;
}

} // namespace

const Ole& ole() {
    static const Ole functions = resolveAll();
    return functions;
}

} // namespace simulation
