#pragma once

#include "tools/vorlen-monitor-viewer/area.h"
#include "tools/vorlen-monitor-viewer/control_ids.h"

#include <vector>

namespace vorlen::viewer {

// What sizes depend on.
struct Metrics {
    int dpi = 96;
    int lineHeight = 13; // of the font, in pixels
};

// A length at 96 DPI in pixels of another DPI, rounded.
int scaled(int length, int dpi);

// The size of the window's contents at which everything can be read: when it is opened, and the
// smallest.
Area preferredContents(const Metrics& metrics);
Area smallestContents(const Metrics& metrics);

// An area of at most the size of another one, moved as little as possible so that it is inside.
Area movedInto(const Area& area, const Area& bounds);

struct Placement {
    ControlId control{};
    Area area; // of a combo box, without its list
};

// The place of each control in a window with contents of this size.
std::vector<Placement> layOut(int width, int height, const Metrics& metrics);

} // namespace vorlen::viewer
