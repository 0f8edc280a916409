#pragma once

#include "tools/vorlen-monitor/failure.h"
#include "vorlen/runtime.h"

#include <windows.h>

#include <exception>
#include <string>

namespace vorlen::tool {

// A library that this process loaded, and unloads.
class Library {
public:
    // Throws a Failure when the file is missing, damaged or cannot be loaded.
    explicit Library(std::wstring file);
    ~Library();
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    // The exported function; throws a Failure when the library has none of that name.
    template <typename Function>
    Function* function(const char* name) const {
        return reinterpret_cast<Function*>(reinterpret_cast<void*>(exported(name)));
    }

private:
    std::wstring path;
    HMODULE module;

    FARPROC exported(const char* name) const;
};

// The running service: both libraries of this program's folder, initialised. The thread that makes
// it is the service thread: it alone calls the functions, and destroys it.
class Service {
    // In this order: the module imports the runtime while it is being loaded, and goes before it.
    Library runtime;
    decltype(::Vorlen_Initialize)* initialize;
    decltype(::Vorlen_Shutdown)* shutdown;
    Library module;

public:
    // Throws a Failure when a library cannot be used or does not come up.
    Service();
    ~Service();
    Service(const Service&) = delete;
    Service& operator=(const Service&) = delete;

    // A function of the module; throws a Failure when it has none of that name.
    template <typename Function>
    Function* function(const char* name) const {
        return module.function<Function>(name);
    }
};

// Gives the running service to the work, and returns its result. What the libraries throw leaves as
// a Failure: an exception of their own, whose code lies in them, must not outlive them.
template <typename Work>
auto withService(Work work) {
    const Service service;
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
