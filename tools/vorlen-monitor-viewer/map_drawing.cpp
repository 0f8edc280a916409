#include "tools/vorlen-monitor-viewer/map_drawing.h"

#include "platform/safe_text.h"
#include "platform/text.h"
#include "tools/vorlen-monitor-viewer/gdi.h"
#include "tools/vorlen-monitor-viewer/layout.h"

#include <algorithm>
#include <array>
#include <string>

namespace vorlen::viewer {

namespace {

RECT rectOf(const Area& area) {
    return {area.x, area.y, area.right(), area.bottom()};
}

RECT shrunk(RECT rect, int by) {
    InflateRect(&rect, -by, -by);
    return rect;
}

// The indexes of system colours.
struct Colours {
    int ground;
    int text;
};

Colours coloursOf(bool selected) {
    return selected ? Colours{COLOR_HIGHLIGHT, COLOR_HIGHLIGHTTEXT}
                    : Colours{COLOR_BTNFACE, COLOR_BTNTEXT};
}

void fill(HDC context, const RECT& rect, int colour) {
    FillRect(context, &rect, GetSysColorBrush(colour));
}

void frame(HDC context, RECT rect, int width, int colour) {
    for (int i = 0; i < width; ++i) {
        FrameRect(context, &rect, GetSysColorBrush(colour));
        InflateRect(&rect, -1, -1);
    }
}

template <std::size_t count>
void polygon(HDC context, const std::array<POINT, count>& points, int colour) {
    const Selection brush(context, GetSysColorBrush(colour));
    const Selection pen(context, GetStockObject(NULL_PEN));
    Polygon(context, points.data(), static_cast<int>(count));
}

// A triangle with an exclamation mark.
void drawWarning(HDC context, const RECT& box, const Colours& colours) {
    const LONG middle = (box.left + box.right) / 2;
    polygon(context,
            std::array{POINT{middle, box.top}, POINT{box.right, box.bottom},
                       POINT{box.left, box.bottom}},
            colours.text);
    const LONG size = box.bottom - box.top;
    const LONG half = std::max(size / 16, LONG{1});
    fill(context, {middle - half, box.top + size * 3 / 8, middle + half, box.top + size * 11 / 16},
         colours.ground);
    fill(context,
         {middle - half, box.top + size * 3 / 4, middle + half, box.top + size * 3 / 4 + 2 * half},
         colours.ground);
}

void drawMark(HDC context, const RECT& box, Mark mark, const Colours& colours) {
    const LONG middleX = (box.left + box.right) / 2;
    const LONG middleY = (box.top + box.bottom) / 2;
    switch (mark) {
    case Mark::none:
        break;
    case Mark::kitModel: // a diamond
        polygon(context,
                std::array{POINT{middleX, box.top}, POINT{box.right, middleY},
                           POINT{middleX, box.bottom}, POINT{box.left, middleY}},
                colours.text);
        break;
    case Mark::current: { // a disc
        const Selection brush(context, GetSysColorBrush(colours.text));
        const Selection pen(context, GetStockObject(NULL_PEN));
        Ellipse(context, box.left, box.top, box.right + 1, box.bottom + 1);
        break;
    }
    case Mark::failing:
        drawWarning(context, box, colours);
        break;
    }
}

void drawText(HDC context, const std::string& text, RECT rect, UINT format) {
    const std::wstring wide = toUtf16Lossy(text);
    DrawTextW(context, wide.data(), checkedLength(wide.size()), &rect,
              format | DT_SINGLELINE | DT_NOPREFIX | DT_VCENTER | DT_END_ELLIPSIS);
}

// The lines that fit, from the top.
void drawLines(HDC context, const RECT& rect, const ViewedMonitor& monitor, const Colours& colours,
               int dpi) {
    TEXTMETRICW metrics{};
    GetTextMetricsW(context, &metrics);
    SetTextColor(context, GetSysColor(colours.text));
    const LONG height = metrics.tmHeight + scaled(2, dpi);
    const LONG markSize = metrics.tmAscent;
    RECT line = {rect.left, rect.top, rect.right, rect.top + height};
    for (const MapLine& each : mapLines(monitor)) {
        if (line.bottom > rect.bottom && line.top != rect.top) {
            return;
        }
        RECT text = line;
        if (each.mark != Mark::none) {
            const LONG top = line.top + (height - markSize) / 2;
            drawMark(context, {line.left, top, line.left + markSize, top + markSize}, each.mark,
                     colours);
            text.left += markSize + scaled(5, dpi);
        }
        drawText(context, each.text, text, DT_LEFT);
        OffsetRect(&line, 0, height);
    }
}

void drawMonitor(HDC context, const Area& place, const ViewedMonitor& monitor, bool selected,
                 const MapPicture& picture) {
    const Colours colours = coloursOf(selected);
    // Between two monitors lies a gap.
    const RECT rect = shrunk(rectOf(place), scaled(1, picture.dpi));
    fill(context, rect, colours.ground);
    frame(context, rect, scaled(monitor.isKitModel ? 3 : 1, picture.dpi), COLOR_WINDOWTEXT);
    const RECT inside = shrunk(rect, scaled(6, picture.dpi));
    const int state = SaveDC(context);
    IntersectClipRect(context, inside.left, inside.top, inside.right, inside.bottom);
    drawLines(context, inside, monitor, colours, picture.dpi);
    RestoreDC(context, state);
    if (selected && picture.focused) {
        SetTextColor(context, GetSysColor(COLOR_WINDOWTEXT));
        SetBkColor(context, GetSysColor(COLOR_WINDOW));
        const RECT focus = shrunk(rect, scaled(4, picture.dpi));
        DrawFocusRect(context, &focus);
    }
}

} // namespace

void drawMap(HDC context, const RECT& area, const MapPicture& picture) {
    fill(context, area, COLOR_WINDOW);
    SetBkMode(context, TRANSPARENT);
    if (picture.monitors.empty()) {
        SetTextColor(context, GetSysColor(COLOR_WINDOWTEXT));
        drawText(context, "The desktop has no monitor.", area, DT_CENTER);
    }
    for (std::size_t i = 0; i < picture.monitors.size(); ++i) {
        drawMonitor(context, picture.places[i], picture.monitors[i], picture.selected == i,
                    picture);
    }
}

} // namespace vorlen::viewer
