#pragma once

#include "simulation/expect.h"

#include <windows.h>

#include <objbase.h>

namespace simulation {

// Checks the security settings that the image requests for a WMI proxy.
inline void expectProxyBlanket(DWORD authentication, DWORD authorization, const OLECHAR* principal,
                               DWORD authenticationLevel, DWORD impersonationLevel,
                               const void* identity, DWORD capabilities) {
    SIMULATION_EXPECT(authentication == 10u); // RPC_C_AUTHN_WINNT
    SIMULATION_EXPECT(authorization == 0u);   // RPC_C_AUTHZ_NONE
    SIMULATION_EXPECT(principal == nullptr);
    SIMULATION_EXPECT(authenticationLevel == 3u); // RPC_C_AUTHN_LEVEL_CALL
    SIMULATION_EXPECT(impersonationLevel == 3u);  // RPC_C_IMP_LEVEL_IMPERSONATE
    SIMULATION_EXPECT(identity == nullptr);
    SIMULATION_EXPECT(capabilities == 0u); // EOAC_NONE
}

} // namespace simulation
