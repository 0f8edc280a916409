#include "monitor/service/ui_records.h"
#include "tests/support/module_test.h"
#include "tests/support/other_thread.h"
#include "tests/support/signal.h"
#include "tests/windows/live_list.h"

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

} // namespace
} // namespace tests
