// The drawn progress bar.
#include "controls/ctlProgressXP.h"
#include "gallery/Sheet.h"
#include "gallery/pages.h"

namespace gallery {
namespace {

using platform::rgb;

void put(HDC hDC, const RECT& place, ProgressProps props) {
    if (props.BackColorOut == kAutoColor) props.BackColorOut = kPaper;
    putControl(hDC, place, [&](HDC to, SIZE size) {
        ProgressSurfaces surfaces;
        surfaces.build(size, props);
        surfaces.paint(to, props);
    });
}

void drawValues(HDC hDC, RECT area) {
    heading(hDC, area, u"Blocks and solid, from 0 to 100 per cent");
    int y = area.top;
    for (const std::int16_t percent : {0, 1, 3, 10, 50, 75, 99, 100}) {
        write(hDC, box(area.left, y, 40, 16), number(percent), kCaption);
        put(hDC, box(area.left + 44, y, 390, 16), {.Percent = percent});
        put(hDC, box(area.left + 454, y, 390, 16), {.Percent = percent, .Spaces = false});
        y += 22;
    }
}

void drawVariants(HDC hDC, RECT area) {
    heading(hDC, area, u"Borders, the room inside them, corners, colours");
    const struct {
        TextView name;
        ProgressProps props;
    } kCases[] = {
        {u"no border", {.Border = false}},
        {u"no room", {.BorderSpace = false}},
        {u"neither", {.Border = false, .BorderSpace = false}},
        {u"square", {.RoundedBorders = false}},
        {u"own border", {.BorderColor = rgb(178, 34, 34)}},
        {u"colours", {.BackColor = rgb(52, 58, 68), .ForeColor = rgb(255, 192, 0)}},
        {u"the program's",
         {.BackColor = sysColor(5), .ForeColor = 0xA78A7F, .Border = false, .BorderColor = 0}},
        {u"corners in a colour", {.BackColorOut = rgb(255, 192, 0)}},
    };
    Cells cells(area, 2, 427, 24);
    int i = 0;
    for (const auto& c : kCases) {
        const RECT cell = cells.next();
        ProgressProps props = c.props;
        props.Percent = 60;
        props.Spaces = i++ / 2 % 2 == 0;
        write(hDC, box(cell.left, cell.top, 110, 16), c.name, kCaption);
        put(hDC, box(cell.left + 114, cell.top, 300, 16), props);
    }
}

void drawStyles(HDC hDC, RECT area) {
    heading(hDC, area, u"Styles of the bar and of the track");
    Cells cells(area, 5, 171, 26);
    for (int style = -1; style < 9; ++style) {
        const RECT cell = cells.next();
        write(hDC, box(cell.left, cell.top, 24, 18), number(style), kCaption);
        put(hDC, box(cell.left + 24, cell.top, 136, 18),
            {.Percent = 65, .Spaces = style % 2 == 0, .Style = style, .BackStyle = style});
    }
}

void drawSizes(HDC hDC, RECT area) {
    heading(hDC, area, u"Sizes");
    int x = area.left;
    for (const SIZE size :
         {SIZE{300, 40}, SIZE{220, 24}, SIZE{140, 12}, SIZE{80, 8}, SIZE{40, 6}}) {
        put(hDC, box(x, area.top, size.cx, size.cy), {.Percent = 70});
        x += size.cx + 18;
    }
}

}  // namespace

void drawProgress(HDC hDC, const RECT& area) {
    drawValues(hDC, area);
    drawVariants(hDC, box(area.left, area.top + 218, widthOf(area), 130));
    drawStyles(hDC, box(area.left, area.top + 356, widthOf(area), 90));
    drawSizes(hDC, box(area.left, area.top + 452, widthOf(area), 80));
}

}  // namespace gallery
