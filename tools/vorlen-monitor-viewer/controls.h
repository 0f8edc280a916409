#pragma once

#include "tools/vorlen-monitor-viewer/control_ids.h"

#include <windows.h>

#include <string>

namespace vorlen::viewer {

// A child window of the class with the identifier, visible, at no place yet. A tab stop is given
// with its style. Throws a Failure.
HWND makeControl(HWND parent, ControlId id, const wchar_t* className, const wchar_t* text,
                 DWORD style, DWORD extendedStyle = 0);

// A field of several lines that shows a text. As in a dialog, the Tab and Enter keys are not its
// own.
HWND makeTextField(HWND parent, ControlId id);

// The text of a window.
std::wstring textOf(HWND window);

// Changes the text of a window if it differs, so that its place and selection stay otherwise.
void setText(HWND window, const std::wstring& text);

} // namespace vorlen::viewer
