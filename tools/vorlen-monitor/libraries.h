#pragma once

#include "tools/vorlen-monitor/failure.h"
#include "vorlen/runtime.h"

#include <windows.h>

#include <exception>
#include <memory>
#include <string>

namespace simulation {
class SimulatedDesktop;
}

namespace snapshot {
struct Reading;
}

namespace vorlen::tool {

// A library that the constructor loads and the destructor unloads.
class Library {
public:
    // Throws a Failure when the file is missing, damaged or cannot be loaded.
    explicit Library(std::wstring file);
    ~Library();
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    // The full path of the file that was loaded.
    const std::wstring& file() const { return path; }

    HMODULE image() const { return module; }

    // The exported function. Throws a Failure when the library exports no function of that name.
    template <typename Function>
    Function* function(const char* name) const {
        return reinterpret_cast<Function*>(reinterpret_cast<void*>(exported(name)));
    }

private:
    std::wstring path;
    HMODULE module;

    FARPROC exported(const char* name) const;
};

// Loads the library of this name from this program's folder; throws as Library does.
Library libraryBesideThisProgram(const std::wstring& name);

// The service did not start. The runtime has logged the reason.
class ServiceFailure : public Failure {
public:
    using Failure::Failure;
};

// Both libraries of this program's folder, loaded and initialised. The thread that constructs the
// object is the service thread: only that thread calls the functions and destroys the object.
class Service {
    // In this order: the module imports the runtime, so it is loaded after it and unloaded before.
    Library runtime;
    decltype(::Vorlen_Initialize)* initialize;
    decltype(::Vorlen_Shutdown)* shutdown;
    Library module;
    std::unique_ptr<simulation::SimulatedDesktop> replayed; // null on the desktop of this session

public:
    // The module sees the desktop of the reading; with null, that of this session. Throws a Failure
    // when a library cannot be loaded or the module cannot be given another desktop, and a
    // ServiceFailure when Vorlen_Initialize() fails.
    explicit Service(const snapshot::Reading* reading);
    ~Service();
    Service(const Service&) = delete;
    Service& operator=(const Service&) = delete;

    // A function of the module. Throws a Failure when the module exports no function of that name.
    template <typename Function>
    Function* function(const char* name) const {
        return module.function<Function>(name);
    }

    // The same of the runtime.
    template <typename Function>
    Function* runtimeFunction(const char* name) const {
        return runtime.function<Function>(name);
    }
};

// Calls work(service) with a running service, which sees the desktop of the reading (null: that of
// this session), and returns the result. Exceptions of the libraries are replaced by a Failure:
// their code is in the libraries, which are unloaded on return.
template <typename Work>
auto withService(const snapshot::Reading* reading, Work work) {
    const Service service(reading);
    try {
        return work(service);
    } catch (const Failure&) {
        throw;
    } catch (const std::exception& error) {
        throw Failure(ExitCode::internal, unexpected(&error));
    } catch (...) {
        throw Failure(ExitCode::internal, unexpected(nullptr));
    }
}

} // namespace vorlen::tool
