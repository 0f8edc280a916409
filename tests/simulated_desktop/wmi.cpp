#include "tests/simulated_desktop/wmi.h"

#include "tests/simulated_desktop/proxy_blanket.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <wbemidl.h>

#include <mutex>

namespace tests {

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
    EXPECT_THAT(outstanding(), testing::IsEmpty());
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
    EXPECT_EQ(reserved, nullptr);
    EXPECT_EQ(model, 0u); // COINIT_MULTITHREADED
    const auto status = get().journal.enter("CoInitializeEx");
    HRESULT result = status ? static_cast<HRESULT>(*status) : S_OK;

    const std::lock_guard lock(get().mutex);
    EXPECT_TRUE(get().entries.empty()) << "two threads use COM at the same time";
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
        ADD_FAILURE() << "a thread left an apartment that it had not entered";
    } else if (--entry->second == 0) {
        get().entries.erase(entry);
    }
}

HRESULT WINAPI Wmi::initializeSecurity(PSECURITY_DESCRIPTOR descriptor, LONG serviceCount,
                                       SOLE_AUTHENTICATION_SERVICE* services, void* reserved,
                                       DWORD authenticationLevel, DWORD impersonationLevel,
                                       void* authentications, DWORD capabilities,
                                       void* furtherReserved) {
    EXPECT_TRUE(get().isInApartment());
    EXPECT_EQ(descriptor, nullptr);
    EXPECT_EQ(serviceCount, -1);
    EXPECT_EQ(services, nullptr);
    EXPECT_EQ(reserved, nullptr);
    EXPECT_EQ(authenticationLevel, 0u); // RPC_C_AUTHN_LEVEL_DEFAULT
    EXPECT_EQ(impersonationLevel, 3u);  // RPC_C_IMP_LEVEL_IMPERSONATE
    EXPECT_EQ(authentications, nullptr);
    EXPECT_EQ(capabilities, 0u); // EOAC_NONE
    EXPECT_EQ(furtherReserved, nullptr);
    const auto status = get().journal.enter("CoInitializeSecurity");
    return status ? static_cast<HRESULT>(*status) : S_OK;
}

HRESULT WINAPI Wmi::createInstance(REFCLSID classId, IUnknown* outer, DWORD context, REFIID iid,
                                   void** object) {
    EXPECT_TRUE(get().isInApartment());
    EXPECT_TRUE(classId == CLSID_WbemLocator);
    EXPECT_EQ(outer, nullptr);
    EXPECT_EQ(context, 1u); // CLSCTX_INPROC_SERVER
    EXPECT_TRUE(iid == IID_IWbemLocator);
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
    EXPECT_TRUE(get().isInApartment());
    EXPECT_NE(dynamic_cast<IWbemServices*>(proxy), nullptr);
    expectProxyBlanket(authentication, authorization, principal, authenticationLevel,
                       impersonationLevel, identity, capabilities);
    const auto status = get().journal.enter("CoSetProxyBlanket");
    return status ? static_cast<HRESULT>(*status) : S_OK;
}

} // namespace tests
