// The drawn button: every style in every state, and what its other properties do.
#include "controls/ctlUniButtonXP.h"
#include "gallery/Sheet.h"
#include "gallery/pages.h"

namespace gallery {
namespace {

using platform::rgb;

void put(HDC hDC, const RECT& place, const ButtonProps& props, const ButtonState& state = {}) {
    putControl(hDC, place, [&](HDC to, SIZE size) { paintButton(to, size, props, state); });
}

void drawStates(HDC hDC, const RECT& area) {
    const struct {
        TextView name;
        ButtonState state;
        bool bRounded = true;
    } kStates[] = {
        {u"Normal", {}},
        {u"Default", {.bDefault = true}},
        {u"Cancel", {.bCancel = true}},
        {u"Focus", {.bDefault = true, .bFocus = true}},
        {u"Pressed", {.bFocus = true, .bPressed = true}},
        {u"Disabled", {.bEnabled = false, .bDefault = true}},
        {u"Square", {}, false},
    };
    constexpr int kStep = 114, kRow = 32, kStyles = 9;
    int x = area.left + 56;
    for (const auto& state : kStates) {
        write(hDC, box(x, area.top, kStep, 18), state.name, kCaption);
        x += kStep;
    }
    for (int style = -1; style < kStyles; ++style) {
        const int y = area.top + 22 + (style + 1) * kRow;
        write(hDC, box(area.left, y, 56, 26), number(style), kCaption);
        x = area.left + 56;
        for (const auto& state : kStates) {
            ButtonProps props;
            props.Caption = u"&Browse...";
            props.Style = style;
            props.RoundedBorders = state.bRounded;
            props.BackColorOut = kPaper;
            put(hDC, box(x, y, kStep - 10, 26), props, state.state);
            x += kStep;
        }
    }
}

void drawOthers(HDC hDC, RECT area) {
    heading(hDC, area, u"Colours, borders, corners, sizes");
    const struct {
        TextView name;
        ButtonProps props;
        ButtonState state = {};
    } kCases[] = {
        {u"colours",
         {.Caption = u"Save", .BackColor = rgb(127, 138, 167), .ForeColor = 0xFFFFFF, .Style = 4}},
        {u"own border", {.Caption = u"Save", .BorderColor = rgb(178, 34, 34), .Style = 3}},
        {u"corners in a colour", {.Caption = u"Save", .BackColorOut = rgb(255, 192, 0)}},
        {u"focus not shown",
         {.Caption = u"Save", .ShowFocus = false},
         {.bDefault = true, .bFocus = true}},
        {u"default and cancel", {.Caption = u"Close"}, {.bDefault = true, .bCancel = true}},
        {u"no caption", {.Style = 7}},
        {u"other scripts", {.Caption = u"\u041E\u0442\u043A\u0440\u044B\u0442\u044C \u6253\u5F00"}},
    };
    Cells cells(area, 7, 121, 54);
    for (const auto& c : kCases) {
        const RECT cell = cells.next();
        ButtonProps props = c.props;
        if (props.BackColorOut == kAutoColor) props.BackColorOut = kPaper;
        put(hDC, box(cell.left, cell.top, 108, 28), props, c.state);
        write(hDC, box(cell.left, cell.top + 32, 118, 16), c.name, kCaption);
    }
    int x = area.left;
    for (const SIZE size :
         {SIZE{200, 56}, SIZE{130, 40}, SIZE{90, 30}, SIZE{60, 22}, SIZE{36, 18}, SIZE{20, 14}}) {
        ButtonProps props;
        props.Caption = u"Find";
        props.Style = 4;
        props.BackColorOut = kPaper;
        put(hDC, box(x, area.top + 64, size.cx, size.cy), props);
        x += size.cx + 16;
    }
}

}  // namespace

void drawButtons(HDC hDC, const RECT& area) {
    drawStates(hDC, area);
    drawOthers(hDC, box(area.left, area.top + 360, widthOf(area), 170));
}

}  // namespace gallery
