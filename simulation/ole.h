#pragma once

#include <windows.h>

#include <oleauto.h>

namespace simulation {

// OLE's own functions, for simulations: also a program whose imports of them are redirected reaches
// them here.
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
