#pragma once

#include "tools/vorlen-monitor/failure.h"

namespace vorlen::tool {

// Does what the command line of this process asks for. Complains of every failure; throws nothing.
ExitCode run();

} // namespace vorlen::tool
