#include "runtime/registration.h"

#include "runtime/complain.h"
#include "runtime/logger.h"

#include <windows.h>

#include <algorithm>
#include <exception>
#include <optional>
#include <string>

namespace vorlen {

namespace {

using Function = void (*)();

// A function or table that a module registered, and the image that contains it: functions of an
// unloaded module must not be called.
template <typename T>
struct Registered {
    T value;
    HMODULE image;
};

struct ModuleVersion {
    std::string name;
    std::int32_t major;
    std::int32_t minor;
    std::int32_t patch;
};

struct Registry {
    std::vector<ModuleVersion> versions;
    std::vector<Registered<Function>> inits;
    std::vector<Registered<Function>> cleanups;
    std::optional<Registered<MonitorWrapper>> monitorWrapper;
    std::optional<Registered<WindowEnumWrapper>> windowEnumWrapper;
};

Registry& registry() {
    static Registry theRegistry;
    return theRegistry;
}

template <typename F>
HMODULE imageOf(F* function) {
    HMODULE image = nullptr;
    if (function == nullptr) {
        return image; // for a null address, the system returns the program's image
    }
    const BOOL found = GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                                              GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                                          reinterpret_cast<LPCWSTR>(function), &image);
    return found != FALSE ? image : nullptr;
}

template <typename Table, typename F>
const Table* usable(const std::optional<Registered<Table>>& table, F* Table::*anySlot) {
    if (!table || table->image == nullptr || imageOf(table->value.*anySlot) != table->image) {
        return nullptr;
    }
    return &table->value;
}

void add(std::vector<Registered<Function>>& functions, Function function, const char* kind) {
    const HMODULE image = imageOf(function);
    if (image == nullptr) {
        complain(std::string("a module registered no ") + kind +
                 " function: register the address of a function of the module");
        return;
    }
    // A module that was unloaded and loaded again may register the same address again.
    std::erase_if(functions, [=](const auto& known) { return known.value == function; });
    functions.push_back({function, image});
}

void dropUnloaded(std::vector<Registered<Function>>& functions) {
    std::erase_if(functions, [](const auto& known) { return imageOf(known.value) != known.image; });
}

// In the log, so that a host with a window can show the reason.
void logFailure(const std::string& what) {
    log::vllogger::instance()->critical(what);
}

void runCleanups() {
    dropUnloaded(registry().cleanups);
    const std::vector<Registered<Function>> cleanups = registry().cleanups;
    // NOLINTNEXTLINE(modernize-loop-convert): Clang 14 cannot compile std::views::reverse.
    for (auto cleanup = cleanups.rbegin(); cleanup != cleanups.rend(); ++cleanup) {
        try {
            cleanup->value();
        } catch (const std::exception& error) {
            logFailure(std::string("the cleanup of a module failed: ") + error.what());
        } catch (...) {
            logFailure("the cleanup of a module failed with an exception of unknown type");
        }
    }
}

bool runInits() {
    dropUnloaded(registry().inits);
    const std::vector<Registered<Function>> inits = registry().inits;
    try {
        for (const auto& init : inits) {
            init.value();
        }
        return true;
    } catch (const std::exception& error) {
        logFailure(std::string("the init of a module failed: ") + error.what());
    } catch (...) {
        logFailure("the init of a module failed with an exception of unknown type");
    }
    return false;
}

} // namespace

namespace runtime_internal {

void RegisterMonitorWrapper(const MonitorWrapper& wrapper) {
    registry().monitorWrapper = {wrapper, imageOf(wrapper.getMonitorList)};
}

void RegisterWindowEnumWrapper(const WindowEnumWrapper& wrapper) {
    registry().windowEnumWrapper = {wrapper, imageOf(wrapper.updateMonitorList)};
}

const MonitorWrapper* GetMonitorWrapper() {
    return usable(registry().monitorWrapper, &MonitorWrapper::getMonitorList);
}

const WindowEnumWrapper* GetWindowEnumWrapper() {
    return usable(registry().windowEnumWrapper, &WindowEnumWrapper::updateMonitorList);
}

} // namespace runtime_internal
} // namespace vorlen

using namespace vorlen;

void Vorlen_RegisterModuleVersion(const char* name, std::int32_t major, std::int32_t minor,
                                  std::int32_t patch) {
    if (name == nullptr || *name == '\0') {
        complain("a module registered no name: register a name of at least one character");
        return;
    }
    auto& versions = registry().versions;
    std::erase_if(versions, [=](const auto& known) { return known.name == name; });
    versions.push_back({name, major, minor, patch});
}

void Vorlen_RegisterModuleInit(void (*init)()) {
    add(registry().inits, init, "init");
}

void Vorlen_RegisterModuleCleanup(void (*cleanup)()) {
    add(registry().cleanups, cleanup, "cleanup");
}

bool Vorlen_GetModuleVersion(const char* name, std::int32_t* major, std::int32_t* minor,
                             std::int32_t* patch) {
    const auto& versions = registry().versions;
    const auto found = std::ranges::find_if(
        versions, [=](const auto& known) { return name != nullptr && known.name == name; });
    if (found == versions.end()) {
        return false;
    }
    *major = found->major;
    *minor = found->minor;
    *patch = found->patch;
    return true;
}

bool Vorlen_Initialize() {
    if (runInits()) {
        return true;
    }
    runCleanups();
    return false;
}

void Vorlen_Shutdown() {
    runCleanups();
}
