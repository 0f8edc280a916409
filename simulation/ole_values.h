#pragma once

#include "platform/locks.h"
#include "simulation/current.h"
#include "simulation/journal.h"
#include "simulation/redirects.h"

#include <windows.h>

#include <oleauto.h>

#include <map>
#include <set>
#include <string>
#include <vector>

namespace simulation {

// Records the strings that the image allocates, the variants that it initialises and the safe
// arrays that it accesses, until it releases them. The functions of oleaut32.dll do the work
// unless a test makes a call fail.
class OleValues : private Current<OleValues> {
public:
    OleValues(Redirects& redirects, Journal& calls);

    // Writes a value into a variant of the image, which must be initialised and empty. The image
    // has to release the value.
    void fill(VARIANT* variant, const VARIANT& value);

    // The kinds of the values that the image has not released, one entry for each.
    std::vector<std::string> outstanding() const;

private:
    friend class Current<OleValues>;
    static BSTR WINAPI sysAllocString(const OLECHAR* text);
    static void WINAPI sysFreeString(BSTR text);
    static void WINAPI variantInit(VARIANTARG* variant);
    static HRESULT WINAPI variantClear(VARIANTARG* variant);
    static HRESULT WINAPI accessData(SAFEARRAY* array, void** data);
    static HRESULT WINAPI unaccessData(SAFEARRAY* array);
    static HRESULT WINAPI getVartype(SAFEARRAY* array, VARTYPE* type);
    static HRESULT WINAPI getLowerBound(SAFEARRAY* array, UINT dimension, LONG* bound);
    static HRESULT WINAPI getUpperBound(SAFEARRAY* array, UINT dimension, LONG* bound);

    Journal& journal;
    mutable vorlen::Mutex mutex;
    std::set<BSTR> strings;
    std::map<const VARIANTARG*, const void*> variants; // with the memory of each variant's value
    std::multiset<SAFEARRAY*> accesses;
};

} // namespace simulation
