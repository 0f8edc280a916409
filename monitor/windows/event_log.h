#pragma once

#include <exception>

// The log of window events that fail. The window-event hook has no caller to return an exception
// to. A series of failures is one line: the first failure is logged, later ones are not, until
// endFailureSeries. The series is the process's, so that it needs no list. Any thread.

// Writes a line of level critical, unless the series has one. A line that cannot be written is left
// to the next failure.
void logEventFailure(const std::exception_ptr& failure) noexcept;

// An event was handled, or a new list was read: the next failure begins a new series.
void endFailureSeries() noexcept;
