#pragma once

#include "simulation/journal.h"

#include <windows.h>

#include <oleauto.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

struct IWbemLocator;

namespace simulation {

class WmiObject;

// One instance of WmiMonitorID. Each read of a property calls its function for a new value, or
// fails with the property's result.
struct WmiInstance {
    std::function<VARIANT()> instanceName;
    std::function<VARIANT()> serialNumberId;
    HRESULT instanceNameResult = S_OK;
    HRESULT serialNumberIdResult = S_OK;
};

// The COM objects of WMI. Their calls are recorded in the journal by names such as
// "IWbemServices::ExecQuery" and "IWbemClassObject::Get(InstanceName)"; "~IWbemServices" is the
// release of the last reference. Every argument is checked.
class WmiProvider {
public:
    explicit WmiProvider(Journal& calls);
    ~WmiProvider();
    WmiProvider(const WmiProvider&) = delete;
    WmiProvider& operator=(const WmiProvider&) = delete;

    // Adds an instance after the others, with the serial number in the form that WMI uses.
    void add(const std::wstring& instanceName, const std::wstring& serialNumber);

    // In the order of the enumerator.
    std::vector<WmiInstance> instances;

    // The result of IEnumWbemClassObject::Next when it returns an object.
    HRESULT statusWithObject = S_OK;

    // Whether Next, after the last instance, once returns the count 1 without an object.
    bool announcesOneTooMany = false;

    // Writes a property's value into the caller's variant.
    std::function<void(VARIANT* variant, const VARIANT& value)> fill;

    // A new locator. The caller owns its one reference.
    IWbemLocator* makeLocator();

    // The interface names of the objects that are still referenced, one entry each.
    std::vector<std::string> outstanding() const;

private:
    friend class WmiObject;

    Journal& journal;
    // Released objects are kept, so that a call of a released object can be reported.
    std::vector<std::unique_ptr<WmiObject>> objects;
};

} // namespace simulation
