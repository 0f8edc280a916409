// A host that ends with a live service, for process_end_test.cpp: its argument says how.
#include "tests/lifecycle/ending_host.h"

#include "monitor/display/monitor_info.h"
#include "monitor/service/ui_records.h"
#include "simulation/import_redirect.h"
#include "simulation/platform_memory.h"
#include "tests/fixtures/mangled_names.h"
#include "tests/fixtures/module_under_test.h"
#include "tests/fixtures/recording_runtime/recording_runtime.h"
#include "tests/fixtures/shipped_runtime.h"
#include "tests/support/library.h"
#include "tests/support/simulation.h"

#include <windows.h>

#include <cstdint>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <map>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <thread>

namespace tests {
namespace {

void require(bool condition, const char* expectation) {
    if (!condition) {
        std::cerr << "ending_host: not so: " << expectation << '\n';
        TerminateProcess(GetCurrentProcess(), answeredWrong);
    }
}

// Called before every handler: under Wine, a crash while an image handles the end of the process
// would otherwise not be seen.
LONG CALLBACK endAtCrash(EXCEPTION_POINTERS* exception) {
    constexpr DWORD severity = 0xF0000000;
    constexpr DWORD error = 0xC0000000;
    if ((exception->ExceptionRecord->ExceptionCode & severity) == error) {
        TerminateProcess(GetCurrentProcess(), crashed);
    }
    return EXCEPTION_CONTINUE_SEARCH;
}

// The module and everything that it exports or registers.
struct LoadedModule {
    LoadedModule() { library.resolve(getMonitorPath, mangled::getPathOfMonitor); }

    Library library{product("libvorlen_monitor.dll")};
    Exports exports{library};
    std::wstring (*getMonitorPath)(HMONITOR) = nullptr;
    vorlen::MonitorWrapper monitors{};
    vorlen::WindowEnumWrapper lists{};
};

struct Images {
    Library plugIn{"lifecycle/plug_in.dll"}; // loaded before the products, so it ends after them
    std::unique_ptr<ShippedRuntime> runtime;
    std::unique_ptr<Library> recordingLibrary;
    RecordingRuntime* recordingRuntime = nullptr;
    std::unique_ptr<LoadedModule> module;

    void init() const {
        if (runtime) {
            require(runtime->initialize(), "the service starts");
        } else {
            recordingRuntime->init();
        }
        require(module->exports.getMonitorData() != nullptr, "there is a service");
        require(module->exports.getMonitorList(nullptr, 0) > 0, "there is a monitor");
    }
};

// Never destroyed: the libraries stay until the process ends.
Images& images() {
    static Images& theImages = *new Images;
    return theImages;
}

void loadProducts() {
    Images& all = images();
    all.runtime = std::make_unique<ShippedRuntime>();
    all.module = std::make_unique<LoadedModule>();
    all.module->monitors = *all.runtime->getMonitorWrapper();
    all.module->lists = *all.runtime->getWindowEnumWrapper();
}

void loadModuleWithRecordingRuntime() {
    Images& all = images();
    all.recordingLibrary = std::make_unique<Library>("recording_runtime/vorlen_runtime.dll");
    decltype(RecordingRuntime_Get)* getter = nullptr;
    all.recordingLibrary->resolve(getter, "RecordingRuntime_Get");
    all.recordingRuntime = getter();
    all.module = std::make_unique<LoadedModule>();
    all.module->monitors = *all.recordingRuntime->monitorWrapper();
    all.module->lists = *all.recordingRuntime->windowEnumWrapper();
}

HWND blockedWindow = nullptr;
HMONITOR primaryMonitor = nullptr;
std::wstring& pathOfPrimaryMonitor = *new std::wstring;

// A window that passes every test of the capture filter but the last, on the thread that ends the
// process.
void makeBlockedWindow() {
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = DefWindowProcW;
    windowClass.lpszClassName = L"Windows.UI.Core.CoreWindow";
    RegisterClassW(&windowClass);
    blockedWindow = CreateWindowW(windowClass.lpszClassName, L"Task View", WS_POPUP | WS_VISIBLE, 0,
                                  0, 50, 50, nullptr, nullptr, nullptr, nullptr);
}

// Functions that need no service still answer.
void askWithoutService() {
    const LoadedModule& module = *images().module;
    const char* const reason = module.exports.getReasonNotCapturable(blockedWindow);
    require(reason != nullptr && std::string(reason) == "blocked", "the window is blocked");
    require(module.getMonitorPath(primaryMonitor) == pathOfPrimaryMonitor,
            "the monitor has its path");
}

void expectNeutralExports() {
    const Exports& exports = images().module->exports;
    require(exports.getMonitorData() == nullptr, "there is no service");
    require(!exports.checkMonitorStatus(), "no check passes");
    require(exports.getMonitorList(nullptr, 0) == 0, "no monitor is listed");
    require(exports.getWindowList(nullptr, 0) == 0, "no window is listed");
    require(exports.getMonitorModelName() == nullptr, "there is no name");
    require(exports.getVorlenMonitorModelName() == nullptr, "there is no model name");
    exports.setVorlenMonitorModelName("Kit", 3);
    const _VLRect rectangle = exports.getMonitorRect();
    require(rectangle.width == 0 && rectangle.height == 0, "the rectangle is empty");
    exports.updateMonitorList();
    exports.getLastMonitorStatus();
    MonitorListItem item{};
    require(!exports.getCheckedMonitor(&item), "no monitor was judged");
    require(!exports.restartWindowList(), "there is no list to restart");
}

void expectNeutralTables() {
    const vorlen::MonitorWrapper& monitors = images().module->monitors;
    require(monitors.getWindowList().empty(), "the list of windows is empty");
    require(monitors.getMonitorList().empty(), "the list of monitors is empty");
    require(*monitors.getCurrentMonitorName() == '\0', "the name is empty");
    require(monitors.getVorlenModelName("device").empty(), "the list of models is empty");
    require(monitors.getVorlenModelNameWide(L"device").empty(), "the other list is empty");
    monitors.setVorlenModelName("Kit");
    require(*monitors.getVorlenCameraName("Kit") == '\0', "the camera's name is empty");
    monitors.useWindowList(true);
    monitors.useWindowList(false);

    const vorlen::WindowEnumWrapper& lists = images().module->lists;
    lists.updateMonitorList();
    lists.registerWindowComboBox(blockedWindow);
    lists.registerMonitorComboBox(blockedWindow);
    require(lists.getWindowHandle(0) == nullptr, "there is no window");
    require(lists.getMonitorHandle(0) == nullptr, "there is no monitor");
}

LONG WINAPI claimManyPaths(UINT32, UINT32* paths, UINT32* modes) {
    *paths = *modes = 0xFFFFFFFF;
    return ERROR_SUCCESS;
}

void expectExceptionsPass() {
    const LoadedModule& module = *images().module;
    const ImportRedirect sizes(module.library.image(), "GetDisplayConfigBufferSizes",
                               addressOf(claimManyPaths));
    bool thrown = false;
    try {
        module.getMonitorPath(primaryMonitor);
    } catch (const std::bad_alloc&) {
        thrown = true;
    }
    require(thrown, "the library throws");
}

// Also those that the module has freed: a value that it finds there is not its own.
void takeFreeSlots() {
    auto* const value = reinterpret_cast<void*>(std::intptr_t{1});
    for (int i = 0; i < 32; ++i) {
        TlsSetValue(TlsAlloc(), value);
        FlsSetValue(FlsAlloc(nullptr), value);
    }
}

// Called by the static destructor of the plug-in, after the module has destroyed its static
// objects.
void callEverythingAndEnd() {
    takeFreeSlots();
    expectNeutralExports();
    expectNeutralTables();
    askWithoutService();
    expectExceptionsPass();
    expectNeutralTables();
    TerminateProcess(GetCurrentProcess(), endedWell);
}

// Called before every end, on the thread that ends the process.
void prepareEnd() {
    makeBlockedWindow();
    primaryMonitor = MonitorFromPoint({0, 0}, MONITOR_DEFAULTTOPRIMARY);
    pathOfPrimaryMonitor = images().module->getMonitorPath(primaryMonitor);
    askWithoutService();
    void (*callFromStaticDestructor)(void (*)()) = nullptr;
    images().plugIn.resolve(callFromStaticDestructor, "callFromStaticDestructor");
    callFromStaticDestructor(callEverythingAndEnd);
}

void returnFromMain() {
    loadProducts();
    images().init();
    prepareEnd();
}

void exitOnServiceThread() {
    returnFromMain();
    ExitProcess(EXIT_SUCCESS);
}

void exitOnAnotherThread() {
    loadProducts();
    images().init();
    std::thread([] {
        prepareEnd();
        ExitProcess(EXIT_SUCCESS);
    }).join();
}

void endAfterServiceThread() {
    loadProducts();
    std::thread([] { images().init(); }).join();
    prepareEnd();
}

HANDLE makeEvent() {
    return CreateEventW(nullptr, TRUE, FALSE, nullptr);
}

void endWhileServiceThreadWaits() {
    loadProducts();
    const HANDLE started = makeEvent();
    std::thread([started] {
        images().init();
        SetEvent(started);
        Sleep(INFINITE);
    }).detach();
    WaitForSingleObject(started, INFINITE);
    prepareEnd();
}

HANDLE queryBegun = nullptr;

HRESULT WINAPI neverAnswer(void*, DWORD) {
    SetEvent(queryBegun);
    Sleep(INFINITE);
    return E_FAIL;
}

LONG WINAPI describeUnknownMonitor(DISPLAYCONFIG_DEVICE_INFO_HEADER* header) {
    const LONG result = DisplayConfigGetDeviceInfo(header);
    if (header->type == DISPLAYCONFIG_DEVICE_INFO_GET_TARGET_NAME) {
        auto* const target = reinterpret_cast<DISPLAYCONFIG_TARGET_DEVICE_NAME*>(header);
        fillField(target->monitorDevicePath, LR"(\\?\DISPLAY#NEW0001#1#{e6f07b5f})");
    }
    return result;
}

// The service thread holds the lock of the serial numbers and never releases it.
void endInTheMiddleOfAQuery() {
    loadProducts();
    queryBegun = makeEvent();
    std::thread([] {
        images().init();
        const HMODULE image = images().module->library.image();
        const ImportRedirect path(image, "DisplayConfigGetDeviceInfo",
                                  addressOf(describeUnknownMonitor));
        const ImportRedirect com(image, "CoInitializeEx", addressOf(neverAnswer));
        images().module->exports.updateMonitorList();
    }).detach();
    WaitForSingleObject(queryBegun, INFINITE);
    prepareEnd();
}

void endWithARuntimeThatCleansUpAtItsOwnEnd() {
    loadModuleWithRecordingRuntime();
    images().init();
    images().recordingRuntime->cleanUpAtItsEnd();
    prepareEnd();
}

void unloadOnAnotherThread() {
    loadProducts();
    images().init();
    makeBlockedWindow();
    std::thread([] { images().module.reset(); }).join();
    // The service thread goes on, and still gets the events of the hook.
    NotifyWinEvent(EVENT_OBJECT_SHOW, blockedWindow, OBJID_WINDOW, CHILDID_SELF);
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
        DispatchMessageW(&message);
    }
    // The module registers again, and starts again on a thread that had a service.
    loadProducts();
    images().init();
    prepareEnd();
}

int run(const std::string& how) {
    static const std::map<std::string, void (*)()> ways = {
        {"return_from_main", returnFromMain},
        {"exit_on_service_thread", exitOnServiceThread},
        {"exit_on_another_thread", exitOnAnotherThread},
        {"after_service_thread", endAfterServiceThread},
        {"while_service_thread_waits", endWhileServiceThreadWaits},
        {"during_query", endInTheMiddleOfAQuery},
        {"runtime_cleans_up", endWithARuntimeThatCleansUpAtItsOwnEnd},
        {"unloaded_on_another_thread", unloadOnAnotherThread},
    };
    AddVectoredExceptionHandler(TRUE, endAtCrash);
    ways.at(how)();
    return EXIT_SUCCESS;
}

} // namespace
} // namespace tests

int main(int count, char** arguments) {
    try {
        return tests::run(count == 2 ? arguments[1] : "");
    } catch (const std::exception& error) {
        std::cerr << "ending_host: " << error.what() << '\n';
        return tests::failedToStart;
    }
}
