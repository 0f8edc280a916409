#include "tools/vorlen-monitor/record_command.h"

#include "platform/file.h"
#include "platform/safe_text.h"
#include "snapshot/read_desktop.h"
#include "snapshot/recording.h"
#include "snapshot/redaction.h"
#include "tools/vorlen-monitor/failure.h"
#include "tools/vorlen-monitor/libraries.h"
#include "tools/vorlen-monitor/status_command.h"
#include "tools/vorlen-monitor/version_command.h"
#include "vorlen/diagnostics.h"

#include <windows.h>

#include <memory>
#include <optional>
#include <string_view>

namespace vorlen::tool {

namespace {

struct CloseFile {
    using pointer = HANDLE;
    void operator()(HANDLE file) const { CloseHandle(file); }
};
using File = std::unique_ptr<HANDLE, CloseFile>;

// No other program has access while the file is open. Null, with the reason in GetLastError(), when
// it cannot be opened.
File openForWriting(const std::wstring& file, DWORD disposition) {
    const HANDLE handle = CreateFileW(file.c_str(), GENERIC_WRITE, 0, nullptr, disposition,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    return File(handle != INVALID_HANDLE_VALUE ? handle : nullptr);
}

// A device must not be replaced by a file.
bool isDevice(const std::wstring& name) {
    const File file = openForWriting(name, OPEN_EXISTING);
    return file && GetFileType(file.get()) != FILE_TYPE_DISK;
}

// Replaces a file, or makes it. Returns the error, or ERROR_SUCCESS.
DWORD replaceFile(const std::wstring& name, std::string_view text) {
    // Beside the file: on another disk, it could not be moved in one step.
    const std::wstring temporary = name + L"." + std::to_wstring(GetCurrentProcessId()) + L".tmp";
    File file = openForWriting(temporary, CREATE_NEW);
    if (!file) {
        return GetLastError();
    }
    DWORD error = writeAll(file.get(), text) ? ERROR_SUCCESS : GetLastError();
    file.reset();
    if (error == ERROR_SUCCESS &&
        MoveFileExW(temporary.c_str(), name.c_str(), MOVEFILE_REPLACE_EXISTING) == FALSE) {
        error = GetLastError();
    }
    if (error != ERROR_SUCCESS) {
        DeleteFileW(temporary.c_str());
    }
    return error;
}

} // namespace

snapshot::Reading readLiveDesktop() {
    const Versions versions = readVersions();
    // The runtime first: the module finds it among the loaded libraries.
    const Library runtime = libraryBesideThisProgram(L"vorlen_runtime.dll");
    const Library module = libraryBesideThisProgram(L"libvorlen_monitor.dll");
    auto* const getReasonNotCapturable =
        module.function<decltype(monitor_internal::getReasonNotCapturable)>(
            "getReasonNotCapturable");
    snapshot::Reading reading = snapshot::readDesktop([=](HWND window) {
        const char* const reason = getReasonNotCapturable(window);
        return reason != nullptr ? std::optional<std::string>(reason) : std::nullopt;
    });
    reading.origin = "vorlen-monitor " + versions.command;
    reading.process.moduleVersion = versions.module;
    reading.process.runtimeVersion = versions.runtime;
    return reading;
}

snapshot::Reading forRecording(snapshot::Reading reading, bool redact) {
    reading.process.kitModels = kitModels();
    if (redact) {
        snapshot::Redaction().redact(reading);
    }
    return reading;
}

void writeRecording(const snapshot::Reading& reading, const std::string& fileName) {
    const std::wstring name = toUtf16Lossy(fileName);
    const auto refuse = [&](const std::string& reason) {
        throw Failure(ExitCode::output, "cannot write \"" + fileName + "\": " + reason +
                                            "; name a file in a folder that can be written");
    };
    if (isDevice(name)) {
        refuse("it is a device");
    }
    if (const DWORD error = replaceFile(name, snapshot::toRecording(reading));
        error != ERROR_SUCCESS) {
        refuse(systemError(error));
    }
}

std::string recordingSummary(const snapshot::Reading& reading, const std::string& fileName) {
    return "Recorded " + std::to_string(reading.monitors.size()) + " monitors and " +
           std::to_string(reading.windows.size()) + " windows in " + spellControls(fileName) +
           "\n" +
           (reading.redacted
                ? "Titles, serial numbers and the user's name are replaced by placeholders.\n"
                : "It contains titles, serial numbers and the user's name: --redact replaces "
                  "them.\n");
}

} // namespace vorlen::tool
