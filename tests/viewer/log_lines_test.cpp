#include "tools/vorlen-monitor-viewer/log_lines.h"

#include <gmock/gmock.h>

namespace vorlen::viewer {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class LatestLogLines : public testing::Test {
protected:
    std::vector<std::string> latest() { return lines.since(seen); }

    LogLines lines;
    std::uint64_t seen = 0;
};

TEST_F(LatestLogLines, begin_with_their_level) {
    lines.add(0, "a");
    lines.add(3, "b");
    lines.add(5, "c");
    EXPECT_THAT(latest(), ElementsAre("trace a", "warn b", "critical c"));
}

TEST_F(LatestLogLines, have_the_nearest_level_for_a_number_that_is_none) {
    lines.add(-7, "a");
    lines.add(6, "b");
    EXPECT_THAT(latest(), ElementsAre("trace a", "critical b"));
}

TEST_F(LatestLogLines, are_returned_once) {
    lines.add(2, "a");
    EXPECT_THAT(latest(), SizeIs(1));
    EXPECT_THAT(latest(), IsEmpty());
    lines.add(2, "b");
    EXPECT_THAT(latest(), ElementsAre("info b"));
}

TEST_F(LatestLogLines, are_kept_up_to_a_number) {
    for (std::size_t i = 0; i < LogLines::most + 5; ++i) {
        lines.add(2, std::to_string(i));
    }
    const std::vector<std::string> all = latest();
    EXPECT_THAT(all, SizeIs(LogLines::most));
    EXPECT_EQ(all.front(), "info 5");
    lines.add(2, "further");
    EXPECT_THAT(latest(), ElementsAre("info further"));
}

TEST_F(LatestLogLines, spell_out_control_characters) {
    lines.add(2, "two\nlines");
    EXPECT_THAT(latest(), ElementsAre("info two<U+000A>lines"));
}

} // namespace
} // namespace vorlen::viewer
