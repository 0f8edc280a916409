#pragma once

#include "tests/simulated_desktop/wmi_provider.h"
#include "tests/support/import_redirect.h"

#include <windows.h>

#include <cstddef>
#include <deque>
#include <exception>
#include <latch>
#include <thread>

namespace tests {

// Gives an image that is on a simulated desktop the system's own COM and OLE back, and counts the
// locators of WMI that it makes.
class RealCom {
public:
    explicit RealCom(HMODULE image);
    ~RealCom();
    RealCom(const RealCom&) = delete;
    RealCom& operator=(const RealCom&) = delete;

    std::size_t locatorsMade() const;

private:
    std::deque<ImportRedirect> redirects;
};

// Puts the locator of a simulated WMI in front of the system's, for the whole process.
class LocatorInFront {
public:
    explicit LocatorInFront(WmiProvider& provider);
    ~LocatorInFront();
    LocatorInFront(const LocatorInFront&) = delete;
    LocatorInFront& operator=(const LocatorInFront&) = delete;

private:
    void serve(WmiProvider& provider);

    std::latch registered{1}; // or failed
    std::latch over{1};
    std::exception_ptr failure;
    std::thread owner; // of the multithreaded apartment in which the class is registered
};

} // namespace tests
