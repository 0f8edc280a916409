#pragma once

#include <windows.h>

#include <optional>
#include <string>

namespace vorlen::viewer {

// Asks for the name of a recording's file, in UTF-8. Nothing when the user has cancelled. Throws a
// Failure when the system cannot ask.
std::optional<std::string> askForRecordingFile(HWND owner);

} // namespace vorlen::viewer
