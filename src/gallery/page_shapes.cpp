// Lines, rectangles, rounded rectangles, pixels, focus rectangles.
#include "gallery/Sheet.h"
#include "gallery/pages.h"
#include "gfx/modCtlCommon_ctl_colors.h"
#include "gfx/modCtlCommon_ctl_shapes.h"

#include <cmath>
#include <numbers>

namespace gallery {
namespace {

using platform::rgb;

constexpr struct {
    TextView name;
    int style;
} kPenStyles[] = {{u"solid", platform::PS_SOLID},
                  {u"dash", platform::PS_DASH},
                  {u"dot", platform::PS_DOT},
                  {u"dash-dot", platform::PS_DASHDOT},
                  {u"dash-dot-dot", platform::PS_DASHDOTDOT}};

void drawPens(HDC hDC, RECT area) {
    heading(hDC, area, u"Pens");
    int y = area.top;
    const auto line = [&](TextView name, Color color, int width, int style) {
        const int end = width / 2;  // wide pens have round ends
        write(hDC, box(area.left, y, 96, 20), name, kCaption);
        DrawLine(hDC, area.left + 100 + end, y + 10, area.right - end, y + 10, color, width, style);
        y += 20;
    };
    for (const auto& pen : kPenStyles) line(pen.name, kInk, 1, pen.style);
    // Opaque gaps have the background colour.
    line(u"opaque gaps", kPaper, 1, platform::PS_SOLID);
    const int mode = platform::SetBkMode(hDC, platform::OPAQUE);
    const Color back = platform::SetBkColor(hDC, rgb(255, 160, 0));
    DrawLine(hDC, area.left + 100, y - 10, area.right, y - 10, kInk, 1, platform::PS_DASH);
    platform::SetBkColor(hDC, back);
    platform::SetBkMode(hDC, mode);
    for (const int width : {2, 3, 5, 8, 12}) {
        line(number(width) + u" pixels", kAccent, width, platform::PS_SOLID);
    }
}

void drawFan(HDC hDC, RECT area) {
    heading(hDC, area, u"Directions");
    const int radius = 88, x = area.left + radius + 4, y = area.top + radius + 4;
    for (int i = 0; i < 24; ++i) {
        const double angle = i * std::numbers::pi / 12;
        const int style = i % 2 == 0 ? platform::PS_SOLID : platform::PS_DOT;
        DrawLine(hDC, x + static_cast<int>(std::lround(14 * std::cos(angle))),
                 y + static_cast<int>(std::lround(14 * std::sin(angle))),
                 x + static_cast<int>(std::lround(radius * std::cos(angle))),
                 y + static_cast<int>(std::lround(radius * std::sin(angle))),
                 ColorBlend(kAccent, rgb(196, 64, 48), i * 100 / 23), 1, style);
    }
    // A wide line holds its line in the middle and has round ends.
    const POINT kZigZag[] = {{212, 20}, {262, 80}, {292, 24}, {342, 104}, {372, 40}};
    for (const int width : {1, 5, 11}) {
        const int down = width == 1 ? 0 : width == 5 ? 34 : 74;
        for (std::size_t i = 1; i < std::size(kZigZag); ++i) {
            DrawLine(hDC, area.left + kZigZag[i - 1].x, area.top + kZigZag[i - 1].y + down,
                     area.left + kZigZag[i].x, area.top + kZigZag[i].y + down,
                     ColorBlend(kAccent, kPaper, width * 4), width);
        }
    }
}

void drawRectangles(HDC hDC, RECT area) {
    heading(hDC, area, u"Rectangles, pixels, focus");
    Cells cells(area, 3, 138, 70);
    const auto cell = [&](TextView name) {
        const RECT rect = cells.next();
        write(hDC, box(rect.left, rect.top + 46, 130, 18), name, kCaption);
        return box(rect.left, rect.top, 122, 42);
    };
    DrawRect(hDC, cell(u"filled"), rgb(86, 156, 214), true);
    DrawRect(hDC, cell(u"frame"), kInk, false);
    DrawRect(hDC, cell(u"system colour"), sysColor(13), true);

    const RECT pixels = cell(u"single pixels");
    for (int y = pixels.top; y < pixels.bottom; y += 3) {
        for (int x = pixels.left; x < pixels.right; x += 3) {
            DrawPixel(hDC, x, y,
                      ColorBlend(kAccent, rgb(255, 160, 0), (x - pixels.left) * 100 / 122));
        }
    }
    const struct {
        TextView name;
        Color ground;
    } kGrounds[] = {{u"focus on light", kTint},
                    {u"focus on dark", rgb(36, 40, 47)},
                    {u"focus on colour", rgb(86, 156, 214)}};
    for (const auto& ground : kGrounds) {
        const RECT rect = cell(ground.name);
        DrawRect(hDC, rect, ground.ground, true);
        DrawFocus(hDC, inset(rect, 4));
    }
    RECT nested = cell(u"one in the other");
    for (int i = 0; i < 5; ++i) {
        DrawRect(hDC, nested, ColorBlend(kAccent, kPaper, i * 20), false);
        nested = inset(nested, 4);
    }
    const RECT twice = cell(u"focus twice: gone");
    DrawRect(hDC, twice, kTint, true);
    DrawFocus(hDC, inset(twice, 4));
    DrawFocus(hDC, inset(twice, 4));
}

void drawRounded(HDC hDC, RECT area) {
    heading(hDC, area, u"Rounded rectangles");
    const Color fill = rgb(214, 230, 247);
    const struct {
        TextView name;
        RoundRectStyle style;
    } kCases[] = {
        {u"radius 0", {.iPenColor = kAccent}},
        {u"radius 4", {.iPenColor = kAccent, .iRadius = 4}},
        {u"radius 12", {.iPenColor = kAccent, .iRadius = 12}},
        {u"radius 60", {.iPenColor = kAccent, .iRadius = 60}},
        {u"filled", {.bFill = true, .iFillColor = fill, .iPenColor = kAccent, .iRadius = 12}},
        {u"fill alone", {.bFill = true, .iFillColor = fill, .iPenWidth = 0, .iRadius = 12}},
        {u"pen 3",
         {.bFill = true, .iFillColor = fill, .iPenColor = kAccent, .iPenWidth = 3, .iRadius = 16}},
        {u"pen 6",
         {.bFill = true, .iFillColor = fill, .iPenColor = kAccent, .iPenWidth = 6, .iRadius = 24}},
        {u"dotted", {.iPenColor = kInk, .iPenStyle = platform::PS_DOT, .iRadius = 12}},
    };
    Cells cells(area, 3, 138, 70);
    for (const auto& c : kCases) {
        const RECT cell = cells.next();
        DrawRoundRectR(hDC, box(cell.left + 3, cell.top, 118, 42), c.style);
        write(hDC, box(cell.left, cell.top + 48, 130, 18), c.name, kCaption);
    }
}

}  // namespace

void drawShapes(HDC hDC, const RECT& area) {
    const int column = 406, right = area.left + 440;
    drawPens(hDC, box(area.left, area.top, column, 270));
    drawFan(hDC, box(right, area.top, widthOf(area) - 440, 270));
    drawRectangles(hDC, box(area.left, area.top + 290, column, 270));
    drawRounded(hDC, box(right, area.top + 290, widthOf(area) - 440, 270));
}

}  // namespace gallery
