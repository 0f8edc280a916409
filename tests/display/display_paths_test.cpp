#include "monitor/display/display_paths.h"
#include "tests/display/display_test.h"

#include <gmock/gmock.h>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

// getActiveDisplayPaths.
class DisplayPathsTest : public DisplayTest {
protected:
    static std::vector<std::wstring> friendlyNames() {
        std::vector<std::wstring> names;
        for (const DisplayPathInfo& path : getActiveDisplayPaths()) {
            names.push_back(path.friendlyName);
        }
        return names;
    }
};

TEST_F(DisplayPathsTest, keeps_names_that_fill_their_fields) {
    const std::wstring source(32, L's');
    const std::wstring friendly(64, L'f');
    const std::wstring device(128, L'd');
    desktop.displayPaths.add(source, friendly, device);
    const auto paths = getActiveDisplayPaths();
    ASSERT_THAT(paths, SizeIs(1));
    EXPECT_EQ(paths[0].gdiDeviceName, source);
    EXPECT_EQ(paths[0].friendlyName, friendly);
    EXPECT_EQ(paths[0].devicePath, device);
}

TEST_F(DisplayPathsTest, asks_for_both_names_under_the_adapter_of_the_source) {
    const SimulatedPath path = desktop.displayPaths.add(display1, L"A", L"a");
    getActiveDisplayPaths();
    const auto& requests = desktop.displayPaths.requests;
    ASSERT_THAT(requests, SizeIs(2));
    for (const NameRequest& request : requests) {
        EXPECT_EQ(request.adapter.LowPart, path.sourceAdapter.LowPart);
        EXPECT_EQ(request.adapter.HighPart, path.sourceAdapter.HighPart);
    }
    EXPECT_EQ(requests[0].id, path.sourceId);
    EXPECT_EQ(requests[1].id, path.targetId);
}

TEST_F(DisplayPathsTest, leaves_out_a_path_of_which_a_name_cannot_be_read) {
    desktop.displayPaths.add(display1, L"C", L"c");
    desktop.displayPaths.add(display2, L"A", L"a").sourceNameStatus = ERROR_GEN_FAILURE;
    desktop.displayPaths.add(display3, L"B", L"b").targetNameStatus = ERROR_GEN_FAILURE;
    desktop.displayPaths.add(display1, L"B", L"b");
    EXPECT_THAT(friendlyNames(), ElementsAre(L"C", L"B"));
    EXPECT_THAT(desktop.displayPaths.requests, SizeIs(7)) << "a target without source is asked for";
}

TEST_F(DisplayPathsTest, leaves_out_announced_paths_that_the_system_does_not_fill) {
    desktop.displayPaths.add(display1, L"A", L"a");
    desktop.displayPaths.announcedTooMany = 2;
    EXPECT_THAT(friendlyNames(), ElementsAre(L"A"));
    EXPECT_THAT(desktop.displayPaths.requests, SizeIs(4)) << "not every announced path is read";
}

TEST_F(DisplayPathsTest, returns_nothing_when_the_number_of_paths_cannot_be_read) {
    desktop.displayPaths.add(display1, L"A", L"a");
    desktop.journal.fail("GetDisplayConfigBufferSizes", 1, ERROR_ACCESS_DENIED);
    EXPECT_THAT(getActiveDisplayPaths(), IsEmpty());
    EXPECT_THAT(desktop.displayCalls(), ElementsAre("GetDisplayConfigBufferSizes"));
}

TEST_F(DisplayPathsTest, returns_nothing_when_the_configuration_cannot_be_read) {
    desktop.displayPaths.add(display1, L"A", L"a");
    desktop.journal.fail("QueryDisplayConfig", 1, ERROR_GEN_FAILURE);
    EXPECT_THAT(getActiveDisplayPaths(), IsEmpty());
    EXPECT_THAT(desktop.displayCalls(),
                ElementsAre("GetDisplayConfigBufferSizes", "QueryDisplayConfig"));
}

TEST_F(DisplayPathsTest, does_not_try_again_when_a_path_appears_while_it_reads) {
    desktop.displayPaths.add(display1, L"A", L"a");
    desktop.journal.at("QueryDisplayConfig", 1,
                       [this] { desktop.displayPaths.add(display2, L"B", L"b"); });
    EXPECT_THAT(getActiveDisplayPaths(), IsEmpty());
    EXPECT_EQ(desktop.journal.count("QueryDisplayConfig"), 1u);
}

} // namespace
} // namespace tests
