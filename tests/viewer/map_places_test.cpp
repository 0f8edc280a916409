#include "tools/vorlen-monitor-viewer/map_places.h"

#include <gmock/gmock.h>

#include <climits>

namespace vorlen::viewer {

// For messages of failed tests.
void PrintTo(const Area& area, std::ostream* stream) {
    *stream << area.x << ", " << area.y << ", " << area.width << " x " << area.height;
}

namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr Area map{10, 20, 600, 300};
constexpr Area uhd{0, 0, 3840, 2160};

TEST(MapPlaces, are_to_scale_and_beside_each_other) {
    // 5760 x 2160 on 600 wide: 9.6 pixels are one.
    EXPECT_THAT(placesOnMap({uhd, {3840, 0, 1920, 1080}}, map),
                ElementsAre(Area{10, 58, 400, 225}, Area{410, 58, 200, 112}));
}

TEST(MapPlaces, are_as_large_as_the_height_allows) {
    EXPECT_THAT(placesOnMap({{0, 0, 1000, 1000}}, map), ElementsAre(Area{160, 20, 300, 300}));
}

TEST(MapPlaces, follow_negative_coordinates) {
    EXPECT_THAT(placesOnMap({uhd, {-1080, -240, 1080, 2400}}, {0, 0, 492, 240}),
                ElementsAre(Area{108, 24, 384, 216}, Area{0, 0, 108, 240}));
}

TEST(MapPlaces, touch_where_the_monitors_touch) {
    std::vector<Area> monitors;
    for (int i = 0; i < 7; ++i) {
        monitors.push_back({i * 1366, 0, 1366, 768});
    }
    const std::vector<Area> places = placesOnMap(monitors, {0, 0, 500, 100});
    for (std::size_t i = 1; i < places.size(); ++i) {
        EXPECT_EQ(places[i].x, places[i - 1].right()) << i;
    }
    EXPECT_EQ(places.back().right(), 500);
}

TEST(MapPlaces, give_a_monitor_without_a_size_one_at_the_right) {
    EXPECT_THAT(placesOnMap({{0, 0, 0, 0}, uhd, {3840, 0, 1920, 1080}}, {0, 0, 768, 216}),
                ElementsAre(Area{576, 0, 192, 108}, Area{0, 0, 384, 216}, Area{384, 0, 192, 108}));
}

TEST(MapPlaces, exist_when_no_monitor_has_a_size) {
    EXPECT_THAT(placesOnMap({{}, {}}, {0, 0, 384, 108}),
                ElementsAre(Area{0, 0, 192, 108}, Area{192, 0, 192, 108}));
}

TEST(MapPlaces, stay_on_the_map_whatever_a_device_reports) {
    const std::vector<Area> places = placesOnMap(
        {{INT_MIN, INT_MIN, INT_MAX, 1}, {INT_MAX, INT_MAX, INT_MAX, INT_MAX}, {0, 0, -1, 5}}, map);
    EXPECT_THAT(places, Each(testing::Truly([](const Area& place) {
                    return place.x >= map.x && place.y >= map.y && place.right() <= map.right() &&
                           place.bottom() <= map.bottom() && place.width >= 0 && place.height >= 0;
                })));
}

TEST(MapPlaces, are_empty_without_monitors) {
    EXPECT_THAT(placesOnMap({}, map), IsEmpty());
}

TEST(MonitorAt, is_the_monitor_under_the_point) {
    const std::vector<Area> places = {{0, 0, 10, 10}, {10, 0, 5, 5}};
    EXPECT_EQ(monitorAt(places, 9, 9), 0u);
    EXPECT_EQ(monitorAt(places, 10, 0), 1u);
    EXPECT_EQ(monitorAt(places, 10, 5), std::nullopt);
    EXPECT_EQ(monitorAt(places, -1, 0), std::nullopt);
}

// 0 1
// 2 3 4   with 4 lower than 3
const std::vector<Area> grid = {
    {0, 0, 10, 10}, {10, 0, 10, 10}, {0, 10, 10, 10}, {10, 10, 10, 10}, {20, 13, 10, 10}};

TEST(Neighbour, lies_in_the_direction_of_the_key) {
    EXPECT_EQ(neighbour(grid, 0, Direction::right), 1u);
    EXPECT_EQ(neighbour(grid, 0, Direction::down), 2u);
    EXPECT_EQ(neighbour(grid, 3, Direction::left), 2u);
    EXPECT_EQ(neighbour(grid, 3, Direction::up), 1u);
    EXPECT_EQ(neighbour(grid, 3, Direction::right), 4u);
}

TEST(Neighbour, is_preferred_straight_ahead) {
    EXPECT_EQ(neighbour({{0, 0, 10, 10}, {20, 0, 10, 10}, {8, 9, 10, 10}}, 0, Direction::right),
              1u);
}

TEST(Neighbour, is_the_monitor_itself_at_the_edge) {
    EXPECT_EQ(neighbour(grid, 0, Direction::left), 0u);
    EXPECT_EQ(neighbour(grid, 4, Direction::right), 4u);
    EXPECT_EQ(neighbour({{5, 5, 0, 0}, {5, 5, 0, 0}}, 1, Direction::up), 1u);
}

} // namespace
} // namespace vorlen::viewer
