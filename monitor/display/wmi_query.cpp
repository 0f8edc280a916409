#include "monitor/display/wmi_query.h"

#include "monitor/display/variant_text.h"
#include "platform/owners.h"

#include <wbemidl.h>
#include <wrl/client.h>

#include <algorithm>

namespace {

using Microsoft::WRL::ComPtr;
using vorlen::makeComString;

// COM security belongs to the process and can be set only once.
bool comSecurityInitialized = false;

bool ensureComSecurity() {
    if (comSecurityInitialized) {
        return true;
    }
    const HRESULT result =
        CoInitializeSecurity(nullptr, -1, nullptr, nullptr, RPC_C_AUTHN_LEVEL_DEFAULT,
                             RPC_C_IMP_LEVEL_IMPERSONATE, nullptr, EOAC_NONE, nullptr);
    // Not tried again, even after a failure.
    comSecurityInitialized = true;
    // RPC_E_TOO_LATE: the host has set the security of its process before.
    return SUCCEEDED(result) || result == RPC_E_TOO_LATE;
}

struct Connection {
    ComPtr<IWbemLocator> locator;
    ComPtr<IWbemServices> services;
};

// Here and below, success without an object counts as a failure.
bool findLocator(Connection& connection) {
    const HRESULT result = CoCreateInstance(__uuidof(WbemLocator), nullptr, CLSCTX_INPROC_SERVER,
                                            IID_PPV_ARGS(&connection.locator));
    return SUCCEEDED(result) && connection.locator != nullptr;
}

bool connectServer(Connection& connection) {
    const HRESULT result =
        connection.locator->ConnectServer(makeComString(L"ROOT\\WMI").get(), nullptr, nullptr,
                                          nullptr, 0, nullptr, nullptr, &connection.services);
    return SUCCEEDED(result) && connection.services != nullptr;
}

bool connect(Connection& connection) {
    return findLocator(connection) && connectServer(connection) &&
           SUCCEEDED(CoSetProxyBlanket(connection.services.Get(), RPC_C_AUTHN_WINNT,
                                       RPC_C_AUTHZ_NONE, nullptr, RPC_C_AUTHN_LEVEL_CALL,
                                       RPC_C_IMP_LEVEL_IMPERSONATE, nullptr, EOAC_NONE));
}

bool queryMonitors(Connection& connection, ComPtr<IEnumWbemClassObject>& objects) {
    const HRESULT result = connection.services->ExecQuery(
        makeComString(L"WQL").get(), makeComString(L"SELECT * FROM WmiMonitorID").get(),
        WBEM_FLAG_FORWARD_ONLY | WBEM_FLAG_RETURN_IMMEDIATELY, nullptr, &objects);
    return SUCCEEDED(result) && objects != nullptr;
}

void readMonitor(IWbemClassObject& object, const std::vector<PendingMonitorId>& pending,
                 std::map<std::wstring, std::wstring>& results) {
    _variant_t name;
    if (FAILED(object.Get(L"InstanceName", 0, &name, nullptr, nullptr))) {
        return;
    }
    const std::wstring instanceName = wstringFromVARIANT(name);
    const auto match = std::ranges::find_if(pending, [&](const PendingMonitorId& candidate) {
        return instanceName.starts_with(candidate.prefix);
    });
    if (match == pending.end()) {
        return;
    }
    _variant_t serialNumber;
    if (SUCCEEDED(object.Get(L"SerialNumberID", 0, &serialNumber, nullptr, nullptr))) {
        results[match->devicePath] = wstringFromVARIANT(serialNumber);
    }
}

} // namespace

void queryWmiMonitorIds(const std::vector<PendingMonitorId>& pending,
                        std::map<std::wstring, std::wstring>& results) {
    const vorlen::MultithreadedApartment apartment;
    if (!apartment.entered() || !ensureComSecurity()) {
        return;
    }
    Connection connection;
    ComPtr<IEnumWbemClassObject> objects;
    if (!connect(connection) || !queryMonitors(connection, objects)) {
        return;
    }
    for (;;) {
        ComPtr<IWbemClassObject> object;
        ULONG returned = 0;
        objects->Next(static_cast<LONG>(WBEM_INFINITE), 1, &object, &returned);
        if (returned == 0 || object.Get() == nullptr) {
            return;
        }
        readMonitor(*object.Get(), pending, results);
    }
}
