// Pictures and icons put into areas, in every way there is.
#include "gallery/Sheet.h"
#include "gallery/pages.h"
#include "gallery/samples.h"
#include "gfx/modCtlCommon_alphaImg.h"
#include "gfx/modCtlCommon_ctl_shapes.h"

namespace gallery {
namespace {

struct Sample {
    TextView name;
    SIZE area;
    ImagePlacing placing;
};

void drawRow(HDC hDC, RECT area, TextView title, const platform::PictureObject* picture,
             std::span<const Sample> samples) {
    heading(hDC, area, title);
    Cells cells(area, 7, 121, 0);
    for (const Sample& sample : samples) {
        const RECT cell = cells.next();
        const RECT rect =
            box(cell.left, cell.top + (84 - sample.area.cy) / 2, sample.area.cx, sample.area.cy);
        drawCheckers(hDC, rect);
        pvOverlapImageRect(hDC, rect, picture, sample.placing);
        DrawRect(hDC, {rect.left - 1, rect.top - 1, rect.right + 1, rect.bottom + 1}, kRule, false);
        write(hDC, box(cell.left, cell.top + 88, 118, 30), sample.name, kCaption,
              platform::DT_WORDBREAK);
    }
}

}  // namespace

void drawPictures(HDC hDC, const RECT& area) {
    const SIZE wide{104, 84}, own{48, 48}, small{30, 30}, flat{104, 26};
    const Sample kPlain[] = {
        {u"centred", wide, {}},
        {u"its own size", own, {}},
        {u"cut at right and bottom", small, {}},
        {u"cut in height", flat, {}},
        {u"24 × 30 pixels of it", wide, {.iPicWidth = 24, .iPicHeight = 30}},
        {u"greyed", wide, {.bPicGrayed = true}},
        {u"greyed and cut", small, {.bPicGrayed = true}},
    };
    const Sample kKeyed[] = {
        {u"the colour at 0, 0", wide, {.bPicTransparent = true}},
        {u"the colour at 24, 21",
         wide,
         {.bPicTransparent = true, .lPicXTransp = 24, .lPicYTransp = 21}},
        {u"a colour that is told",
         wide,
         {.bPicTransparent = true, .lPicTranspColor = platform::rgb(236, 92, 112)}},
        {u"greyed, too", wide, {.bPicGrayed = true, .bPicTransparent = true}},
        {u"and cut", small, {.bPicTransparent = true}},
        {u"greyed and cut", small, {.bPicGrayed = true, .bPicTransparent = true}},
        {u"cut in height", flat, {.bPicTransparent = true}},
    };
    const Sample kIcons[] = {
        {u"by its mask", wide, {.bPicTransparent = true}},
        {u"without the mask", wide, {}},
        {u"greyed", wide, {.bPicGrayed = true, .bPicTransparent = true}},
        {u"its own size", own, {.bPicTransparent = true}},
        {u"cut", small, {.bPicTransparent = true}},
        {u"24 × 30 pixels of it",
         wide,
         {.bPicTransparent = true, .iPicWidth = 24, .iPicHeight = 30}},
        {u"cut in height", flat, {.bPicTransparent = true}},
    };
    const Sample kMonochrome[] = {
        {u"by its mask", wide, {.bPicTransparent = true}},
        {u"without the mask", wide, {}},
        {u"greyed", wide, {.bPicGrayed = true, .bPicTransparent = true}},
        {u"cut", {20, 20}, {.bPicTransparent = true}},
    };
    const int rowHeight = 142;
    const auto row = [&](int i) {
        return box(area.left, area.top + i * rowHeight, widthOf(area), rowHeight);
    };
    const auto picture = flower();
    drawRow(hDC, row(0), u"A picture of 48 × 48, opaque", picture.get(), kPlain);
    drawRow(hDC, row(1), u"The same with a colour left out", picture.get(), kKeyed);
    drawRow(hDC, row(2), u"The same as an icon", flowerIcon().get(), kIcons);
    drawRow(hDC, row(3), u"A black and white icon of 32 × 32", monochromeIcon().get(), kMonochrome);
}

}  // namespace gallery
