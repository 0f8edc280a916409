#pragma once

#include <exception>

// Writes a line about an exception that the window-event hook has nobody to give to.
void logEventFailure(const std::exception_ptr& failure) noexcept;
