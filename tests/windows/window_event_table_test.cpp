#include "tests/windows/windows_test.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <ios>
#include <sstream>

namespace tests {
namespace {

using testing::IsEmpty;

enum class Root { self, other, none };

struct Situation {
    DWORD event;
    LONG object;
    LONG child;
    Root root;
    bool titled;
    bool listed; // before the event

    std::string text() const {
        std::ostringstream out;
        out << std::boolalpha << "event 0x" << std::hex << event << std::dec << ", object "
            << object << ", child " << child << ", root " << static_cast<int>(root) << ", titled "
            << titled << ", listed " << listed;
        return out.str();
    }

    bool removes() const { return event == destroyed && child == 0; }

    bool mayAdd() const {
        return (event == shown || event == uncloaked) && object == 0 && child == 0;
    }

    bool adds() const { return mayAdd() && root == Root::self && titled && !listed; }
};

std::vector<Situation> situationsOf(DWORD event) {
    std::vector<Situation> result;
    for (const LONG object : {0, 1, -1, -4, -8, -9}) {
        for (const LONG child : {0, 1, -1}) {
            for (const Root root : {Root::self, Root::other, Root::none}) {
                for (const bool titled : {false, true}) {
                    for (const bool listed : {false, true}) {
                        result.push_back({event, object, child, root, titled, listed});
                    }
                }
            }
        }
    }
    return result;
}

class WindowEventTable : public WindowsTest, public testing::WithParamInterface<DWORD> {
protected:
    // Leaves the window listed or not, and then in the situation.
    void prepare(WindowList& list, const Situation& situation) {
        list.RegisterComboBoxForUpdates(box);
        if (situation.listed) {
            window.title = L"subject";
            window.root = window.handle;
            desktop.eventHooks.deliver(shown, window.handle);
        }
        window.title = situation.titled ? L"subject" : L"";
        window.root = situation.root == Root::self    ? window.handle
                      : situation.root == Root::other ? neighbour.handle
                                                      : nullptr;
        desktop.journal.clear();
        desktop.comboBoxes.messages.clear();
    }

    void expectListed(const WindowList& list, bool listed) {
        std::vector<std::wstring> titles = {L"neighbour"};
        if (listed) {
            titles.push_back(L"subject");
        }
        EXPECT_EQ(titlesOf(list), titles);
        EXPECT_EQ(desktop.comboBoxes.entries(box), titles);
    }

    void check(const Situation& situation) {
        SCOPED_TRACE(situation.text());
        window.visible = false; // at seeding
        WindowList list;
        window.visible = true;
        prepare(list, situation);
        const std::uint64_t revision = list.GetRevision();
        desktop.eventHooks.deliver(situation.event, window.handle, situation.object,
                                   situation.child);

        const bool changes = situation.adds() || (situation.removes() && situation.listed);
        expectListed(list, situation.listed ? !situation.removes() : situation.adds());
        EXPECT_EQ(list.GetRevision() != revision, changes);
        EXPECT_EQ(desktop.comboBoxes.messages.size(), changes ? 1u : 0u);
        if (!situation.mayAdd()) {
            EXPECT_THAT(desktop.windowCalls(), IsEmpty());
        }
    }

    SimulatedWindow& neighbour = desktop.windows.add(L"neighbour");
    SimulatedWindow& window = desktop.windows.add(L"subject");
    HWND box = desktop.comboBoxes.add();
};

TEST_P(WindowEventTable, only_destruction_removes_and_only_appearance_adds) {
    for (const Situation& situation : situationsOf(GetParam())) {
        check(situation);
    }
}

INSTANTIATE_TEST_SUITE_P(HookedRangeAndBeyond, WindowEventTable,
                         testing::Range(DWORD{0x8000}, DWORD{0x801B}));
INSTANTIATE_TEST_SUITE_P(OtherEvents, WindowEventTable,
                         testing::Values(0u, 1u, 2u, 3u, 0x18u, 0x7FFFu, 0x8030u, 0x8102u, 0x18002u,
                                         0x80008001u, 0xFFFFFFFFu));

} // namespace
} // namespace tests
