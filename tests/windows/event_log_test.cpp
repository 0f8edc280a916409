#include "tests/fixtures/log_recorder.h"
#include "tests/support/other_thread.h"
#include "tests/windows/windows_test.h"

#include <comdef.h>
#include <gmock/gmock.h>

#include <new>
#include <stdexcept>
#include <string>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

LogLine lineFor(const std::string& reason) {
    return {5, "A window event could not be handled: " + reason};
}

// The log of window events that fail: while combo boxes reply with errors, every event does that
// sends them a message.
class EventLog : public WindowsTest {
protected:
    void deliver(DWORD event, const SimulatedWindow& window) {
        desktop.eventHooks.deliver(event, window.handle);
    }

    void makeComboBoxFail() { desktop.journal.failAll("SendMessageW", CB_ERR); }

    void failTwice() {
        const SimulatedWindow& window = desktop.windows.add(L"c");
        deliver(shown, window);
        deliver(destroyed, window);
    }

    // Leaves a series of failures that has been logged.
    void beginSeries() {
        list.RegisterComboBoxForUpdates(desktop.comboBoxes.add());
        makeComboBoxFail();
        failTwice();
        EXPECT_THAT(log.lines, ElementsAre(lineFor("HRESULT 0xffffffff")));
        log.lines.clear();
    }

    void expectNewSeries() {
        failTwice();
        EXPECT_THAT(log.lines, ElementsAre(lineFor("HRESULT 0xffffffff")));
    }

    SimulatedWindow& a = desktop.windows.add(L"a");
    SimulatedWindow& b = desktop.windows.add(L"b");
    WindowList list;
    LogRecorder log{GetModuleHandleW(nullptr), desktop.journal};
};

// What a window calls itself may be confidential.
TEST_F(EventLog, names_the_reason_of_a_failure_and_no_title) {
    const auto lineOfFailure = [this](const auto& exception) {
        log.lines.clear();
        const SimulatedWindow& window = desktop.windows.add(L"confidential");
        desktop.journal.at("GetWindowTextW", 1, [=] { throw exception; });
        deliver(shown, window);
        EXPECT_THAT(titlesOf(list), ElementsAre(L"a", L"b"));
        deliver(shown, window); // ends the series
        deliver(destroyed, window);
        return log.lines.at(0);
    };
    EXPECT_EQ(lineOfFailure(std::runtime_error("planned")), lineFor("planned"));
    EXPECT_EQ(lineOfFailure(_com_error(E_OUTOFMEMORY)), lineFor("HRESULT 0x8007000e"));
    EXPECT_EQ(lineOfFailure(42), lineFor("unknown exception"));
}

// Promise (Threads and callbacks): Window events that fail one after the other are one line of the
// log, of level critical.
TEST_F(EventLog, has_one_line_for_a_series_of_failures) {
    beginSeries();
    failTwice();
    EXPECT_THAT(log.lines, IsEmpty());
}

TEST_F(EventLog, starts_a_series_after_a_window_was_added) {
    beginSeries();
    desktop.journal.dropPlans();
    deliver(shown, desktop.windows.add(L"d"));
    makeComboBoxFail();
    expectNewSeries();
}

TEST_F(EventLog, starts_a_series_after_a_window_was_removed) {
    beginSeries();
    desktop.journal.dropPlans();
    deliver(destroyed, a);
    makeComboBoxFail();
    expectNewSeries();
}

TEST_F(EventLog, starts_a_series_after_a_window_was_read_and_not_added) {
    beginSeries();
    SimulatedWindow& disabled = desktop.windows.add(L"disabled");
    disabled.style |= WS_DISABLED;
    deliver(shown, disabled);
    expectNewSeries();
}

TEST_F(EventLog, starts_a_series_after_a_list_was_made) {
    beginSeries();
    onAnotherThread([] { const WindowList other; });
    expectNewSeries();
}

TEST_F(EventLog, continues_a_series_after_events_that_are_ignored) {
    beginSeries();
    SimulatedWindow& untitled = desktop.windows.add(L"");
    SimulatedWindow& part = desktop.windows.add(L"part");
    part.root = b.handle;
    deliver(renamed, b);
    deliver(shown, b);
    deliver(shown, untitled);
    deliver(shown, part);
    deliver(destroyed, part);
    failTwice();
    EXPECT_THAT(log.lines, IsEmpty());
}

TEST_F(EventLog, logs_the_next_failure_when_a_line_cannot_be_written) {
    list.RegisterComboBoxForUpdates(desktop.comboBoxes.add());
    makeComboBoxFail();
    desktop.journal.at("vllogger::log", 1, [] { throw std::bad_alloc(); });
    deliver(destroyed, a);
    EXPECT_THAT(log.lines, IsEmpty());
    deliver(destroyed, b);
    EXPECT_THAT(log.lines, ElementsAre(lineFor("HRESULT 0xffffffff")));
}

} // namespace
} // namespace tests
