#include "tests/fixtures/live_list.h"
#include "tests/windows_real/real_windows_test.h"

#include <gmock/gmock.h>

#include <vector>

namespace tests {
namespace {

using testing::Contains;
using testing::Not;

// A combo box of this program. Its parent is untitled, and so never listed.
class RealComboBox {
public:
    RealComboBox()
        : parent(CreateWindowW(L"STATIC", L"", WS_POPUP, 0, 0, 50, 50, nullptr, nullptr, nullptr,
                               nullptr)),
          control(CreateWindowW(L"COMBOBOX", L"", WS_CHILD | CBS_DROPDOWNLIST, 0, 0, 50, 50, parent,
                                nullptr, nullptr, nullptr)) {}
    ~RealComboBox() { destroy(); }
    RealComboBox(const RealComboBox&) = delete;
    RealComboBox& operator=(const RealComboBox&) = delete;

    HWND handle() const { return control; }

    void destroy() { DestroyWindow(parent); }

    std::vector<std::wstring> entries() const {
        std::vector<std::wstring> result;
        const LRESULT count = SendMessageW(control, CB_GETCOUNT, 0, 0);
        for (WPARAM i = 0; static_cast<LRESULT>(i) < count; ++i) {
            const LRESULT length = SendMessageW(control, CB_GETLBTEXTLEN, i, 0);
            std::wstring entry(static_cast<std::size_t>(length), L'\0');
            SendMessageW(control, CB_GETLBTEXT, i, reinterpret_cast<LPARAM>(entry.data()));
            result.push_back(entry);
        }
        return result;
    }

private:
    HWND parent;
    HWND control;
};

class RealWindowComboBox : public RealWindowsTest {
protected:
    void registerForUpdates(const RealComboBox& box) const {
        module.windowEnumWrapper().registerWindowComboBox(box.handle());
    }

    std::vector<std::wstring> listedTitles() const {
        const auto& windows = module.monitorWrapper().getWindowList();
        std::vector<std::wstring> titles;
        titles.reserve(windows.size());
        for (const auto& window : windows) {
            titles.push_back(window.title);
        }
        return titles;
    }
};

TEST_F(RealWindowComboBox, is_filled_at_once_and_kept_in_step) {
    const HWND first = program.createShown(L"first");
    module.init();
    const RealComboBox box;
    registerForUpdates(box);
    EXPECT_THAT(box.entries(), Contains(L"first"));

    const HWND second = program.createShown(L"second");
    EXPECT_TRUE(becomesListed(second));
    EXPECT_THAT(box.entries(), Contains(L"second"));
    EXPECT_EQ(box.entries(), listedTitles());

    program.destroy(first);
    EXPECT_TRUE(leavesTheList(first));
    EXPECT_THAT(box.entries(), Not(Contains(L"first")));
    EXPECT_EQ(box.entries(), listedTitles());
}

TEST_F(RealWindowComboBox, does_not_disturb_others_when_it_is_destroyed) {
    module.init();
    RealComboBox destroyed;
    const RealComboBox box;
    registerForUpdates(destroyed);
    registerForUpdates(box);
    destroyed.destroy();
    const HWND window = program.createShown(L"a");
    EXPECT_TRUE(becomesListed(window));
    EXPECT_THAT(box.entries(), Contains(L"a"));
    program.destroy(window);
    EXPECT_TRUE(leavesTheList(window));
    EXPECT_EQ(box.entries(), listedTitles());
}

TEST_F(RealWindowComboBox, equals_the_list_after_a_thousand_windows) {
    module.init();
    const RealComboBox first;
    const RealComboBox second;
    registerForUpdates(first);
    const HWND stays = program.createShown(L"stays");
    EXPECT_TRUE(becomesListed(stays));
    registerForUpdates(second);
    program.makeSeries(1'000);
    receiveAllEvents();

    EXPECT_TRUE(isListed(stays));
    EXPECT_THAT(listedTitles(), Not(Contains(testing::StartsWith(L"series "))));
    EXPECT_EQ(first.entries(), listedTitles());
    EXPECT_EQ(second.entries(), listedTitles());
    const WindowList& list = *liveListOf(*module.exports->getMonitorData());
    EXPECT_THAT(handleSetOf(list), testing::UnorderedElementsAreArray(listedHandlesOf(list)));
}

} // namespace
} // namespace tests
