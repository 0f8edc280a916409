#pragma once

#include "simulation/loaded_image.h"
#include "tests/support/simulation.h"

namespace tests {

// Whether the sweeps leave the import out: the reasons are in the implementation.
bool isExcluded(const Import& import);

} // namespace tests
