#include "platform/combo_box.h"

#include <comdef.h>

namespace vorlen {

namespace {

void send(HWND comboBox, UINT message, WPARAM wParam, LPARAM lParam) {
    const auto reply = static_cast<HRESULT>(SendMessageW(comboBox, message, wParam, lParam));
    if (FAILED(reply)) {
        throw _com_error(reply);
    }
}

} // namespace

void resetComboBox(HWND comboBox) {
    send(comboBox, CB_RESETCONTENT, 0, 0);
}

void appendToComboBox(HWND comboBox, const std::wstring& text) {
    send(comboBox, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

void deleteFromComboBox(HWND comboBox, std::size_t index) {
    send(comboBox, CB_DELETESTRING, index, 0);
}

} // namespace vorlen
