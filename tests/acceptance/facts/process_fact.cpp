// Facts about combo boxes, threads and loading.

#include "tests/acceptance/facts/answers.h"
#include "tests/acceptance/facts/event_recorder.h"
#include "tests/acceptance/facts/finding.h"
#include "tests/acceptance/facts/window_thread.h"
#include "tests/fixtures/module_under_test.h"
#include "tests/fixtures/shipped_runtime.h"
#include "tests/support/other_thread.h"

#include <windows.h>

#include <array>
#include <string>
#include <vector>

namespace tests {
namespace {

class ComboBox : public testing::Test {
protected:
    ~ComboBox() override { DestroyWindow(box); }

    static std::string reply(HWND window, UINT message, const wchar_t* text = nullptr) {
        SetLastError(0);
        const LRESULT result = SendMessageW(window, message, 0, reinterpret_cast<LPARAM>(text));
        detail("last error", std::to_string(GetLastError()));
        return std::to_string(result);
    }

    const HWND box = CreateWindowExW(0, L"COMBOBOX", L"", WS_POPUP | CBS_DROPDOWNLIST, 0, 0, 50, 50,
                                     nullptr, nullptr, nullptr, nullptr);
};

// Fact: What does a destroyed combo box reply when a text is added?
// Relied on by: `platform/combo_box.cpp`
// Simulated: 0
TEST_F(ComboBox, destroyed) {
    DestroyWindow(box);
    answer(reply(box, CB_ADDSTRING, L"fact"));
}

// Fact: What does a combo box reply when an entry is deleted that it does not have?
// Relied on by: `platform/combo_box.cpp`
// Simulated: -1
TEST_F(ComboBox, without_the_entry_to_delete) {
    answer(reply(box, CB_DELETESTRING));
}

// Fact: What does `TlsGetValue` give for the index `TLS_OUT_OF_INDEXES`?
// Relied on by: `platform/thread_slot.h`
// Simulated: -
TEST(ThreadSlot, without_an_index) {
    SetLastError(0);
    const void* const value = TlsGetValue(TLS_OUT_OF_INDEXES);
    answer((value == nullptr ? "null, error " : "a value, error ") +
           std::to_string(GetLastError()));
}

// Fact: Which value has a thread in a new slot whose index had another use before?
// Relied on by: `platform/thread_slot.h`
// Simulated: -
TEST(ThreadSlot, used_again) {
    const DWORD first = TlsAlloc();
    int something = 0;
    TlsSetValue(first, &something);
    TlsFree(first);
    std::vector<DWORD> slots;
    do {
        slots.push_back(TlsAlloc());
    } while (slots.back() != first && slots.back() != TLS_OUT_OF_INDEXES);
    const bool found = slots.back() == first;
    const bool isNull = found && TlsGetValue(first) == nullptr;
    for (const DWORD slot : slots) {
        TlsFree(slot);
    }
    ASSERT_TRUE(found) << "the index was not given out again";
    answer(isNull ? "null" : "the earlier one");
}

// Fact: What does `TlsGetValue` do to the last error?
// Relied on by: `monitor/windows/window_list.cpp`
// Simulated: -
TEST(LastError, after_a_slot_is_read) {
    const DWORD slot = TlsAlloc();
    SetLastError(4711);
    TlsGetValue(slot);
    const DWORD error = GetLastError();
    TlsFree(slot);
    answer(error == 4711 ? "nothing" : "it becomes " + std::to_string(error));
}

// Fact: Does a thread that retrieves messages see the last error of an event procedure?
// Relied on by: `monitor/windows/window_list.cpp`
// Simulated: yes
TEST(LastError, after_an_event_procedure) {
    static bool called;
    called = false;
    const WindowThread windows;
    const HWND window = windows.createWindow(L"fact");
    const WINEVENTPROC procedure = [](HWINEVENTHOOK, DWORD, HWND, LONG, LONG, DWORD, DWORD) {
        called = true;
        SetLastError(4711);
    };
    const HWINEVENTHOOK hook =
        SetWinEventHook(EVENT_OBJECT_SHOW, EVENT_OBJECT_SHOW, nullptr, procedure,
                        GetCurrentProcessId(), windows.id(), WINEVENT_OUTOFCONTEXT);
    windows.run([=] { announce(EVENT_OBJECT_SHOW, window); });
    DWORD error = 0;
    const ULONGLONG end = GetTickCount64() + 60'000;
    while (!called && GetTickCount64() < end) {
        MSG message;
        SetLastError(0);
        PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE);
        error = GetLastError();
    }
    UnhookWinEvent(hook);
    ASSERT_TRUE(called) << "no event arrived";
    answer(error == 4711 ? "yes" : "no");
}

// What the system counts for this process.
struct Counts {
    DWORD handles = 0;
    DWORD gdiObjects = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
    DWORD userObjects = GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS);

    Counts() { GetProcessHandleCount(GetCurrentProcess(), &handles); }

    std::string text() const {
        return std::to_string(handles) + " handles, " + std::to_string(gdiObjects) +
               " GDI objects, " + std::to_string(userObjects) + " user objects";
    }
};

void loadAndUnload() {
    const ShippedRuntime runtime;
    const Library module(product("libvorlen_monitor.dll"));
    const Exports exports(module);
    ASSERT_TRUE(runtime.initialize());
    exports.getMonitorList(nullptr, 0);
    exports.getWindowList(nullptr, 0);
    exports.checkMonitorStatus();
    runtime.shutdown();
}

// Fact: Of what does the process have more after 1,000 loads, uses and unloads of both libraries?
// Relied on by: `docs/platform.md`
// Simulated: nothing
TEST(LoadCycles, leave_handles_and_objects) {
    constexpr int warmUps = 20;
    constexpr int cycles = 1'000;
    constexpr DWORD tolerance = cycles / 10; // what the system keeps is less than one in ten loads
    loadAndUnload();
    if (Counts().handles == 0) {
        return notMeasured("this system does not count handles and objects");
    }
    for (int i = 0; i < warmUps && !HasFatalFailure(); ++i) {
        loadAndUnload();
    }
    const Counts before;
    for (int i = 0; i < cycles && !HasFatalFailure(); ++i) {
        loadAndUnload();
    }
    const Counts after;
    detail("before", before.text());
    detail("after", after.text());
    std::vector<std::string> grown;
    for (const auto& [name, count] :
         {std::pair("handles", &Counts::handles), std::pair("GDI objects", &Counts::gdiObjects),
          std::pair("user objects", &Counts::userObjects)}) {
        if (after.*count >= before.*count + tolerance) {
            grown.emplace_back(name);
        }
    }
    answer(joined(grown, "nothing"));
}

} // namespace
} // namespace tests
