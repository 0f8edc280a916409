#pragma once

#include "platform/image.h"
#include "platform/scope.h"

#include <windows.h>

#include <comdef.h>
#include <oleauto.h>

#include <memory>

// Owners of what the system allocates: std::unique_ptr with the function that releases it. COM
// objects are held by ComPtr, variants by _variant_t. Strings are not held by _bstr_t: it
// allocates additional memory, and throws another exception when memory is exhausted.

namespace vorlen {

struct ReleaseEventHook {
    using pointer = HWINEVENTHOOK;
    // Keeps the thread's last error unchanged. Windows lets only the thread that installed a hook
    // release it. When the release fails, the hook stays until that thread ends, so the image with
    // its procedure has to stay loaded.
    void operator()(HWINEVENTHOOK hook) const {
        const LastErrorKeeper lastErrorKeeper;
        if (UnhookWinEvent(hook) == FALSE) {
            pinThisImage();
        }
    }
};
using EventHook = std::unique_ptr<HWINEVENTHOOK__, ReleaseEventHook>;

struct FreeComString {
    void operator()(BSTR text) const { SysFreeString(text); }
};
using ComString = std::unique_ptr<OLECHAR, FreeComString>;

// Throws _com_error with E_OUTOFMEMORY when the string cannot be made.
inline ComString makeComString(const wchar_t* characters) {
    ComString text(SysAllocString(characters));
    if (!text) {
        throw _com_error(E_OUTOFMEMORY);
    }
    return text;
}

// Ends the access to the elements of a safe array, which stays the caller's. Constructed after
// SafeArrayAccessData has succeeded.
struct UnaccessSafeArray {
    void operator()(SAFEARRAY* array) const { SafeArrayUnaccessData(array); }
};
using SafeArrayAccess = std::unique_ptr<SAFEARRAY, UnaccessSafeArray>;

// Enters the calling thread into the multithreaded apartment; the destructor leaves it, if it was
// entered.
class MultithreadedApartment {
public:
    MultithreadedApartment() : result(CoInitializeEx(nullptr, COINIT_MULTITHREADED)) {}
    ~MultithreadedApartment() {
        if (entered()) {
            CoUninitialize();
        }
    }
    MultithreadedApartment(const MultithreadedApartment&) = delete;
    MultithreadedApartment& operator=(const MultithreadedApartment&) = delete;

    bool entered() const { return SUCCEEDED(result); }
    HRESULT enteringResult() const { return result; } // of CoInitializeEx

private:
    HRESULT result;
};

} // namespace vorlen
