#pragma once

#include <windows.h>

#include <cstddef>
#include <string>

namespace vorlen {

// Messages to a combo box of the host; the handle is borrowed. Each call waits until the combo
// box's thread has processed the message. A reply whose low 32 bits are negative, such as CB_ERR
// or CB_ERRSPACE, is thrown as _com_error with that value. A destroyed combo box replies 0.

void resetComboBox(HWND comboBox);

// Appends the text up to its first zero.
void appendToComboBox(HWND comboBox, const std::wstring& text);

// Deletes the item at the index.
void deleteFromComboBox(HWND comboBox, std::size_t index);

} // namespace vorlen
