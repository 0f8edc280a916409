#include "tools/vorlen-monitor-viewer/log_lines.h"

#include <gmock/gmock.h>

namespace vorlen::viewer {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

TEST(LatestLogLines, begin_with_their_level) {
    LogLines lines;
    lines.add(0, "a");
    lines.add(3, "b");
    lines.add(5, "c");
    EXPECT_THAT(lines.all(), ElementsAre("trace a", "warn b", "critical c"));
}

TEST(LatestLogLines, have_the_nearest_level_for_an_unknown_number) {
    LogLines lines;
    lines.add(-7, "a");
    lines.add(6, "b");
    EXPECT_THAT(lines.all(), ElementsAre("trace a", "critical b"));
}

TEST(LatestLogLines, are_kept_up_to_a_number) {
    LogLines lines;
    for (std::size_t i = 0; i < LogLines::most + 5; ++i) {
        lines.add(2, std::to_string(i));
    }
    const std::vector<std::string> all = lines.all();
    EXPECT_THAT(all, SizeIs(LogLines::most));
    EXPECT_EQ(all.front(), "info 5");
    EXPECT_EQ(all.back(), "info " + std::to_string(LogLines::most + 4));
}

TEST(LatestLogLines, spell_out_control_characters) {
    LogLines lines;
    lines.add(2, "two\nlines");
    EXPECT_THAT(lines.all(), ElementsAre("info two<U+000A>lines"));
}

} // namespace
} // namespace vorlen::viewer
