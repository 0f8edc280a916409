#pragma once

namespace simulation {}

namespace tests {

// Tests name the parts of the simulated desktop without their namespace.
using namespace simulation;

} // namespace tests
