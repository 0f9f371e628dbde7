// Palettes: the fixed ones as swatches, and pictures with the colours that were found for them.
#include "gallery/Sheet.h"
#include "gallery/pages.h"
#include "gallery/samples.h"
#include "gfx/clsPalette.h"
#include "gfx/modCtlCommon_ctl_colors.h"
#include "gfx/modCtlCommon_ctl_shapes.h"

namespace gallery {
namespace {

void drawSwatches(HDC hDC, const RECT& at, const clsPalette& palette, int columns, int size) {
    for (int i = 1; i <= palette.Count(); ++i) {
        const int x = at.left + (i - 1) % columns * size, y = at.top + (i - 1) / columns * size;
        DrawRect(hDC, box(x, y, size, size),
                 platform::rgb(palette.Red(i), palette.Green(i), palette.Blue(i)), true);
        if (size > 4) DrawRect(hDC, box(x, y, size, size), kPaper, false);
        // White is to be seen, too.
        if (size > 8) DrawRect(hDC, box(x, y, size - 1, size - 1), kRule, false);
    }
}

using Fill = void (clsPalette::*)();

clsPalette fixed(Fill fill) {
    clsPalette palette;
    (palette.*fill)();
    return palette;
}

void drawFixed(HDC hDC, RECT area) {
    heading(hDC, area, u"Fixed palettes");
    const struct {
        TextView name;
        Fill fill;
        int left, columns, size;
    } kPalettes[] = {{u"Black and white", &clsPalette::CreateMono2, 0, 2, 32},
                     {u"System colours", &clsPalette::Create16, 110, 8, 26},
                     {u"Half-tone", &clsPalette::CreateHalfTone256, 350, 25, 9},
                     {u"Web-safe", &clsPalette::CreateWebSafe256, 594, 32, 8}};
    for (const auto& p : kPalettes) {
        const clsPalette palette = fixed(p.fill);
        const RECT at = box(area.left + p.left, area.top, 0, 0);
        drawSwatches(hDC, at, palette, p.columns, p.size);
        write(hDC, box(at.left, at.top + 66, 240, 16),
              Text(p.name) + u": " + number(palette.Count()), kCaption);
    }
}

struct Reduction {
    int bits, colors, levels;
    std::optional<Color> first = std::nullopt;  // given, ahead of those that are found
};

void drawIn(HDC hDC, const RECT& cell, const clsDIBSection& picture, int bits, clsPalette palette,
            TextView caption) {
    clsDIBSection reduced;
    clsDIBSection::PaletteSlot slot(std::move(palette));
    reduced.CreateDC(picture.Width(), picture.Height(), bits, &slot);
    picture.PaintPicture(reduced.Hdc());
    reduced.PaintPicture(hDC, cell.left, cell.top);
    const int below = cell.top + picture.Height() + 4;
    drawSwatches(hDC, box(cell.left, below, 0, 0), *slot, 43, 4);
    write(hDC, box(cell.left, below + 24, 200, 16), caption, kCaption);
}

clsPalette bestFor(const clsDIBSection& picture, const Reduction& to) {
    clsPalette palette;
    palette.CreateOptimal(picture, to.colors, to.levels, to.first);
    return palette;
}

// A tree never joins its first level, so a palette of two comes from one of more: its darkest and
// its lightest colour.
clsPalette darkestAndLightest(const clsPalette& from) {
    int darkest = 1, lightest = 1;
    const auto luminance = [&](int i) {
        return ColorLuminance(platform::rgb(from.Red(i), from.Green(i), from.Blue(i)));
    };
    for (int i = 2; i <= from.Count(); ++i) {
        if (luminance(i) < luminance(darkest)) darkest = i;
        if (luminance(i) > luminance(lightest)) lightest = i;
    }
    clsPalette two;
    for (const int i : {darkest, lightest}) two.Add(from.Red(i), from.Green(i), from.Blue(i));
    return two;
}

}  // namespace

void drawPalettes(HDC hDC, const RECT& area) {
    drawFixed(hDC, box(area.left, area.top, widthOf(area), 110));
    RECT rest = box(area.left, area.top + 122, widthOf(area), 440);
    heading(hDC, rest,
            u"A picture in few colours: how many were wanted, levels of the tree, colours found");
    const clsDIBSection picture = landscape(172, 88);
    Cells cells(rest, 4, 218, 138);
    const RECT first = cells.next();
    picture.PaintPicture(hDC, first.left, first.top);
    write(hDC, box(first.left, first.top + 116, 180, 16), u"the picture, 24 bits", kCaption);
    for (const Reduction& to :
         {Reduction{8, 256, 8}, Reduction{8, 256, 4}, Reduction{8, 64, 6}, Reduction{4, 16, 8},
          Reduction{4, 16, 2}, Reduction{4, 15, 8, platform::rgb(255, 0, 0)}, Reduction{4, 8, 8},
          Reduction{4, 8, 1}}) {
        const clsPalette palette = bestFor(picture, to);
        drawIn(hDC, cells.next(), picture, to.bits, palette,
               number(to.colors) + (to.first ? u" and a red, " : u" wanted, ") + number(to.levels) +
                   (to.levels == 1 ? u" level: " : u" levels: ") + number(palette.Count()));
    }
    drawIn(hDC, cells.next(), picture, 1, darkestAndLightest(bestFor(picture, {4, 8, 8})),
           u"the darkest and the lightest of 8");
    drawIn(hDC, cells.next(), picture, 8, fixed(&clsPalette::CreateHalfTone256),
           u"in the half-tone palette");
    drawIn(hDC, cells.next(), picture, 8, fixed(&clsPalette::CreateWebSafe256),
           u"in the web-safe palette");
}

}  // namespace gallery
