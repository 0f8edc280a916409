#include "monitor/display/display_paths.h"
#include "tests/display/display_test.h"

#include <gmock/gmock.h>

#include <ostream>

namespace tests {

// Compared and printed by GoogleTest.
bool operator==(const NameRequest& a, const NameRequest& b) {
    return a.type == b.type && a.adapter.LowPart == b.adapter.LowPart &&
           a.adapter.HighPart == b.adapter.HighPart && a.id == b.id;
}

std::ostream& operator<<(std::ostream& out, const NameRequest& request) {
    return out << "type " << request.type << " of adapter " << request.adapter.HighPart << ":"
               << request.adapter.LowPart << ", id " << request.id;
}

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class ActiveDisplayPaths : public DisplayTest {
protected:
    static std::vector<std::wstring> friendlyNames(const std::vector<DisplayPathInfo>& paths) {
        std::vector<std::wstring> names;
        for (const DisplayPathInfo& path : paths) {
            names.push_back(path.friendlyName);
        }
        return names;
    }
};

TEST_F(ActiveDisplayPaths, carry_the_names_of_both_ends) {
    desktop.displayPaths.add(display1, L"Model A", L"path of A");
    const auto paths = getActiveDisplayPaths();
    ASSERT_THAT(paths, SizeIs(1));
    EXPECT_EQ(paths[0].gdiDeviceName, display1);
    EXPECT_EQ(paths[0].friendlyName, L"Model A");
    EXPECT_EQ(paths[0].devicePath, L"path of A");
}

TEST_F(ActiveDisplayPaths, keep_the_systems_order) {
    desktop.displayPaths.add(display3, L"C", L"c");
    desktop.displayPaths.add(display1, L"A", L"a");
    desktop.displayPaths.add(display2, L"B", L"b");
    EXPECT_THAT(friendlyNames(getActiveDisplayPaths()), ElementsAre(L"C", L"A", L"B"));
}

TEST_F(ActiveDisplayPaths, are_named_by_the_adapter_of_their_source_at_both_ends) {
    const SimulatedPath path = desktop.displayPaths.add(display1, L"A", L"a");
    getActiveDisplayPaths();
    EXPECT_THAT(desktop.displayPaths.requests,
                ElementsAre(NameRequest{DISPLAYCONFIG_DEVICE_INFO_GET_SOURCE_NAME,
                                        path.sourceAdapter, path.sourceId},
                            NameRequest{DISPLAYCONFIG_DEVICE_INFO_GET_TARGET_NAME,
                                        path.sourceAdapter, path.targetId}));
}

TEST_F(ActiveDisplayPaths, of_a_duplicated_desktop_are_both_listed) {
    const SimulatedPath first = desktop.displayPaths.add(display1, L"First", L"1");
    SimulatedPath& second = desktop.displayPaths.add(display1, L"Second", L"2");
    second.sourceAdapter = first.sourceAdapter;
    second.sourceId = first.sourceId;

    const auto paths = getActiveDisplayPaths();
    ASSERT_THAT(friendlyNames(paths), ElementsAre(L"First", L"Second"));
    EXPECT_EQ(paths[0].gdiDeviceName, paths[1].gdiDeviceName);
}

TEST_F(ActiveDisplayPaths, are_none_when_their_number_cannot_be_read) {
    desktop.displayPaths.add(display1, L"A", L"a");
    desktop.journal.fail("GetDisplayConfigBufferSizes", 1, ERROR_ACCESS_DENIED);
    EXPECT_THAT(getActiveDisplayPaths(), IsEmpty());
    EXPECT_THAT(desktop.displayCalls(), ElementsAre("GetDisplayConfigBufferSizes"));
}

TEST_F(ActiveDisplayPaths, are_none_when_the_configuration_cannot_be_read) {
    desktop.displayPaths.add(display1, L"A", L"a");
    desktop.journal.fail("QueryDisplayConfig", 1, ERROR_GEN_FAILURE);
    EXPECT_THAT(getActiveDisplayPaths(), IsEmpty());
    EXPECT_THAT(desktop.displayCalls(),
                ElementsAre("GetDisplayConfigBufferSizes", "QueryDisplayConfig"));
}

TEST_F(ActiveDisplayPaths, are_not_asked_for_again_when_one_more_appears_meanwhile) {
    desktop.displayPaths.add(display1, L"A", L"a");
    desktop.journal.at("QueryDisplayConfig", 1,
                       [this] { desktop.displayPaths.add(display2, L"B", L"b"); });
    EXPECT_THAT(getActiveDisplayPaths(), IsEmpty());
    EXPECT_THAT(desktop.displayCalls(),
                ElementsAre("GetDisplayConfigBufferSizes", "QueryDisplayConfig"));
}

TEST_F(ActiveDisplayPaths, are_the_remaining_ones_when_some_disappear_meanwhile) {
    desktop.displayPaths.add(display1, L"A", L"a");
    desktop.displayPaths.announcedTooMany = 2;
    EXPECT_THAT(friendlyNames(getActiveDisplayPaths()), ElementsAre(L"A"));
    // The slots left zero are asked about like any other, and skipped at the first refusal.
    EXPECT_THAT(desktop.displayPaths.requests, SizeIs(4));
}

TEST_F(ActiveDisplayPaths, may_be_none_at_all) {
    EXPECT_THAT(getActiveDisplayPaths(), IsEmpty());
    EXPECT_THAT(desktop.displayCalls(),
                ElementsAre("GetDisplayConfigBufferSizes", "QueryDisplayConfig"));
}

TEST_F(ActiveDisplayPaths, leave_out_a_path_whose_source_has_no_name) {
    desktop.displayPaths.add(display1, L"A", L"a").sourceNameStatus = ERROR_GEN_FAILURE;
    desktop.displayPaths.add(display2, L"B", L"b");
    EXPECT_THAT(friendlyNames(getActiveDisplayPaths()), ElementsAre(L"B"));
    EXPECT_THAT(desktop.displayPaths.requests, SizeIs(3))
        << "no target is asked for without source";
}

TEST_F(ActiveDisplayPaths, leave_out_a_path_whose_target_has_no_name) {
    desktop.displayPaths.add(display1, L"A", L"a").targetNameStatus = ERROR_GEN_FAILURE;
    desktop.displayPaths.add(display2, L"B", L"b");
    EXPECT_THAT(friendlyNames(getActiveDisplayPaths()), ElementsAre(L"B"));
}

TEST_F(ActiveDisplayPaths, keep_names_that_fill_their_fields) {
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

TEST_F(ActiveDisplayPaths, with_empty_target_names_are_listed_all_the_same) {
    desktop.displayPaths.add(display1, L"", L"");
    EXPECT_THAT(friendlyNames(getActiveDisplayPaths()), ElementsAre(L""));
}

} // namespace
} // namespace tests
