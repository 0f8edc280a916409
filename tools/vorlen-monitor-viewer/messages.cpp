#include "tools/vorlen-monitor-viewer/messages.h"

#include <optional>
#include <utility>

namespace vorlen::viewer {

namespace {

std::optional<tool::Failure> kept;

void throwKept() {
    if (kept) {
        throw tool::Failure(*std::exchange(kept, std::nullopt));
    }
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
    throwKept();
}

void keepCurrentException() {
    if (!kept) {
        try {
            throw;
        } catch (const tool::Failure& failure) {
            kept = failure;
        } catch (const std::exception& error) {
            kept = tool::Failure(tool::ExitCode::internal, tool::unexpected(&error));
        } catch (...) {
            kept = tool::Failure(tool::ExitCode::internal, tool::unexpected(nullptr));
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
