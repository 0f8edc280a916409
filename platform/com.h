#pragma once

#include <windows.h>

#include <comdef.h>
#include <oleauto.h>

// Owners of what COM hands out. COM objects themselves are held in ComPtr.

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

// A string for COM. Throws _com_error with E_OUTOFMEMORY when it cannot be made.
class ComString {
public:
    explicit ComString(const wchar_t* characters) : text(SysAllocString(characters)) {
        if (text == nullptr) {
            throw _com_error(E_OUTOFMEMORY);
        }
    }
    ~ComString() { SysFreeString(text); }
    ComString(const ComString&) = delete;
    ComString& operator=(const ComString&) = delete;

    BSTR get() const { return text; }

private:
    BSTR text;
};

// A variant that some call fills, empty until then.
class OwnedVariant {
public:
    OwnedVariant() { VariantInit(&value); }
    ~OwnedVariant() { VariantClear(&value); }
    OwnedVariant(const OwnedVariant&) = delete;
    OwnedVariant& operator=(const OwnedVariant&) = delete;

    VARIANT& get() { return value; }

private:
    VARIANT value{};
};

// Access to the elements of a safe array, which stays the caller's; null when it is refused.
template <typename Element>
class SafeArrayElements {
public:
    explicit SafeArrayElements(SAFEARRAY* accessed) : array(accessed) {
        void* data = nullptr;
        if (SUCCEEDED(SafeArrayAccessData(array, &data))) {
            elements = static_cast<const Element*>(data);
            granted = true;
        }
    }
    ~SafeArrayElements() {
        if (granted) {
            SafeArrayUnaccessData(array);
        }
    }
    SafeArrayElements(const SafeArrayElements&) = delete;
    SafeArrayElements& operator=(const SafeArrayElements&) = delete;

    const Element* get() const { return elements; }

private:
    SAFEARRAY* array;
    const Element* elements = nullptr;
    bool granted = false;
};
