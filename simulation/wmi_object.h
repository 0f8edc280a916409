#pragma once

#include "simulation/wmi_provider.h"

#include <windows.h>

#include <unknwn.h>

#include <atomic>
#include <optional>
#include <string>
#include <utility>

namespace simulation {

// The base of the provider's objects: counts references.
class WmiObject {
public:
    WmiObject(WmiProvider& owner, std::string interfaceName)
        : provider(owner), name(std::move(interfaceName)) {}
    virtual ~WmiObject() = default;
    WmiObject(const WmiObject&) = delete;
    WmiObject& operator=(const WmiObject&) = delete;

    // Makes an object, which the provider owns. The caller owns its one reference.
    template <typename Object, typename... Arguments>
    static Object* make(WmiProvider& provider, Arguments&&... arguments) {
        auto object = std::make_unique<Object>(provider, std::forward<Arguments>(arguments)...);
        Object* const result = object.get();
        provider.objects.push_back(std::move(object));
        return result;
    }

    bool isHeld() const { return references > 0; }

protected:
    ULONG hold();
    ULONG letGo();

    // Records the call. Returns the status with which the call has to end, if a test planned one.
    std::optional<HRESULT> enter(const std::string& method);

    // The body of methods that must not be called: reports the call.
    HRESULT refuse(const std::string& method);

    WmiProvider& provider;

public:
    const std::string name;

private:
    std::atomic<ULONG> references = 1;
};

// COM objects are never deleted through their interface, which has no virtual destructor.
#ifdef __GNUC__
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"
#endif

// An object with one interface.
template <typename Interface>
class WmiObjectOf : public Interface, public WmiObject {
public:
    using WmiObject::WmiObject;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        if (iid != __uuidof(Interface) && iid != __uuidof(IUnknown)) {
            *object = nullptr;
            return E_NOINTERFACE;
        }
        hold();
        *object = static_cast<Interface*>(this);
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return hold(); }
    ULONG STDMETHODCALLTYPE Release() override { return letGo(); }
};

#ifdef __GNUC__
#pragma GCC diagnostic pop
#endif

} // namespace simulation
