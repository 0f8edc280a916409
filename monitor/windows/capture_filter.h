#pragma once

#include "monitor/windows/window_info.h"

#include <string_view>

// Whether a window is capturable: whether it may be shown on the kit's monitor. All comparisons of
// titles and class names are exact and end at the first zero. Any thread.

// The reason why the window is not capturable, that of the first rule that excludes it, such as
// "disabled"; a literal. Null for a capturable window.
const char* reasonNotCapturable(const WindowInfo& info);

bool IsCapturableWindow(const WindowInfo& info);

// True for system windows that every other rule lets pass.
bool IsKnownBlockedWindow(const WindowInfo& info);

bool MatchTitleAndClassName(const WindowInfo& info, std::wstring_view title,
                            std::wstring_view className);
