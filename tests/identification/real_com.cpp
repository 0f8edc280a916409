#include "tests/identification/real_com.h"

#include "simulation/simulated_desktop.h"
#include "tests/support/simulation.h"

#include <wbemidl.h>

#include <stdexcept>

namespace tests {

namespace {

void* systemFunction(const std::string& name) {
    for (const wchar_t* library : {L"ole32.dll", L"oleaut32.dll"}) {
        if (const FARPROC function = GetProcAddress(GetModuleHandleW(library), name.c_str())) {
            return reinterpret_cast<void*>(function);
        }
    }
    throw std::runtime_error("the system has no function " + name);
}

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor" // never deleted through its interface

// Lives as long as the registration does, whatever its reference count.
class LocatorFactory final : public IClassFactory {
public:
    explicit LocatorFactory(WmiProvider& owner) : provider(owner) {}
    virtual ~LocatorFactory() = default;
    LocatorFactory(const LocatorFactory&) = delete;
    LocatorFactory& operator=(const LocatorFactory&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        const bool known = iid == IID_IUnknown || iid == IID_IClassFactory;
        *object = known ? this : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE LockServer(WINBOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID iid, void** object) override {
        IWbemLocator* const locator = provider.makeLocator();
        const HRESULT result = locator->QueryInterface(iid, object);
        locator->Release();
        return result;
    }

private:
    WmiProvider& provider;
};

#pragma GCC diagnostic pop

void check(HRESULT result, const char* what) {
    if (FAILED(result)) {
        throw std::runtime_error(what);
    }
}

} // namespace

RealCom::RealCom(HMODULE image) {
    for (const std::string& name : SimulatedDesktop::wmiFunctions) {
        void* const function =
            name == "CoCreateInstance" ? addressOf(createInstance) : systemFunction(name);
        redirects.emplace_back(image, name, function);
    }
}

HRESULT WINAPI RealCom::createInstance(REFCLSID classId, IUnknown* outer, DWORD context, REFIID iid,
                                       void** object) {
    ++get().locators;
    return CoCreateInstance(classId, outer, context, iid, object);
}

LocatorInFront::LocatorInFront(WmiProvider& provider) : owner([&] { serve(provider); }) {
    registered.wait();
    if (failure) {
        owner.join();
        std::rethrow_exception(failure);
    }
}

LocatorInFront::~LocatorInFront() {
    over.raise();
    owner.join();
}

void LocatorInFront::serve(WmiProvider& provider) {
    LocatorFactory factory(provider);
    DWORD registration = 0;
    try {
        check(CoInitializeEx(nullptr, COINIT_MULTITHREADED), "no apartment");
        check(CoRegisterClassObject(CLSID_WbemLocator, &factory, CLSCTX_INPROC_SERVER,
                                    REGCLS_MULTIPLEUSE, &registration),
              "the class of the locator cannot be registered");
    } catch (...) {
        failure = std::current_exception();
    }
    registered.raise();
    if (!failure) {
        over.wait();
        CoRevokeClassObject(registration);
        CoUninitialize();
    }
}

} // namespace tests
