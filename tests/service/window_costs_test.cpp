#include "tests/fixtures/window_module_test.h"
#include "tests/support/allocations.h"

#include <gmock/gmock.h>

#include <cstddef>
#include <ios>
#include <string>
#include <vector>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// What window events and windows cost the library.
class WindowCosts : public WindowModuleTest {
protected:
    // The calls of the platform that an event leads to. It takes no memory.
    std::vector<std::string> callsOfEvent(DWORD event, HWND window, LONG object = OBJID_WINDOW,
                                          LONG child = CHILDID_SELF) {
        desktop.journal.clear();
        const Allocations allocations({module.image()});
        desktop.eventHooks.deliver(event, window, object, child);
        EXPECT_EQ(allocations.requests(), 0u);
        return desktop.journal.calls();
    }

    void SetUp() override {
        listed = add(L"listed").handle;
        module.init();
        unlisted = add(L"unlisted").handle;
    }

    HWND listed = nullptr;
    HWND unlisted = nullptr;
};

// Promise (getWindowList): A window event that cannot change the list costs neither a call of the
// system nor memory. Thousands of them arrive every second while a window is dragged.
TEST_F(WindowCosts, are_none_for_events_that_change_nothing) {
    for (DWORD event = EVENT_OBJECT_CREATE; event <= EVENT_OBJECT_UNCLOAKED + 1; ++event) {
        const bool appears = event == EVENT_OBJECT_SHOW || event == EVENT_OBJECT_UNCLOAKED;
        for (const LONG object : {0, -4, -8, -9, 1}) {
            for (const LONG child : {0, 1, -1}) {
                const bool changes = child == 0 && (event == EVENT_OBJECT_DESTROY ||
                                                    (appears && object == OBJID_WINDOW));
                SCOPED_TRACE(testing::Message() << "event " << std::hex << event << std::dec
                                                << ", object " << object << ", child " << child);
                if (!changes) {
                    EXPECT_THAT(callsOfEvent(event, listed, object, child), IsEmpty());
                    EXPECT_THAT(callsOfEvent(event, unlisted, object, child), IsEmpty());
                }
                EXPECT_THAT(callsOfEvent(event, nullptr, object, child), IsEmpty());
            }
        }
    }
    EXPECT_THAT(titles(), ElementsAre(L"listed"));
}

TEST_F(WindowCosts, are_none_for_a_listed_window_that_appears_again) {
    EXPECT_THAT(callsOfEvent(EVENT_OBJECT_SHOW, listed), IsEmpty());
    EXPECT_THAT(callsOfEvent(EVENT_OBJECT_UNCLOAKED, listed), IsEmpty());
}

TEST_F(WindowCosts, are_none_for_the_destruction_of_an_unlisted_window) {
    EXPECT_THAT(callsOfEvent(EVENT_OBJECT_DESTROY, unlisted), IsEmpty());
    EXPECT_THAT(callsOfEvent(EVENT_OBJECT_DESTROY, unlisted, OBJID_CLIENT), IsEmpty());
}

TEST_F(WindowCosts, are_one_message_for_the_destruction_of_a_listed_window) {
    makeComboBox();
    EXPECT_THAT(callsOfEvent(EVENT_OBJECT_DESTROY, listed), ElementsAre("SendMessageW"));
    EXPECT_THAT(titles(), IsEmpty());
}

TEST_F(WindowCosts, are_one_call_for_a_part_of_another_window) {
    desktop.windows.find(unlisted)->root = listed;
    EXPECT_THAT(callsOfEvent(EVENT_OBJECT_SHOW, unlisted), ElementsAre("GetAncestor"));
}

TEST_F(WindowCosts, are_two_calls_for_an_untitled_window) {
    desktop.windows.find(unlisted)->title.clear();
    EXPECT_THAT(callsOfEvent(EVENT_OBJECT_SHOW, unlisted),
                ElementsAre("GetAncestor", "GetWindowTextLengthW"));
}

TEST_F(WindowCosts, leave_no_memory_of_windows_that_have_gone) {
    destroy(show(L"a title that needs memory of its own"));
    const Allocations allocations({module.image()});
    for (int i = 0; i < 1'000; ++i) {
        destroy(show(L"a title that needs memory of its own"));
    }
    EXPECT_LT(allocations.outstandingBytes(), 4096u);
}

TEST_F(WindowCosts, grow_with_the_number_of_windows_and_no_faster) {
    module.cleanup();
    desktop.windows.order.clear();
    std::vector<std::size_t> calls;
    std::vector<std::size_t> requests;
    for (const std::size_t count : {100u, 1'000u}) {
        while (desktop.windows.order.size() < count) {
            add(L"a title that needs memory of its own");
        }
        desktop.journal.clear();
        const Allocations allocations({module.image(), module.runtimeImage()});
        module.init();
        EXPECT_EQ(windowList().size(), count);
        calls.push_back(desktop.windowCalls().size());
        requests.push_back(allocations.requests());
        module.cleanup();
    }
    EXPECT_LE(calls[1], 10 * calls[0]);
    EXPECT_LE(requests[1], 10 * requests[0]);
}

} // namespace
} // namespace tests
