#include "platform/safe_text.h"
#include "tools/vorlen-monitor-viewer/log_capture.h"
#include "tools/vorlen-monitor-viewer/main_window.h"
#include "tools/vorlen-monitor-viewer/messages.h"
#include "tools/vorlen-monitor-viewer/options.h"
#include "tools/vorlen-monitor-viewer/picture.h"
#include "tools/vorlen-monitor-viewer/viewed_desktop.h"
#include "tools/vorlen-monitor/command_line.h"
#include "tools/vorlen-monitor/failure.h"
#include "tools/vorlen-monitor/libraries.h"
#include "tools/vorlen-monitor/output.h"
#include "tools/vorlen-monitor/replay.h"
#include "tools/vorlen-monitor/status_command.h"

#include <windows.h>

#include <commctrl.h>

#include <exception>
#include <optional>
#include <string>
#include <vector>

namespace vorlen::viewer {

namespace {

using tool::ExitCode;
using tool::Failure;

// Whether errors are lines on standard error, for a script that draws a picture, and not message
// boxes.
bool withoutBoxes = false;

void showBox(const std::string& text, UINT icon) {
    // A box closes at once while the thread is asked to quit, as a closed window does.
    MSG quit{};
    PeekMessageW(&quit, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE);
    // The windows of the thread take no input: it could call the library again.
    MessageBoxW(nullptr, toUtf16Lossy(text).c_str(), L"Vorlen monitor viewer",
                MB_OK | MB_TASKMODAL | icon);
}

ExitCode refuse(ExitCode code, const std::string& reason) {
    if (withoutBoxes) {
        tool::complain(reason, "vorlen-monitor-viewer");
    } else {
        showBox(spellControls(reason), MB_ICONERROR);
    }
    return code;
}

// None of the library's code may run again, not even its cleanup.
void endAtWrongCall(const std::string& line) {
    refuse(ExitCode::internal, tool::wrongCall(line));
    TerminateProcess(GetCurrentProcess(), static_cast<UINT>(ExitCode::internal));
}

void useCommonControls() {
    INITCOMMONCONTROLSEX controls{sizeof(controls), ICC_LISTVIEW_CLASSES | ICC_STANDARD_CLASSES};
    InitCommonControlsEx(&controls);
}

// The log lines in one, each behind a separator.
std::string joined(const LogLines& lines) {
    std::string text;
    for (const std::string& line : lines.all()) {
        text += (text.empty() ? ": " : "; ") + line;
    }
    return text;
}

void view(const Options& options) {
    const std::optional<snapshot::Reading> replayed =
        options.replay ? std::optional(tool::prepareReplay(*options.replay, endAtWrongCall))
                       : std::nullopt;
    const snapshot::Reading* const reading = replayed ? &*replayed : nullptr;
    tool::addKitModels(options.kitModels);
    LogCapture log;
    const auto show = [&](const tool::Service& service) {
        const ViewedDesktop desktop(service, reading);
        MainWindow window(desktop, log);
        if (options.picture) {
            window.showForPicture();
            runMessages(window.handle(), [&] { return !window.isExamining(); });
            writePicture(window.handle(), *options.picture);
        } else {
            window.show();
            runMessages(window.handle(), [] { return false; });
        }
        return 0;
    };
    try {
        tool::withService(reading, show);
    } catch (const tool::ServiceFailure& failure) {
        throw Failure(failure.exitCode(), failure.what() + joined(log.lines()));
    }
}

ExitCode run() {
    try {
        const std::vector<std::string> arguments = tool::commandLineArguments();
        withoutBoxes = askForPicture(arguments);
        useCommonControls();
        const Options options = parseOptions(arguments);
        if (options.help) {
            showBox(*options.help, MB_ICONINFORMATION);
        } else {
            view(options);
        }
        return ExitCode::success;
    } catch (const Failure& failure) {
        return refuse(failure.exitCode(), failure.what());
    } catch (const std::exception& error) {
        return refuse(ExitCode::internal, tool::unexpected(&error));
    } catch (...) {
        return refuse(ExitCode::internal, tool::unexpected(nullptr));
    }
}

} // namespace
} // namespace vorlen::viewer

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    return static_cast<int>(vorlen::viewer::run());
}
