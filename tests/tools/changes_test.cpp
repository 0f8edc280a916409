#include "tools/vorlen-monitor/changes.h"
#include "tools/vorlen-monitor/watch_command.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace vorlen::tool {
namespace {

struct Thing {
    int handle;
    std::string name;
};

using Changes = std::vector<std::pair<Change, std::string>>;

Changes changesBetween(const std::vector<Thing>& before, const std::vector<Thing>& now) {
    Changes changes;
    visitChanges(
        before, now, [](const Thing& left, const Thing& right) { return left.name == right.name; },
        [&](Change change, const Thing& thing) { changes.emplace_back(change, thing.name); });
    return changes;
}

TEST(VisitChanges, visits_nothing_of_the_same_list) {
    EXPECT_EQ(changesBetween({{1, "a"}, {2, "b"}}, {{2, "b"}, {1, "a"}}), Changes{});
}

TEST(VisitChanges, visits_gone_records_first_and_as_they_were) {
    EXPECT_EQ(changesBetween({{1, "a"}, {2, "b"}}, {{3, "c"}}),
              (Changes{{Change::gone, "a"}, {Change::gone, "b"}, {Change::appeared, "c"}}));
}

TEST(VisitChanges, visits_changed_records_as_they_are_now) {
    EXPECT_EQ(changesBetween({{1, "a"}}, {{1, "z"}}), (Changes{{Change::changed, "z"}}));
}

TEST(VisitChanges, identifies_records_by_their_handles) {
    EXPECT_EQ(changesBetween({{1, "a"}}, {{2, "a"}}),
              (Changes{{Change::gone, "a"}, {Change::appeared, "a"}}));
}

TEST(ChangeLine, spells_out_what_could_drive_a_terminal) {
    const WindowRow window{reinterpret_cast<void*>(std::uintptr_t{0x20}), "a\x1b[31m\nb", "Class",
                           std::nullopt};
    EXPECT_EQ(changeLine(Change::gone, window, WindowSource::events, false),
              "gone window 0x20 Class \"a<U+001B>[31m<U+000A>b\"\n");
    EXPECT_EQ(changeLine(Change::changed, window, WindowSource::events, true),
              "{\"event\":\"changed\",\"kind\":\"window\",\"handle\":\"0x20\","
              "\"title\":\"a\\u001b[31m\\nb\",\"className\":\"Class\",\"unreported\":false}\n");
}

TEST(ChangeLine, marks_a_window_that_no_event_had_reported) {
    const WindowRow window{reinterpret_cast<void*>(std::uintptr_t{0x20}), "title", "Class",
                           std::nullopt};
    EXPECT_EQ(changeLine(Change::appeared, window, WindowSource::restart, false),
              "appeared window 0x20 Class \"title\" (unreported)\n");
    EXPECT_EQ(changeLine(Change::appeared, window, WindowSource::restart, true),
              "{\"event\":\"appeared\",\"kind\":\"window\",\"handle\":\"0x20\","
              "\"title\":\"title\",\"className\":\"Class\",\"unreported\":true}\n");
}

} // namespace
} // namespace vorlen::tool
