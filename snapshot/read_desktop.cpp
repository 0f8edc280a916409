#include "snapshot/read_desktop.h"

#include "snapshot/parts.h"

namespace snapshot {

Reading readDesktop(const ReasonOf& reasonOf) {
    Reading reading;
    reading.process = readProcess();
    reading.monitors = readMonitors();
    reading.displayConfiguration = readDisplayConfiguration();
    reading.wmi = readWmi();
    reading.shellWindow = reinterpret_cast<std::uintptr_t>(GetShellWindow());
    reading.windows = readWindows(reasonOf);
    return reading;
}

} // namespace snapshot
