#include "runtime/diagnostics.h"

#include "runtime/system_file.h"

#include <windows.h>

namespace vorlen {

void complain(const std::string& what) {
    // Nothing is left to tell when standard error itself cannot be written.
    static_cast<void>(writeAll(GetStdHandle(STD_ERROR_HANDLE), "vorlen_runtime: " + what + "\n"));
}

} // namespace vorlen
