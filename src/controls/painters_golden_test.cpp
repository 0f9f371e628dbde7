// Every painter in every state, on small sheets.
#include "controls/ctlProgressXP.h"
#include "controls/ctlUniButtonXP.h"
#include "controls/ctlUniCheckXP.h"
#include "controls/ctlUniFrameXP.h"
#include "controls/ctlUniLabel.h"
#include "gfx/modCtlCommon_ctl_shapes.h"
#include "support/gui/Golden.h"

#include <gtest/gtest.h>

namespace {

constexpr int kGap = 6;

// Paints each case as large as sizeOf(hDC, case) says, on a surface of its own with the font of
// controls, in cells from left to right and from the top.
template <class Cases, class SizeOf, class Paint>
void expectSheet(const std::string& name, int columns, SIZE cell, const Cases& cases, SizeOf sizeOf,
                 Paint paint) {
    const int rows = (static_cast<int>(std::size(cases)) + columns - 1) / columns;
    const SIZE sheet{columns * (cell.cx + kGap) + kGap, rows * (cell.cy + kGap) + kGap};
    EXPECT_GOLDEN("controls/" + name, sheet, [&](HDC hDC) {
        DrawRect(hDC, {0, 0, sheet.cx, sheet.cy}, sysColor(15), true);
        int index = 0;
        for (const auto& c : cases) {
            clsMEMDC surface;
            clsFontHDC font;
            font.SetFontToDCStdFont(hDC, StdFont());
            const SIZE size = sizeOf(hDC, c);
            font.Destroy();
            surface.CreateDC(size.cx, size.cy);
            font.SetFontToDCStdFont(surface.Hdc(), StdFont());
            paint(surface.Hdc(), size, c);
            font.Destroy();
            surface.PaintPicture(hDC, kGap + index % columns * (cell.cx + kGap),
                                 kGap + index / columns * (cell.cy + kGap));
            ++index;
        }
    });
}
// The same where all fill their cells.
template <class Cases, class Paint>
void expectSheet(const std::string& name, int columns, SIZE cell, const Cases& cases, Paint paint) {
    expectSheet(
        name, columns, cell, cases, [&](HDC, const auto&) { return cell; }, paint);
}

TEST(PaintersGolden, Buttons) {
    const struct {
        const char16_t* caption;
        ButtonState state;
    } kStates[] = {
        {u"Normal", {}},
        {u"Focus", {.bDefault = true, .bFocus = true}},
        {u"Pressed", {.bFocus = true, .bPressed = true}},
        {u"&Default", {.bDefault = true}},
        {u"&Cancel", {.bCancel = true}},
        {u"Disabled", {.bEnabled = false, .bDefault = true, .bFocus = true}},
    };
    constexpr int kColumns = 6, kStyles = 9;
    std::vector<std::pair<ButtonProps, ButtonState>> cases;
    for (int row = 0; row <= kStyles; ++row) {
        for (int column = 0; column < kColumns; ++column) {
            ButtonProps props;
            props.Caption = kStates[column].caption;
            props.Style = row;
            if (row == kStyles) {  // square, coloured, and behind cut corners another colour
                props.Style = column % 2 == 0 ? 4 : 3;
                props.RoundedBorders = column < 2;
                props.BackColor = 0xA78A7F;
                props.ForeColor = 0xFFFFFF;
                props.BackColorOut = 0x00C0FF;
                props.BorderColor = column < 4 ? 0x000080 : kAutoColor;
                props.ShowFocus = false;
            }
            cases.emplace_back(props, kStates[column].state);
        }
    }
    expectSheet("buttons", kColumns, {84, 25}, cases, [](HDC hDC, SIZE size, const auto& c) {
        paintButton(hDC, size, c.first, c.second);
    });
}

TEST(PaintersGolden, CheckBoxes) {
    const struct {
        CheckProps props;
        CheckState state{};
        int height = 22;
    } kCases[] = {
        {{.Caption = u"Off"}},
        {{.Caption = u"&On", .Pressed = true}},
        {{.Caption = u"Focus", .Pressed = true}, {.bFocus = true}},
        {{.Caption = u"Disabled", .Pressed = true}, {.bEnabled = false}},
        {{.Caption = u"Disabled, off"}, {.bEnabled = false}},
        {{.Caption = u"Right", .Align = 1, .Pressed = true}, {.bFocus = true}},
        {{.Caption = u"Focus not shown", .ShowFocus = false}, {.bFocus = true}},
        {{.Pressed = true}, {.bFocus = true}},
        {{.Caption = u"Style 2",
          .CheckBackColor = 0xC0FFFF,
          .CheckForeColor = 0x0000C0,
          .Style = 2},
         {},
         32},
        {{.Caption = u"A caption that is too long for the room it has", .Pressed = true},
         {.bFocus = true},
         32},
        {{.Caption = u"Two\r\nlines", .BackColor = 0xFFFFFF, .ForeColor = 0x800000},
         {.bFocus = true},
         32},
        {{.Caption = u"\u05D0\u05D1 abc", .Align = 1, .BorderColor = 0x0000FF}, {}, 32},
    };
    constexpr SIZE kCell{150, 32};
    expectSheet(
        "checks", 2, kCell, kCases,
        [&](HDC, const auto& c) {
            return SIZE{kCell.cx, c.height};
        },
        [](HDC hDC, SIZE size, const auto& c) { paintCheck(hDC, size, c.props, c.state); });
}

TEST(PaintersGolden, Frames) {
    const FrameProps kCases[] = {
        {.Caption = u"Band"},
        {},
        {.Caption = u"A & B, shadow", .UseShadow = true},
        {.Caption = u"Disabled", .Enabled = false, .BackColorOut = 0xFFFFFF},
        {.Caption = u"Title", .ForeColor = 0xFFFFFF, .TitleBackColor = 0xA78A7F, .UseShadow = true},
        {.Caption = u"&Border", .ForeColor = 0, .VistaStyle = false},
        {.VistaStyle = false},
        {.Caption = u"Shadow", .ForeColor = 0x800000, .VistaStyle = false, .UseShadow = true},
    };
    expectSheet("frames", 4, {120, 60}, kCases, paintFrame);
}

TEST(PaintersGolden, Labels) {
    constexpr const char16_t* kText = u"Words that go on and on, and so wrap into lines";
    const struct {
        LabelProps props;
        bool bEnabled = true;
    } kCases[] = {
        {{.Caption = kText}},
        {{.Caption = kText, .Alignment = 1, .VAlignment = 1, .BorderStyle = 1}},
        {{.Caption = kText,
          .Alignment = 2,
          .VAlignment = 2,
          .BorderStyle = 1,
          .RoundedBorders = true}},
        {{.Caption = u"Disabled", .VAlignment = 1}, false},
        {{.Caption = u"Auto size", .BorderStyle = 1, .AutoSize = true, .Margin = 4}},
        {{.Caption = u"Tip style ",
          .BackColor = sysColor(24),
          .ForeColor = sysColor(23),
          .VAlignment = 1,
          .BorderStyle = 1,
          .AutoSize = true,
          .Style = -1,
          .Margin = 2}},
        {{.Caption = u"Transparent", .BackColor = 0xC0FFFF, .BackStyle = 0}},
        {{.Caption = u"A text that is higher than all of its room, so that it begins at the top "
                     u"of it and is cut below",
          .VAlignment = 2,
          .BorderStyle = 1}},
        {{.Caption = u"\u202B\u05E9\u05DC\u05D5\u05DD, a\u202C", .Alignment = 1, .Style = 4}},
    };
    constexpr SIZE kCell{130, 44};
    expectSheet(
        "labels", 3, kCell, kCases,
        [&](HDC hDC, const auto& c) {
            return c.props.AutoSize ? labelAutoSize(hDC, c.props) : kCell;
        },
        [](HDC hDC, SIZE size, const auto& c) { paintLabel(hDC, size, c.props, c.bEnabled); });
}

TEST(PaintersGolden, ProgressBars) {
    std::vector<ProgressProps> cases;
    for (const std::int16_t percent : {0, 1, 3, 25, 60, 99, 100}) {
        for (const bool spaces : {true, false}) {
            cases.push_back({.Percent = percent, .Spaces = spaces});
        }
    }
    for (const std::int32_t style : {-1, 0, 4}) {
        cases.push_back({.Percent = 60,
                         .ForeColor = 0xA78A7F,
                         .Border = false,
                         .BorderColor = 0,
                         .Style = style,
                         .BackStyle = style});
    }
    cases.push_back(
        {.Percent = 60, .BorderSpace = false, .Spaces = false, .RoundedBorders = false});
    expectSheet("progress", 2, {160, 15}, cases,
                [](HDC hDC, SIZE size, const ProgressProps& props) {
                    ProgressSurfaces surfaces;
                    surfaces.build(size, props);
                    surfaces.paint(hDC, props);
                });
}

}  // namespace
