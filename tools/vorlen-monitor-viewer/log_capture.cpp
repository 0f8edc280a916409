#include "tools/vorlen-monitor-viewer/log_capture.h"

#include "runtime/logger.h"
#include "tools/vorlen-monitor-viewer/runtime_names.h"

#include <atomic>

namespace vorlen::viewer {

namespace {

// The runtime's callback has no parameter for an object. Lines may come on any thread.
std::atomic<LogLines*> receiver = nullptr;
std::atomic<HWND> notified = nullptr;
std::atomic<UINT> linesMessage = 0;

decltype(log::vllogger::RegisterDebugCallback)* registration(const tool::Library& runtime) {
    return runtime.function<decltype(log::vllogger::RegisterDebugCallback)>(
        runtime_names::registerDebugCallback);
}

} // namespace

LogCapture::LogCapture() : runtime(tool::libraryBesideThisProgram(L"vorlen_runtime.dll")) {
    receiver = &captured;
    registration(runtime)(receive);
}

LogCapture::~LogCapture() {
    registration(runtime)(nullptr);
    notified = nullptr;
    receiver = nullptr;
}

void LogCapture::notify(HWND window, UINT message) {
    linesMessage = message;
    notified = window;
}

void LogCapture::receive(int level, const char* text) {
    receiver.load()->add(level, text);
    if (const HWND window = notified.exchange(nullptr)) {
        PostMessageW(window, linesMessage, 0, 0);
    }
}

} // namespace vorlen::viewer
