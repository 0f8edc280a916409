#pragma once

#include <exception>

// Logs window events that fail: the system calls the event procedure, and cannot receive an
// exception. Only the first failure of a series is logged. There is one series for all lists. Any
// thread.

// Writes a log line of level critical, unless the series already has one. If the line cannot be
// written, the next failure tries again.
void logEventFailure(const std::exception_ptr& failure) noexcept;

// Called when an event has changed or checked a window, or a new list was read. The next failure
// begins a new series.
void endFailureSeries() noexcept;
