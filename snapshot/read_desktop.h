#pragma once

#include "snapshot/reading.h"

#include <functional>
#include <optional>
#include <string>

namespace snapshot {

// Why the library does not offer a window; nothing when it does.
using ReasonOf = std::function<std::optional<std::string>(HWND window)>;

// Reads the desktop, on a thread that may be in any apartment or none. Failures of the system are a
// part of the reading. The origin and the versions of module and runtime stay empty.
Reading readDesktop(const ReasonOf& reasonOf);

} // namespace snapshot
