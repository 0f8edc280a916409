#include "monitor/service/ui_records.h"
#include "tests/hostile/hostile_texts.h"
#include "tests/fixtures/log_recorder.h"
#include "tests/fixtures/module_test.h"

#include <gmock/gmock.h>

#include <limits>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class HostileWindow : public RunningModuleTest {
protected:
    HWND registerBox() {
        const HWND box = desktop.comboBoxes.add();
        module.windowEnumWrapper().registerWindowComboBox(box);
        return box;
    }

    const std::vector<vorlen::ui::WindowInfo>& listed() const {
        return module.monitorWrapper().getWindowList();
    }

    void expectListed(HWND window, const std::wstring& title, const std::wstring& className) {
        ASSERT_EQ(listed().size(), 1u);
        EXPECT_EQ(listed()[0].hwnd, window);
        EXPECT_EQ(listed()[0].title, title);
        EXPECT_EQ(listed()[0].className, className);
        WindowListItem record{};
        ASSERT_EQ(module.exports->getWindowList(&record, 1), 1);
        EXPECT_EQ(record.title, asFieldShows(title));
        EXPECT_EQ(record.className, asFieldShows(className));
        EXPECT_EQ(module.windowEnumWrapper().getWindowHandle(0), window);
        EXPECT_EQ(module.exports->getReasonNotCapturable(window), nullptr);
    }

    LogRecorder log{module.image(), desktop.journal};
};

class WindowWithHostileTexts : public HostileWindow,
                               public testing::WithParamInterface<HostileText> {};

TEST_P(WindowWithHostileTexts, has_them_everywhere_unit_by_unit) {
    const HWND early = registerBox();
    const std::wstring& title = GetParam().text;
    const std::wstring className = title.substr(0, 255);
    const HWND window = desktop.windows.add(title, className).handle;
    desktop.eventHooks.deliver(EVENT_OBJECT_SHOW, window);
    const HWND late = registerBox();

    expectListed(window, title, className);
    EXPECT_THAT(desktop.comboBoxes.entries(early), ElementsAre(title));
    EXPECT_THAT(desktop.comboBoxes.entries(late), ElementsAre(title));
    EXPECT_THAT(log.lines, IsEmpty());

    desktop.eventHooks.deliver(EVENT_OBJECT_DESTROY, window);
    EXPECT_THAT(listed(), IsEmpty());
    EXPECT_THAT(desktop.comboBoxes.entries(early), IsEmpty());
    EXPECT_THAT(desktop.comboBoxes.entries(late), IsEmpty());
}

TEST_P(WindowWithHostileTexts, has_them_when_it_was_there_before_the_start) {
    module.cleanup();
    const std::wstring className = GetParam().text.substr(0, 255);
    const HWND window = desktop.windows.add(GetParam().text, className).handle;
    module.init();
    expectListed(window, GetParam().text, className);
}

INSTANTIATE_TEST_SUITE_P(Texts, WindowWithHostileTexts, testing::ValuesIn(hostileTexts),
                         [](const auto& text) { return std::string(text.param.name); });

// The length is asked for twice: to tell whether there is a title, and to make room for it.
TEST_F(HostileWindow, that_promises_a_longer_title_than_it_gives_has_what_it_gives) {
    const HWND box = registerBox();
    desktop.journal.fail("GetWindowTextLengthW", 1, 5'000);
    desktop.journal.fail("GetWindowTextLengthW", 2, 5'000);
    const HWND window = desktop.windows.add(L"short").handle;
    desktop.eventHooks.deliver(EVENT_OBJECT_SHOW, window);
    expectListed(window, L"short", L"ApplicationWindow");
    EXPECT_THAT(desktop.comboBoxes.entries(box), ElementsAre(L"short"));
}

TEST_F(HostileWindow, that_claims_a_negative_length_is_not_listed) {
    const HWND window = desktop.windows.add(L"title").handle;
    for (const int length : {-1, std::numeric_limits<int>::min()}) {
        for (const std::size_t call : {1u, 2u}) {
            desktop.journal.fail("GetWindowTextLengthW", call, length);
            desktop.eventHooks.deliver(EVENT_OBJECT_SHOW, window);
            EXPECT_THAT(listed(), IsEmpty());
        }
    }
    EXPECT_THAT(log.lines, IsEmpty());
}

struct Death {
    const char* call;
    std::size_t number;
    const char* reason;
};

// The only answer that a dead window does not change is the last one, about cloaking.
TEST_F(HostileWindow, that_dies_while_its_refusal_is_looked_for_is_refused_for_what_fails_next) {
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
