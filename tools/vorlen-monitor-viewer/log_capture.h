#pragma once

#include "tools/vorlen-monitor-viewer/log_lines.h"
#include "tools/vorlen-monitor/libraries.h"

#include <windows.h>

namespace vorlen::viewer {

// While the object lives, every log line of the runtime is kept. At most one object at a time,
// which is made before the module is loaded and destroyed after it: no other thread may log while
// the runtime's callback changes.
class LogCapture {
public:
    LogCapture();
    ~LogCapture();
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    const LogLines& lines() const { return captured; }

    // The window gets the message after further lines: once, until the next call. Null: no window.
    void notify(HWND window, UINT message);

private:
    static void receive(int level, const char* text);

    tool::Library runtime;
    LogLines captured;
};

} // namespace vorlen::viewer
