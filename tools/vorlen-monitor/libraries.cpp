#include "tools/vorlen-monitor/libraries.h"

#include "platform/text.h"
#include "simulation/simulated_desktop.h"
#include "tools/vorlen-monitor/failure.h"
#include "tools/vorlen-monitor/replay.h"

#include <set>
#include <stdexcept>
#include <utility>

namespace vorlen::tool {

namespace {

std::wstring pathOfThisProgram() {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length =
            GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
        if (length == 0) {
            throw Failure(ExitCode::internal,
                          "cannot find the folder of this program: " + systemError(GetLastError()));
        }
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        path.resize(path.size() * 2); // it was cut off
    }
}

std::string remedy() {
    const std::wstring program = pathOfThisProgram();
    return "; vorlen_runtime.dll and libvorlen_monitor.dll of one release must be in the folder "
           "of " +
           toUtf8Lossy(program.substr(program.find_last_of(L'\\') + 1));
}

std::string whyNotLoaded(const std::wstring& path, DWORD error) {
    switch (error) {
    case ERROR_MOD_NOT_FOUND:
        return GetFileAttributesW(path.c_str()) == INVALID_FILE_ATTRIBUTES
                   ? "there is no such file"
                   : "a library that it needs is missing";
    case ERROR_BAD_EXE_FORMAT:
        return "it is damaged or not a library for 64-bit Windows";
    case ERROR_PROC_NOT_FOUND:
        return "a library that it needs is of another release";
    default:
        return systemError(error);
    }
}

HMODULE load(const std::wstring& path) {
    // A damaged file is reported by this program, not by a dialog of the system.
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
    // Libraries that this one needs are not searched in PATH or in the current folder.
    const HMODULE module = LoadLibraryExW(
        path.c_str(), nullptr, LOAD_LIBRARY_SEARCH_DLL_LOAD_DIR | LOAD_LIBRARY_SEARCH_SYSTEM32);
    if (module == nullptr) {
        const DWORD error = GetLastError();
        throw Failure(ExitCode::libraries, "cannot load " + toUtf8Lossy(path) + ": " +
                                               whyNotLoaded(path, error) + remedy());
    }
    return module;
}

std::unique_ptr<simulation::SimulatedDesktop> simulate(const snapshot::Reading& reading,
                                                       const Library& module) {
    // A module that Microsoft's compiler has built reads the time in the compiler's library.
    const std::set<std::string> clock = {"QueryPerformanceCounter", "QueryPerformanceFrequency"};
    try {
        auto desktop = std::make_unique<simulation::SimulatedDesktop>(module.image(), clock);
        replay(reading, *desktop);
        return desktop;
    } catch (const std::runtime_error& error) {
        throw Failure(ExitCode::libraries,
                      "cannot replay a recording: " + std::string(error.what()) +
                          ": it is of another release" + remedy());
    }
}

} // namespace

Library::Library(std::wstring file) : path(std::move(file)), module(load(path)) {}

Library::~Library() {
    FreeLibrary(module);
}

FARPROC Library::exported(const char* name) const {
    const FARPROC address = GetProcAddress(module, name);
    if (address == nullptr) {
        throw Failure(ExitCode::libraries, toUtf8Lossy(path) + " does not export " + name +
                                               ": it is of another release" + remedy());
    }
    return address;
}

Library libraryBesideThisProgram(const std::wstring& name) {
    const std::wstring program = pathOfThisProgram();
    return Library(program.substr(0, program.find_last_of(L'\\') + 1) + name);
}

Service::Service(const snapshot::Reading* reading)
    : runtime(libraryBesideThisProgram(L"vorlen_runtime.dll")),
      initialize(runtime.function<decltype(::Vorlen_Initialize)>("Vorlen_Initialize")),
      shutdown(runtime.function<decltype(::Vorlen_Shutdown)>("Vorlen_Shutdown")),
      module(libraryBesideThisProgram(L"libvorlen_monitor.dll")),
      replayed(reading != nullptr ? simulate(*reading, module) : nullptr) {
    if (!initialize()) {
        throw ServiceFailure(ExitCode::libraries, "the service did not start: Vorlen_Initialize "
                                                  "failed; the log says why");
    }
}

Service::~Service() {
    shutdown();
}

} // namespace vorlen::tool
