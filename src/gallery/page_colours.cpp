// Gradients, and the scales that the arithmetic on colours gives.
#include "gallery/Sheet.h"
#include "gallery/pages.h"
#include "gfx/modCtlCommon_ctl_colors.h"
#include "gfx/modCtlCommon_ctl_shapes.h"

namespace gallery {
namespace {

using platform::rgb;

void drawGradients(HDC hDC, RECT area) {
    heading(hDC, area, u"Gradients");
    const struct {
        Color from, to;
    } kPairs[] = {{rgb(255, 255, 255), rgb(0, 0, 0)},
                  {rgb(86, 156, 214), rgb(255, 255, 255)},
                  {rgb(255, 200, 60), rgb(190, 40, 60)},
                  {rgb(36, 40, 47), rgb(80, 170, 130)},
                  {sysColor(13), sysColor(5)}};
    write(hDC, box(area.left, area.top, 90, 86), u"Top to bottom", kCaption);
    write(hDC, box(area.left, area.top + 96, 90, 86), u"Left to right", kCaption);
    int x = area.left + 100;
    for (const auto& pair : kPairs) {
        GradientVRect(hDC, box(x, area.top, 118, 86), pair.from, pair.to);
        GradientHRect(hDC, box(x, area.top + 96, 118, 86), pair.from, pair.to);
        write(hDC, box(x, area.top + 184, 118, 16),
              hexColor(TranslateColor(pair.from)) + u" to " + hexColor(TranslateColor(pair.to)),
              kCaption);
        x += 130;
    }
    // Single columns and rows, and sizes from few steps to many.
    for (int i = 0; i < 12; ++i) {
        GradientV(hDC, x + i * 7, area.top, x + i * 7, area.top + 86, kAccent,
                  ColorBlend(kPaper, kAccent, i * 8));
        GradientHRect(hDC, box(x, area.top + 96 + i * 7, 8 + i * 7, 5), kAccent, kPaper);
    }
    write(hDC, box(x, area.top + 184, 100, 16), u"columns, few steps", kCaption);
}

using Derive = Color (*)(Color, int);

void drawScale(HDC hDC, const RECT& row, TextView name, Color base, int from, int to, int step,
               Derive derive) {
    write(hDC, box(row.left, row.top, 150, 26), name, kCaption);
    const int count = (to - from) / step + 1;
    const int width = (widthOf(row) - 160) / std::max(count, 1);
    int x = row.left + 160;
    for (int i = from; i <= to; i += step) {
        const Color color = derive(base, i);
        const RECT cell = box(x, row.top, width, 26);
        DrawRect(hDC, cell, color, true);
        write(hDC, cell, number(i), {.color = inkOn(color)}, kOneLine | platform::DT_CENTER);
        x += width;
    }
}

void drawScales(HDC hDC, RECT area) {
    heading(hDC, area, u"Scales");
    const Color blue = rgb(86, 156, 214), red = rgb(190, 40, 60);
    const Derive blend = [](Color c, int i) { return ColorBlend(c, rgb(255, 200, 60), i); };
    const Derive brighten = [](Color c, int i) {
        return ColorBrighten(c, static_cast<std::int16_t>(i));
    };
    const Derive luminance = [](Color c, int i) { return ColorToLuminance(c, i); };
    const struct {
        TextView name;
        Color base;
        int from, to, step;
        Derive derive;
    } kScales[] = {
        {u"Blend with yellow, per cent", blue, 0, 100, 10, blend},
        {u"Brighten", blue, -150, 150, 25, brighten},
        {u"Brighten", red, -150, 150, 25, brighten},
        {u"To luminance", blue, 0, 250, 25, luminance},
        {u"To luminance", red, 0, 250, 25, luminance},
    };
    for (const auto& s : kScales) {
        drawScale(hDC, area, s.name, s.base, s.from, s.to, s.step, s.derive);
        area.top += 34;
    }
}

void drawBorderColours(HDC hDC, RECT area) {
    heading(hDC, area, u"The automatic border of a back colour");
    const Color kBases[] = {rgb(255, 255, 255), rgb(222, 226, 231), rgb(255, 244, 204),
                            rgb(86, 156, 214),  rgb(128, 128, 128), rgb(190, 40, 60),
                            rgb(52, 58, 68),    rgb(0, 0, 0),       sysColor(15)};
    Cells cells(area, 9, 94, 80);
    for (const Color base : kBases) {
        const RECT cell = cells.next();
        const RECT rect = box(cell.left, cell.top, 82, 42);
        const Color border = AutoBorderColor(kAutoColor, base);
        DrawRect(hDC, rect, border, true);
        DrawRect(hDC, inset(rect, 5), base, true);
        write(hDC, box(cell.left, cell.top + 44, 90, 16), hexColor(TranslateColor(base)), kCaption);
        write(hDC, box(cell.left, cell.top + 58, 90, 16), hexColor(border), kCaption);
    }
}

}  // namespace

void drawColours(HDC hDC, const RECT& area) {
    drawGradients(hDC, box(area.left, area.top, widthOf(area), 230));
    drawScales(hDC, box(area.left, area.top + 246, widthOf(area), 200));
    drawBorderColours(hDC, box(area.left, area.top + 452, widthOf(area), 110));
}

}  // namespace gallery
