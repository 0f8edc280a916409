#include "tests/support/allocations.h"
#include "tests/windows/window_module_test.h"

#include <gmock/gmock.h>

#include <ios>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

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

TEST_F(IrrelevantEvent, is_also_the_appearance_of_what_is_listed_already) {
    unlisted = listed;
    expectNoCost(EVENT_OBJECT_SHOW, OBJID_WINDOW, CHILDID_SELF);
    expectNoCost(EVENT_OBJECT_UNCLOAKED, OBJID_WINDOW, CHILDID_SELF);
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
