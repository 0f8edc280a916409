#pragma once

#include "tests/support/loaded_image.h"

namespace tests {

// Whether the sweeps leave the import out: the reasons are in the implementation.
bool isExcluded(const Import& import);

} // namespace tests
