#pragma once

#include <windows.h>

#include <gtest/gtest.h>
#include <objbase.h>

namespace tests {

// Checks the security that is asked for a proxy of WMI.
inline void expectProxyBlanket(DWORD authentication, DWORD authorization, const OLECHAR* principal,
                               DWORD authenticationLevel, DWORD impersonationLevel,
                               const void* identity, DWORD capabilities) {
    EXPECT_EQ(authentication, 10u); // RPC_C_AUTHN_WINNT
    EXPECT_EQ(authorization, 0u);   // RPC_C_AUTHZ_NONE
    EXPECT_EQ(principal, nullptr);
    EXPECT_EQ(authenticationLevel, 3u); // RPC_C_AUTHN_LEVEL_CALL
    EXPECT_EQ(impersonationLevel, 3u);  // RPC_C_IMP_LEVEL_IMPERSONATE
    EXPECT_EQ(identity, nullptr);
    EXPECT_EQ(capabilities, 0u); // EOAC_NONE
}

} // namespace tests
