#include "tests/simulated_desktop/wmi_object.h"

#include <gtest/gtest.h>

namespace tests {

ULONG WmiObject::hold() {
    EXPECT_TRUE(isHeld()) << "a reference to a released " << name << " was taken";
    return ++references;
}

ULONG WmiObject::letGo() {
    if (!isHeld()) {
        ADD_FAILURE() << "a released " << name << " was released again";
        return 0;
    }
    const ULONG left = --references;
    if (left == 0) {
        provider.journal.enter("~" + name);
    }
    return left;
}

std::optional<HRESULT> WmiObject::enter(const std::string& method) {
    EXPECT_TRUE(isHeld()) << method << " of a released " << name << " was called";
    const auto status = provider.journal.enter(name + "::" + method);
    return status ? std::optional(static_cast<HRESULT>(*status)) : std::nullopt;
}

HRESULT WmiObject::refuse(const std::string& method) {
    ADD_FAILURE() << name << "::" << method << " was called";
    return E_NOTIMPL;
}

} // namespace tests
