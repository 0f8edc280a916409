#include "tests/support/allocations.h"
#include "tests/fixtures/log_recorder.h"
#include "tests/fixtures/live_list.h"
#include "tests/windows/window_module_test.h"

#include <gmock/gmock.h>

#include <algorithm>
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
        const std::vector<HWND> handles = listedHandlesOf(list);
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

// Announces a window whose n-th request of memory fails, and then once more.
class WindowWithoutMemory : public ExhaustedMemory {
protected:
    void SetUp() override {
        module.init();
        box = makeComboBox();
    }

    // Whether there were so many requests.
    bool failsAt(std::size_t n) {
        const HWND window = add(longTitle).handle;
        log.lines.clear();
        Allocations allocations({module.image()});
        allocations.failRequest(n);
        desktop.eventHooks.deliver(EVENT_OBJECT_SHOW, window);
        const bool failed = allocations.hasFailed();
        expectOutcome(window, failed);

        allocations.failRequest(0);
        desktop.eventHooks.deliver(EVENT_OBJECT_SHOW, window);
        EXPECT_EQ(listedHandles().back(), window);
        return failed;
    }

    void expectOutcome(HWND window, bool failed) {
        const std::vector<HWND> listed = listedHandles();
        EXPECT_EQ(std::count(listed.begin(), listed.end(), window), failed ? 0 : 1);
        EXPECT_EQ(desktop.comboBoxes.entries(box).size(), listed.size());
        EXPECT_EQ(log.lines.size(), failed ? 1u : 0u);
        for (const LogLine& line : log.lines) {
            EXPECT_EQ(line.level, 5);
        }
    }

    HWND box = nullptr;
};

// Several windows for each request, since containers ask for memory only now and then.
TEST_F(WindowWithoutMemory, leaves_list_set_and_combo_box_equal_and_one_line) {
    std::size_t n = 0;
    bool failed = true;
    while (failed) {
        ++n;
        SCOPED_TRACE(n);
        failed = false;
        for (int i = 0; i < 20; ++i) {
            failed = failsAt(n) || failed;
        }
    }
    EXPECT_GT(n, 5u);
    EXPECT_EQ(windowList().size(), 20 * n);
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

} // namespace
} // namespace tests
