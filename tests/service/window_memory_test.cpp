#include "tests/support/allocations.h"
#include "tests/support/log_recorder.h"
#include "tests/windows/live_list.h"
#include "tests/windows/window_module_test.h"

#include <gmock/gmock.h>

#include <new>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Longer than what a string keeps inside itself.
const std::wstring longTitle = L"a title of some length";

class ExhaustedMemory : public WindowModuleTest {
protected:
    // The live list's handles, which the set must hold exactly.
    std::vector<HWND> listedHandles() const {
        const WindowList& list = *liveListOf(*module.exports->getMonitorData());
        std::vector<HWND> handles;
        handles.reserve(list.GetCurrentWindows().size());
        for (const WindowInfo& window : list.GetCurrentWindows()) {
            handles.push_back(window.hwnd);
        }
        EXPECT_THAT(handleSetOf(list), testing::UnorderedElementsAreArray(handles));
        return handles;
    }

    // Constants of the filter, and what the first exception of an image takes.
    void makeWhatStays() const {
        module.init();
        module.cleanup();
        Allocations allocations({module.image()});
        allocations.failRequest(1);
        EXPECT_THROW(module.init(), std::bad_alloc);
    }

    LogRecorder log{module.image(), desktop.journal};
};

TEST_F(ExhaustedMemory, at_any_point_of_the_start_leaves_neither_hook_nor_list_nor_memory) {
    add(longTitle);
    add(longTitle);
    makeWhatStays();
    for (std::size_t n = 1;; ++n) {
        SCOPED_TRACE(n);
        Allocations allocations({module.image(), module.runtimeImage()});
        allocations.failRequest(n);
        try {
            module.init();
        } catch (const std::bad_alloc&) {
        }
        if (!allocations.hasFailed()) {
            EXPECT_GT(n, 10u);
            break;
        }
        EXPECT_EQ(module.exports->getMonitorData(), nullptr);
        EXPECT_EQ(module.windowEnumWrapper().getWindowHandle(0), nullptr);
        EXPECT_EQ(desktop.eventHooks.installed(), 0u);
        EXPECT_EQ(allocations.outstanding(), 0u);
    }
    EXPECT_EQ(windowList().size(), 2u);
}

// Constants of the filter are made when they are first needed.
TEST(ExhaustedMemoryAtFirst, leaves_a_library_that_can_be_started) {
    for (std::size_t n = 1;; ++n) {
        SCOPED_TRACE(n);
        const ModuleUnderTest module;
        SimulatedDesktop desktop(module.image());
        desktop.windows.add(L"Task View", L"Windows.UI.Core.CoreWindow");
        desktop.windows.add(longTitle);
        Allocations allocations({module.image(), module.runtimeImage()});
        allocations.failRequest(n);
        try {
            module.init();
        } catch (const std::bad_alloc&) {
            module.init();
        }
        EXPECT_EQ(module.monitorWrapper().getWindowList().size(), 1u);
        module.cleanup();
        if (!allocations.hasFailed()) {
            EXPECT_GT(n, 10u);
            break;
        }
    }
}

TEST_F(ExhaustedMemory, when_a_window_appears_leaves_list_and_set_equal_and_one_line) {
    module.init();
    for (std::size_t n = 1;; ++n) {
        SCOPED_TRACE(n);
        log.lines.clear();
        const HWND window = add(longTitle).handle;
        Allocations allocations({module.image()});
        allocations.failRequest(n);
        desktop.eventHooks.deliver(EVENT_OBJECT_SHOW, window);
        if (!allocations.hasFailed()) {
            EXPECT_GT(n, 3u);
            EXPECT_THAT(log.lines, IsEmpty());
            break;
        }
        EXPECT_THAT(listedHandles(), testing::Not(testing::Contains(window)));
        ASSERT_EQ(log.lines.size(), 1u);
        EXPECT_EQ(log.lines[0].level, 4);

        allocations.failRequest(0);
        desktop.eventHooks.deliver(EVENT_OBJECT_SHOW, window);
        EXPECT_EQ(listedHandles().back(), window);
        EXPECT_EQ(windowList().back().hwnd, window);
    }
}

TEST_F(ExhaustedMemory, when_a_window_appears_leaves_combo_boxes_in_step) {
    module.init();
    const HWND box = makeComboBox();
    for (std::size_t n = 1;; ++n) {
        const HWND window = add(longTitle).handle;
        Allocations allocations({module.image()});
        allocations.failRequest(n);
        desktop.eventHooks.deliver(EVENT_OBJECT_SHOW, window);
        EXPECT_EQ(desktop.comboBoxes.entries(box).size(), listedHandles().size());
        if (!allocations.hasFailed()) {
            break;
        }
    }
}

TEST_F(ExhaustedMemory, is_not_even_noticed_when_a_window_is_destroyed) {
    add(longTitle);
    add(longTitle);
    module.init();
    const HWND box = makeComboBox();
    const Allocations allocations({module.image()});
    destroy(desktop.windows.order[0]);
    EXPECT_EQ(allocations.requests(), 0u);
    EXPECT_THAT(listedHandles(), ElementsAre(desktop.windows.order[1]));
    EXPECT_EQ(desktop.comboBoxes.entries(box).size(), 1u);
}

TEST_F(ExhaustedMemory, when_a_combo_box_is_registered_leaves_it_unregistered) {
    add(L"a");
    module.init();
    const HWND box = desktop.comboBoxes.add({L"left over"});
    {
        Allocations allocations({module.image()});
        allocations.failRequest(1);
        EXPECT_THROW(module.windowEnumWrapper().registerWindowComboBox(box), std::bad_alloc);
    }
    show(L"b");
    EXPECT_THAT(desktop.comboBoxes.messages, IsEmpty());
}

// Thousands of such events arrive every second while a pointer drags a window.
class IrrelevantEvent : public WindowModuleTest {
protected:
    // Whether the event, delivered for a listed and an unlisted window, costs nothing.
    void expectNoCost(DWORD event, LONG object, LONG child) {
        SCOPED_TRACE(testing::Message() << "event " << std::hex << event << std::dec << ", object "
                                        << object << ", child " << child);
        desktop.journal.clear();
        const Allocations allocations({module.image()});
        for (const HWND window : {listed, unlisted, HWND{nullptr}}) {
            desktop.eventHooks.deliver(event, window, object, child);
        }
        EXPECT_EQ(allocations.requests(), 0u);
        EXPECT_THAT(desktop.journal.calls(), IsEmpty());
    }

    void SetUp() override {
        listed = add(L"listed").handle;
        module.init();
        unlisted = add(L"unlisted").handle;
    }

    HWND listed = nullptr;
    HWND unlisted = nullptr;
};

TEST_F(IrrelevantEvent, costs_neither_a_call_nor_memory) {
    for (DWORD event = EVENT_OBJECT_CREATE; event <= EVENT_OBJECT_UNCLOAKED + 1; ++event) {
        const bool appears = event == EVENT_OBJECT_SHOW || event == EVENT_OBJECT_UNCLOAKED;
        for (const LONG object : {0, -4, -8, -9, 1}) {
            for (const LONG child : {0, 1, -1}) {
                const bool changes = child == 0 && (event == EVENT_OBJECT_DESTROY ||
                                                    (appears && object == OBJID_WINDOW));
                if (!changes) {
                    expectNoCost(event, object, child);
                }
            }
        }
    }
    EXPECT_THAT(titles(), ElementsAre(L"listed"));
}

TEST_F(IrrelevantEvent, is_also_the_destruction_of_what_is_not_listed) {
    listed = add(L"unlisted as well").handle;
    for (const LONG object : {0, -4, 1}) {
        expectNoCost(EVENT_OBJECT_DESTROY, object, CHILDID_SELF);
    }
}

TEST_F(IrrelevantEvent, is_also_the_appearance_of_a_part_of_another_window) {
    desktop.windows.find(unlisted)->root = listed;
    desktop.journal.clear();
    const Allocations allocations({module.image()});
    desktop.eventHooks.deliver(EVENT_OBJECT_SHOW, unlisted);
    EXPECT_EQ(allocations.requests(), 0u);
    EXPECT_THAT(desktop.journal.calls(), ElementsAre("GetAncestor"));
}

TEST_F(IrrelevantEvent, is_also_the_appearance_of_an_untitled_window) {
    desktop.windows.find(unlisted)->title.clear();
    desktop.journal.clear();
    const Allocations allocations({module.image()});
    desktop.eventHooks.deliver(EVENT_OBJECT_SHOW, unlisted);
    EXPECT_EQ(allocations.requests(), 0u);
    EXPECT_THAT(desktop.journal.calls(), ElementsAre("GetAncestor", "GetWindowTextLengthW"));
}

} // namespace
} // namespace tests
