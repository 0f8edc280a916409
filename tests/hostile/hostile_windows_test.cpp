#include "tests/fixtures/log_recorder.h"
#include "tests/fixtures/window_module_test.h"
#include "tests/hostile/hostile_texts.h"

#include <gmock/gmock.h>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class HostileWindowText : public WindowModuleTest,
                          public testing::WithParamInterface<HostileText> {};

TEST_P(HostileWindowText, arrives_unit_by_unit_everywhere) {
    const LogRecorder log(module.image(), desktop.journal);
    module.init();
    const HWND early = makeComboBox();
    const std::wstring& title = GetParam().text;
    const std::wstring className = title.substr(0, 255);
    const HWND window = desktop.windows.add(title, className).handle;
    desktop.eventHooks.deliver(EVENT_OBJECT_SHOW, window);
    const HWND late = makeComboBox();

    ASSERT_EQ(windowList().size(), 1u);
    EXPECT_EQ(windowList()[0].title, title);
    EXPECT_EQ(windowList()[0].className, className);
    WindowListItem record{};
    ASSERT_EQ(module.exports->getWindowList(&record, 1), 1);
    EXPECT_EQ(record.title, asFieldShows(title));
    EXPECT_EQ(record.className, asFieldShows(className));
    EXPECT_EQ(module.exports->getReasonNotCapturable(window), nullptr);
    EXPECT_THAT(desktop.comboBoxes.entries(early), ElementsAre(title));
    EXPECT_THAT(desktop.comboBoxes.entries(late), ElementsAre(title));

    destroy(window);
    EXPECT_THAT(windowList(), IsEmpty());
    EXPECT_THAT(desktop.comboBoxes.entries(early), IsEmpty());
    EXPECT_THAT(log.lines, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Texts, HostileWindowText, testing::ValuesIn(hostileTexts),
                         [](const auto& text) { return std::string(text.param.name); });

class HostileWindow : public WindowModuleTest {};

struct Death {
    const char* call;
    std::size_t number;
    const char* reason;
};

// The only answer that a dead window does not change is the last one, about cloaking.
TEST_F(HostileWindow, fails_the_next_test_when_it_dies_while_it_is_judged) {
    const Death deaths[] = {
        {"GetWindowTextLengthW", 1, "no title"}, {"GetWindowTextW", 1, "not visible"},
        {"GetClassNameW", 1, "not visible"},     {"GetShellWindow", 1, "not visible"},
        {"IsWindowVisible", 1, "not visible"},   {"GetAncestor", 1, "not a root window"},
        {"GetWindowLongW", 1, "not a window"},   {"GetWindowLongW", 2, "not a window"},
        {"IsWindow", 1, "not a window"},         {"DwmGetWindowAttribute", 1, nullptr}};
    for (const Death& death : deaths) {
        SCOPED_TRACE(death.call);
        SimulatedWindow& window = desktop.windows.add(L"title", L"ApplicationFrameWindow");
        desktop.journal.at(death.call, death.number, [&] { window.alive = false; });
        EXPECT_STREQ(module.exports->getReasonNotCapturable(window.handle), death.reason);
        EXPECT_FALSE(window.alive) << "the call was not made";
    }
}

} // namespace
} // namespace tests
