#pragma once

#include "monitor/windows/window_info.h"

#include <string>

// Whether a window may be offered for showing on the kit's monitor. All comparisons of titles and
// class names are exact and end at the first zero. Any thread.

// The name of the first test of the capture filter that keeps the window out, such as "disabled"; a
// literal. Null when the window may be offered.
const char* findRefusal(const WindowInfo& info);

bool IsCapturableWindow(const WindowInfo& info);

// True for system windows that pass every other test but are not the user's to show.
bool IsKnownBlockedWindow(const WindowInfo& info);

bool MatchTitleAndClassName(const WindowInfo& info, const std::wstring& title,
                            const std::wstring& className);
