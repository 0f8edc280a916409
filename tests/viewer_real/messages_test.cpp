#include "tools/vorlen-monitor-viewer/messages.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

namespace vorlen::viewer {
namespace {

// A window whose procedure runs the action at WM_APP.
class ActingWindow {
public:
    explicit ActingWindow(std::function<void()> run) : action(std::move(run)) {
        registerWindowClass<ActingWindow>(L"VorlenActingWindow", nullptr);
        window =
            checkedWindow(CreateWindowExW(0, L"VorlenActingWindow", L"", 0, 0, 0, 0, 0,
                                          HWND_MESSAGE, nullptr, GetModuleHandleW(nullptr), this));
    }
    ~ActingWindow() { DestroyWindow(window); }
    ActingWindow(const ActingWindow&) = delete;
    ActingWindow& operator=(const ActingWindow&) = delete;

    LRESULT handleMessage(HWND target, UINT message, WPARAM wParam, LPARAM lParam) {
        if (message == WM_APP) {
            action();
            return 1;
        }
        return DefWindowProcW(target, message, wParam, lParam);
    }

    HWND handle() const { return window; }

    // The reason with which the loop has failed; "" when it has not.
    std::string run() const {
        PostMessageW(window, WM_APP, 0, 0);
        PostMessageW(window, WM_APP, 0, 0);
        try {
            runMessages(window, [] { return false; });
            return "";
        } catch (const tool::Failure& failure) {
            return failure.what();
        }
    }

private:
    std::function<void()> action;
    HWND window = nullptr;
};

TEST(Messages, are_retrieved_until_the_thread_has_to_quit) {
    int count = 0;
    const ActingWindow window([&] {
        if (++count == 2) {
            PostQuitMessage(0);
        }
    });
    EXPECT_EQ(window.run(), "");
    EXPECT_EQ(count, 2);
}

TEST(Messages, end_with_a_failure_of_a_window_procedure) {
    const ActingWindow window([] { throw tool::Failure(tool::ExitCode::output, "the reason"); });
    EXPECT_EQ(window.run(), "the reason");
}

TEST(Messages, turn_every_other_exception_into_a_failure) {
    EXPECT_EQ(ActingWindow([] { throw std::runtime_error("reason"); }).run(),
              "unexpected error: reason");
    EXPECT_EQ(ActingWindow([] { throw 1; }).run(),
              "unexpected error: an exception of unknown type");
}

TEST(Messages, keep_the_first_failure) {
    int count = 0;
    const ActingWindow window([&] { throw std::runtime_error(std::to_string(++count)); });
    EXPECT_EQ(window.run(), "unexpected error: 1");
}

TEST(Messages, are_retrieved_until_they_are_done) {
    int count = 0;
    const ActingWindow window([&] { ++count; });
    PostMessageW(window.handle(), WM_APP, 0, 0);
    runMessages(window.handle(), [&] { return count == 1; });
    EXPECT_EQ(count, 1);
}

} // namespace
} // namespace vorlen::viewer
