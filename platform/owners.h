#pragma once

#include "platform/image.h"
#include "platform/scope.h"

#include <windows.h>

#include <comdef.h>
#include <oleauto.h>

#include <memory>

// Owners of what the system hands out: std::unique_ptr with the function that gives it back. COM
// objects are held in ComPtr, variants in _variant_t. Not _bstr_t: it takes memory of its own, and
// answers with another exception when there is none.

namespace vorlen {

struct ReleaseEventHook {
    using pointer = HWINEVENTHOOK;
    // Leaves the thread's last error as it was. Windows lets only the thread that installed a hook
    // release it: on another thread the hook stays until that thread ends, and its procedure, and
    // with it this image, has to stay loaded.
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

// The right to read the elements of a safe array, which stays the caller's. Made after
// SafeArrayAccessData has granted it.
struct UnaccessSafeArray {
    void operator()(SAFEARRAY* array) const { SafeArrayUnaccessData(array); }
};
using SafeArrayAccess = std::unique_ptr<SAFEARRAY, UnaccessSafeArray>;

// The calling thread's place in the multithreaded apartment, left again when it was entered.
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

private:
    HRESULT result;
};

} // namespace vorlen
