#include "tools/vorlen-monitor-viewer/layout.h"

#include <algorithm>

namespace vorlen::viewer {

namespace {

// The room that a text needs which has this length at 96 DPI in a font of 13 pixels. The user may
// have chosen a larger font.
int textRoom(int length, const Metrics& metrics) {
    return std::max(scaled(length, metrics.dpi), length * metrics.lineHeight / 13);
}

// Takes areas from the top of an area.
class AreaStack {
public:
    AreaStack(const Area& area, int gapBetween) : rest(area), gap(gapBetween) {}

    Area take(int height) {
        const Area area{rest.x, rest.y, rest.width, height};
        drop(height + gap);
        return area;
    }

    // A label is close to what it belongs to.
    Area takeLabel(int height) {
        const Area area{rest.x, rest.y, rest.width, height};
        drop(height + gap / 4);
        return area;
    }

    Area takeRest() const { return {rest.x, rest.y, rest.width, std::max(rest.height, 0)}; }

private:
    void drop(int height) {
        rest.y += height;
        rest.height -= height;
    }

    Area rest;
    int gap;
};

// The left part of an area, and what is to the right of it.
struct Parts {
    Area left;
    Area right;
};

Parts split(const Area& area, int leftWidth, int gap) {
    return {
        {area.x, area.y, leftWidth, area.height},
        {area.x + leftWidth + gap, area.y, std::max(area.width - leftWidth - gap, 0), area.height}};
}

class Layout {
public:
    Layout(int width, int height, const Metrics& used)
        : metrics(used), line(metrics.lineHeight), gap(scaled(8, metrics.dpi)),
          box(line + scaled(10, metrics.dpi)) {
        const Area all{gap, gap, std::max(width - 2 * gap, 0), std::max(height - 2 * gap, 0)};
        const int belowButtons = std::max(all.height - box - gap, 0);
        const int top = belowButtons * 45 / 100;
        const Parts upper = split({all.x, all.y, all.width, top}, all.width * 58 / 100, gap);
        labelled(mapLabel, mapControl, upper.left);
        labelled(detailsLabel, detailsControl, upper.right);
        const Parts lower =
            split({all.x, all.y + top + gap, all.width, std::max(belowButtons - top - gap, 0)},
                  all.width * 42 / 100, gap);
        boxesAndStatus(lower.left);
        windows(lower.right);
        buttons({all.x, all.y + belowButtons + gap, all.width, box});
    }

    const std::vector<Placement>& placements() const { return placed; }

private:
    void place(ControlId control, const Area& area) { placed.push_back({control, area}); }

    void labelled(ControlId label, ControlId control, const Area& area) {
        AreaStack stack(area, gap);
        place(label, stack.takeLabel(line));
        place(control, stack.takeRest());
    }

    // A label and its control on one row.
    void row(ControlId label, ControlId control, const Area& area, int labelWidth) {
        const Parts parts = split(area, textRoom(labelWidth, metrics), gap);
        place(label,
              {parts.left.x, parts.left.y + (area.height - line) / 2, parts.left.width, line});
        place(control, parts.right);
    }

    void boxesAndStatus(const Area& area) {
        AreaStack stack(area, gap);
        row(monitorBoxLabel, monitorBox, stack.take(box), boxLabelWidth);
        row(windowBoxLabel, windowBox, stack.take(box), boxLabelWidth);
        place(statusLabel, stack.takeLabel(line));
        const Area status = stack.take(6 * line + scaled(8, metrics.dpi));
        const int button = textRoom(80, metrics);
        const Parts parts = split(status, std::max(status.width - gap - button, 0), gap);
        place(statusControl, parts.left);
        place(checkButton, {parts.right.x, parts.right.y, button, box});
        place(logLabel, stack.takeLabel(line));
        place(logControl, stack.takeRest());
    }

    void windows(const Area& area) {
        AreaStack stack(area, gap);
        place(windowListLabel, stack.takeLabel(line));
        const Area options = stack.take(box);
        const Parts parts = split(options, (options.width - gap) / 2, gap);
        row(filterLabel, filterControl, parts.left, filterLabelWidth);
        row(orderLabel, orderBox, parts.right, orderLabelWidth);
        place(windowList, stack.takeRest());
    }

    void buttons(const Area& area) {
        const Parts redact = split(area, textRoom(310, metrics), gap);
        const Parts copy = split(redact.right, textRoom(100, metrics), gap);
        const Parts save = split(copy.right, textRoom(120, metrics), gap);
        place(redactBox, redact.left);
        place(copyButton, copy.left);
        place(saveButton, save.left);
        place(noticeControl,
              {save.right.x, save.right.y + (area.height - line) / 2, save.right.width, line});
    }

    // As for textRoom().
    static constexpr int boxLabelWidth = 54;
    static constexpr int filterLabelWidth = 36;
    static constexpr int orderLabelWidth = 48;

    Metrics metrics;
    int line;
    int gap;
    int box; // the height of a button, and of a combo box
    std::vector<Placement> placed;
};

Area contents(int width, int height, const Metrics& metrics) {
    return {0, 0, textRoom(width, metrics), textRoom(height, metrics)};
}

} // namespace

int scaled(int length, int dpi) {
    return (length * dpi + 48) / 96;
}

Area preferredContents(const Metrics& metrics) {
    return contents(980, 680, metrics);
}

Area smallestContents(const Metrics& metrics) {
    return contents(700, 500, metrics);
}

Area movedInto(const Area& area, const Area& bounds) {
    const int width = std::min(area.width, bounds.width);
    const int height = std::min(area.height, bounds.height);
    return {std::clamp(area.x, bounds.x, bounds.right() - width),
            std::clamp(area.y, bounds.y, bounds.bottom() - height), width, height};
}

std::vector<Placement> layOut(int width, int height, const Metrics& metrics) {
    return Layout(width, height, metrics).placements();
}

} // namespace vorlen::viewer
