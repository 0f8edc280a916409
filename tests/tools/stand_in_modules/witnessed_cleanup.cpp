// Linked with all of the shipped module: writes a line when the runtime cleans the modules up.

#include "runtime/registration.h"

#include <cstdio>

namespace {

void cleanup() {
    static_cast<void>(std::fputs("the modules are cleaned up\n", stderr));
    static_cast<void>(std::fflush(stderr));
}

const struct Registration {
    Registration() { Vorlen_RegisterModuleCleanup(cleanup); }
} registration;

} // namespace
