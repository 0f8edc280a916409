#include "tests/support/other_thread.h"
#include "tests/windows/window_module_test.h"

#include <gmock/gmock.h>

#include <limits>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class WindowWrapper : public WindowModuleTest {
protected:
    void SetUp() override {
        a = add(L"a").handle;
        b = add(L"b").handle;
    }

    HWND handleAt(std::int32_t index) const {
        return module.windowEnumWrapper().getWindowHandle(index);
    }

    // Every window function of the tables does nothing or gives a neutral value.
    void expectNoService() {
        const HWND box = desktop.comboBoxes.add({L"left over"});
        EXPECT_THAT(windowList(), IsEmpty());
        EXPECT_EQ(handleAt(0), nullptr);
        EXPECT_EQ(handleAt(-1), nullptr);
        module.windowEnumWrapper().registerWindowComboBox(box);
        EXPECT_THAT(desktop.comboBoxes.messages, IsEmpty());
        useWindowList(true);
        useWindowList(false);
        EXPECT_THAT(windowList(), IsEmpty());
    }

    HWND a = nullptr;
    HWND b = nullptr;
};

TEST_F(WindowWrapper, gives_neutral_values_before_init_and_asks_the_system_nothing) {
    expectNoService();
    EXPECT_THAT(desktop.journal.calls(), IsEmpty());
}

TEST_F(WindowWrapper, gives_neutral_values_after_cleanup_and_asks_the_system_nothing) {
    module.init();
    windowList();
    module.cleanup();
    desktop.journal.clear();
    expectNoService();
    EXPECT_THAT(desktop.journal.calls(), IsEmpty());
}

TEST_F(WindowWrapper, has_one_empty_list_of_its_own_while_there_is_no_service) {
    const auto* const before = &windowList();
    EXPECT_EQ(&windowList(), before);
    module.init();
    EXPECT_NE(&windowList(), before);
    module.cleanup();
    EXPECT_EQ(&windowList(), before);
    EXPECT_THAT(*before, IsEmpty());
}

TEST_F(WindowWrapper, lists_the_windows_of_the_service) {
    module.init();
    EXPECT_THAT(titles(), ElementsAre(L"a", L"b"));
    show(L"c");
    EXPECT_THAT(titles(), ElementsAre(L"a", L"b", L"c"));
}

TEST_F(WindowWrapper, switches_the_list_of_the_service_off_and_on) {
    module.init();
    useWindowList(false);
    EXPECT_EQ(desktop.eventHooks.installed(), 0u);
    EXPECT_EQ(handleAt(0), nullptr);
    useWindowList(true);
    EXPECT_EQ(desktop.eventHooks.installed(), 1u);
    EXPECT_EQ(handleAt(0), a);
}

TEST_F(WindowWrapper, gives_the_handle_at_an_index_of_the_live_list) {
    module.init();
    EXPECT_EQ(handleAt(0), a);
    EXPECT_EQ(handleAt(1), b);
    destroy(a);
    EXPECT_EQ(handleAt(0), b);
    EXPECT_EQ(handleAt(1), nullptr);
    const HWND c = show(L"c");
    EXPECT_EQ(handleAt(1), c);
}

TEST_F(WindowWrapper, gives_no_handle_for_an_index_outside_of_the_list) {
    module.init();
    for (const std::int32_t index : {-1, -2, std::numeric_limits<std::int32_t>::min(), 2, 3, 1000,
                                     std::numeric_limits<std::int32_t>::max()}) {
        EXPECT_EQ(handleAt(index), nullptr) << index;
    }
}

TEST_F(WindowWrapper, gives_no_handle_of_an_empty_list) {
    module.init();
    destroy(a);
    destroy(b);
    EXPECT_EQ(handleAt(0), nullptr);
}

TEST_F(WindowWrapper, fills_a_combo_box_at_once_and_keeps_it_in_step) {
    module.init();
    const HWND box = makeComboBox();
    EXPECT_THAT(desktop.comboBoxes.entries(box), ElementsAre(L"a", L"b"));
    show(L"c");
    destroy(a);
    EXPECT_THAT(desktop.comboBoxes.entries(box), ElementsAre(L"b", L"c"));
}

TEST_F(WindowWrapper, does_not_touch_a_combo_box_while_the_list_is_off) {
    module.init();
    useWindowList(false);
    const HWND box = desktop.comboBoxes.add({L"left over"});
    module.windowEnumWrapper().registerWindowComboBox(box);
    EXPECT_THAT(desktop.comboBoxes.entries(box), ElementsAre(L"left over"));
}

TEST_F(WindowWrapper, finds_no_list_on_another_thread) {
    module.init();
    const HWND box = desktop.comboBoxes.add({L"left over"});
    EXPECT_EQ(onAnotherThread([&] {
                  module.windowEnumWrapper().registerWindowComboBox(box);
                  return handleAt(0);
              }),
              nullptr);
    EXPECT_THAT(desktop.comboBoxes.entries(box), ElementsAre(L"left over"));
    EXPECT_EQ(handleAt(0), a);
}

TEST_F(WindowWrapper, finds_the_list_on_the_thread_of_init) {
    EXPECT_EQ(onAnotherThread([&] {
                  module.init();
                  const HWND first = handleAt(0);
                  module.cleanup();
                  return first;
              }),
              a);
    EXPECT_EQ(handleAt(0), nullptr);
}

} // namespace
} // namespace tests
