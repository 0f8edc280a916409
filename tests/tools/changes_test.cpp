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

using Told = std::vector<std::pair<Change, std::string>>;

Told changesBetween(const std::vector<Thing>& before, const std::vector<Thing>& now) {
    Told told;
    visitChanges(
        before, now, [](const Thing& left, const Thing& right) { return left.name == right.name; },
        [&](Change change, const Thing& thing) { told.emplace_back(change, thing.name); });
    return told;
}

TEST(Changes, NothingIsToldOfTheSameList) {
    EXPECT_EQ(changesBetween({{1, "a"}, {2, "b"}}, {{1, "a"}, {2, "b"}}), Told{});
    EXPECT_EQ(changesBetween({{1, "a"}, {2, "b"}}, {{2, "b"}, {1, "a"}}), Told{});
}

TEST(Changes, WhatHasGoneIsToldAsItWasAndFirst) {
    EXPECT_EQ(changesBetween({{1, "a"}, {2, "b"}}, {{3, "c"}}),
              (Told{{Change::gone, "a"}, {Change::gone, "b"}, {Change::appeared, "c"}}));
}

TEST(Changes, WhatChangedIsToldAsItIsNow) {
    EXPECT_EQ(changesBetween({{1, "a"}}, {{1, "z"}}), (Told{{Change::changed, "z"}}));
}

TEST(Changes, TheSameNameUnderAnotherHandleIsAnotherThing) {
    EXPECT_EQ(changesBetween({{1, "a"}}, {{2, "a"}}),
              (Told{{Change::gone, "a"}, {Change::appeared, "a"}}));
}

TEST(ChangeLine, SpellsOutWhatCouldDriveATerminal) {
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
