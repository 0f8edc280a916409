// Facts about titles and class names.

#include "platform/for_each.h"
#include "tests/acceptance/facts/answers.h"
#include "tests/acceptance/facts/finding.h"
#include "tests/acceptance/facts/owner_of_window.h"
#include "tests/acceptance/facts/window_thread.h"
#include "tests/fixtures/other_program.h"
#include "tests/support/signal.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <thread>
#include <utility>

namespace tests {
namespace {

constexpr wchar_t untouched = 0xEEEE;

struct Reading {
    int length = 0;
    int units = 0;
    std::array<wchar_t, 256> text{};
};

Reading readTitle(HWND window, int units) {
    Reading reading;
    reading.text.fill(untouched);
    reading.length = GetWindowTextLengthW(window);
    reading.units = GetWindowTextW(window, reading.text.data(), units);
    return reading;
}

std::string answerOf(const Reading& reading) {
    return reading.length > 0 && reading.units > 0 ? "length and text"
           : reading.length > 0                    ? "length"
           : reading.units > 0                     ? "text"
                                                   : "nothing";
}

class Titles : public testing::Test {
protected:
    // What the question gives for a window of another program and for one of another thread of this
    // program.
    template <typename Question>
    void answerForBoth(Question question) {
        const WindowThread thread;
        OtherProgram program;
        answer(united({{"own window", question(thread.createWindow(L"fact"))},
                       {"another program's", question(program.create(L"fact"))}}));
    }

    // Answers for the windows of the kind: what can be read of one that has a title.
    void answerForWindowsOf(Owner owner, const char* advice) {
        int found = 0;
        std::optional<Reading> best;
        vorlen::forEachWindow([&](HWND window) {
            if (ownerOf(window) == owner) {
                ++found;
                const Reading reading = readTitle(window, 256);
                if (!best || reading.length + reading.units > best->length + best->units) {
                    best = reading;
                }
            }
        });
        detail("windows", std::to_string(found));
        if (!best || answerOf(*best) == "nothing") {
            return notMeasured(advice);
        }
        answer(answerOf(*best));
    }
};

// Fact: What can be read of the title of another program's window while that program hangs?
// Relied on by: `monitor/windows/window_info.cpp`, `docs/security.md`
// Simulated: length and text
TEST_F(Titles, of_a_program_that_hangs) {
    // It processes messages only while it carries out a command.
    std::optional<OtherProgram> program(std::in_place);
    const HWND window = program->createShown(L"fact");
    Reading reading;
    Signal read;
    std::thread reader([&] {
        reading = readTitle(window, 256);
        read.raise();
    });
    const bool withoutWaiting = read.waitFor(std::chrono::seconds(10));
    program.reset(); // ends a wait of the reader
    reader.join();
    answer(withoutWaiting ? answerOf(reading) : "it waits for the program");
}

// Fact: What can be read of the title of an own window whose thread processes no messages?
// Relied on by: `docs/architecture.md`, `docs/host-guide.md`
// Simulated: -
TEST_F(Titles, of_an_own_thread_that_hangs) {
    const HWND window = CreateWindowExW(0, L"STATIC", L"fact", WS_POPUP, 10, 10, 50, 50, nullptr,
                                        nullptr, nullptr, nullptr);
    ASSERT_NE(window, nullptr);
    std::string text;
    Signal read;
    std::thread reader([&] {
        text = answerOf(readTitle(window, 256));
        read.raise();
    });
    const bool asked = MsgWaitForMultipleObjects(0, nullptr, FALSE, 10'000, QS_SENDMESSAGE) == 0;
    const bool finished = read.waitFor(std::chrono::milliseconds(100));
    while (!read.waitFor(std::chrono::milliseconds(1))) {
        MSG message;
        PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE); // processes sent messages
    }
    reader.join();
    DestroyWindow(window);
    answer(asked && !finished ? "it waits for the thread" : text);
}

// Fact: What does `GetWindowTextW` return for a count of 0, and does it write?
// Relied on by: `monitor/windows/window_info.cpp`
// Simulated: 0, nothing written
TEST_F(Titles, read_into_no_room) {
    answerForBoth([](HWND window) {
        const Reading reading = readTitle(window, 0);
        return std::to_string(reading.units) +
               (reading.text[0] == untouched ? ", nothing written" : ", something written");
    });
}

// Fact: What does `GetWindowTextW` write into room for one unit of a longer title?
// Relied on by: `monitor/windows/window_info.cpp`
// Simulated: 0, a zero
TEST_F(Titles, read_into_room_for_the_zero) {
    answerForBoth([](HWND window) {
        const Reading reading = readTitle(window, 1);
        return std::to_string(reading.units) +
               (reading.text[0] == L'\0' ? ", a zero" : ", something else");
    });
}

// Fact: Does `GetWindowTextW` change the units behind the terminating zero?
// Relied on by: `monitor/windows/window_info.cpp`
// Simulated: no
TEST_F(Titles, read_into_more_room_than_needed) {
    answerForBoth([](HWND window) {
        const Reading reading = readTitle(window, 256);
        const auto rest = reading.text.begin() + reading.units + 1;
        return std::all_of(rest, reading.text.end(), [](wchar_t unit) { return unit == untouched; })
                   ? "no"
                   : "yes";
    });
}

class ClassNames : public Titles {};

// Fact: Does `GetClassNameW` change the units behind the terminating zero?
// Relied on by: `monitor/windows/window_info.cpp`
// Simulated: no
TEST_F(ClassNames, read_into_more_room_than_needed) {
    answerForBoth([](HWND window) {
        std::array<wchar_t, 256> name{};
        name.fill(untouched);
        const int units = GetClassNameW(window, name.data(), 256);
        return std::all_of(name.begin() + units + 1, name.end(),
                           [](wchar_t unit) { return unit == untouched; })
                   ? "no"
                   : "yes";
    });
}

// Fact: What can be read of the title of a window of another user?
// Relied on by: `monitor/windows/window_info.cpp`, `docs/security.md`
// Simulated: length and text
TEST_F(Titles, of_another_user) {
    answerForWindowsOf(
        Owner::anotherUser,
        "no window of another user with a title is on this desktop: start a program with "
        "\"Run as different user\", and run this again");
}

// Fact: What can be read of the title of a window of a program with more rights?
// Relied on by: `monitor/windows/window_info.cpp`, `docs/security.md`
// Simulated: length and text
TEST_F(Titles, of_a_program_with_more_rights) {
    answerForWindowsOf(
        Owner::moreRights,
        "no program with more rights has a window with a title: start one with \"Run as "
        "administrator\", and run this again without");
}

// Fact: What do the functions that read a window return for a destroyed one?
// Relied on by: `monitor/windows/capture_filter.cpp`, `monitor/windows/window_info.cpp`
// Simulated: 0
TEST(DestroyedWindow, as_the_window_functions_see_it) {
    const WindowThread thread;
    const HWND window = thread.createWindow(L"fact");
    thread.run([=] { DestroyWindow(window); });
    const auto asked = [](const std::string& name, auto question) {
        SetLastError(0);
        const std::string result = std::to_string(question());
        detail("last error of " + name, std::to_string(GetLastError()));
        return std::pair(name, result);
    };
    std::array<wchar_t, 256> text{};
    answer(united({
        asked("GetWindowTextLengthW", [=] { return GetWindowTextLengthW(window); }),
        asked("GetWindowTextW", [&] { return GetWindowTextW(window, text.data(), 256); }),
        asked("GetClassNameW", [&] { return GetClassNameW(window, text.data(), 256); }),
        asked("GetAncestor",
              [=] { return reinterpret_cast<std::intptr_t>(GetAncestor(window, GA_ROOT)); }),
        asked("GetWindowLongW", [=] { return GetWindowLongW(window, GWL_STYLE); }),
        asked("IsWindowVisible", [=] { return IsWindowVisible(window); }),
        asked("IsWindow", [=] { return IsWindow(window); }),
    }));
}

} // namespace
} // namespace tests
