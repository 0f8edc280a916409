#include "monitor/service/ui_records.h"
#include "tests/fixtures/module_test.h"
#include "tests/support/other_thread.h"
#include "tests/support/signal.h"
#include "tests/fixtures/live_list.h"

#include <gmock/gmock.h>

#include <thread>
#include <vector>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Every function of the table that works on the calling thread's lists, called on a thread that has
// none.
class CallsOfAStranger : public RunningModuleTest {
protected:
    void SetUp() override {
        desktop.windows.add(L"a");
        RunningModuleTest::SetUp();
    }

    void callEverything() {
        const vorlen::WindowEnumWrapper& table = module.windowEnumWrapper();
        table.updateMonitorList();
        table.registerWindowComboBox(strangersBox);
        table.registerMonitorComboBox(strangersBox);
        EXPECT_EQ(table.getWindowHandle(0), nullptr);
        EXPECT_EQ(table.getMonitorHandle(0), nullptr);
    }

    void expectNothingHappened() {
        EXPECT_THAT(desktop.journal.calls(), IsEmpty());
        EXPECT_THAT(desktop.comboBoxes.messages, IsEmpty());
        EXPECT_THAT(desktop.comboBoxes.entries(strangersBox), ElementsAre(L"left over"));
        EXPECT_EQ(desktop.eventHooks.installed(), 1u);
    }

    // On the service thread everything is as before, and goes on.
    void expectServiceGoesOn() {
        const vorlen::WindowEnumWrapper& table = module.windowEnumWrapper();
        EXPECT_EQ(table.getWindowHandle(0), desktop.windows.order[0]);
        EXPECT_EQ(table.getMonitorHandle(2), desktop.monitors.all[2].handle);
        const HWND window = desktop.windows.add(L"b").handle;
        desktop.eventHooks.deliver(EVENT_OBJECT_SHOW, window);
        EXPECT_EQ(table.getWindowHandle(1), window);
        EXPECT_EQ(handleSetOf(*liveListOf(service())).size(), 2u);
        EXPECT_THAT(desktop.comboBoxes.messages, IsEmpty());
    }

    const HWND strangersBox = desktop.comboBoxes.add({L"left over"});
};

TEST_F(CallsOfAStranger, find_nothing_and_harm_nothing) {
    std::thread([this] {
        callEverything();
        callEverything();
    }).join();
    expectNothingHappened();
    expectServiceGoesOn();
}

TEST_F(CallsOfAStranger, of_many_threads_at_once_harm_nothing) {
    std::vector<std::thread> strangers;
    for (int i = 0; i < 8; ++i) {
        strangers.emplace_back([this] {
            for (int call = 0; call < 100; ++call) {
                callEverything();
            }
        });
    }
    for (std::thread& stranger : strangers) {
        stranger.join();
    }
    expectNothingHappened();
    expectServiceGoesOn();
}

TEST_F(CallsOfAStranger, of_the_thread_that_loaded_the_library_harm_nothing_either) {
    module.cleanup();
    Signal started;
    Signal called;
    std::thread service([&] {
        module.init();
        started.raise();
        called.wait();
        expectServiceGoesOn();
        module.cleanup();
    });
    started.wait();
    desktop.journal.clear();
    callEverything();
    expectNothingHappened();
    called.raise();
    service.join();
}

// The system keeps to the thread of the hook, but nothing is lost if it does not.
TEST_F(CallsOfAStranger, with_an_event_are_not_handled) {
    const WINEVENTPROC procedure = desktop.eventHooks.all.front().procedure;
    const HWND window = desktop.windows.add(L"b").handle;
    const HWND listed = desktop.windows.order[0];
    onAnotherThread([&] {
        for (const DWORD event : {DWORD{EVENT_OBJECT_SHOW}, DWORD{EVENT_OBJECT_DESTROY}}) {
            for (const HWND handle : {listed, window}) {
                procedure(nullptr, event, handle, OBJID_WINDOW, CHILDID_SELF, 0, 0);
            }
        }
    });
    expectNothingHappened();
    EXPECT_EQ(module.monitorWrapper().getWindowList().size(), 1u);
    EXPECT_EQ(module.windowEnumWrapper().getWindowHandle(0), listed);
}

// What only the service thread may do, done by another: the service thread goes on without its
// lists, and can make new ones. Its hook stays until it ends.
class ServiceOfAWrongThread : public RunningModuleTest {
protected:
    void SetUp() override {
        a = desktop.windows.add(L"a").handle;
        RunningModuleTest::SetUp();
        desktop.eventHooks.releasesToRefuse = 1;
        desktop.eventHooks.leftInstalled = 1;
    }

    void cleanUpOnAnotherThread() {
        onAnotherThread([this] { module.cleanup(); });
        desktop.journal.clear();
    }

    void switchWindowsOffOnAnotherThread() {
        onAnotherThread([this] { module.monitorWrapper().useWindowList(false); });
        desktop.journal.clear();
    }

    // An event reaches the hook that stayed, too.
    HWND show(const wchar_t* title) {
        const HWND window = desktop.windows.add(title).handle;
        desktop.eventHooks.deliver(EVENT_OBJECT_SHOW, window);
        return window;
    }

    const vorlen::WindowEnumWrapper& table() const { return module.windowEnumWrapper(); }

    HWND a = nullptr;
};

TEST_F(ServiceOfAWrongThread, that_cleans_up_leaves_no_list_to_the_service_thread) {
    cleanUpOnAnotherThread();
    const HWND box = desktop.comboBoxes.add({L"left over"});
    table().updateMonitorList();
    table().registerWindowComboBox(box);
    table().registerMonitorComboBox(box);
    EXPECT_EQ(table().getWindowHandle(0), nullptr);
    EXPECT_EQ(table().getMonitorHandle(0), nullptr);
    EXPECT_THAT(desktop.journal.calls(), IsEmpty());
}

TEST_F(ServiceOfAWrongThread, that_cleans_up_leaves_events_to_nothing) {
    cleanUpOnAnotherThread();
    show(L"b");
    desktop.eventHooks.deliver(EVENT_OBJECT_DESTROY, a);
    EXPECT_THAT(desktop.journal.calls(), IsEmpty());
}

TEST_F(ServiceOfAWrongThread, that_cleans_up_does_not_prevent_the_next_init) {
    cleanUpOnAnotherThread();
    module.init();
    EXPECT_EQ(table().getWindowHandle(0), a);
    EXPECT_EQ(table().getMonitorHandle(2), desktop.monitors.all[2].handle);
    const HWND b = show(L"b");
    EXPECT_EQ(table().getWindowHandle(1), b);
    EXPECT_EQ(table().getWindowHandle(2), nullptr);
}

TEST_F(ServiceOfAWrongThread, that_switches_windows_off_leaves_no_list_of_them) {
    switchWindowsOffOnAnotherThread();
    EXPECT_EQ(table().getWindowHandle(0), nullptr);
    show(L"b");
    EXPECT_THAT(desktop.journal.calls(), IsEmpty());
    EXPECT_EQ(table().getMonitorHandle(0), desktop.monitors.all[0].handle);
}

TEST_F(ServiceOfAWrongThread, that_switches_windows_off_lets_them_be_switched_on_again) {
    switchWindowsOffOnAnotherThread();
    module.monitorWrapper().useWindowList(true);
    const HWND b = show(L"b");
    EXPECT_EQ(table().getWindowHandle(0), a);
    EXPECT_EQ(table().getWindowHandle(1), b);
    EXPECT_EQ(table().getWindowHandle(2), nullptr);
}

TEST_F(ServiceOfAWrongThread, that_leaves_the_hook_keeps_the_library_loaded) {
    cleanUpOnAnotherThread();
    EXPECT_EQ(desktop.eventHooks.imagePins, 1u);
}

} // namespace
} // namespace tests
