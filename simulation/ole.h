#pragma once

#include <windows.h>

#include <oleauto.h>

namespace simulation {

// The functions of oleaut32.dll, found by GetProcAddress. The simulation calls them even when the
// imports of its own program are redirected.
struct Ole {
    decltype(SysAllocString)* sysAllocString;
    decltype(SysAllocStringLen)* sysAllocStringLen;
    decltype(SysFreeString)* sysFreeString;
    decltype(SysStringLen)* sysStringLen;
    decltype(VariantInit)* variantInit;
    decltype(VariantClear)* variantClear;
    decltype(SafeArrayCreate)* safeArrayCreate;
    decltype(SafeArrayDestroy)* safeArrayDestroy;
    decltype(SafeArrayAccessData)* safeArrayAccessData;
    decltype(SafeArrayUnaccessData)* safeArrayUnaccessData;
    decltype(SafeArrayGetVartype)* safeArrayGetVartype;
    decltype(SafeArrayGetLBound)* safeArrayGetLBound;
    decltype(SafeArrayGetUBound)* safeArrayGetUBound;
};

const Ole& ole();

} // namespace simulation
