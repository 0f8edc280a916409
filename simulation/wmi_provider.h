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

// One instance of WmiMonitorID: a fresh value is made each time that a property is read.
struct WmiInstance {
    std::function<VARIANT()> instanceName;
    std::function<VARIANT()> serialNumberId;
};

// What WMI knows of monitors, as COM objects that note in the journal what is called of them, under
// names such as "IWbemServices::ExecQuery" and "IWbemClassObject::Get(InstanceName)", and
// "~IWbemServices" when the last reference is given up. Every argument is checked.
class WmiProvider {
public:
    explicit WmiProvider(Journal& calls);
    ~WmiProvider();
    WmiProvider(const WmiProvider&) = delete;
    WmiProvider& operator=(const WmiProvider&) = delete;

    // Adds an instance behind the others, the serial number as WMI delivers it.
    void add(const std::wstring& instanceName, const std::wstring& serialNumber);

    // In the order in which the enumerator hands them out.
    std::vector<WmiInstance> instances;

    // What the enumerator returns together with an object.
    HRESULT statusWithObject = S_OK;

    // Behind the last instance the enumerator says once that it hands out another, and does not.
    bool announcesOneTooMany = false;

    // How a property's value gets into the caller's variant.
    std::function<void(VARIANT* variant, const VARIANT& value)> fill;

    // The start of everything, with one reference, which is the caller's.
    IWbemLocator* makeLocator();

    // The interfaces of the objects to which somebody still holds a reference, one entry each.
    std::vector<std::string> outstanding() const;

private:
    friend class WmiObject;

    Journal& journal;
    // Also those that were released, so that a call of such a one can be told.
    std::vector<std::unique_ptr<WmiObject>> objects;
};

} // namespace simulation
