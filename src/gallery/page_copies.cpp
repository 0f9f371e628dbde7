// Copies from surface to surface: operations, stretching, depths, surfaces that change their size.
#include "gallery/Sheet.h"
#include "gallery/pages.h"
#include "gallery/samples.h"
#include "gfx/clsGdiHandle.h"
#include "gfx/clsMEMDC.h"
#include "gfx/modCtlCommon_alphaImg.h"
#include "gfx/modCtlCommon_ctl_shapes.h"

namespace gallery {
namespace {

using namespace platform;

clsMEMDC flowerOn(Color ground) {
    clsMEMDC surface;
    surface.CreateDC(48, 48);
    surface.DrawBackColor(ground);
    pvOverlapImage(surface.Hdc(), 0, 0, 48, 48, flowerIcon().get(), {.bPicTransparent = true});
    return surface;
}

void drawOperations(HDC hDC, RECT area) {
    heading(hDC, area,
            u"What becomes of source (flower), destination (stripes) and brush (orange)");
    const struct {
        TextView name;
        std::uint32_t rop;
    } kOperations[] = {
        {u"source", SRCCOPY}, {u"inverted", NOTSRCCOPY},       {u"and", SRCAND},
        {u"or", SRCPAINT},    {u"exclusive or", SRCINVERT},    {u"dest. inverted", DSTINVERT},
        {u"brush", PATCOPY},  {u"brush xor dest.", PATINVERT}, {u"black", BLACKNESS},
        {u"white", WHITENESS}};
    const clsMEMDC source = flowerOn(rgb(255, 255, 255));
    const clsGdiHandle brush(CreateSolidBrush(rgb(240, 150, 40)));
    const HGDIOBJ old = SelectObject(hDC, brush.Handle());
    Cells cells(area, 10, 85, 0);
    for (const auto& operation : kOperations) {
        const RECT cell = cells.next();
        const RECT rect = box(cell.left, cell.top, 72, 64);
        DrawRect(hDC, rect, rgb(255, 255, 255), true);
        for (int x = 0; x < 72; x += 18) {
            DrawRect(hDC, box(rect.left + x, rect.top, 9, 64), rgb(86, 156, 214), true);
        }
        BitBlt(hDC, rect.left + 12, rect.top + 8, 48, 48, source.Hdc(), 0, 0, operation.rop);
        DrawRect(hDC, rect, kRule, false);
        write(hDC, box(cell.left, cell.top + 66, 84, 16), operation.name, kCaption);
    }
    SelectObject(hDC, old);
}

void drawStretching(HDC hDC, RECT area) {
    heading(hDC, area, u"Stretched and mirrored");
    const clsMEMDC source = flowerOn(kTint);
    const struct {
        TextView name;
        int x, y, width, height;  // of the destination, from the cell's top left
        int mode;
    } kCases[] = {
        {u"twice", 0, 0, 96, 96, COLORONCOLOR},
        {u"wide", 0, 0, 110, 48, COLORONCOLOR},
        {u"mirrored", 47, 0, -48, 48, COLORONCOLOR},
        {u"upside down", 0, 47, 48, -48, COLORONCOLOR},
        {u"half, dropped", 0, 0, 24, 24, COLORONCOLOR},
        {u"half, by AND", 0, 0, 24, 24, BLACKONWHITE},
        {u"half, by OR", 0, 0, 24, 24, WHITEONBLACK},
    };
    Cells cells(area, 7, 121, 0);
    for (const auto& c : kCases) {
        const RECT cell = cells.next();
        const int old = SetStretchBltMode(hDC, c.mode);
        StretchBlt(hDC, cell.left + c.x, cell.top + c.y, c.width, c.height, source.Hdc(), 0, 0, 48,
                   48, SRCCOPY);
        SetStretchBltMode(hDC, old);
        write(hDC, box(cell.left, cell.top + 100, 118, 16), c.name, kCaption);
    }
}

void drawDepths(HDC hDC, RECT area) {
    heading(hDC, area, u"One picture in every depth, with the fixed palettes");
    const clsDIBSection picture = landscape(152, 96);
    Cells cells(area, 5, 171, 0);
    for (const int bits : {1, 4, 8, 24, 32}) {
        const RECT cell = cells.next();
        clsDIBSection section;
        section.CreateDC(picture.Width(), picture.Height(), bits);
        picture.PaintPicture(section.Hdc());
        section.PaintPicture(hDC, cell.left, cell.top);
        write(hDC, box(cell.left, cell.top + 98, 150, 16),
              bits == 1 ? Text(u"1 bit") : number(bits) + u" bits", kCaption);
    }
}

void drawResizing(HDC hDC, RECT area) {
    heading(hDC, area, u"A surface of 48 × 48 with another size");
    int x = area.left;
    const auto show = [&](const clsMEMDC& surface, TextView name) {
        surface.PaintPicture(hDC, x, area.top);
        write(hDC, box(x, area.top + 82, 180, 16), name, kCaption);
        x += 171;
    };
    clsMEMDC surface = flowerOn(kTint);
    show(surface, u"as it was");
    surface.ResizeCutDC(96, 78);
    show(surface, u"picture kept, larger");
    surface = flowerOn(kTint);
    surface.ResizeCutDC(30, 30);
    show(surface, u"picture kept, smaller");
    surface = flowerOn(kTint);
    surface.ResizeAdaptDC(140, 78);
    show(surface, u"stretched, larger");
    surface = flowerOn(kTint);
    surface.ResizeAdaptDC(24, 24);
    show(surface, u"stretched, smaller");
}

}  // namespace

void drawCopies(HDC hDC, const RECT& area) {
    const int width = widthOf(area);
    drawOperations(hDC, box(area.left, area.top, width, 120));
    drawStretching(hDC, box(area.left, area.top + 126, width, 150));
    drawDepths(hDC, box(area.left, area.top + 284, width, 150));
    drawResizing(hDC, box(area.left, area.top + 430, width, 130));
}

}  // namespace gallery
