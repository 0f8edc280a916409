#include "tools/vorlen-monitor-viewer/save_dialog.h"

#include "platform/text.h"
#include "tools/vorlen-monitor/failure.h"

#include <windows.h>

#include <commdlg.h>

#include <algorithm>
#include <iterator>

namespace vorlen::viewer {

std::optional<std::string> askForRecordingFile(HWND owner) {
    wchar_t file[32768] = L"desktop.json"; // the longest name that the system knows
    OPENFILENAMEW dialog{};
    dialog.lStructSize = sizeof(dialog);
    dialog.hwndOwner = owner;
    dialog.lpstrFilter = L"Recordings (*.json)\0*.json\0All files\0*.*\0";
    dialog.lpstrFile = file;
    dialog.nMaxFile = static_cast<DWORD>(std::size(file));
    dialog.lpstrTitle = L"Save recording";
    dialog.lpstrDefExt = L"json";
    // The current folder stays: the names of other files may be relative to it.
    dialog.Flags =
        OFN_EXPLORER | OFN_OVERWRITEPROMPT | OFN_PATHMUSTEXIST | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
    if (GetSaveFileNameW(&dialog) != FALSE) {
        return toUtf8Lossy(file);
    }
    if (const DWORD error = CommDlgExtendedError(); error != 0) {
        throw tool::Failure(tool::ExitCode::internal,
                            "cannot ask for a file: common dialog error " + std::to_string(error));
    }
    return std::nullopt;
}

} // namespace vorlen::viewer
