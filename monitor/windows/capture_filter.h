#pragma once

#include "monitor/windows/window_info.h"

#include <string_view>

// Decides whether a window is capturable: whether it can be shown on the kit monitor. Titles and
// class names are compared exactly, up to the first zero. Any thread.

// The reason of the first rule that excludes the window, such as "disabled": a string literal.
// Null when the window is capturable.
const char* reasonNotCapturable(const WindowInfo& info);

bool IsCapturableWindow(const WindowInfo& info);

// True for windows of the system that are in the block list, because they pass all other rules.
bool IsKnownBlockedWindow(const WindowInfo& info);

bool MatchTitleAndClassName(const WindowInfo& info, std::wstring_view title,
                            std::wstring_view className);
