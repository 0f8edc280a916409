#include "tests/windows/windows_test.h"

#include <gmock/gmock.h>

#include <functional>
#include <map>
#include <memory>
#include <ostream>
#include <utility>

namespace tests {
namespace {

using testing::IsSupersetOf;

// How a window comes to be looked at.
enum class Occasion { seeding, event };

std::ostream& operator<<(std::ostream& out, Occasion occasion) {
    return out << (occasion == Occasion::seeding ? "seeding" : "event");
}

// The n-th call of a function.
using Call = std::pair<std::string, std::size_t>;

// Between any two calls the window that is looked at may change or die.
class ChangingWindow : public WindowsTest, public testing::WithParamInterface<Occasion> {
protected:
    // Makes the desktop look at a window of its own, which changes right before the call, and gives
    // the list as it is afterwards: the new window behind two others, if it is listed.
    std::unique_ptr<WindowList> lookAtWindowThatChanges(const Call& when,
                                                        const std::function<void()>& change) {
        window = &desktop.windows.add(L"Title", frameWindowClass);
        window->visible = GetParam() == Occasion::seeding;
        if (GetParam() == Occasion::seeding) {
            // Before the others, whose calls then need not be counted.
            desktop.windows.order = {window->handle, neighbours[0], neighbours[1]};
            desktop.journal.at(when.first, when.second, change);
            return std::make_unique<WindowList>();
        }
        desktop.windows.order = {neighbours[0], neighbours[1]};
        auto list = std::make_unique<WindowList>();
        window->visible = true;
        desktop.journal.clear();
        desktop.journal.at(when.first, when.second, change);
        desktop.eventHooks.deliver(shown, window->handle);
        return list;
    }

    // The calls about an capturable window, in order.
    std::vector<Call> callsAboutOneWindow() {
        window = &desktop.windows.add(L"Title", frameWindowClass);
        if (GetParam() == Occasion::seeding) {
            desktop.windows.order = {window->handle};
            const WindowList list;
        } else {
            desktop.windows.order.clear();
            const WindowList list;
            desktop.journal.clear();
            desktop.eventHooks.deliver(shown, window->handle);
        }
        std::map<std::string, std::size_t> counts;
        std::vector<Call> result;
        for (const std::string& name : desktop.windowCalls()) {
            if (name != "EnumWindows" && !name.ends_with("WinEventHook") &&
                name != "UnhookWinEvent") {
                result.emplace_back(name, ++counts[name]);
            }
        }
        desktop.journal.clear();
        return result;
    }

    bool isListed(const WindowList& list) const {
        const auto handles = handlesOf(list);
        return std::find(handles.begin(), handles.end(), window->handle) != handles.end();
    }

    // The title under which the window is listed.
    std::wstring listedTitle(const WindowList& list) const {
        for (const WindowInfo& info : list.GetCurrentWindows()) {
            if (info.hwnd == window->handle) {
                return info.title;
            }
        }
        ADD_FAILURE() << "the window is not listed";
        return {};
    }

    const HWND neighbours[2] = {desktop.windows.add(L"neighbour").handle,
                                desktop.windows.add(L"neighbour").handle};
    SimulatedWindow* window = nullptr;
};

// Only the last question, about cloaking, takes a dead window for one that is capturable.
TEST_P(ChangingWindow, that_dies_before_any_call_about_it_is_not_listed) {
    for (const Call& call : callsAboutOneWindow()) {
        SCOPED_TRACE(call.first + ", call " + std::to_string(call.second));
        const auto list = lookAtWindowThatChanges(call, [&] { window->alive = false; });
        EXPECT_FALSE(window->alive) << "the call was not made";
        EXPECT_THAT(handlesOf(*list), IsSupersetOf(neighbours));
        EXPECT_EQ(isListed(*list), call.first == "DwmGetWindowAttribute");

        desktop.eventHooks.deliver(destroyed, window->handle);
        EXPECT_THAT(handlesOf(*list), testing::ElementsAreArray(neighbours));
    }
}

TEST_P(ChangingWindow, is_listed_with_the_title_of_the_moment_of_reading) {
    for (const Call& call : callsAboutOneWindow()) {
        SCOPED_TRACE(call.first + ", call " + std::to_string(call.second));
        const auto list = lookAtWindowThatChanges(call, [&] { window->title = L"Other"; });
        EXPECT_THAT(textOf(listedTitle(*list)), testing::AnyOf(L"Title", L"Other"));
        EXPECT_EQ(listedTitle(*list).size(), 6u);
    }
}

TEST_P(ChangingWindow, has_a_longer_title_cut_to_the_length_that_it_had) {
    const auto list =
        lookAtWindowThatChanges({"GetWindowTextW", 1}, [&] { window->title = L"Titles may grow"; });
    EXPECT_EQ(listedTitle(*list), std::wstring(L"Title\0", 6));
}

TEST_P(ChangingWindow, has_a_shorter_title_filled_up_with_zeros) {
    const auto list = lookAtWindowThatChanges({"GetWindowTextW", 1}, [&] { window->title = L"T"; });
    EXPECT_EQ(listedTitle(*list), std::wstring(L"T\0\0\0\0\0", 6));
}

TEST_P(ChangingWindow, is_listed_without_a_text_when_its_title_goes_right_before_the_reading) {
    const auto list =
        lookAtWindowThatChanges({"GetWindowTextW", 1}, [&] { window->title.clear(); });
    EXPECT_EQ(listedTitle(*list), std::wstring(6, L'\0'));
}

TEST_P(ChangingWindow, is_not_listed_when_its_title_goes_before_its_length_is_asked_for) {
    for (const Call& call : callsAboutOneWindow()) {
        if (call.first == "GetWindowTextLengthW") {
            SCOPED_TRACE(call.second);
            const auto list = lookAtWindowThatChanges(call, [&] { window->title.clear(); });
            EXPECT_FALSE(isListed(*list));
        }
    }
}

TEST_P(ChangingWindow, is_not_listed_when_it_is_hidden_before_that_is_asked) {
    const auto list =
        lookAtWindowThatChanges({"IsWindowVisible", 1}, [&] { window->visible = false; });
    EXPECT_FALSE(isListed(*list));
}

INSTANTIATE_TEST_SUITE_P(WindowList, ChangingWindow,
                         testing::Values(Occasion::seeding, Occasion::event),
                         testing::PrintToStringParamName());

} // namespace
} // namespace tests
