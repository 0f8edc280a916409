#include "platform/owners.h"
#include "platform/worker.h"
#include "snapshot/parts.h"

#include <wbemidl.h>
#include <wrl/client.h>

#include <array>
#include <cwchar>
#include <memory>
#include <utility>

namespace snapshot {

namespace {

using Microsoft::WRL::ComPtr;
using vorlen::makeComString;

// The properties of the class WmiMonitorID.
constexpr std::array propertyNames{
    L"Active",           L"InstanceName",     L"ManufacturerName",       L"ProductCodeID",
    L"SerialNumberID",   L"UserFriendlyName", L"UserFriendlyNameLength", L"WeekOfManufacture",
    L"YearOfManufacture"};

// Notes a step; whether it succeeded.
bool note(Wmi& wmi, const char* name, HRESULT result) {
    wmi.steps.push_back({name, result});
    return SUCCEEDED(result);
}

std::wstring textOfString(BSTR text) {
    return text != nullptr ? std::wstring(text, wcsnlen(text, SysStringLen(text))) : std::wstring();
}

// The characters of an array of one dimension, one in the low 16 bits of each element.
std::wstring textOfArray(SAFEARRAY* array) {
    std::wstring text;
    LONG lower = 0;
    LONG upper = 0;
    if (SafeArrayGetDim(array) != 1 || FAILED(SafeArrayGetLBound(array, 1, &lower)) ||
        FAILED(SafeArrayGetUBound(array, 1, &upper))) {
        return text;
    }
    for (LONG i = lower; i <= upper; ++i) {
        std::int32_t element = 0;
        if (FAILED(SafeArrayGetElement(array, &i, &element)) || (element & 0xFFFF) == 0) {
            break;
        }
        text += static_cast<wchar_t>(element & 0xFFFF);
    }
    return text;
}

std::wstring textOfNumber(VARIANT& value) {
    _variant_t text;
    return SUCCEEDED(VariantChangeType(&text, &value, VARIANT_ALPHABOOL, VT_BSTR))
               ? textOfString(V_BSTR(&text))
               : std::wstring();
}

std::wstring textOf(VARIANT& value) {
    if (V_VT(&value) == VT_BSTR) {
        return textOfString(V_BSTR(&value));
    }
    if (V_VT(&value) == (VT_ARRAY | VT_I4)) {
        return textOfArray(V_ARRAY(&value));
    }
    return (V_VT(&value) & VT_ARRAY) == 0 ? textOfNumber(value) : std::wstring();
}

WmiObject readObject(IWbemClassObject& object) {
    WmiObject result;
    for (const wchar_t* const name : propertyNames) {
        _variant_t value;
        const HRESULT status = object.Get(name, 0, &value, nullptr, nullptr);
        result.properties.push_back(
            {name, status, V_VT(&value), SUCCEEDED(status) ? textOf(value) : std::wstring()});
    }
    return result;
}

ComPtr<IWbemServices> connect(Wmi& wmi) {
    ComPtr<IWbemLocator> locator;
    ComPtr<IWbemServices> services;
    // Here and below, success without an object ends the query, too.
    if (!note(wmi, "CoCreateInstance",
              CoCreateInstance(__uuidof(WbemLocator), nullptr, CLSCTX_INPROC_SERVER,
                               IID_PPV_ARGS(&locator))) ||
        locator == nullptr ||
        !note(wmi, "IWbemLocator::ConnectServer",
              locator->ConnectServer(makeComString(L"ROOT\\WMI").get(), nullptr, nullptr, nullptr,
                                     0, nullptr, nullptr, &services)) ||
        services == nullptr ||
        !note(wmi, "CoSetProxyBlanket",
              CoSetProxyBlanket(services.Get(), RPC_C_AUTHN_WINNT, RPC_C_AUTHZ_NONE, nullptr,
                                RPC_C_AUTHN_LEVEL_CALL, RPC_C_IMP_LEVEL_IMPERSONATE, nullptr,
                                EOAC_NONE))) {
        return nullptr;
    }
    return services;
}

void readObjects(IEnumWbemClassObject& objects, Wmi& wmi) {
    for (;;) {
        ComPtr<IWbemClassObject> object;
        ULONG returned = 0;
        const HRESULT result =
            objects.Next(static_cast<LONG>(WBEM_INFINITE), 1, &object, &returned);
        if (returned == 0 || object == nullptr) {
            note(wmi, "IEnumWbemClassObject::Next", result);
            return;
        }
        wmi.objects.push_back(readObject(*object.Get()));
    }
}

// The same calls as those of the library.
void query(Wmi& wmi) {
    const vorlen::MultithreadedApartment apartment;
    if (!note(wmi, "CoInitializeEx", apartment.enteringResult())) {
        return;
    }
    const HRESULT security =
        CoInitializeSecurity(nullptr, -1, nullptr, nullptr, RPC_C_AUTHN_LEVEL_DEFAULT,
                             RPC_C_IMP_LEVEL_IMPERSONATE, nullptr, EOAC_NONE, nullptr);
    // RPC_E_TOO_LATE: it is set already, for example by the library.
    if (!note(wmi, "CoInitializeSecurity", security) && security != RPC_E_TOO_LATE) {
        return;
    }
    const ComPtr<IWbemServices> services = connect(wmi);
    ComPtr<IEnumWbemClassObject> objects;
    if (services != nullptr &&
        note(wmi, "IWbemServices::ExecQuery",
             services->ExecQuery(
                 makeComString(L"WQL").get(), makeComString(L"SELECT * FROM WmiMonitorID").get(),
                 WBEM_FLAG_FORWARD_ONLY | WBEM_FLAG_RETURN_IMMEDIATELY, nullptr, &objects)) &&
        objects != nullptr) {
        readObjects(*objects.Get(), wmi);
    }
}

} // namespace

Wmi readWmi() {
    // On a thread that is in no apartment yet, which owns what it uses.
    const auto wmi = std::make_shared<Wmi>();
    vorlen::runOnWorker([wmi] { query(*wmi); });
    return std::move(*wmi);
}

} // namespace snapshot
