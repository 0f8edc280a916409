#include "tools/vorlen-monitor-viewer/map_places.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

namespace vorlen::viewer {

namespace {

// Sums of coordinates that devices report can exceed the range of int.
struct Rectangle {
    double x;
    double y;
    double width;
    double height;
};

constexpr Rectangle sizeWithoutOthers{0, 0, 1920, 1080};

int rounded(double value) {
    return static_cast<int>(std::lround(value));
}

bool hasSize(const Area& monitor) {
    return monitor.width > 0 && monitor.height > 0;
}

Rectangle rectangleOf(const Area& area) {
    return {static_cast<double>(area.x), static_cast<double>(area.y),
            static_cast<double>(area.width), static_cast<double>(area.height)};
}

// The smallest rectangle around all; that of no monitor is empty.
Rectangle boundsOf(const std::vector<Rectangle>& rectangles) {
    if (rectangles.empty()) {
        return {};
    }
    double left = rectangles.front().x;
    double top = rectangles.front().y;
    double right = left;
    double bottom = top;
    for (const Rectangle& rectangle : rectangles) {
        left = std::min(left, rectangle.x);
        top = std::min(top, rectangle.y);
        right = std::max(right, rectangle.x + rectangle.width);
        bottom = std::max(bottom, rectangle.y + rectangle.height);
    }
    return {left, top, right - left, bottom - top};
}

// In the order of the monitors, each with a size.
std::vector<Rectangle> rectanglesOf(const std::vector<Area>& monitors) {
    std::vector<Rectangle> withSize;
    for (const Area& monitor : monitors) {
        if (hasSize(monitor)) {
            withSize.push_back(rectangleOf(monitor));
        }
    }
    const auto smallest = std::ranges::min_element(withSize, {}, &Rectangle::width);
    const Rectangle unknown = smallest != withSize.end() ? *smallest : sizeWithoutOthers;
    const Rectangle bounds = boundsOf(withSize);
    double x = bounds.x + bounds.width;
    std::vector<Rectangle> rectangles;
    for (const Area& monitor : monitors) {
        if (hasSize(monitor)) {
            rectangles.push_back(rectangleOf(monitor));
        } else {
            rectangles.push_back({x, bounds.y, unknown.width, unknown.height});
            x += unknown.width;
        }
    }
    return rectangles;
}

// Twice the middle, so that it stays a whole number.
struct Middle {
    std::int64_t x;
    std::int64_t y;
};

Middle middleOf(const Area& place) {
    return {std::int64_t{2} * place.x + place.width, std::int64_t{2} * place.y + place.height};
}

} // namespace

std::vector<Area> placesOnMap(const std::vector<Area>& monitors, const Area& map) {
    const std::vector<Rectangle> rectangles = rectanglesOf(monitors);
    const Rectangle bounds = boundsOf(rectangles);
    const double scale = std::min(map.width / bounds.width, map.height / bounds.height);
    const double left = map.x + (map.width - bounds.width * scale) / 2;
    const double top = map.y + (map.height - bounds.height * scale) / 2;
    std::vector<Area> places;
    for (const Rectangle& rectangle : rectangles) {
        // The edges are rounded, not the sizes: monitors that touch do so on the map.
        const int x = rounded(left + (rectangle.x - bounds.x) * scale);
        const int y = rounded(top + (rectangle.y - bounds.y) * scale);
        const int right = rounded(left + (rectangle.x + rectangle.width - bounds.x) * scale);
        const int bottom = rounded(top + (rectangle.y + rectangle.height - bounds.y) * scale);
        places.push_back({x, y, right - x, bottom - y});
    }
    return places;
}

std::optional<std::size_t> monitorAt(const std::vector<Area>& places, int x, int y) {
    const auto found = std::ranges::find_if(places, [=](const Area& place) {
        return x >= place.x && x < place.right() && y >= place.y && y < place.bottom();
    });
    return found != places.end() ? std::optional(static_cast<std::size_t>(found - places.begin()))
                                 : std::nullopt;
}

std::size_t neighbour(const std::vector<Area>& places, std::size_t from, Direction direction) {
    const Middle start = middleOf(places[from]);
    std::size_t best = from;
    std::int64_t bestDistance = std::numeric_limits<std::int64_t>::max();
    for (std::size_t i = 0; i < places.size(); ++i) {
        const Middle middle = middleOf(places[i]);
        const std::int64_t right = middle.x - start.x;
        const std::int64_t down = middle.y - start.y;
        const bool horizontal = direction == Direction::left || direction == Direction::right;
        const bool backwards = direction == Direction::left || direction == Direction::up;
        const std::int64_t along = (horizontal ? right : down) * (backwards ? -1 : 1);
        const std::int64_t aside = horizontal ? down : right;
        const std::int64_t across = std::max(aside, -aside);
        // What lies straight ahead precedes what is nearer and to the side.
        if (const std::int64_t distance = along + 2 * across;
            along > 0 && distance < bestDistance) {
            best = i;
            bestDistance = distance;
        }
    }
    return best;
}

} // namespace vorlen::viewer
