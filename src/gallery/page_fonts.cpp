// Font objects: sizes, weights, decorations, widths, and what is measured of them.
#include "gallery/Sheet.h"
#include "gallery/pages.h"
#include "gfx/clsFontHDC.h"
#include "gfx/modCtlCommon_ctl_shapes.h"
#include "gfx/modCtlCommon_ctl_text.h"
#include "platform/window/fonts.h"

namespace gallery {
namespace {

constexpr TextView kPangram = u"Sphinx of black quartz, judge my vow 0123456789";
constexpr TextView kShort = u"Sphinx of black quartz";

FontRequest request(int points) {
    FontRequest wish;
    wish.sFontName = u"Tahoma";
    wish.iFontSize = points;
    wish.lForeColor = kInk;
    wish.bForce96DPI = true;
    return wish;
}

void sample(HDC hDC, const RECT& rect, TextView text, const FontRequest& wish) {
    clsFontHDC font;
    if (hDC != 0) font.SetFontToDC(hDC, wish);
    TextDraw(hDC, text, rect, kOneLine);
}

void drawSizes(HDC hDC, RECT area) {
    heading(hDC, area, u"Sizes in points");
    int y = area.top;
    for (const int points : {6, 7, 8, 9, 10, 12, 14, 18, 24}) {
        const int height = points * 2 + 6;
        write(hDC, box(area.left, y, 30, height), number(points), kCaption);
        sample(hDC, {area.left + 30, y, area.right, y + height}, points < 14 ? kPangram : kShort,
               request(points));
        y += height;
    }
}

void drawStyles(HDC hDC, RECT area) {
    heading(hDC, area, u"Styles");
    const struct {
        TextView name;
        bool bold, italic, underline, strikeout;
    } kStyles[] = {
        {u"Regular", false, false, false, false},   {u"Bold", true, false, false, false},
        {u"Italic", false, true, false, false},     {u"Bold italic", true, true, false, false},
        {u"Underlined", false, false, true, false}, {u"Struck out", false, false, false, true},
        {u"All together", true, true, true, true}};
    Cells cells(area, 2, 200, 24);
    for (const auto& style : kStyles) {
        FontRequest wish = request(11);
        wish.bFontBold = style.bold;
        wish.bFontItalic = style.italic;
        wish.bFontUnderline = style.underline;
        wish.bFontStrikeout = style.strikeout;
        sample(hDC, cells.next(), style.name, wish);
    }
}

void drawWidths(HDC hDC, RECT area) {
    heading(hDC, area, u"Average character wider or narrower, in pixels");
    int y = area.top;
    for (const int increment : {-3, -2, -1, 0, 1, 2, 4}) {
        FontRequest wish = request(9);
        wish.iCharWeightInc = increment;
        write(hDC, box(area.left, y, 30, 20),
              increment > 0 ? u"+" + number(increment) : number(increment), kCaption);
        sample(hDC, {area.left + 30, y, area.right, y + 20}, u"Judge my vow, black quartz", wish);
        y += 20;
    }
}

void drawWeights(HDC hDC, RECT area) {
    heading(hDC, area, u"Weights");
    Cells cells(area, 5, 82, 40);
    for (int weight = 100; weight <= 900; weight += 100) {
        const RECT cell = cells.next();
        {
            const FontScope font(hDC, -17, weight);
            TextDrawColor(hDC, u"Agy", cell, kInk, 0);
        }
        write(hDC, box(cell.left, cell.top + 20, 80, 16), number(weight), kCaption);
    }
}

// A large sample with the lines that its measures give.
void drawMeasures(HDC hDC, RECT area) {
    heading(hDC, area, u"Measures");
    platform::TEXTMETRICA metrics;
    SIZE size;
    RECT rect;
    {
        const FontScope font(hDC, -64);
        const TextView kText = u"Ågypsum";
        (void)platform::GetTextMetricsA(hDC, metrics);  // without a context nothing is drawn
        size = TextSize(hDC, kText, platform::DT_NOPREFIX);
        rect = box(area.left, area.top + 6, size.cx, metrics.tmHeight);
        DrawRect(hDC, rect, kTint, true);
        TextDrawColor(hDC, kText, rect, kInk, kOneLine);
    }

    const struct {
        TextView name;
        int y;
        Color color;
        int caption = -8;  // its top, from the line
    } kLines[] = {
        {u"top", 0, kRule, -14},
        {u"top of the em", metrics.tmInternalLeading, platform::rgb(70, 130, 200), -6},
        {u"base line", metrics.tmAscent, platform::rgb(214, 60, 50)},
        {u"bottom", metrics.tmHeight, kRule},
    };
    for (const auto& line : kLines) {
        DrawRect(hDC, box(rect.left, rect.top + line.y, size.cx + 16, 1), line.color, true);
        write(hDC, box(rect.right + 22, rect.top + line.y + line.caption, 110, 16),
              Text(line.name) + u", " + number(line.y), kCaption);
    }
    const Text facts = u"height " + number(metrics.tmHeight) + u", average width " +
                       number(metrics.tmAveCharWidth) + u", widest " +
                       number(metrics.tmMaxCharWidth);
    write(hDC, box(area.left, rect.bottom + 8, 400, 18), facts, kCaption);
}

void drawHeights(HDC hDC, RECT area) {
    heading(hDC, area, u"Heights: of the characters (below 0) and of the line");
    int x = area.left;
    for (const int height : {-20, 20, -32, 32}) {
        SIZE size;
        {
            const FontScope font(hDC, height);
            size = TextSize(hDC, u"Agy", platform::DT_NOPREFIX);
            const RECT rect = box(x, area.top, size.cx, size.cy);
            DrawRect(hDC, rect, kTint, true);
            TextDrawColor(hDC, u"Agy", rect, kInk, kOneLine);
        }
        write(hDC, box(x, area.top + 42, 90, 16), number(height) + u": line " + number(size.cy),
              kCaption);
        x += 104;
    }
}

}  // namespace

void drawFonts(HDC hDC, const RECT& area) {
    const int left = 420, x = area.left + 440, width = widthOf(area) - 440;
    drawSizes(hDC, box(area.left, area.top, left, 310));
    drawStyles(hDC, box(area.left, area.top + 318, left, 130));
    drawWeights(hDC, box(area.left, area.top + 452, left, 110));
    drawWidths(hDC, box(x, area.top, width, 170));
    drawMeasures(hDC, box(x, area.top + 188, width, 190));
    drawHeights(hDC, box(x, area.top + 360, width, 90));
    RECT faces = box(x, area.top + 466, width, 96);
    heading(hDC, faces, u"Faces that come with the program");
    Cells cells(faces, 2, 200, 30);
    for (const TextView face : {u"MS Sans Serif", u"Tahoma", u"Arial", u"MS Shell Dlg"}) {
        write(hDC, cells.next(), face, {.points = 11, .face = face});
    }
}

}  // namespace gallery
