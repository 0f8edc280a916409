#include "runtime/complain.h"

#include <cstdio>

namespace vorlen {

void complain(const std::string& what) {
    const std::string line = "vorlen_runtime: " + what + "\n";
    // A failure to write to standard error cannot be reported anywhere.
    static_cast<void>(std::fputs(line.c_str(), stderr));
    static_cast<void>(std::fflush(stderr));
}

} // namespace vorlen
