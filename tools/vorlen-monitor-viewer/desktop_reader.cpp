#include "tools/vorlen-monitor-viewer/desktop_reader.h"

#include "tools/vorlen-monitor/failure.h"

#include <utility>

namespace vorlen::viewer {

DesktopReader::DesktopReader(HWND window, UINT message, Read function)
    : receiver(window), notification(message), read(std::move(function)),
      done(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {
    if (!done) {
        throw tool::Failure(tool::ExitCode::internal,
                            "cannot make an event: " + tool::systemError(GetLastError()));
    }
}

DesktopReader::~DesktopReader() {
    if (!isReading()) {
        return;
    }
    HANDLE const event = done.get();
    while (MsgWaitForMultipleObjects(1, &event, FALSE, INFINITE, QS_SENDMESSAGE) ==
           WAIT_OBJECT_0 + 1) {
        MSG message{};
        PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE | PM_QS_SENDMESSAGE);
    }
    thread.join();
}

bool DesktopReader::isDone() const {
    return isReading() && WaitForSingleObject(done.get(), 0) == WAIT_OBJECT_0;
}

void DesktopReader::start() {
    ResetEvent(done.get());
    thread = std::thread([this] { run(); });
}

void DesktopReader::run() {
    try {
        reading = read();
    } catch (...) {
        failure = std::current_exception();
    }
    SetEvent(done.get());
    PostMessageW(receiver, notification, 0, 0);
}

snapshot::Reading DesktopReader::take() {
    thread.join();
    if (failure) {
        std::rethrow_exception(std::exchange(failure, nullptr));
    }
    return std::exchange(reading, {});
}

} // namespace vorlen::viewer
