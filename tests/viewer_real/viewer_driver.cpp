// Drives the viewer from outside, as a user does. One command a line on standard input, each
// answered by a line on standard output:
//
//     window               the handle of the viewer's main window once it is shown, or 0
//     text CONTROL         the text of a control; line breaks are written as \n
//     entries CONTROL      the entries of a combo box, separated by tabulators
//     rows                 the lines of the window list, separated by tabulators, their cells by |
//     row                  the selected line of the window list, or -1
//     selected CONTROL     the selected entry of a combo box, or -1
//     choose CONTROL N     selects an entry of a combo box as a user does
//     focus                the control that has the focus, or had it last
//     key CODE             presses a virtual key
//     mnemonic LETTER      presses Alt and a letter
//     type TEXT            types into the control with the focus
//     press CONTROL        presses a button
//     header COLUMN        clicks the heading of a column of the window list
//     boxes                the texts of the open dialogs of the program, separated by tabulators
//     confirm [FILE]       presses the default button of the open dialog; with FILE, it writes that
//                          name into the dialog first
//     clipboard            the text on the clipboard
//     close                asks the main window to close
//     closed               asks it to close, and waits until it has answered
//
// Controls are numbers of tools/vorlen-monitor-viewer/control_ids.h. Texts are UTF-8.
#include "tools/vorlen-monitor-viewer/control_ids.h"

#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <array>
#include <iostream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

namespace viewer = vorlen::viewer;

constexpr int columnCount = 4;

std::wstring toWide(const std::string& text) {
    std::wstring wide(text.size(), L'\0');
    wide.resize(static_cast<std::size_t>(
        MultiByteToWideChar(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), wide.data(),
                            static_cast<int>(wide.size()))));
    return wide;
}

std::string toUtf8(const std::wstring& text) {
    std::string bytes(3 * text.size(), '\0');
    bytes.resize(static_cast<std::size_t>(
        WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), bytes.data(),
                            static_cast<int>(bytes.size()), nullptr, nullptr)));
    return bytes;
}

// On one line.
std::string onOneLine(const std::wstring& text) {
    std::string result;
    for (const char byte : toUtf8(text)) {
        if (byte == '\n') {
            result += "\\n";
        } else if (byte != '\r') {
            result += byte;
        }
    }
    return result;
}

std::string joined(const std::vector<std::string>& texts) {
    std::string result;
    for (const std::string& text : texts) {
        result += (result.empty() ? "" : "\t") + text;
    }
    return result;
}

// Null until it is shown: it is complete then.
HWND mainWindow() {
    const HWND window = FindWindowW(viewer::mainWindowClass, nullptr);
    return IsWindowVisible(window) != FALSE ? window : nullptr;
}

HWND control(int id) {
    const HWND found = GetDlgItem(mainWindow(), id);
    if (found == nullptr) {
        throw std::runtime_error("there is no control " + std::to_string(id));
    }
    return found;
}

std::wstring textOf(HWND window) {
    std::wstring text(static_cast<std::size_t>(SendMessageW(window, WM_GETTEXTLENGTH, 0, 0)) + 1,
                      L'\0');
    text.resize(static_cast<std::size_t>(
        SendMessageW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()))));
    return text;
}

std::vector<std::string> entriesOf(HWND box) {
    std::vector<std::string> entries;
    const LRESULT count = SendMessageW(box, CB_GETCOUNT, 0, 0);
    for (WPARAM i = 0; static_cast<LRESULT>(i) < count; ++i) {
        const LRESULT length = SendMessageW(box, CB_GETLBTEXTLEN, i, 0);
        std::wstring entry(static_cast<std::size_t>(std::max(length, LRESULT{0})) + 1, L'\0');
        SendMessageW(box, CB_GETLBTEXT, i, reinterpret_cast<LPARAM>(entry.data()));
        entry.resize(entry.size() - 1);
        entries.push_back(onOneLine(entry));
    }
    return entries;
}

// Memory in the viewer's process, for messages whose structures the system does not carry over.
class RemoteMemory {
public:
    RemoteMemory() {
        DWORD id = 0;
        GetWindowThreadProcessId(mainWindow(), &id);
        process = OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, id);
        address = VirtualAllocEx(process, nullptr, size, MEM_COMMIT, PAGE_READWRITE);
        if (address == nullptr) {
            throw std::runtime_error("no memory in the viewer");
        }
    }
    ~RemoteMemory() {
        VirtualFreeEx(process, address, 0, MEM_RELEASE);
        CloseHandle(process);
    }
    RemoteMemory(const RemoteMemory&) = delete;
    RemoteMemory& operator=(const RemoteMemory&) = delete;

    std::wstring cell(HWND list, int line, int column) const {
        auto* const text = static_cast<std::byte*>(address) + sizeof(LVITEMW);
        LVITEMW item{};
        item.iSubItem = column;
        item.pszText = reinterpret_cast<wchar_t*>(text);
        item.cchTextMax = units;
        WriteProcessMemory(process, address, &item, sizeof(item), nullptr);
        const LRESULT length = SendMessageW(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(line),
                                            reinterpret_cast<LPARAM>(address));
        std::wstring result(static_cast<std::size_t>(length), L'\0');
        ReadProcessMemory(process, text, result.data(), result.size() * sizeof(wchar_t), nullptr);
        return result;
    }

private:
    static constexpr int units = 512;
    static constexpr std::size_t size = sizeof(LVITEMW) + units * sizeof(wchar_t);

    HANDLE process = nullptr;
    void* address = nullptr;
};

std::vector<std::string> rows() {
    const HWND list = control(viewer::windowList);
    const RemoteMemory memory;
    std::vector<std::string> result;
    const auto count = static_cast<int>(SendMessageW(list, LVM_GETITEMCOUNT, 0, 0));
    for (int line = 0; line < count; ++line) {
        std::string row;
        for (int column = 0; column < columnCount; ++column) {
            row += (column == 0 ? "" : "|") + onOneLine(memory.cell(list, line, column));
        }
        result.push_back(row);
    }
    return result;
}

void choose(int id, int entry) {
    const HWND box = control(id);
    SendMessageW(box, CB_SETCURSEL, static_cast<WPARAM>(entry), 0);
    SendMessageW(mainWindow(), WM_COMMAND, MAKEWPARAM(id, CBN_SELCHANGE),
                 reinterpret_cast<LPARAM>(box));
}

HWND focused() {
    GUITHREADINFO information{};
    information.cbSize = sizeof(information);
    GetGUIThreadInfo(GetWindowThreadProcessId(mainWindow(), nullptr), &information);
    return information.hwndFocus;
}

// The control that has the focus, or had it last: a window that is not in the foreground has none,
// and the main window passes it on when it gets it.
HWND target() {
    static HWND last = nullptr;
    if (const HWND window = focused(); window != nullptr && window != mainWindow()) {
        last = window;
    }
    return IsWindow(last) != FALSE ? last : mainWindow();
}

// Dialogs of the system: message boxes, and the one for files.
std::vector<HWND> openDialogs() {
    std::vector<HWND> dialogs;
    EnumWindows(
        [](HWND window, LPARAM found) {
            wchar_t className[16]{};
            GetClassNameW(window, className, 16);
            if (IsWindowVisible(window) != FALSE && std::wstring(className) == L"#32770") {
                reinterpret_cast<std::vector<HWND>*>(found)->push_back(window);
            }
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&dialogs));
    return dialogs;
}

std::string messageOf(HWND dialog) {
    std::string message;
    for (HWND child = GetWindow(dialog, GW_CHILD); child != nullptr;
         child = GetWindow(child, GW_HWNDNEXT)) {
        wchar_t className[16]{};
        GetClassNameW(child, className, 16);
        if (_wcsicmp(className, L"Static") == 0) {
            message += onOneLine(textOf(child));
        }
    }
    return onOneLine(textOf(dialog)) + ": " + message;
}

// The field for the file's name: the only one in the dialog for files.
HWND fieldOf(HWND dialog) {
    HWND field = nullptr;
    EnumChildWindows(
        dialog,
        [](HWND child, LPARAM found) {
            wchar_t className[16]{};
            GetClassNameW(child, className, 16);
            if (_wcsicmp(className, L"Edit") == 0 && IsWindowVisible(child) != FALSE) {
                *reinterpret_cast<HWND*>(found) = child;
            }
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&field));
    return field;
}

std::string confirm(const std::wstring& file) {
    const std::vector<HWND> dialogs = openDialogs();
    if (dialogs.size() != 1) {
        return "no single dialog";
    }
    if (!file.empty()) {
        SendMessageW(fieldOf(dialogs.front()), WM_SETTEXT, 0,
                     reinterpret_cast<LPARAM>(file.c_str()));
    }
    PostMessageW(dialogs.front(), WM_COMMAND, IDOK, 0);
    return "done";
}

std::string clipboard() {
    if (OpenClipboard(nullptr) == FALSE) {
        return "";
    }
    std::wstring text;
    if (const HANDLE data = GetClipboardData(CF_UNICODETEXT)) {
        text = static_cast<const wchar_t*>(GlobalLock(data));
        GlobalUnlock(data);
    }
    CloseClipboard();
    return onOneLine(text);
}

void pressKey(WPARAM key) {
    PostMessageW(target(), WM_KEYDOWN, key, 1);
    PostMessageW(target(), WM_KEYUP, key, static_cast<LPARAM>(0xC0000001));
}

// As a click on the heading does.
void clickHeading(int column) {
    const HWND list = control(viewer::windowList);
    const auto header = reinterpret_cast<HWND>(SendMessageW(list, LVM_GETHEADER, 0, 0));
    int x = 20; // not where the pointer moves the edge of a column
    for (int i = 0; i < column; ++i) {
        x += static_cast<int>(SendMessageW(list, LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(i), 0));
    }
    PostMessageW(header, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, 5));
    PostMessageW(header, WM_LBUTTONUP, 0, MAKELPARAM(x, 5));
}

std::string restOf(std::istream& line) {
    line.ignore(1);
    std::string rest;
    std::getline(line, rest);
    return rest;
}

std::string answerTo(std::istream& line) {
    std::string command;
    line >> command;
    if (command == "type") {
        for (const wchar_t unit : toWide(restOf(line))) {
            PostMessageW(target(), WM_CHAR, unit, 1);
        }
        return "done";
    }
    if (command == "confirm") {
        return confirm(toWide(restOf(line)));
    }
    if (command == "mnemonic") {
        char letter = 0;
        line >> letter;
        PostMessageW(target(), WM_SYSCHAR, static_cast<WPARAM>(letter), 1 << 29);
        return "done";
    }
    int first = 0;
    int second = 0;
    line >> first >> second;
    if (command == "window") {
        return std::to_string(reinterpret_cast<std::intptr_t>(mainWindow()));
    }
    if (command == "text") {
        return onOneLine(textOf(control(first)));
    }
    if (command == "entries") {
        return joined(entriesOf(control(first)));
    }
    if (command == "rows") {
        return joined(rows());
    }
    if (command == "row") {
        return std::to_string(SendMessageW(control(viewer::windowList), LVM_GETNEXTITEM,
                                           static_cast<WPARAM>(-1), LVNI_SELECTED));
    }
    if (command == "selected") {
        return std::to_string(SendMessageW(control(first), CB_GETCURSEL, 0, 0));
    }
    if (command == "focus") {
        return std::to_string(GetDlgCtrlID(target()));
    }
    if (command == "boxes") {
        std::vector<std::string> messages;
        for (const HWND dialog : openDialogs()) {
            messages.push_back(messageOf(dialog));
        }
        return joined(messages);
    }
    if (command == "clipboard") {
        return clipboard();
    }
    if (command == "choose") {
        choose(first, second);
    } else if (command == "key") {
        pressKey(static_cast<WPARAM>(first));
    } else if (command == "press") {
        PostMessageW(control(first), BM_CLICK, 0, 0);
    } else if (command == "header") {
        clickHeading(first);
    } else if (command == "close") {
        PostMessageW(mainWindow(), WM_CLOSE, 0, 0);
    } else if (command == "closed") {
        SendMessageW(mainWindow(), WM_CLOSE, 0, 0);
    } else {
        throw std::runtime_error("unknown command " + command);
    }
    return "done";
}

} // namespace

int main() {
    std::string text;
    while (std::getline(std::cin, text)) {
        std::istringstream line(text);
        std::cout << answerTo(line) << std::endl;
    }
    return 0;
}
