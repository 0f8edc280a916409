#include "tools/vorlen-monitor-viewer/layout.h"

#include <gmock/gmock.h>

#include <set>

namespace vorlen::viewer {
namespace {

constexpr Metrics normal{96, 13};
constexpr Metrics doubled{192, 26};
constexpr Metrics largeFont{96, 26};

bool overlap(const Area& left, const Area& right) {
    return left.x < right.right() && right.x < left.right() && left.y < right.bottom() &&
           right.y < left.bottom();
}

class Layout : public testing::TestWithParam<Metrics> {
protected:
    static void expectEverythingFits(const Area& contents, const Metrics& metrics) {
        const std::vector<Placement> placements = layOut(contents.width, contents.height, metrics);
        for (const auto& [control, area] : placements) {
            EXPECT_GE(area.x, 0) << control;
            EXPECT_GE(area.y, 0) << control;
            EXPECT_LE(area.right(), contents.width) << control;
            EXPECT_LE(area.bottom(), contents.height) << control;
            EXPECT_GT(area.width, 0) << control;
            EXPECT_GE(area.height, metrics.lineHeight) << control;
            for (const auto& [other, otherArea] : placements) {
                EXPECT_TRUE(control == other || !overlap(area, otherArea))
                    << control << " and " << other;
            }
        }
    }
};

TEST_P(Layout, places_every_control_once) {
    std::set<int> placed;
    for (const auto& [control, area] : layOut(1000, 700, GetParam())) {
        EXPECT_TRUE(placed.insert(control).second) << control;
    }
    EXPECT_EQ(placed.size(), static_cast<std::size_t>(noticeControl - mapLabel + 1));
}

TEST_P(Layout, fits_into_the_preferred_and_the_smallest_window) {
    expectEverythingFits(preferredContents(GetParam()), GetParam());
    expectEverythingFits(smallestContents(GetParam()), GetParam());
}

TEST_P(Layout, has_no_negative_sizes_in_a_window_without_contents) {
    for (const auto& [control, area] : layOut(0, 0, GetParam())) {
        EXPECT_GE(area.width, 0) << control;
        EXPECT_GE(area.height, 0) << control;
    }
}

INSTANTIATE_TEST_SUITE_P(Dpi, Layout, testing::Values(normal, doubled, largeFont),
                         [](const auto& metrics) {
                             return std::to_string(metrics.param.dpi) + "_with_lines_of_" +
                                    std::to_string(metrics.param.lineHeight);
                         });

TEST(LayoutOfLargeFont, has_as_much_room_for_texts_as_at_a_larger_scale) {
    const Area size = preferredContents(largeFont);
    EXPECT_EQ(size, preferredContents(doubled));
    const std::vector<Placement> expected = layOut(size.width, size.height, doubled);
    const std::vector<Placement> placed = layOut(size.width, size.height, largeFont);
    for (std::size_t i = 0; i < placed.size(); ++i) {
        EXPECT_GE(placed[i].area.width, expected[i].area.width - 16) << placed[i].control;
    }
}

TEST(MovedInto, keeps_an_area_inside_the_bounds) {
    const Area bounds{100, 200, 1000, 500};
    EXPECT_EQ(movedInto({150, 250, 30, 40}, bounds), (Area{150, 250, 30, 40}));
    EXPECT_EQ(movedInto({0, 900, 30, 40}, bounds), (Area{100, 660, 30, 40}));
    EXPECT_EQ(movedInto({1090, 0, 30, 40}, bounds), (Area{1070, 200, 30, 40}));
}

TEST(MovedInto, makes_a_larger_area_as_large_as_the_bounds) {
    EXPECT_EQ(movedInto({-11, -45, 1422, 1077}, {0, 0, 1366, 728}), (Area{0, 0, 1366, 728}));
}

TEST(Scaled, is_in_pixels_of_the_dpi) {
    EXPECT_EQ(scaled(8, 96), 8);
    EXPECT_EQ(scaled(8, 192), 16);
    EXPECT_EQ(scaled(3, 144), 5);
}

} // namespace
} // namespace vorlen::viewer
