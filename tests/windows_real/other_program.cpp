#include "tests/windows_real/other_program.h"

#include "tests/windows_real/message_pump.h"

#include <algorithm>
#include <filesystem>
#include <stdexcept>
#include <vector>

namespace tests {

namespace {

struct Pipe {
    Pipe() {
        SECURITY_ATTRIBUTES inheritable{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
        if (CreatePipe(&readEnd, &writeEnd, &inheritable, 0) == FALSE) {
            throw std::runtime_error("no pipe");
        }
    }

    HANDLE readEnd = nullptr;
    HANDLE writeEnd = nullptr;
};

std::wstring programPath() {
    wchar_t path[MAX_PATH]{};
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    return std::filesystem::path(path).replace_filename("window_maker.exe").wstring();
}

std::string toUtf8(const std::wstring& text) {
    std::string bytes(3 * text.size(), '\0');
    const int size =
        WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), bytes.data(),
                            static_cast<int>(bytes.size()), nullptr, nullptr);
    bytes.resize(static_cast<std::size_t>(size));
    return bytes;
}

std::string toText(HWND window) {
    return std::to_string(reinterpret_cast<std::intptr_t>(window));
}

} // namespace

OtherProgram::OtherProgram() {
    const Pipe toProgram;
    const Pipe fromProgram;
    SetHandleInformation(toProgram.writeEnd, HANDLE_FLAG_INHERIT, 0);
    SetHandleInformation(fromProgram.readEnd, HANDLE_FLAG_INHERIT, 0);
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = toProgram.readEnd;
    startup.hStdOutput = fromProgram.writeEnd;
    startup.hStdError = GetStdHandle(STD_ERROR_HANDLE);
    PROCESS_INFORMATION information{};
    std::wstring commandLine = L"window_maker";
    const BOOL started = CreateProcessW(programPath().c_str(), commandLine.data(), nullptr, nullptr,
                                        TRUE, 0, nullptr, nullptr, &startup, &information);
    CloseHandle(toProgram.readEnd);
    CloseHandle(fromProgram.writeEnd);
    input = toProgram.writeEnd;
    output = fromProgram.readEnd;
    if (started == FALSE) {
        throw std::runtime_error("window_maker.exe does not start, error " +
                                 std::to_string(GetLastError()));
    }
    CloseHandle(information.hThread);
    process = information.hProcess;
}

OtherProgram::~OtherProgram() {
    CloseHandle(input);
    WaitForSingleObject(process, INFINITE);
    CloseHandle(output);
    CloseHandle(process);
}

HWND OtherProgram::create(const std::wstring& title, DWORD style, DWORD extendedStyle) {
    send("create " + std::to_string(style) + ' ' + std::to_string(extendedStyle) + ' ' +
         toUtf8(title));
    return reinterpret_cast<HWND>(std::stoll(readAnswer()));
}

HWND OtherProgram::createShown(const std::wstring& title) {
    const HWND window = create(title);
    show(window);
    return window;
}

void OtherProgram::rename(HWND window, const std::wstring& title) {
    send("rename " + toText(window) + ' ' + toUtf8(title));
    readAnswer();
}

// In parts, so that the time to wait does not grow with the number.
void OtherProgram::makeSeries(int count) {
    constexpr int part = 50;
    for (int made = 0; made < count; made += part) {
        send("series " + std::to_string(std::min(part, count - made)));
        if (!pumpUntil([this] { return hasAnswer(); })) {
            throw std::runtime_error("the series of windows did not end in time");
        }
        readAnswer();
    }
}

void OtherProgram::command(const std::string& name, HWND window) {
    send(name + ' ' + toText(window));
    readAnswer();
}

void OtherProgram::send(const std::string& line) {
    const std::string text = line + '\n';
    DWORD written = 0;
    WriteFile(input, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
}

bool OtherProgram::hasAnswer() const {
    DWORD available = 0;
    return PeekNamedPipe(output, nullptr, 0, nullptr, &available, nullptr) == FALSE ||
           available > 0;
}

std::string OtherProgram::readAnswer() {
    std::string answer;
    for (;;) {
        char byte = 0;
        DWORD read = 0;
        if (ReadFile(output, &byte, 1, &read, nullptr) == FALSE || read == 0) {
            throw std::runtime_error("window_maker.exe has ended");
        }
        if (byte == '\n') {
            return answer;
        }
        if (byte != '\r') {
            answer += byte;
        }
    }
}

} // namespace tests
