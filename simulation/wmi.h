#pragma once

#include "platform/locks.h"
#include "simulation/current.h"
#include "simulation/journal.h"
#include "simulation/ole_values.h"
#include "simulation/redirects.h"
#include "simulation/wmi_provider.h"

#include <windows.h>

#include <objbase.h>

#include <map>
#include <set>
#include <string>
#include <vector>

namespace simulation {

// COM and WMI behind the imports that an image asks for the identification of monitors. It works
// and knows no monitor until a test says otherwise. Every argument is checked, and at the end that
// everything was released and every thread has left its apartment.
class Wmi : private Current<Wmi> {
public:
    Wmi(Redirects& redirects, Journal& calls);
    ~Wmi();
    Wmi(const Wmi&) = delete;
    Wmi& operator=(const Wmi&) = delete;

    // Adds a WMI instance: see WmiProvider.
    void add(const std::wstring& instanceName, const std::wstring& serialNumber) {
        provider.add(instanceName, serialNumber);
    }

    // Makes the calling thread one of a single-threaded apartment.
    void enterSingleThreadedApartment();

    // The calls of COM and WMI in order, of values neither the making nor the clearing.
    std::vector<std::string> calls() const;

    // What the image has not released so far, one entry each; empty when all is well.
    std::vector<std::string> outstanding() const;

private:
    OleValues values;

public:
    WmiProvider provider;

private:
    friend class Current<Wmi>;
    static HRESULT WINAPI initialize(void* reserved, DWORD model);
    static void WINAPI uninitialize();
    static HRESULT WINAPI initializeSecurity(PSECURITY_DESCRIPTOR descriptor, LONG serviceCount,
                                             SOLE_AUTHENTICATION_SERVICE* services, void* reserved,
                                             DWORD authenticationLevel, DWORD impersonationLevel,
                                             void* authentications, DWORD capabilities,
                                             void* furtherReserved);
    static HRESULT WINAPI createInstance(REFCLSID classId, IUnknown* outer, DWORD context,
                                         REFIID iid, void** object);
    static HRESULT WINAPI setProxyBlanket(IUnknown* proxy, DWORD authentication,
                                          DWORD authorization, OLECHAR* principal,
                                          DWORD authenticationLevel, DWORD impersonationLevel,
                                          RPC_AUTH_IDENTITY_HANDLE identity, DWORD capabilities);
    bool isInApartment() const;

    Journal& journal;
    mutable Mutex mutex;
    std::map<DWORD, int> entries; // threads of the multithreaded apartment, and how often entered
    std::set<DWORD> singleThreaded;
};

} // namespace simulation
