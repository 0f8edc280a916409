#include "tools/vorlen-monitor-viewer/messages.h"

#include <utility>

namespace vorlen::viewer {

namespace {

std::exception_ptr kept;

void keep(const tool::Failure& failure) {
    kept = std::make_exception_ptr(failure);
}

} // namespace

void runMessages(HWND window, const std::function<bool()>& done) {
    MSG message{};
    while (!done() && GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (IsDialogMessageW(window, &message) == FALSE) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
    if (kept) {
        std::rethrow_exception(std::exchange(kept, nullptr));
    }
}

void keepCurrentException() {
    if (!kept) {
        try {
            throw;
        } catch (const tool::Failure& failure) {
            keep(failure);
        } catch (const std::exception& error) {
            keep({tool::ExitCode::internal, tool::unexpected(&error)});
        } catch (...) {
            keep({tool::ExitCode::internal, tool::unexpected(nullptr)});
        }
    }
    PostQuitMessage(0);
}

HWND checkedWindow(HWND window) {
    if (window == nullptr) {
        throw tool::Failure(tool::ExitCode::internal,
                            "cannot make a window: " + tool::systemError(GetLastError()));
    }
    return window;
}

} // namespace vorlen::viewer
