#include "monitor/service/ui_records.h"
#include "tests/fixtures/live_list.h"
#include "tests/fixtures/module_test.h"
#include "tests/support/other_thread.h"
#include "tests/support/signal.h"

#include <gmock/gmock.h>

#include <thread>
#include <vector>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Every function of the table that works on the calling thread's lists, called on a thread that has
// none.
class WrongThread : public RunningModuleTest {
protected:
    void SetUp() override {
        desktop.windows.add(L"a");
        RunningModuleTest::SetUp();
    }

    void callEverything() {
        const vorlen::WindowEnumWrapper& table = module.windowEnumWrapper();
        table.updateMonitorList();
        table.registerWindowComboBox(box);
        table.registerMonitorComboBox(box);
        EXPECT_EQ(table.getWindowHandle(0), nullptr);
        EXPECT_EQ(table.getMonitorHandle(0), nullptr);
    }

    void expectNothingHappened() {
        EXPECT_THAT(desktop.journal.calls(), IsEmpty());
        EXPECT_THAT(desktop.comboBoxes.entries(box), ElementsAre(L"left over"));
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

    const HWND box = desktop.comboBoxes.add({L"left over"});
};

// Promise (Threads and callbacks): The functions of the `WindowEnumWrapper` table work on the lists
// of the calling thread. On another thread than the service thread they do nothing or return null.
TEST_F(WrongThread, finds_no_lists_and_changes_nothing) {
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i) {
        threads.emplace_back([this] {
            for (int call = 0; call < 100; ++call) {
                callEverything();
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    expectNothingHappened();
    expectServiceGoesOn();
}

TEST_F(WrongThread, may_be_the_one_that_loaded_the_library) {
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
TEST_F(WrongThread, handles_no_window_event) {
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

// What only the service thread may do, done by another one. The hook stays until the service thread
// ends.
class WrongThreadCleanup : public RunningModuleTest {
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

    // The event reaches the hook that stayed, too.
    HWND show(const wchar_t* title) {
        const HWND window = desktop.windows.add(title).handle;
        desktop.eventHooks.deliver(EVENT_OBJECT_SHOW, window);
        return window;
    }

    const vorlen::WindowEnumWrapper& table() const { return module.windowEnumWrapper(); }

    HWND a = nullptr;
};

// Promise (Threads and callbacks): A cleanup on another thread than the service thread leaves the
// service thread without lists. Events of the hook, which stays until that thread ends, change
// nothing, and the library stays loaded for it.
TEST_F(WrongThreadCleanup, leaves_the_service_thread_without_lists) {
    cleanUpOnAnotherThread();
    EXPECT_EQ(desktop.eventHooks.imagePins, 1u);
    const HWND box = desktop.comboBoxes.add({L"left over"});
    table().updateMonitorList();
    table().registerWindowComboBox(box);
    table().registerMonitorComboBox(box);
    EXPECT_EQ(table().getWindowHandle(0), nullptr);
    EXPECT_EQ(table().getMonitorHandle(0), nullptr);
    show(L"b");
    desktop.eventHooks.deliver(EVENT_OBJECT_DESTROY, a);
    EXPECT_THAT(desktop.journal.calls(), IsEmpty());
}

TEST_F(WrongThreadCleanup, lets_the_service_thread_init_again) {
    cleanUpOnAnotherThread();
    module.init();
    EXPECT_EQ(table().getWindowHandle(0), a);
    EXPECT_EQ(table().getMonitorHandle(2), desktop.monitors.all[2].handle);
    const HWND b = show(L"b");
    EXPECT_EQ(table().getWindowHandle(1), b);
    EXPECT_EQ(table().getWindowHandle(2), nullptr);
}

TEST_F(WrongThreadCleanup, lets_the_windows_be_switched_on_again) {
    onAnotherThread([this] { module.monitorWrapper().useWindowList(false); });
    desktop.journal.clear();
    EXPECT_EQ(table().getWindowHandle(0), nullptr);
    show(L"b");
    EXPECT_THAT(desktop.journal.calls(), IsEmpty());
    EXPECT_EQ(table().getMonitorHandle(0), desktop.monitors.all[0].handle);

    module.monitorWrapper().useWindowList(true);
    const HWND c = show(L"c");
    EXPECT_EQ(table().getWindowHandle(0), a);
    EXPECT_EQ(table().getWindowHandle(2), c);
    EXPECT_EQ(table().getWindowHandle(3), nullptr);
}

} // namespace
} // namespace tests
