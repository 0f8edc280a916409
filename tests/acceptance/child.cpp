#include "tests/acceptance/child.h"

#include <array>
#include <memory>
#include <system_error>

namespace tests {

namespace {

struct CloseOwnedHandle {
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using OwnedHandle = std::unique_ptr<void, CloseOwnedHandle>;

[[noreturn]] void fail(const std::string& what) {
    throw std::system_error(static_cast<int>(GetLastError()), std::system_category(), what);
}

OwnedHandle owned(HANDLE handle, const char* what) {
    if (handle == nullptr || handle == INVALID_HANDLE_VALUE) {
        fail(what);
    }
    return OwnedHandle(handle);
}

// A file that a child can read or write, too.
OwnedHandle openShared(const std::filesystem::path& path, DWORD access, DWORD creation,
                       DWORD attributes) {
    SECURITY_ATTRIBUTES inheritable{sizeof(inheritable), nullptr, TRUE};
    return owned(CreateFileW(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, &inheritable,
                             creation, attributes, nullptr),
                 "a file for a program cannot be opened");
}

// A group of processes that ends with this handle, also when this program is ended.
OwnedHandle makeJob() {
    OwnedHandle job = owned(CreateJobObjectW(nullptr, nullptr), "no job object can be made");
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
    if (SetInformationJobObject(job.get(), JobObjectExtendedLimitInformation, &limits,
                                sizeof(limits)) == FALSE) {
        fail("the job object cannot be set up");
    }
    return job;
}

std::string readAll(HANDLE file) {
    SetFilePointer(file, 0, nullptr, FILE_BEGIN);
    std::string text;
    std::array<char, 4096> part{};
    DWORD read = 0;
    while (ReadFile(file, part.data(), static_cast<DWORD>(part.size()), &read, nullptr) != FALSE &&
           read > 0) {
        text.append(part.data(), read);
    }
    return text;
}

} // namespace

ChildResult runChild(const std::filesystem::path& program, const std::wstring& arguments,
                     const std::filesystem::path& folder, std::chrono::milliseconds limit) {
    const OwnedHandle job = makeJob();
    const OwnedHandle input = openShared(L"NUL", GENERIC_READ, OPEN_EXISTING, 0);
    const OwnedHandle output =
        openShared(folder / program.stem().concat(L".txt"), GENERIC_READ | GENERIC_WRITE | DELETE,
                   CREATE_ALWAYS, FILE_FLAG_DELETE_ON_CLOSE);
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = input.get();
    startup.hStdOutput = output.get();
    startup.hStdError = output.get();
    PROCESS_INFORMATION information{};
    std::wstring commandLine = L"\"" + program.wstring() + L"\" " + arguments;
    if (CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, TRUE,
                       CREATE_SUSPENDED, nullptr, folder.c_str(), &startup,
                       &information) == FALSE) {
        fail("cannot start " + program.filename().string());
    }
    const OwnedHandle process(information.hProcess);
    const OwnedHandle thread(information.hThread);
    if (AssignProcessToJobObject(job.get(), process.get()) == FALSE) {
        const DWORD error = GetLastError();
        TerminateProcess(process.get(), error);
        SetLastError(error);
        fail("the program cannot be put into its job object");
    }
    ResumeThread(thread.get());

    ChildResult result;
    const auto milliseconds = static_cast<DWORD>(limit.count());
    DWORD code = 0;
    if (WaitForSingleObject(process.get(), milliseconds) == WAIT_OBJECT_0 &&
        GetExitCodeProcess(process.get(), &code) != FALSE) {
        result.exitCode = code;
    }
    TerminateJobObject(job.get(), ERROR_TIMEOUT);
    WaitForSingleObject(process.get(), INFINITE);
    result.output = readAll(output.get());
    return result;
}

} // namespace tests
