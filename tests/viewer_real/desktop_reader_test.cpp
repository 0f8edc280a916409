#include "tests/support/signal.h"
#include "tools/vorlen-monitor-viewer/desktop_reader.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace tests {
namespace {

using vorlen::viewer::DesktopReader;

// A window of this thread without a place on the desktop.
class MessageWindow {
public:
    MessageWindow()
        : window(CreateWindowW(L"STATIC", L"title", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr,
                               nullptr)) {}
    ~MessageWindow() { DestroyWindow(window); }
    MessageWindow(const MessageWindow&) = delete;
    MessageWindow& operator=(const MessageWindow&) = delete;

    HWND handle() const { return window; }

private:
    HWND window;
};

// Whether the message arrives within a minute.
bool arrives(HWND window, UINT message) {
    for (;;) {
        MSG found{};
        if (PeekMessageW(&found, window, message, message, PM_REMOVE) != FALSE &&
            found.message == message) { // and not WM_QUIT of a window of an earlier test
            return true;
        }
        if (MsgWaitForMultipleObjects(0, nullptr, FALSE, 60'000, QS_ALLINPUT) == WAIT_TIMEOUT) {
            return false;
        }
    }
}

snapshot::Reading readingOf(const std::string& origin) {
    snapshot::Reading reading;
    reading.origin = origin;
    return reading;
}

TEST(DesktopReader, sends_a_message_when_a_reading_is_done) {
    const MessageWindow window;
    int count = 0;
    DesktopReader reader(window.handle(), WM_APP,
                         [&] { return readingOf("reading " + std::to_string(++count)); });
    EXPECT_FALSE(reader.isReading());
    for (const char* const expected : {"reading 1", "reading 2"}) {
        reader.start();
        EXPECT_TRUE(reader.isReading());
        ASSERT_TRUE(arrives(window.handle(), WM_APP));
        EXPECT_TRUE(reader.isDone());
        EXPECT_EQ(reader.take().origin, expected);
        EXPECT_FALSE(reader.isReading());
    }
}

TEST(DesktopReader, is_not_done_while_the_reading_is_made) {
    const MessageWindow window;
    Signal goOn;
    DesktopReader reader(window.handle(), WM_APP, [&] {
        goOn.wait();
        return snapshot::Reading();
    });
    EXPECT_FALSE(reader.isDone());
    reader.start();
    EXPECT_FALSE(reader.isDone());
    goOn.raise();
    ASSERT_TRUE(arrives(window.handle(), WM_APP));
    EXPECT_TRUE(reader.isDone());
    reader.take();
    EXPECT_FALSE(reader.isDone());
}

TEST(DesktopReader, throws_what_the_reading_has_thrown) {
    const MessageWindow window;
    DesktopReader reader(window.handle(), WM_APP,
                         []() -> snapshot::Reading { throw std::runtime_error("no desktop"); });
    reader.start();
    ASSERT_TRUE(arrives(window.handle(), WM_APP));
    EXPECT_THROW(reader.take(), std::runtime_error);
    EXPECT_FALSE(reader.isReading());
}

TEST(DesktopReader, answers_messages_while_it_waits_at_its_end) {
    const MessageWindow window;
    Signal ending;
    LRESULT length = 0;
    {
        DesktopReader reader(window.handle(), WM_APP, [&] {
            ending.wait();
            // As for the title of a window of this process.
            length = SendMessageW(window.handle(), WM_GETTEXTLENGTH, 0, 0);
            return snapshot::Reading();
        });
        reader.start();
        ending.raise();
    }
    EXPECT_EQ(length, 5);
}

} // namespace
} // namespace tests
