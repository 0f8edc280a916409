#include "simulation/wmi_provider.h"

#include "simulation/expect.h"
#include "simulation/ole.h"
#include "simulation/proxy_blanket.h"
#include "simulation/variants.h"
#include "simulation/wmi_refusals.h"

namespace simulation {

namespace {

std::wstring textOf(BSTR text) {
    return {text, ole().sysStringLen(text)};
}

std::string narrow(const std::wstring& text) {
    return {text.begin(), text.end()};
}

class ClassObject final : public RefusingClassObject {
public:
    ClassObject(WmiProvider& owner, WmiInstance what)
        : RefusingClassObject(owner), instance(std::move(what)) {}

    HRESULT STDMETHODCALLTYPE Get(LPCWSTR property, LONG flags, VARIANT* value, CIMTYPE* type,
                                  LONG* flavor) override {
        SIMULATION_EXPECT(flags == 0);
        SIMULATION_EXPECT(type == nullptr);
        SIMULATION_EXPECT(flavor == nullptr);
        const std::wstring wanted = property;
        if (const auto status = enter("Get(" + narrow(wanted) + ")")) {
            return *status;
        }
        if (wanted == L"InstanceName") {
            return give(value, instance.instanceName, instance.instanceNameResult);
        }
        if (wanted == L"SerialNumberID") {
            return give(value, instance.serialNumberId, instance.serialNumberIdResult);
        }
        return static_cast<HRESULT>(WBEM_E_NOT_FOUND);
    }

private:
    HRESULT give(VARIANT* value, const std::function<VARIANT()>& property, HRESULT result) {
        if (SUCCEEDED(result)) {
            provider.fill(value, property());
        }
        return result;
    }

    WmiInstance instance;
};

class Enumerator final : public RefusingEnumerator {
public:
    using RefusingEnumerator::RefusingEnumerator;

    HRESULT STDMETHODCALLTYPE Next(LONG timeout, ULONG count, IWbemClassObject** object,
                                   ULONG* returned) override {
        SIMULATION_EXPECT(timeout == -1); // WBEM_INFINITE
        SIMULATION_EXPECT(count == 1u);
        SIMULATION_EXPECT(*object == nullptr);
        *returned = 0;
        if (const auto status = enter("Next")) {
            return *status;
        }
        if (position > provider.instances.size() ||
            (position == provider.instances.size() && !provider.announcesOneTooMany)) {
            return WBEM_S_FALSE;
        }
        if (position < provider.instances.size()) {
            *object = make<ClassObject>(provider, provider.instances[position]);
        }
        ++position;
        *returned = 1;
        return provider.statusWithObject;
    }

private:
    std::size_t position = 0;
};

// CoSetProxyBlanket calls this interface of a proxy. The services of WMI have it.
class ServicesSecurity final : public WmiObjectOf<IClientSecurity> {
public:
    ServicesSecurity(WmiProvider& owner, IUnknown* secured)
        : WmiObjectOf(owner, "IClientSecurity"), proxy(secured) {}

    HRESULT STDMETHODCALLTYPE SetBlanket(IUnknown* ofProxy, DWORD authentication,
                                         DWORD authorization, OLECHAR* principal,
                                         DWORD authenticationLevel, DWORD impersonationLevel,
                                         void* identity, DWORD capabilities) override {
        SIMULATION_EXPECT(ofProxy == proxy);
        expectProxyBlanket(authentication, authorization, principal, authenticationLevel,
                           impersonationLevel, identity, capabilities);
        return enter("SetBlanket").value_or(S_OK);
    }
    HRESULT STDMETHODCALLTYPE QueryBlanket(IUnknown*, DWORD*, DWORD*, OLECHAR**, DWORD*, DWORD*,
                                           void**, DWORD*) override {
        return refuse("QueryBlanket");
    }
    HRESULT STDMETHODCALLTYPE CopyProxy(IUnknown*, IUnknown**) override {
        return refuse("CopyProxy");
    }

private:
    IUnknown* proxy;
};

class Services final : public RefusingServices {
public:
    using RefusingServices::RefusingServices;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        if (iid == __uuidof(IClientSecurity)) {
            *object = make<ServicesSecurity>(provider, this);
            return S_OK;
        }
        return RefusingServices::QueryInterface(iid, object);
    }

    HRESULT STDMETHODCALLTYPE ExecQuery(const BSTR language, const BSTR query, LONG flags,
                                        IWbemContext* context,
                                        IEnumWbemClassObject** enumerator) override {
        SIMULATION_EXPECT(textOf(language) == L"WQL");
        SIMULATION_EXPECT(textOf(query) == L"SELECT * FROM WmiMonitorID");
        SIMULATION_EXPECT(flags == 0x30); // WBEM_FLAG_FORWARD_ONLY | WBEM_FLAG_RETURN_IMMEDIATELY
        SIMULATION_EXPECT(context == nullptr);
        if (const auto status = enter("ExecQuery")) {
            return *status;
        }
        *enumerator = make<Enumerator>(provider);
        return S_OK;
    }
};

class Locator final : public WmiObjectOf<IWbemLocator> {
public:
    explicit Locator(WmiProvider& owner) : WmiObjectOf(owner, "IWbemLocator") {}

    HRESULT STDMETHODCALLTYPE ConnectServer(const BSTR wmiNamespace, const BSTR user,
                                            const BSTR password, const BSTR locale, LONG flags,
                                            const BSTR authority, IWbemContext* context,
                                            IWbemServices** services) override {
        SIMULATION_EXPECT(textOf(wmiNamespace) == LR"(ROOT\WMI)");
        SIMULATION_EXPECT(user == nullptr);
        SIMULATION_EXPECT(password == nullptr);
        SIMULATION_EXPECT(locale == nullptr);
        SIMULATION_EXPECT(flags == 0);
        SIMULATION_EXPECT(authority == nullptr);
        SIMULATION_EXPECT(context == nullptr);
        if (const auto status = enter("ConnectServer")) {
            return *status;
        }
        *services = make<Services>(provider);
        return S_OK;
    }
};

} // namespace

WmiProvider::WmiProvider(Journal& calls)
    : fill([](VARIANT* variant, const VARIANT& value) { *variant = value; }), journal(calls) {}

WmiProvider::~WmiProvider() = default;

void WmiProvider::add(const std::wstring& instanceName, const std::wstring& serialNumber) {
    // WMI pads the array with zeros.
    const std::wstring units = serialNumber + std::wstring(3, L'\0');
    instances.push_back({[=] { return stringVariant(instanceName); },
                         [=] {
                             return unitsVariant(units);
                         }});
}

IWbemLocator* WmiProvider::makeLocator() {
    return WmiObject::make<Locator>(*this);
}

std::vector<std::string> WmiProvider::outstanding() const {
    std::vector<std::string> result;
    for (const auto& object : objects) {
        if (object->isHeld()) {
            result.push_back(object->name);
        }
    }
    return result;
}

} // namespace simulation
