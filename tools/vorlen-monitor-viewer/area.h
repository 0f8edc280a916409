#pragma once

namespace vorlen::viewer {

// In pixels; y grows downwards.
struct Area {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    int right() const { return x + width; }
    int bottom() const { return y + height; }

    friend bool operator==(const Area&, const Area&) = default;
};

} // namespace vorlen::viewer
