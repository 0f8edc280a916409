// The viewer on the desktop that the tests run on, with windows of another program.
#include "tests/fixtures/message_pump.h"
#include "tests/fixtures/other_program.h"
#include "tests/soak/system_counts.h"
#include "tests/viewer_real/viewer_window.h"
#include "tools/vorlen-monitor-viewer/main_window.h"
#include "tools/vorlen-monitor-viewer/messages.h"
#include "tools/vorlen-monitor/libraries.h"

#include <gmock/gmock.h>

namespace tests {
namespace {

using testing::Contains;
using testing::Not;
using namespace vorlen::viewer;

class LiveViewer : public testing::Test {
protected:
    LiveViewer() {
        window.showForPicture();
        EXPECT_TRUE(pumpUntil([this] { return !window.isExamining(); }));
    }
    ~LiveViewer() override {
        EXPECT_NO_THROW(
            runMessages(window.handle(), [] { return true; })); // what a procedure has thrown
    }

    bool isOffered(const std::wstring& title) const {
        const auto titles = comboBoxEntries(window.handle(), windowBox);
        return std::ranges::count(titles, title) == 1;
    }

    // Events of one program arrive in order: when this returns, all earlier ones have arrived.
    void receiveAllEvents() {
        const HWND fence = program.createShown(L"fence");
        EXPECT_TRUE(pumpUntil([this] { return isOffered(L"fence"); }));
        program.destroy(fence);
        EXPECT_TRUE(pumpUntil([this] { return !isOffered(L"fence"); }));
    }

    void expectBoxesEqualExports() const {
        EXPECT_EQ(comboBoxEntries(window.handle(), windowBox), exportedTitles(service));
        EXPECT_EQ(comboBoxEntries(window.handle(), monitorBox), exportedDeviceNames(service));
    }

    OtherProgram program;
    LogCapture log;
    vorlen::tool::Service service{nullptr};
    ViewedDesktop desktop{service, nullptr};
    MainWindow window{desktop, log};
};

TEST_F(LiveViewer, fills_boxes_that_equal_the_exports) {
    expectBoxesEqualExports();
    EXPECT_FALSE(comboBoxEntries(window.handle(), monitorBox).empty());
}

TEST_F(LiveViewer, keeps_its_boxes_equal_while_windows_come_and_go) {
    std::vector<HWND> windows;
    for (int i = 0; i < 40; ++i) {
        const std::wstring title = L"window " + std::to_wstring(i);
        windows.push_back(program.createShown(title));
        EXPECT_TRUE(pumpUntil([&] {
            expectBoxesEqualExports();
            return isOffered(title);
        }));
        if (i % 3 == 2) { // some from the middle
            program.destroy(windows[windows.size() / 2]);
            windows.erase(windows.begin() + static_cast<std::ptrdiff_t>(windows.size() / 2));
        }
    }
    receiveAllEvents();
    expectBoxesEqualExports();
    for (const HWND each : windows) {
        program.destroy(each);
    }
    receiveAllEvents();
    expectBoxesEqualExports();
    EXPECT_FALSE(isOffered(L"window 39"));
}

TEST_F(LiveViewer, keeps_the_chosen_window_when_others_come_and_go) {
    const HWND first = program.createShown(L"first");
    const HWND chosen = program.createShown(L"chosen");
    receiveAllEvents();
    const auto titles = comboBoxEntries(window.handle(), windowBox);
    choose(window.handle(), windowBox,
           static_cast<int>(std::ranges::find(titles, L"chosen") - titles.begin()));
    program.destroy(first);
    program.createShown(L"third");
    receiveAllEvents();
    EXPECT_TRUE(
        pumpUntil([this] { return selectedEntry(window.handle(), windowBox) == L"chosen"; }));
    program.destroy(chosen);
    EXPECT_TRUE(pumpUntil([this] { return selectedEntry(window.handle(), windowBox).empty(); }));
}

TEST_F(LiveViewer, lists_a_window_until_it_becomes_capturable) {
    const HWND hidden = program.create(L"hidden at first");
    EXPECT_TRUE(pumpUntil([this] {
        return std::ranges::count(listedTitles(window.handle()), L"hidden at first") == 1;
    }));
    program.show(hidden);
    EXPECT_TRUE(pumpUntil([this] {
        return std::ranges::count(listedTitles(window.handle()), L"hidden at first") == 0;
    }));
    EXPECT_TRUE(isOffered(L"hidden at first"));
}

std::int64_t ownWindows() {
    struct Count {
        std::int64_t windows = 0;
        static BOOL CALLBACK add(HWND window, LPARAM count) {
            DWORD process = 0;
            GetWindowThreadProcessId(window, &process);
            if (process == GetCurrentProcessId()) {
                ++reinterpret_cast<Count*>(count)->windows;
                EnumChildWindows(window, add, count);
            }
            return TRUE;
        }
    } count;
    EnumWindows(Count::add, reinterpret_cast<LPARAM>(&count));
    return count.windows;
}

// How many the process can no longer have. The system has a limit for each process.
std::int64_t gdiObjects() {
    constexpr std::size_t limit = 70'000;
    std::vector<HBRUSH> brushes;
    while (brushes.size() < limit) {
        const HBRUSH brush = CreateSolidBrush(RGB(1, 2, 3));
        if (brush == nullptr) {
            break;
        }
        brushes.push_back(brush);
    }
    EXPECT_LT(brushes.size(), limit) << "the number of objects has no limit";
    for (const HBRUSH brush : brushes) {
        DeleteObject(brush);
    }
    return static_cast<std::int64_t>(limit - brushes.size());
}

struct Held {
    std::int64_t handles = validHandles();
    std::int64_t objects = gdiObjects();
    std::int64_t windows = ownWindows();

    friend bool operator==(const Held&, const Held&) = default;
};

void PrintTo(const Held& held, std::ostream* stream) {
    *stream << held.handles << " handles, " << held.objects << " GDI objects, " << held.windows
            << " windows";
}

TEST_F(LiveViewer, holds_no_more_after_10000_events_and_100_redraws) {
    const HWND announced = program.createShown(L"announced");
    const auto use = [&](int windows, int events, int redraws) {
        program.makeSeries(windows);
        program.announce(announced, events / 2);
        receiveAllEvents();
        for (int i = 0; i < redraws; ++i) {
            RedrawWindow(window.handle(), nullptr, nullptr,
                         RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
        }
        EXPECT_TRUE(pumpUntil([this] { return !window.isExamining(); }));
    };
    use(20, 20, 3); // what is taken once
    const Held before;
    use(100, 10'000, 100);
    EXPECT_EQ(Held(), before);
    expectBoxesEqualExports();
}

} // namespace
} // namespace tests
