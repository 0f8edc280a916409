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

// COM and WMI behind the imports with which an image reads serial numbers of monitors. Every call
// succeeds, and WMI has no monitor, unless a test changes that. Every argument is checked. The
// destructor checks that everything was released and every thread has left its apartment.
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

    // Puts the calling thread into a single-threaded apartment.
    void enterSingleThreadedApartment();

    // The recorded calls of COM and WMI, in order, without the calls for strings, variants and
    // safe arrays.
    std::vector<std::string> calls() const;

    // The names of objects, values and apartments that the image has not released, one entry each.
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
    mutable vorlen::Mutex mutex;
    std::map<DWORD, int> entries; // threads in the multithreaded apartment, with their entry count
    std::set<DWORD> singleThreaded;
};

} // namespace simulation
