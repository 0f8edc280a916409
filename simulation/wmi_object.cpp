#include "simulation/wmi_object.h"

#include "simulation/expect.h"

namespace simulation {

ULONG WmiObject::hold() {
    SIMULATION_EXPECT(isHeld(), "a reference to a released " + name + " was taken");
    return ++references;
}

ULONG WmiObject::letGo() {
    if (!isHeld()) {
        report("a released " + name + " was released again");
        return 0;
    }
    const ULONG left = --references;
    if (left == 0) {
        provider.journal.enter("~" + name);
    }
    return left;
}

std::optional<HRESULT> WmiObject::enter(const std::string& method) {
    SIMULATION_EXPECT(isHeld(), method + " of a released " + name + " was called");
    const auto status = provider.journal.enter(name + "::" + method);
    return status ? std::optional(static_cast<HRESULT>(*status)) : std::nullopt;
}

HRESULT WmiObject::refuse(const std::string& method) {
    report(name + "::" + method + " was called");
    return E_NOTIMPL;
}

} // namespace simulation
