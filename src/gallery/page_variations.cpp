// What the table of faces leaves out: flat frames, adapted lights, borders of one's own, sizes.
#include "gallery/Sheet.h"
#include "gallery/pages.h"
#include "gfx/modCtlCommon_ctl_faces.h"
#include "gfx/modCtlCommon_ctl_shapes.h"

namespace gallery {
namespace {

using platform::rgb;

struct Back {
    Color back, ground;
};
constexpr Back kBacks[] = {{rgb(255, 255, 255), rgb(240, 243, 246)},
                           {rgb(52, 58, 68), rgb(36, 40, 47)},
                           {rgb(255, 244, 204), rgb(223, 236, 248)}};

void drawFlat(HDC hDC, RECT area) {
    heading(hDC, area, u"Flat frames, as text boxes and lists have them");
    const struct {
        TextView name;
        FlatFace face;
    } kKinds[] = {
        {u"Square", {}},
        {u"Rounded", {.bRounded = true}},
        {u"Bottom only", {.bOnlyBottomBorder = true}},
        {u"Own border", {.iBorderColor = kAccent, .bRounded = true}},
    };
    for (int row = 0; row < 3; ++row) {
        const Back& back = kBacks[row];
        const int y = area.top + row * 48;
        DrawRect(hDC, box(area.left, y, 412, 44), back.ground, true);
        int x = area.left + 8;
        for (const auto& kind : kKinds) {
            const RECT rect = box(x, y + 8, 92, 28);
            FlatFace face = kind.face;
            face.iBackColor = back.back;
            face.iOuterColor = back.ground;
            DrawRect(hDC, inset(rect, 1), back.back, true);
            DrawFlatFace(hDC, rect, face);
            write(hDC, inset(rect, 6), kind.name, {.color = inkOn(back.back)});
            x += 101;
        }
    }
}

void drawAdapted(HDC hDC, RECT area) {
    heading(hDC, area, u"Lights fitted to the back colour: off, on");
    const struct {
        TextView name;
        Color back;
        int style;
        bool pressed;
    } kCases[] = {
        {u"0 pressed, dark", rgb(40, 44, 52), 0, true},
        {u"4, light", rgb(226, 230, 235), 4, false},
        {u"7, dark", rgb(40, 44, 52), 7, false},
        {u"8, light", rgb(226, 230, 235), 8, false},
    };
    int y = area.top;
    for (const auto& c : kCases) {
        write(hDC, box(area.left, y, 120, 30), c.name, kCaption);
        for (int adapt = 0; adapt < 2; ++adapt) {
            DrawButtonFace(hDC, box(area.left + 124 + adapt * 138, y, 130, 30),
                           {.iBackColor = c.back,
                            .bBorder = true,
                            .bPressed = c.pressed,
                            .bRounded = true,
                            .iStyle = c.style,
                            .iOuterColor = kPaper,
                            .bAdapt = adapt != 0});
        }
        y += 37;
    }
}

void drawBorders(HDC hDC, RECT area) {
    heading(hDC, area, u"Borders");
    const Color back = rgb(222, 226, 231);
    const struct {
        TextView name;
        ButtonFace face;
    } kCases[] = {
        {u"none", {.iBackColor = back}},
        {u"none, rounded", {.iBackColor = back, .bRounded = true}},
        {u"automatic", {.iBackColor = back, .bBorder = true}},
        {u"own colour", {.iBackColor = back, .bBorder = true, .iBorderColor = rgb(178, 34, 34)}},
        {u"own, rounded",
         {.iBackColor = back, .bBorder = true, .iBorderColor = rgb(178, 34, 34), .bRounded = true}},
        {u"system colours", {.iBackColor = sysColor(13), .bBorder = true, .bRounded = true}},
        {u"default wins",
         {.iBackColor = back, .bBorder = true, .bDefault = true, .bCancel = true, .bFocus = true}},
    };
    Cells cells(area, 7, 121, 56);
    for (const auto& c : kCases) {
        const RECT cell = cells.next();
        ButtonFace face = c.face;
        face.iStyle = 3;
        face.iOuterColor = kPaper;
        DrawButtonFace(hDC, box(cell.left, cell.top, 108, 30), face);
        write(hDC, box(cell.left, cell.top + 32, 116, 16), c.name, kCaption);
    }
}

void drawSizes(HDC hDC, RECT area) {
    heading(hDC, area, u"From large to smaller than its own bands");
    const SIZE kSizes[] = {{150, 110}, {110, 80}, {80, 56}, {60, 40}, {48, 28}, {36, 20},
                           {28, 14},   {20, 10},  {14, 8},  {8, 6},   {5, 4},   {3, 3}};
    for (int row = 0; row < 2; ++row) {
        int x = area.left;
        for (const SIZE size : kSizes) {
            DrawButtonFace(hDC, box(x, area.top + row * 118, size.cx, size.cy),
                           {.iBackColor = row == 0 ? rgb(222, 226, 231) : rgb(86, 156, 214),
                            .bBorder = true,
                            .bRounded = true,
                            .iStyle = row == 0 ? 4 : 7,
                            .iOuterColor = kPaper});
            x += size.cx + 16;
        }
        write(hDC, box(x + 8, area.top + row * 118, 120, 18), row == 0 ? u"Style 4" : u"Style 7",
              kCaption);
    }
}

}  // namespace

void drawFaceVariations(HDC hDC, const RECT& area) {
    drawFlat(hDC, box(area.left, area.top, 412, 180));
    drawAdapted(hDC, box(area.left + 440, area.top, widthOf(area) - 440, 180));
    drawBorders(hDC, box(area.left, area.top + 194, widthOf(area), 90));
    drawSizes(hDC, box(area.left, area.top + 290, widthOf(area), 270));
}

}  // namespace gallery
