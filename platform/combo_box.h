#pragma once

#include <windows.h>

#include <cstddef>
#include <string>

// Messages to a combo box of the host, which is borrowed. They are synchronous: the thread of the
// combo box must be able to process them. A reply whose low 32 bits are negative, as CB_ERR and
// CB_ERRSPACE are, is thrown as a _com_error carrying it; a destroyed control replies 0.

void resetComboBox(HWND comboBox);

// Appends the text up to its first zero.
void appendToComboBox(HWND comboBox, const std::wstring& text);

// Deletes the item at the index.
void deleteFromComboBox(HWND comboBox, std::size_t index);
