// The drawn check box.
#include "controls/ctlUniCheckXP.h"
#include "gallery/Sheet.h"
#include "gallery/pages.h"

namespace gallery {
namespace {

using platform::rgb;

void put(HDC hDC, const RECT& place, CheckProps props, const CheckState& state = {}) {
    if (props.BackColor == sysColor(15)) props.BackColor = kPaper;
    putControl(hDC, place, [&](HDC to, SIZE size) { paintCheck(to, size, props, state); });
}

void drawStates(HDC hDC, RECT area) {
    heading(hDC, area, u"States, the box at the left and at the right");
    const struct {
        TextView name;
        CheckState state;
    } kStates[] = {
        {u"Normal", {}},
        {u"Focus", {.bFocus = true}},
        {u"Disabled", {.bEnabled = false}},
    };
    int y = area.top;
    for (const auto& state : kStates) {
        write(hDC, box(area.left, y, 80, 22), state.name, kCaption);
        for (int i = 0; i < 4; ++i) {
            put(hDC, box(area.left + 84 + i * 190, y, 170, 22),
                {.Caption = u"&Empty translations", .Align = i / 2, .Pressed = i % 2 == 1},
                state.state);
        }
        y += 30;
    }
}

void drawStyles(HDC hDC, RECT area) {
    heading(hDC, area, u"Styles of the box");
    Cells cells(area, 5, 170, 30);
    for (int style = -1; style < 9; ++style) {
        const RECT cell = cells.next();
        put(hDC, box(cell.left, cell.top, 150, 22),
            {.Caption = u"Style " + number(style), .Pressed = true, .Style = style});
    }
}

void drawCaptions(HDC hDC, RECT area) {
    heading(hDC, area, u"Captions and colours");
    const struct {
        CheckProps props;
        CheckState state = {};
    } kCases[] = {
        {{.Caption = u"A caption that is longer than its line goes on in the next one"},
         {.bFocus = true}},
        {{.Caption = u"Two lines\r\nin one caption", .Pressed = true}, {.bFocus = true}},
        {{.Caption = u"R&&D and the &access key", .Pressed = true}},
        {{.Caption = u"Colours of one's own",
          .CheckBackColor = rgb(255, 255, 192),
          .CheckForeColor = rgb(192, 0, 0),
          .BackColor = rgb(52, 58, 68),
          .ForeColor = 0xFFFFFF,
          .BorderColor = rgb(255, 192, 0),
          .Pressed = true},
         {}},
        {{.Caption = u"\u05EA\u05D9\u05D1\u05EA \u05E1\u05D9\u05DE\u05D5\u05DF", .Align = 1}},
        {{.Pressed = true}, {.bFocus = true}},
    };
    Cells cells(area, 3, 284, 52);
    for (const auto& c : kCases) {
        const RECT cell = cells.next();
        put(hDC, box(cell.left, cell.top, 264, 40), c.props, c.state);
    }
}

}  // namespace

void drawChecks(HDC hDC, const RECT& area) {
    drawStates(hDC, area);
    drawStyles(hDC, box(area.left, area.top + 140, widthOf(area), 90));
    drawCaptions(hDC, box(area.left, area.top + 250, widthOf(area), 140));
}

}  // namespace gallery
