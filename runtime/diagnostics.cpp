#include "runtime/diagnostics.h"

#include <cstdio>

namespace vorlen {

void complain(const std::string& what) {
    const std::string line = "vorlen_runtime: " + what + "\n";
    // Nothing is left to tell when standard error itself cannot be written.
    static_cast<void>(std::fputs(line.c_str(), stderr));
    static_cast<void>(std::fflush(stderr));
}

} // namespace vorlen
