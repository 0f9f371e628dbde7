// The drawn labels: where their text goes, how large they make themselves, what stays of a
// transparent one.
#include "controls/ctlUniLabel.h"
#include "gallery/Sheet.h"
#include "gallery/pages.h"
#include "gallery/samples.h"
#include "gfx/clsMEMDC.h"
#include "gfx/modCtlCommon_ctl_shapes.h"

namespace gallery {
namespace {

using platform::rgb;

void put(HDC hDC, const RECT& place, const LabelProps& props, bool enabled = true) {
    putControl(hDC, place, [&](HDC to, SIZE size) { paintLabel(to, size, props, enabled); });
}

void drawAlignments(HDC hDC, RECT area) {
    heading(hDC, area, u"Alignments, top to bottom and left, right, centre");
    Cells cells(area, 3, 140, 66);
    for (int vertical = 0; vertical < 3; ++vertical) {
        for (int horizontal = 0; horizontal < 3; ++horizontal) {
            const RECT cell = cells.next();
            put(hDC, box(cell.left, cell.top, 132, 58),
                {.Caption = u"Words that wrap into two lines",
                 .BackColor = kTint,
                 .Alignment = horizontal,
                 .VAlignment = vertical,
                 .BorderStyle = 1});
        }
    }
}

void drawSizes(HDC hDC, RECT area) {
    heading(hDC, area, u"Sizes of their own: margins 0, 3, 8, without and with a border");
    int y = area.top;
    for (int row = 0; row < 3; ++row) {
        int x = area.left;
        for (const std::int16_t margin : {std::int16_t{0}, std::int16_t{3}, std::int16_t{8}}) {
            LabelProps props;
            props.Caption = row == 2 ? u"Three lines,\r\nas wide as the\r\nwidest" : u"One line";
            props.BackColor = row == 0 ? rgb(226, 230, 235) : kTint;
            props.BorderStyle = row == 0 ? 0 : 1;
            props.RoundedBorders = row == 2;
            props.BackColorOut = kPaper;
            props.AutoSize = true;
            props.Margin = margin;
            SIZE size{};
            putControl(hDC, {-1, -1, 0, 0}, [&](HDC to, SIZE) { size = labelAutoSize(to, props); });
            put(hDC, box(x, y, size.cx, size.cy), props);
            x += 130;
        }
        y += row == 2 ? 80 : 40;
    }
}

// The letters of a transparent label over what is there: its window has no other pixels.
void putLetters(HDC hDC, const RECT& place, LabelProps props) {
    props.BackStyle = 0;
    constexpr Color kBlack = 0, kWhite = 0xFFFFFF;
    LabelProps mask = props;
    mask.BackColor = kBlack;
    mask.ForeColor = kWhite;
    const auto painted = [&](const LabelProps& as) {
        clsMEMDC surface;
        surface.CreateDC(widthOf(place), heightOf(place));
        put(surface.Hdc(), box(0, 0, widthOf(place), heightOf(place)), as);
        return surface;
    };
    const clsMEMDC letters = painted(mask), label = painted(props);
    for (int y = 0; y < heightOf(place); ++y) {
        for (int x = 0; x < widthOf(place); ++x) {
            if (platform::GetPixel(letters.Hdc(), x, y) == kBlack) continue;
            platform::SetPixel(hDC, place.left + x, place.top + y,
                               platform::GetPixel(label.Hdc(), x, y));
        }
    }
}

void drawTransparent(HDC hDC, RECT area) {
    heading(hDC, area, u"Transparent: the window is its letters, clicks fall through between");
    const int width = 412, height = 110;
    const clsDIBSection ground = landscape(width, height);
    ground.PaintPicture(hDC, area.left, area.top);
    putLetters(hDC, box(area.left + 12, area.top + 10, 180, 20),
               {.Caption = u"Letters in front of a picture",
                .BackColor = rgb(110, 130, 180),
                .ForeColor = rgb(20, 30, 40)});
    putLetters(hDC, box(area.left + 190, area.top + 10, 190, 20),
               {.Caption = u"At the right, in another colour",
                .BackColor = rgb(245, 228, 190),
                .ForeColor = rgb(160, 0, 0),
                .Alignment = 1});
    putLetters(hDC, box(area.left + 12, area.top + 56, 388, 44),
               {.Caption = u"Several words in the middle that need a second line, because "
                           u"there are more of them than fit into one",
                .BackColor = rgb(70, 130, 90),
                .ForeColor = 0xFFFFFF,
                .Alignment = 2,
                .VAlignment = 1});
}

void drawFaces(HDC hDC, RECT area) {
    heading(hDC, area, u"Faces, scripts, disabled");
    Cells cells(area, 7, 122, 40);
    for (int style = -1; style < 9; ++style) {
        const RECT cell = cells.next();
        put(hDC, box(cell.left, cell.top, 112, 30),
            {.Caption = u"Style " + number(style),
             .Alignment = 2,
             .VAlignment = 1,
             .BorderStyle = 1,
             .Style = style,
             .RoundedBorders = true,
             .BackColorOut = kPaper});
    }
    for (const TextView caption :
         {u"\u041F\u0435\u0440\u0435\u0432\u043E\u0434 \u0433\u043E\u0442\u043E\u0432",
          u"\u05EA\u05E8\u05D2\u05D5\u05DD, ready", u"\u6253\u5F00\u6587\u4EF6"}) {
        const RECT cell = cells.next();
        put(hDC, box(cell.left, cell.top, 112, 30),
            {.Caption = Text(caption), .BackColor = kTint, .Alignment = 2, .VAlignment = 1});
    }
    const RECT cell = cells.next();
    put(hDC, box(cell.left, cell.top, 112, 30),
        {.Caption = u"Disabled", .BackColor = kTint, .Alignment = 2, .VAlignment = 1}, false);
}

}  // namespace

void drawLabels(HDC hDC, const RECT& area) {
    drawAlignments(hDC, box(area.left, area.top, 412, 226));
    drawSizes(hDC, box(area.left + 440, area.top, 412, 226));
    drawTransparent(hDC, box(area.left, area.top + 244, 412, 150));
    drawFaces(hDC, box(area.left, area.top + 400, widthOf(area), 120));
}

}  // namespace gallery
