#include "simulation/wmi.h"

#include "simulation/expect.h"
#include "simulation/proxy_blanket.h"

#include <wbemidl.h>

#include <mutex>

namespace simulation {

Wmi::Wmi(Redirects& redirects, Journal& calls)
    : values(redirects, calls), provider(calls), journal(calls) {
    provider.fill = [this](VARIANT* variant, const VARIANT& value) {
        values.fill(variant, value);
    };
    redirects.replace<decltype(CoInitializeEx)>("CoInitializeEx", initialize);
    redirects.replace<decltype(CoUninitialize)>("CoUninitialize", uninitialize);
    redirects.replace<decltype(CoInitializeSecurity)>("CoInitializeSecurity", initializeSecurity);
    redirects.replace<decltype(CoCreateInstance)>("CoCreateInstance", createInstance);
    redirects.replace<decltype(CoSetProxyBlanket)>("CoSetProxyBlanket", setProxyBlanket);
}

Wmi::~Wmi() {
    for (const std::string& name : outstanding()) {
        report(name + " is outstanding");
    }
}

void Wmi::enterSingleThreadedApartment() {
    const std::lock_guard lock(mutex);
    singleThreaded.insert(GetCurrentThreadId());
}

std::vector<std::string> Wmi::calls() const {
    return journal.calls({"CoInitializeEx", "CoUninitialize", "CoInitializeSecurity",
                          "CoCreateInstance", "IWbemLocator::ConnectServer", "~IWbemLocator",
                          "CoSetProxyBlanket", "IWbemServices::ExecQuery", "~IWbemServices",
                          "IEnumWbemClassObject::Next", "~IEnumWbemClassObject",
                          "IWbemClassObject::Get(InstanceName)",
                          "IWbemClassObject::Get(SerialNumberID)", "~IWbemClassObject"});
}

std::vector<std::string> Wmi::outstanding() const {
    std::vector<std::string> result = values.outstanding();
    for (const std::string& name : provider.outstanding()) {
        result.push_back(name);
    }
    const std::lock_guard lock(mutex);
    for (const auto& [thread, count] : entries) {
        result.insert(result.end(), static_cast<std::size_t>(count), "apartment");
    }
    return result;
}

bool Wmi::isInApartment() const {
    const std::lock_guard lock(mutex);
    return entries.contains(GetCurrentThreadId());
}

HRESULT WINAPI Wmi::initialize(void* reserved, DWORD model) {
    SIMULATION_EXPECT(reserved == nullptr);
    SIMULATION_EXPECT(model == 0u); // COINIT_MULTITHREADED
    const auto status = get().journal.enter("CoInitializeEx");
    HRESULT result = status ? static_cast<HRESULT>(*status) : S_OK;

    const std::lock_guard lock(get().mutex);
    SIMULATION_EXPECT(get().entries.empty(), "two threads use COM at the same time");
    if (get().singleThreaded.contains(GetCurrentThreadId())) {
        result = RPC_E_CHANGED_MODE;
    }
    if (SUCCEEDED(result)) {
        ++get().entries[GetCurrentThreadId()];
    }
    return result;
}

void WINAPI Wmi::uninitialize() {
    get().journal.enter("CoUninitialize");
    const std::lock_guard lock(get().mutex);
    const auto entry = get().entries.find(GetCurrentThreadId());
    if (entry == get().entries.end()) {
        report("a thread left an apartment that it had not entered");
    } else if (--entry->second == 0) {
        get().entries.erase(entry);
    }
}

HRESULT WINAPI Wmi::initializeSecurity(PSECURITY_DESCRIPTOR descriptor, LONG serviceCount,
                                       SOLE_AUTHENTICATION_SERVICE* services, void* reserved,
                                       DWORD authenticationLevel, DWORD impersonationLevel,
                                       void* authentications, DWORD capabilities,
                                       void* furtherReserved) {
    SIMULATION_EXPECT(get().isInApartment());
    SIMULATION_EXPECT(descriptor == nullptr);
    SIMULATION_EXPECT(serviceCount == -1);
    SIMULATION_EXPECT(services == nullptr);
    SIMULATION_EXPECT(reserved == nullptr);
    SIMULATION_EXPECT(authenticationLevel == 0u); // RPC_C_AUTHN_LEVEL_DEFAULT
    SIMULATION_EXPECT(impersonationLevel == 3u);  // RPC_C_IMP_LEVEL_IMPERSONATE
    SIMULATION_EXPECT(authentications == nullptr);
    SIMULATION_EXPECT(capabilities == 0u); // EOAC_NONE
    SIMULATION_EXPECT(furtherReserved == nullptr);
    const auto status = get().journal.enter("CoInitializeSecurity");
    return status ? static_cast<HRESULT>(*status) : S_OK;
}

HRESULT WINAPI Wmi::createInstance(REFCLSID classId, IUnknown* outer, DWORD context, REFIID iid,
                                   void** object) {
    SIMULATION_EXPECT(get().isInApartment());
    SIMULATION_EXPECT(classId == CLSID_WbemLocator);
    SIMULATION_EXPECT(outer == nullptr);
    SIMULATION_EXPECT(context == 1u); // CLSCTX_INPROC_SERVER
    SIMULATION_EXPECT(iid == IID_IWbemLocator);
    if (const auto status = get().journal.enter("CoCreateInstance")) {
        return static_cast<HRESULT>(*status);
    }
    *object = get().provider.makeLocator();
    return S_OK;
}

HRESULT WINAPI Wmi::setProxyBlanket(IUnknown* proxy, DWORD authentication, DWORD authorization,
                                    OLECHAR* principal, DWORD authenticationLevel,
                                    DWORD impersonationLevel, RPC_AUTH_IDENTITY_HANDLE identity,
                                    DWORD capabilities) {
    SIMULATION_EXPECT(get().isInApartment());
    SIMULATION_EXPECT(dynamic_cast<IWbemServices*>(proxy) != nullptr);
    expectProxyBlanket(authentication, authorization, principal, authenticationLevel,
                       impersonationLevel, identity, capabilities);
    const auto status = get().journal.enter("CoSetProxyBlanket");
    return status ? static_cast<HRESULT>(*status) : S_OK;
}

} // namespace simulation
