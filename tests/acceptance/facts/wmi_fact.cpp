// Facts about WMI and COM.

#include "monitor/display/display_paths.h"
#include "monitor/display/monitor_identification.h"
#include "platform/for_each.h"
#include "platform/owners.h"
#include "platform/text.h"
#include "tests/acceptance/facts/answers.h"
#include "tests/acceptance/facts/finding.h"
#include "tests/acceptance/system.h"
#include "tests/support/other_thread.h"

#include <windows.h>

#include <comdef.h>
#include <wbemidl.h>
#include <wrl/client.h>

#include <algorithm>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace tests {
namespace {

using Microsoft::WRL::ComPtr;
using vorlen::makeComString;

struct MonitorObject {
    std::wstring instanceName;
    std::map<std::string, std::string> types; // of the two properties, in words
};

// The query of the library, step by step.
class MonitorClass {
public:
    MonitorClass() { succeeded = connect() && query() && readAll(); }

    bool succeeded = false;
    std::string lastStep; // with its result
    std::vector<MonitorObject> objects;

private:
    bool step(const std::string& name, HRESULT result) {
        lastStep = name + " " + hexadecimal(result);
        return SUCCEEDED(result);
    }

    bool connect() {
        ComPtr<IWbemLocator> locator;
        return step("CoCreateInstance",
                    CoCreateInstance(__uuidof(WbemLocator), nullptr, CLSCTX_INPROC_SERVER,
                                     IID_PPV_ARGS(&locator))) &&
               step("ConnectServer",
                    locator->ConnectServer(makeComString(L"ROOT\\WMI").get(), nullptr, nullptr,
                                           nullptr, 0, nullptr, nullptr, &services)) &&
               step("CoSetProxyBlanket",
                    CoSetProxyBlanket(services.Get(), RPC_C_AUTHN_WINNT, RPC_C_AUTHZ_NONE, nullptr,
                                      RPC_C_AUTHN_LEVEL_CALL, RPC_C_IMP_LEVEL_IMPERSONATE, nullptr,
                                      EOAC_NONE));
    }

    bool query() {
        return step("ExecQuery",
                    services->ExecQuery(makeComString(L"WQL").get(),
                                        makeComString(L"SELECT * FROM WmiMonitorID").get(),
                                        WBEM_FLAG_FORWARD_ONLY | WBEM_FLAG_RETURN_IMMEDIATELY,
                                        nullptr, &enumerator));
    }

    bool readAll() {
        for (;;) {
            ComPtr<IWbemClassObject> object;
            ULONG returned = 0;
            if (!step("Next",
                      enumerator->Next(static_cast<LONG>(WBEM_INFINITE), 1, &object, &returned))) {
                return false;
            }
            if (returned == 0) {
                return true;
            }
            objects.push_back(read(*object.Get()));
        }
    }

    static MonitorObject read(IWbemClassObject& object) {
        MonitorObject read;
        _variant_t name;
        read.types["InstanceName"] = typeOf(object, L"InstanceName", name);
        if (name.vt == VT_BSTR) {
            read.instanceName = name.bstrVal;
        }
        _variant_t number;
        read.types["SerialNumberID"] = typeOf(object, L"SerialNumberID", number);
        return read;
    }

    static std::string typeOf(IWbemClassObject& object, const wchar_t* property,
                              _variant_t& value) {
        const HRESULT result = object.Get(property, 0, &value, nullptr, nullptr);
        if (FAILED(result)) {
            return hexadecimal(result);
        }
        if ((value.vt & VT_ARRAY) == 0) {
            return inWords(value.vt);
        }
        VARTYPE elements = VT_EMPTY;
        SafeArrayGetVartype(value.parray, &elements);
        return "array of " + inWords(elements);
    }

    static std::string inWords(VARTYPE type) {
        return type == VT_BSTR ? "BSTR" : type == VT_I4 ? "I4" : "type " + std::to_string(type);
    }

    ComPtr<IWbemServices> services;
    ComPtr<IEnumWbemClassObject> enumerator;
};

class WmiMonitorId : public testing::Test {
protected:
    // Calls the function with the class, in an apartment.
    template <typename Function>
    static void withClass(Function function) {
        onAnotherThread([&] {
            const vorlen::MultithreadedApartment apartment;
            function(MonitorClass());
        });
    }

    // Calls the function with the objects if there are any.
    template <typename Function>
    static void withObjects(Function function) {
        std::vector<MonitorObject> objects;
        withClass([&](const MonitorClass& monitors) { objects = monitors.objects; });
        detail("objects", std::to_string(objects.size()));
        if (objects.empty()) {
            return notMeasured("WMI knows no monitor here: run this on a machine with a monitor of "
                               "its own");
        }
        function(objects);
    }
};

// Fact: Does the query for `WmiMonitorID` succeed for a standard user?
// Relied on by: `monitor/display/wmi_query.cpp`
// Simulated: yes
TEST_F(WmiMonitorId, asked_for_by_a_standard_user) {
    if (thisSystem().administrator) {
        return notMeasured("this program has the rights of an administrator: run it without");
    }
    withClass([](const MonitorClass& monitors) {
        detail("last step", monitors.lastStep);
        detail("objects", std::to_string(monitors.objects.size()));
        answer(monitors.succeeded ? "yes" : monitors.lastStep);
    });
}

// Fact: Does the query for `WmiMonitorID` succeed for the user who runs this?
// Relied on by: `monitor/display/wmi_query.cpp`
// Simulated: yes
TEST_F(WmiMonitorId, asked_for) {
    withClass([](const MonitorClass& monitors) {
        detail("last step", monitors.lastStep);
        detail("objects", std::to_string(monitors.objects.size()));
        answer(monitors.succeeded ? "yes" : monitors.lastStep);
    });
}

// Fact: Which type has `InstanceName`?
// Relied on by: `monitor/display/variant_text.cpp`
// Simulated: BSTR
TEST_F(WmiMonitorId, type_of_its_instance_name) {
    withObjects([](const auto& objects) {
        std::set<std::string> types;
        for (const MonitorObject& object : objects) {
            types.insert(object.types.at("InstanceName"));
        }
        answer(joined(types, ""));
    });
}

// Fact: Which type has `SerialNumberID`?
// Relied on by: `monitor/display/variant_text.cpp`
// Simulated: array of I4
TEST_F(WmiMonitorId, type_of_its_serial_number) {
    withObjects([](const auto& objects) {
        std::set<std::string> types;
        for (const MonitorObject& object : objects) {
            types.insert(object.types.at("SerialNumberID"));
        }
        answer(joined(types, ""));
    });
}

// Fact: Which form have the instance names?
// Relied on by: `monitor/display/monitor_identification.cpp`
// Simulated: DISPLAY\model\instance_0
TEST_F(WmiMonitorId, form_of_its_instance_names) {
    withObjects([](const auto& objects) {
        const std::wregex usual(LR"(DISPLAY\\[^\\]+\\[^\\]+_0)");
        std::set<std::string> forms;
        for (const MonitorObject& object : objects) {
            const std::wstring letters =
                std::regex_replace(object.instanceName, std::wregex(L"\\w+"), L"x");
            forms.insert(std::regex_match(object.instanceName, usual)
                             ? R"(DISPLAY\model\instance_0)"
                             : "another: " + vorlen::toUtf8Lossy(letters));
        }
        answer(joined(forms, ""));
    });
}

// Fact: Does the instance name of every monitor with a display path begin with the prefix that the
// library makes of the device path?
// Relied on by: `monitor/display/monitor_identification.cpp`
// Simulated: yes
TEST_F(WmiMonitorId, instance_names_begin_as_the_device_paths) {
    withObjects([](const auto& objects) {
        int matched = 0;
        int monitors = 0;
        vorlen::forEachMonitor([&](HMONITOR monitor) {
            const std::wstring prefix = wmiInstancePrefix(getMonitorPath(monitor));
            monitors += prefix.empty() ? 0 : 1;
            matched +=
                !prefix.empty() && std::any_of(objects.begin(), objects.end(),
                                               [&](const MonitorObject& object) {
                                                   return object.instanceName.starts_with(prefix);
                                               })
                    ? 1
                    : 0;
        });
        detail("device paths", std::to_string(monitors));
        detail("with an instance name", std::to_string(matched));
        answer(matched == monitors ? "yes" : "no");
    });
}

// Fact: What does `CoInitializeEx` return for the multithreaded apartment on a thread of a
// single-threaded one?
// Relied on by: `monitor/display/monitor_identification.cpp`
// Simulated: 0x80010106
TEST(ComApartment, entered_by_a_thread_of_another_one) {
    answer(onAnotherThread([] {
        CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
        const HRESULT result = CoInitializeEx(nullptr, COINIT_MULTITHREADED);
        CoUninitialize();
        return hexadecimal(result);
    }));
}

// Fact: What does `CoInitializeSecurity` return in a process that has called it before?
// Relied on by: `monitor/display/wmi_query.cpp`, `docs/host-guide.md`
// Simulated: 0x80010119
TEST(ComApartment, with_security_set_a_second_time) {
    answer(onAnotherThread([] {
        const vorlen::MultithreadedApartment apartment;
        const auto setSecurity = [] {
            return CoInitializeSecurity(nullptr, -1, nullptr, nullptr, RPC_C_AUTHN_LEVEL_DEFAULT,
                                        RPC_C_IMP_LEVEL_IMPERSONATE, nullptr, EOAC_NONE, nullptr);
        };
        setSecurity();
        return hexadecimal(setSecurity());
    }));
}

} // namespace
} // namespace tests
