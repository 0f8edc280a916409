#include "monitor/service/ui_records.h"
#include "tests/hostile/poisoned_memory.h"
#include "tests/fixtures/log_recorder.h"
#include "tests/fixtures/module_test.h"
#include "tests/fixtures/live_list.h"

#include <gmock/gmock.h>

#include <functional>

namespace tests {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

// A combo box that does something else while it is being told: what it shows is its own affair
// then, but not the list.
class ReenteringComboBox : public RunningModuleTest {
protected:
    void SetUp() override {
        for (const wchar_t* const title : {L"a", L"b", L"c"}) {
            desktop.windows.add(title);
        }
        RunningModuleTest::SetUp();
        a = desktop.windows.order[0];
        b = desktop.windows.order[1];
        c = desktop.windows.order[2];
    }

    HWND registerBox() {
        const HWND box = desktop.comboBoxes.add();
        module.windowEnumWrapper().registerWindowComboBox(box);
        return box;
    }

    void show(HWND window) { desktop.eventHooks.deliver(EVENT_OBJECT_SHOW, window); }
    void destroy(HWND window) { desktop.eventHooks.deliver(EVENT_OBJECT_DESTROY, window); }

    // At the n-th message from now on.
    void whileToldOf(std::size_t n, const std::function<void()>& action) {
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

TEST_F(ReenteringComboBox, that_lets_a_window_appear_while_one_appears_has_both_listed_once) {
    const HWND first = registerBox();
    const HWND second = registerBox();
    const HWND d = desktop.windows.add(L"d").handle;
    const HWND e = desktop.windows.add(L"e").handle;
    whileToldOf(1, [&] {
        show(e);
        show(d);
    });
    show(d);
    expectListed({a, b, c, d, e});
    for (const HWND box : {first, second}) {
        EXPECT_THAT(desktop.comboBoxes.entries(box),
                    testing::UnorderedElementsAre(L"a", L"b", L"c", L"d", L"e"));
    }
    EXPECT_THAT(log.lines, IsEmpty());
}

TEST_F(ReenteringComboBox, that_lets_the_window_go_that_it_is_told_of_leaves_the_list_without_it) {
    registerBox();
    const HWND d = desktop.windows.add(L"d").handle;
    whileToldOf(1, [&] { destroy(d); });
    show(d);
    expectListed({a, b, c});
}

TEST_F(ReenteringComboBox, that_lets_windows_go_while_one_goes_leaves_the_list_without_them) {
    registerBox();
    registerBox();
    whileToldOf(1, [&] {
        destroy(b);
        destroy(c);
    });
    destroy(b);
    expectListed({a});
}

TEST_F(ReenteringComboBox, that_lets_a_window_appear_while_one_goes_has_it_listed) {
    registerBox();
    const HWND d = desktop.windows.add(L"d").handle;
    whileToldOf(1, [&] { show(d); });
    destroy(a);
    expectListed({b, c, d});
}

TEST_F(ReenteringComboBox, that_registers_others_has_all_of_them_told_from_then_on) {
    registerBox();
    std::vector<HWND> boxes;
    whileToldOf(1, [&] {
        for (int i = 0; i < 100; ++i) {
            boxes.push_back(registerBox());
        }
    });
    show(desktop.windows.add(L"d").handle);
    show(desktop.windows.add(L"e").handle);
    for (const HWND box : boxes) {
        EXPECT_THAT(desktop.comboBoxes.entries(box), ElementsAre(L"a", L"b", L"c", L"d", L"e"));
    }
    EXPECT_EQ(module.exports->getWindowList(nullptr, 0), 5);
    EXPECT_THAT(log.lines, IsEmpty());
}

TEST_F(ReenteringComboBox, that_registers_another_while_a_window_goes_has_it_without_that_window) {
    registerBox();
    HWND other = nullptr;
    whileToldOf(1, [&] { other = registerBox(); });
    destroy(a);
    EXPECT_THAT(desktop.comboBoxes.entries(other), ElementsAre(L"b", L"c"));
    destroy(c);
    EXPECT_THAT(desktop.comboBoxes.entries(other), ElementsAre(L"b"));
    EXPECT_THAT(log.lines, IsEmpty());
}

// Emptying it is the first message, the first title the second.
TEST_F(ReenteringComboBox, that_lets_windows_appear_while_it_is_filled_is_filled_all_the_same) {
    std::vector<HWND> expected = {a, b, c};
    whileToldOf(2, [&] {
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

TEST_F(ReenteringComboBox, that_lets_windows_go_while_it_is_filled_leaves_the_list_without_them) {
    whileToldOf(3, [&] {
        destroy(a);
        destroy(c);
    });
    registerBox();
    expectListed({b});
}

TEST_F(ReenteringComboBox,
       that_has_the_monitors_read_anew_while_it_is_filled_is_filled_all_the_same) {
    const HWND box = desktop.comboBoxes.add();
    whileToldOf(2, [&] {
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

TEST_F(ReenteringComboBox, that_is_destroyed_while_it_is_told_does_not_stop_the_others) {
    const HWND gone = registerBox();
    const HWND box = registerBox();
    whileToldOf(1, [&] { desktop.comboBoxes.box(gone).destroyed = true; });
    show(desktop.windows.add(L"d").handle);
    destroy(a);
    EXPECT_THAT(desktop.comboBoxes.entries(gone), ElementsAre(L"a", L"b", L"c"));
    EXPECT_THAT(desktop.comboBoxes.entries(box), ElementsAre(L"b", L"c", L"d"));
    EXPECT_EQ(module.exports->getWindowList(nullptr, 0), 3);
    EXPECT_THAT(log.lines, IsEmpty());
}

// What a host's procedure of a combo box may do with the list that sends the message.
struct End {
    const char* name;
    void (*run)(const ModuleUnderTest&);
};

class ComboBoxThatEndsTheList : public ReenteringComboBox, public testing::WithParamInterface<End> {
protected:
    // Ends the list at the n-th message of the operation, which must be the last one that it sends.
    void endAt(std::size_t n, const std::function<void()>& operation) {
        desktop.comboBoxes.messages.clear();
        whileToldOf(n, [&] { GetParam().run(module); });
        operation();
        EXPECT_THAT(desktop.comboBoxes.messages, testing::SizeIs(n));
        EXPECT_THAT(log.lines, IsEmpty());
    }

    void expectRightAfterwards(const std::vector<HWND>& windows) {
        module.init();
        module.monitorWrapper().useWindowList(true);
        expectListed(windows);
        EXPECT_EQ(desktop.eventHooks.installed(), 1u);
    }
};

TEST_P(ComboBoxThatEndsTheList, while_a_window_appears_is_sent_the_last_message) {
    registerBox();
    registerBox();
    registerBox();
    const HWND d = desktop.windows.add(L"d").handle;
    endAt(2, [&] { show(d); });
    expectRightAfterwards({a, b, c, d});
}

TEST_P(ComboBoxThatEndsTheList, while_a_window_goes_is_sent_the_last_message) {
    registerBox();
    registerBox();
    registerBox();
    desktop.windows.find(b)->alive = false;
    endAt(2, [&] { destroy(b); });
    expectRightAfterwards({a, c});
}

TEST_P(ComboBoxThatEndsTheList, while_it_is_emptied_is_not_filled) {
    endAt(1, [&] { registerBox(); });
    expectRightAfterwards({a, b, c});
}

TEST_P(ComboBoxThatEndsTheList, while_it_is_filled_is_not_filled_further) {
    endAt(3, [&] { registerBox(); });
    expectRightAfterwards({a, b, c});
}

INSTANTIATE_TEST_SUITE_P(By, ComboBoxThatEndsTheList,
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
