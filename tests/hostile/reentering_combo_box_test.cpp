#include "monitor/service/ui_records.h"
#include "tests/fixtures/live_list.h"
#include "tests/fixtures/log_recorder.h"
#include "tests/fixtures/module_test.h"
#include "tests/hostile/poisoned_memory.h"

#include <gmock/gmock.h>

#include <functional>

namespace tests {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

// A combo box whose procedure calls the module while it handles a message. What it shows is then
// up to it; the list must be right.
class ReenteringComboBox : public RunningModuleTest {
protected:
    void SetUp() override {
        a = desktop.windows.add(L"a").handle;
        b = desktop.windows.add(L"b").handle;
        c = desktop.windows.add(L"c").handle;
        RunningModuleTest::SetUp();
    }

    HWND registerBox() {
        const HWND box = desktop.comboBoxes.add();
        module.windowEnumWrapper().registerWindowComboBox(box);
        return box;
    }

    void show(HWND window) { desktop.eventHooks.deliver(EVENT_OBJECT_SHOW, window); }
    void destroy(HWND window) { desktop.eventHooks.deliver(EVENT_OBJECT_DESTROY, window); }

    // Runs the action at the n-th message from now on.
    void atMessage(std::size_t n, const std::function<void()>& action) {
        desktop.journal.at("SendMessageW", n, action);
    }

    void expectListed(const std::vector<HWND>& windows) {
        std::vector<HWND> listed;
        for (const auto& window : module.monitorWrapper().getWindowList()) {
            listed.push_back(window.hwnd);
        }
        EXPECT_THAT(listed, ElementsAreArray(windows));
        EXPECT_THAT(handleSetOf(*liveListOf(service())),
                    testing::UnorderedElementsAreArray(windows));
    }

    const PoisonedMemory poison{module.image()};
    LogRecorder log{module.image(), desktop.journal};
    HWND a = nullptr;
    HWND b = nullptr;
    HWND c = nullptr;
};

TEST_F(ReenteringComboBox, may_let_windows_appear_while_one_appears) {
    const HWND first = registerBox();
    const HWND second = registerBox();
    const HWND d = desktop.windows.add(L"d").handle;
    const HWND e = desktop.windows.add(L"e").handle;
    atMessage(1, [&] {
        show(e);
        show(d);
    });
    show(d);
    expectListed({a, b, c, d, e});
    for (const HWND box : {first, second}) {
        EXPECT_THAT(desktop.comboBoxes.entries(box),
                    UnorderedElementsAre(L"a", L"b", L"c", L"d", L"e"));
    }
    EXPECT_THAT(log.lines, IsEmpty());
}

TEST_F(ReenteringComboBox, may_destroy_the_window_that_appears) {
    registerBox();
    const HWND d = desktop.windows.add(L"d").handle;
    atMessage(1, [&] { destroy(d); });
    show(d);
    expectListed({a, b, c});
}

TEST_F(ReenteringComboBox, may_destroy_windows_while_one_is_destroyed) {
    registerBox();
    registerBox();
    atMessage(1, [&] {
        destroy(b);
        destroy(c);
    });
    destroy(b);
    expectListed({a});
}

TEST_F(ReenteringComboBox, may_let_a_window_appear_while_one_is_destroyed) {
    registerBox();
    const HWND d = desktop.windows.add(L"d").handle;
    atMessage(1, [&] { show(d); });
    destroy(a);
    expectListed({b, c, d});
}

TEST_F(ReenteringComboBox, may_register_others_while_a_window_appears) {
    registerBox();
    std::vector<HWND> boxes;
    atMessage(1, [&] {
        for (int i = 0; i < 100; ++i) {
            boxes.push_back(registerBox());
        }
    });
    const HWND d = desktop.windows.add(L"d").handle;
    const HWND e = desktop.windows.add(L"e").handle;
    show(d);
    show(e);
    for (const HWND box : boxes) {
        EXPECT_THAT(desktop.comboBoxes.entries(box), ElementsAre(L"a", L"b", L"c", L"d", L"e"));
    }
    expectListed({a, b, c, d, e});
    EXPECT_THAT(log.lines, IsEmpty());
}

TEST_F(ReenteringComboBox, may_register_another_while_a_window_is_destroyed) {
    registerBox();
    HWND other = nullptr;
    atMessage(1, [&] { other = registerBox(); });
    destroy(a);
    EXPECT_THAT(desktop.comboBoxes.entries(other), ElementsAre(L"b", L"c"));
    destroy(c);
    EXPECT_THAT(desktop.comboBoxes.entries(other), ElementsAre(L"b"));
    expectListed({b});
    EXPECT_THAT(log.lines, IsEmpty());
}

// Emptying it is the first message, the first title the second.
TEST_F(ReenteringComboBox, may_let_windows_appear_while_it_is_filled) {
    std::vector<HWND> expected = {a, b, c};
    atMessage(2, [&] {
        for (int i = 0; i < 100; ++i) {
            expected.push_back(desktop.windows.add(L"late " + std::to_wstring(i)).handle);
            show(expected.back());
        }
    });
    const HWND box = registerBox();
    expectListed(expected);
    for (const wchar_t* const title : {L"a", L"b", L"c", L"late 0", L"late 99"}) {
        EXPECT_THAT(desktop.comboBoxes.entries(box), Contains(title).Times(1));
    }
    EXPECT_THAT(desktop.comboBoxes.entries(box), testing::SizeIs(103));
}

TEST_F(ReenteringComboBox, may_destroy_windows_while_it_is_filled) {
    atMessage(3, [&] {
        destroy(a);
        destroy(c);
    });
    registerBox();
    expectListed({b});
}

TEST_F(ReenteringComboBox, may_update_the_monitors_while_it_is_filled) {
    const HWND box = desktop.comboBoxes.add();
    atMessage(2, [&] {
        for (int i = 0; i < 50; ++i) {
            desktop.addMonitor(L"late " + std::to_wstring(i), L"name", smallMode);
        }
        module.windowEnumWrapper().updateMonitorList();
    });
    module.windowEnumWrapper().registerMonitorComboBox(box);
    for (const std::wstring& entry : desktop.comboBoxes.entries(box)) {
        EXPECT_THAT(entry, testing::AnyOf(testing::StartsWith(LR"(\\.\DISPLAY)"),
                                          testing::StartsWith(L"late ")));
    }
    EXPECT_NE(module.windowEnumWrapper().getMonitorHandle(52), nullptr);
}

TEST_F(ReenteringComboBox, may_be_destroyed_while_it_handles_a_message) {
    const HWND destroyed = registerBox();
    const HWND box = registerBox();
    const HWND d = desktop.windows.add(L"d").handle;
    atMessage(1, [&] { desktop.comboBoxes.box(destroyed).destroyed = true; });
    show(d);
    destroy(a);
    EXPECT_THAT(desktop.comboBoxes.entries(destroyed), ElementsAre(L"a", L"b", L"c"));
    EXPECT_THAT(desktop.comboBoxes.entries(box), ElementsAre(L"b", L"c", L"d"));
    expectListed({b, c, d});
    EXPECT_THAT(log.lines, IsEmpty());
}

// How the procedure ends the list that sends the message.
TEST_F(ReenteringComboBox, may_shut_down_while_it_is_filled_with_monitors) {
    desktop.addMonitor(L"first", L"Model A", wideMode);
    desktop.addMonitor(L"second", L"Model B", wideMode);
    for (std::size_t message = 1; message <= 2; ++message) {
        SCOPED_TRACE(message);
        module.exports->updateMonitorList();
        desktop.comboBoxes.messages.clear();
        atMessage(message, [&] { module.cleanup(); });
        module.windowEnumWrapper().registerMonitorComboBox(desktop.comboBoxes.add());
        EXPECT_THAT(desktop.comboBoxes.messages, testing::SizeIs(message));
        module.init();
    }
}

struct End {
    const char* name;
    void (*run)(const ModuleUnderTest&);
};

class ReenteringComboBoxEnd : public ReenteringComboBox, public testing::WithParamInterface<End> {
protected:
    // Ends the list at the n-th message of the operation, which must be the last one that it sends,
    // and starts a new one.
    void endAt(std::size_t n, const std::function<void()>& operation) {
        desktop.comboBoxes.messages.clear();
        atMessage(n, [&] { GetParam().run(module); });
        operation();
        EXPECT_THAT(desktop.comboBoxes.messages, testing::SizeIs(n));
        EXPECT_THAT(log.lines, IsEmpty());
        module.init();
        module.monitorWrapper().useWindowList(true);
        EXPECT_EQ(desktop.eventHooks.installed(), 1u);
    }

    void registerBoxes() {
        registerBox();
        registerBox();
        registerBox();
    }
};

// Promise (Threads and callbacks): While a combo box of windows handles a message of the list, it
// may call any function, also shut the library down or switch the list off and on. The old list
// sends nothing after that.
TEST_P(ReenteringComboBoxEnd, may_end_the_list_while_a_window_appears) {
    registerBoxes();
    const HWND d = desktop.windows.add(L"d").handle;
    endAt(2, [&] { show(d); });
    expectListed({a, b, c, d});
}

TEST_P(ReenteringComboBoxEnd, may_end_the_list_while_a_window_is_destroyed) {
    registerBoxes();
    desktop.windows.find(b)->alive = false;
    endAt(2, [&] { destroy(b); });
    expectListed({a, c});
}

TEST_P(ReenteringComboBoxEnd, may_end_the_list_while_it_is_emptied) {
    endAt(1, [&] { registerBox(); });
    expectListed({a, b, c});
}

TEST_P(ReenteringComboBoxEnd, may_end_the_list_while_it_is_filled) {
    endAt(3, [&] { registerBox(); });
    expectListed({a, b, c});
}

INSTANTIATE_TEST_SUITE_P(By, ReenteringComboBoxEnd,
                         testing::Values(End{"shutting_down",
                                             [](const ModuleUnderTest& module) {
                                                 module.cleanup();
                                             }},
                                         End{"starting_again",
                                             [](const ModuleUnderTest& module) {
                                                 module.cleanup();
                                                 module.init();
                                             }},
                                         End{"switching_it_off",
                                             [](const ModuleUnderTest& module) {
                                                 module.monitorWrapper().useWindowList(false);
                                             }},
                                         End{"replacing_it",
                                             [](const ModuleUnderTest& module) {
                                                 module.monitorWrapper().useWindowList(false);
                                                 module.monitorWrapper().useWindowList(true);
                                             }}),
                         [](const auto& end) { return std::string(end.param.name); });

} // namespace
} // namespace tests
