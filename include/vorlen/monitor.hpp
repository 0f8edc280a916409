// vorlen/monitor.hpp - the monitor module for C++ hosts: a session that ends itself, vectors of
// records, std::wstring. Header only, C++17, for Windows; it calls the C functions of
// vorlen/monitor.h, vorlen/diagnostics.h and vorlen/runtime.h and nothing else, so the host may be
// built by any compiler.
//
//     vorlen::Session session;                        // linked against both import libraries
//     vorlen::Session session(L"C:\\Kit\\bin");       // or: loads both libraries from a folder
//     for (const vorlen::Monitor& monitor : session.monitors()) { ... }
//
// What the C headers say about threads, waiting, units and neutral values holds here, too.
// Everything here belongs to the service thread, the thread that made the session. Only a host
// built with the library's toolchain can catch what the library itself throws (with Microsoft's
// compiler: built with /EHs /EHc- and /MD, see vorlen/monitor.h).
//
// <windows.h> is included as the host configures it: a host that uses winsock2.h, or std::min,
// includes that header first and defines NOMINMAX.
#ifndef VORLEN_MONITOR_HPP
#define VORLEN_MONITOR_HPP

#include "vorlen/diagnostics.h"
#include "vorlen/monitor.h"
#include "vorlen/runtime.h"
#include "vorlen/status.h"

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

namespace vorlen {

// A monitor of the desktop; see MonitorListItem.
struct Monitor {
    HMONITOR handle = nullptr;    // borrowed from the system
    std::wstring deviceName;      // display device, such as \\.\DISPLAY1
    std::wstring friendlyName;    // name of the model; empty when unknown
    std::wstring monitorId;       // serial number text; empty when unknown
    std::int32_t x = 0;           // left edge on the desktop, pixels
    std::int32_t y = 0;           // top edge on the desktop, pixels
    std::int32_t width = 0;       // pixels
    std::int32_t height = 0;      // pixels
    std::int32_t refreshRate = 0; // hertz
};

// A capturable window; see WindowListItem.
struct Window {
    HWND handle = nullptr; // borrowed from the system
    std::wstring title;    // as it was when the window appeared; from another program
    std::wstring className;
};

// The outcome of a check.
struct Status {
    VLStatus code = UNKNOWN_STATUS;
    std::string name;   // of the code, such as "MONITOR_OK"
    std::string text;   // technical, one line
    std::string advice; // for the user, may have several lines; empty for many codes

    bool passed() const { return code == MONITOR_OK; }
};

struct Version {
    std::int32_t major = 0;
    std::int32_t minor = 0;
    std::int32_t patch = 0;
};

namespace detail {

inline std::system_error systemError(DWORD error, const std::string& what) {
    return {static_cast<int>(error), std::system_category(), what};
}

// A library in a folder, unloaded with the object unless it was kept.
class LoadedLibrary {
public:
    LoadedLibrary(const std::filesystem::path& folder, std::string file)
        : name(std::move(file)),
          module(LoadLibraryExW((folder / name).c_str(), nullptr,
                                LOAD_LIBRARY_SEARCH_DLL_LOAD_DIR | LOAD_LIBRARY_SEARCH_SYSTEM32)) {
        if (module == nullptr) {
            const DWORD error = GetLastError();
            throw systemError(error, "cannot load " + name);
        }
    }
    ~LoadedLibrary() {
        if (!kept) {
            FreeLibrary(module);
        }
    }
    LoadedLibrary(const LoadedLibrary&) = delete;
    LoadedLibrary& operator=(const LoadedLibrary&) = delete;

    template <typename Function>
    void find(Function*& function, const char* exported) const {
        const FARPROC address = GetProcAddress(module, exported);
        if (address == nullptr) {
            const DWORD error = GetLastError();
            throw systemError(error, name + " has no function " + exported);
        }
        function = reinterpret_cast<Function*>(reinterpret_cast<void*>(address));
    }

    // Leaves the library loaded until the process ends.
    void keep() { kept = true; }

private:
    std::string name;
    HMODULE module;
    bool kept = false;
};

// The path from the root on; it may begin with \\?\.
inline std::filesystem::path fullPath(const std::filesystem::path& folder) {
    std::wstring text(GetFullPathNameW(folder.c_str(), 0, nullptr, nullptr), L'\0');
    const DWORD length =
        GetFullPathNameW(folder.c_str(), static_cast<DWORD>(text.size()), text.data(), nullptr);
    if (length == 0 || length >= text.size()) {
        const DWORD error = GetLastError();
        throw systemError(error, "no folder of the libraries");
    }
    text.resize(length);
    return text;
}

// In this order: the module uses the runtime, and is unloaded before it.
struct LoadedLibraries {
    explicit LoadedLibraries(const std::filesystem::path& folder)
        : runtime(folder, "vorlen_runtime.dll"), module(folder, "libvorlen_monitor.dll") {}

    LoadedLibrary runtime;
    LoadedLibrary module;
};

// The functions of both libraries, linked or loaded.
struct Functions {
    decltype(::Vorlen_Initialize)* initialize = nullptr;
    decltype(::Vorlen_Shutdown)* shutdown = nullptr;
    decltype(::Vorlen_GetModuleVersion)* moduleVersion = nullptr;
    decltype(::checkMonitorStatus)* checkMonitorStatus = nullptr;
    decltype(::getMonitorList)* getMonitorList = nullptr;
    decltype(::getWindowList)* getWindowList = nullptr;
    decltype(::getMonitorModelName)* getMonitorModelName = nullptr;
    decltype(::getVorlenMonitorModelName)* getVorlenMonitorModelName = nullptr;
    decltype(::setVorlenMonitorModelName)* setVorlenMonitorModelName = nullptr;
    decltype(::getMonitorRect)* getMonitorRect = nullptr;
    decltype(::updateMonitorList)* updateMonitorList = nullptr;
    decltype(monitor_internal::getLastMonitorStatus)* getLastMonitorStatus = nullptr;
    decltype(monitor_internal::getCheckedMonitor)* getCheckedMonitor = nullptr;
    decltype(monitor_internal::getReasonNotCapturable)* getReasonNotCapturable = nullptr;
    decltype(monitor_internal::restartWindowList)* restartWindowList = nullptr;
};

// Only a host that links both import libraries may call this.
inline Functions linkedFunctions() {
    Functions all;
    all.initialize = ::Vorlen_Initialize;
    all.shutdown = ::Vorlen_Shutdown;
    all.moduleVersion = ::Vorlen_GetModuleVersion;
    all.checkMonitorStatus = ::checkMonitorStatus;
    all.getMonitorList = ::getMonitorList;
    all.getWindowList = ::getWindowList;
    all.getMonitorModelName = ::getMonitorModelName;
    all.getVorlenMonitorModelName = ::getVorlenMonitorModelName;
    all.setVorlenMonitorModelName = ::setVorlenMonitorModelName;
    all.getMonitorRect = ::getMonitorRect;
    all.updateMonitorList = ::updateMonitorList;
    all.getLastMonitorStatus = monitor_internal::getLastMonitorStatus;
    all.getCheckedMonitor = monitor_internal::getCheckedMonitor;
    all.getReasonNotCapturable = monitor_internal::getReasonNotCapturable;
    all.restartWindowList = monitor_internal::restartWindowList;
    return all;
}

inline Functions loadedFunctions(const LoadedLibraries& libraries) {
    Functions all;
    libraries.runtime.find(all.initialize, "Vorlen_Initialize");
    libraries.runtime.find(all.shutdown, "Vorlen_Shutdown");
    libraries.runtime.find(all.moduleVersion, "Vorlen_GetModuleVersion");
    libraries.module.find(all.checkMonitorStatus, "checkMonitorStatus");
    libraries.module.find(all.getMonitorList, "getMonitorList");
    libraries.module.find(all.getWindowList, "getWindowList");
    libraries.module.find(all.getMonitorModelName, "getMonitorModelName");
    libraries.module.find(all.getVorlenMonitorModelName, "getVorlenMonitorModelName");
    libraries.module.find(all.setVorlenMonitorModelName, "setVorlenMonitorModelName");
    libraries.module.find(all.getMonitorRect, "getMonitorRect");
    libraries.module.find(all.updateMonitorList, "updateMonitorList");
    libraries.module.find(all.getLastMonitorStatus, "getLastMonitorStatus");
    libraries.module.find(all.getCheckedMonitor, "getCheckedMonitor");
    libraries.module.find(all.getReasonNotCapturable, "getReasonNotCapturable");
    libraries.module.find(all.restartWindowList, "restartWindowList");
    return all;
}

// The whole list of a function that copies records. The list may grow between the question for its
// size and the copy: the array has room for one record more, and as long as that is used, too, the
// list is read again.
template <typename Record>
std::vector<Record> readList(int (*copy)(Record* records, std::int32_t capacity)) {
    std::vector<Record> records;
    int count = copy(nullptr, 0);
    do {
        records.resize(static_cast<std::size_t>(count) + 1);
        count = copy(records.data(), static_cast<std::int32_t>(records.size()));
    } while (static_cast<std::size_t>(count) == records.size());
    records.resize(static_cast<std::size_t>(count));
    return records;
}

inline Monitor toMonitor(const MonitorListItem& item) {
    return {static_cast<HMONITOR>(item.handle),
            item.deviceName,
            item.friendlyName,
            item.monitorId,
            item.x,
            item.y,
            item.width,
            item.height,
            item.refreshRate};
}

inline Window toWindow(const WindowListItem& item) {
    return {static_cast<HWND>(item.handle), item.title, item.className};
}

inline std::string textOrEmpty(const char* text) {
    return text != nullptr ? text : "";
}

} // namespace detail

// The running service: the thread that makes the session is the service thread. One at a time.
class Session {
public:
    // For a host that links both libraries. Throws std::logic_error when the service runs already,
    // and std::runtime_error when it does not start; the runtime has written the reason to standard
    // error.
    Session() : functions(detail::linkedFunctions()) { start(); }

    // For a host that links neither: loads both libraries from the folder. They stay loaded until
    // the process ends, because an exception of the library that the host has caught needs its
    // code. A relative folder is one of the current folder. Throws std::system_error when a library
    // cannot be loaded or lacks a function, and as above.
    explicit Session(const std::filesystem::path& folder) {
        detail::LoadedLibraries libraries(detail::fullPath(folder));
        functions = detail::loadedFunctions(libraries);
        start();
        libraries.runtime.keep();
        libraries.module.keep();
    }

    // Ends the service. On the service thread.
    ~Session() { functions.shutdown(); }

    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    // The monitors of the desktop, in the system's order.
    std::vector<Monitor> monitors() const {
        return toRecords(detail::readList(functions.getMonitorList), detail::toMonitor);
    }

    // The capturable windows, in the order in which they appeared. The list follows the desktop
    // while the service thread retrieves messages; restartWindowList() reads it again.
    std::vector<Window> windows() const {
        return toRecords(detail::readList(functions.getWindowList), detail::toWindow);
    }

    // Whether the kit monitor is set up as the kit needs it.
    Status check() const {
        functions.checkMonitorStatus();
        return lastStatus();
    }

    // The outcome of the last check since the library was loaded; UNKNOWN_STATUS before the first.
    Status lastStatus() const {
        std::int32_t code = functions.getLastMonitorStatus();
        if (statusName(code) == nullptr) {
            code = UNKNOWN_STATUS;
        }
        return {static_cast<VLStatus>(code), statusName(code), statusShortMessage(code),
                statusMessage(code)};
    }

    // The monitor that the last check judged; nothing when it judged none or it is not listed now.
    std::optional<Monitor> checkedMonitor() const {
        MonitorListItem item{};
        if (!functions.getCheckedMonitor(&item)) {
            return std::nullopt;
        }
        return detail::toMonitor(item);
    }

    // Reads the monitors again at once: for a host that got WM_DISPLAYCHANGE.
    void updateMonitors() const { functions.updateMonitorList(); }

    // Reads the windows again; false when the runtime has switched their list off.
    bool restartWindowList() const { return functions.restartWindowList(); }

    // Why a window, of any process, is not capturable, such as "disabled"; empty when it is.
    std::string reasonNotCapturable(HWND window) const {
        return detail::textOrEmpty(functions.getReasonNotCapturable(window));
    }

    // Corner and size of the current monitor, in pixels; all zeros without a current monitor.
    _VLRect currentMonitorRect() const { return functions.getMonitorRect(); }

    std::string currentMonitorName() const {
        return detail::textOrEmpty(functions.getMonitorModelName());
    }

    // The model name of the kit's monitor, as the runtime holds it.
    std::string modelName() const {
        return detail::textOrEmpty(functions.getVorlenMonitorModelName());
    }

    // Throws std::length_error when the name is longer than 2 GB.
    void setModelName(std::string_view name) const {
        if (name.size() > static_cast<std::size_t>(INT32_MAX)) {
            throw std::length_error("the model name is too long");
        }
        functions.setVorlenMonitorModelName(name.data(), static_cast<std::int32_t>(name.size()));
    }

    // The version of the monitor module.
    Version version() const {
        Version version;
        functions.moduleVersion("monitor", &version.major, &version.minor, &version.patch);
        return version;
    }

private:
    void start() const {
        // Without a service the library gives no name.
        if (functions.getVorlenMonitorModelName() != nullptr) {
            throw std::logic_error("the service runs already");
        }
        if (!functions.initialize()) {
            throw std::runtime_error("the service did not start: Vorlen_Initialize failed");
        }
        // A runtime of another folder that was loaded before is the one that the module uses.
        if (functions.getVorlenMonitorModelName() == nullptr) {
            functions.shutdown();
            throw std::runtime_error(
                "the service did not start: another vorlen_runtime.dll is loaded");
        }
    }

    template <typename Item, typename Record>
    static std::vector<Record> toRecords(const std::vector<Item>& items,
                                         Record (*convert)(const Item&)) {
        std::vector<Record> records;
        records.reserve(items.size());
        for (const Item& item : items) {
            records.push_back(convert(item));
        }
        return records;
    }

    detail::Functions functions;
};

} // namespace vorlen

#endif // VORLEN_MONITOR_HPP
