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

// Keeps account of the strings, variants and safe arrays that the image under test makes, is given
// and looks into. They are OLE's own: its functions do the work, unless a test lets one fail.
class OleValues : private Current<OleValues> {
public:
    OleValues(Redirects& redirects, Journal& calls);

    // For whoever fills a variant of the image: the variant must be initialised and empty. What it
    // holds afterwards is the image's to release.
    void fill(VARIANT* variant, const VARIANT& value);

    // What the image has not released so far, one entry each.
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
    mutable Mutex mutex;
    std::set<BSTR> strings;
    std::map<const VARIANTARG*, const void*> variants; // with the value that each was filled with
    std::multiset<SAFEARRAY*> accesses;
};

} // namespace simulation
