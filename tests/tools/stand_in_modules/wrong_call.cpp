// Linked with all of the shipped module: its windows are read in a way that no rule needs.

#include "runtime/registration.h"

#include <windows.h>

namespace {

void init() {
    GetWindowLongW(nullptr, GWLP_ID);
}

const struct Registration {
    Registration() { Vorlen_RegisterModuleInit(init); }
} registration;

} // namespace
