// Every painter in every state, on small sheets.
#include "controls/ctlProgressXP.h"
#include "controls/ctlUniButtonXP.h"
#include "controls/ctlUniCheckXP.h"
#include "controls/ctlUniFrameXP.h"
#include "controls/ctlUniLabel.h"
#include "gfx/modCtlCommon_ctl_shapes.h"
#include "support/gui/Golden.h"

#include <functional>
#include <gtest/gtest.h>

namespace {

constexpr int kGap = 6;

// Paints each control on a surface of its own, with the font of controls, and puts it in its place.
class Sheet {
public:
    Sheet(HDC hDC, SIZE size) : m_hDC(hDC) {
        DrawRect(hDC, {0, 0, size.cx, size.cy}, sysColor(15), true);
    }
    void put(int x, int y, SIZE size, const std::function<void(HDC, SIZE)>& paint) const {
        clsMEMDC surface;
        surface.CreateDC(size.cx, size.cy);
        clsFontHDC font;
        font.SetFontToDCStdFont(surface.Hdc(), StdFont());
        paint(surface.Hdc(), size);
        font.Destroy();
        surface.PaintPicture(m_hDC, x, y);
    }

private:
    HDC m_hDC;
};

TEST(PaintersGolden, Buttons) {
    constexpr SIZE kSize{84, 25};
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
    const SIZE sheet{kColumns * (kSize.cx + kGap) + kGap, (kStyles + 1) * (kSize.cy + kGap) + kGap};
    EXPECT_GOLDEN("controls/buttons", sheet, [&](HDC hDC) {
        const Sheet page(hDC, sheet);
        for (int row = 0; row <= kStyles; ++row) {
            for (int column = 0; column < kColumns; ++column) {
                const auto& state = kStates[column];
                ButtonProps props;
                props.Caption = state.caption;
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
                page.put(kGap + column * (kSize.cx + kGap), kGap + row * (kSize.cy + kGap), kSize,
                         [&](HDC to, SIZE size) { paintButton(to, size, props, state.state); });
            }
        }
    });
}

TEST(PaintersGolden, CheckBoxes) {
    constexpr SIZE kSize{150, 22};
    const struct {
        const char16_t* caption;
        CheckProps props;
        CheckState state;
    } kCases[] = {
        {u"Off", {}, {}},
        {u"&On", {.Pressed = true}, {}},
        {u"Focus", {.Pressed = true}, {.bFocus = true}},
        {u"Disabled", {.Pressed = true}, {.bEnabled = false}},
        {u"Disabled, off", {}, {.bEnabled = false}},
        {u"Right", {.Align = 1, .Pressed = true}, {.bFocus = true}},
        {u"Focus not shown", {.ShowFocus = false}, {.bFocus = true}},
        {u"", {.Pressed = true}, {.bFocus = true}},
        {u"Style 2", {.CheckBackColor = 0xC0FFFF, .CheckForeColor = 0x0000C0, .Style = 2}, {}},
        {u"A caption that is too long for the room it has", {.Pressed = true}, {.bFocus = true}},
        {u"Two\r\nlines", {.BackColor = 0xFFFFFF, .ForeColor = 0x800000}, {.bFocus = true}},
        {u"\u05D0\u05D1 abc", {.Align = 1, .BorderColor = 0x0000FF}, {}},
    };
    const int rows = static_cast<int>(std::size(kCases) + 1) / 2;
    const SIZE sheet{2 * (kSize.cx + kGap) + kGap, rows * (kSize.cy + 10 + kGap) + kGap};
    EXPECT_GOLDEN("controls/checks", sheet, [&](HDC hDC) {
        const Sheet page(hDC, sheet);
        for (int i = 0; i < static_cast<int>(std::size(kCases)); ++i) {
            CheckProps props = kCases[i].props;
            props.Caption = kCases[i].caption;
            const SIZE size{kSize.cx, kSize.cy + (i >= 8 ? 10 : 0)};
            page.put(kGap + i % 2 * (kSize.cx + kGap), kGap + i / 2 * (kSize.cy + 10 + kGap), size,
                     [&](HDC to, SIZE inner) { paintCheck(to, inner, props, kCases[i].state); });
        }
    });
}

TEST(PaintersGolden, Frames) {
    constexpr SIZE kSize{120, 60};
    const struct {
        const char16_t* caption;
        FrameProps props;
    } kCases[] = {
        {u"Band", {}},
        {u"", {}},
        {u"A & B, shadow", {.UseShadow = true}},
        {u"Disabled", {.Enabled = false, .BackColorOut = 0xFFFFFF}},
        {u"Title", {.ForeColor = 0xFFFFFF, .TitleBackColor = 0xA78A7F, .UseShadow = true}},
        {u"&Border", {.ForeColor = 0, .VistaStyle = false}},
        {u"", {.VistaStyle = false}},
        {u"Shadow", {.ForeColor = 0x800000, .VistaStyle = false, .UseShadow = true}},
    };
    const SIZE sheet{4 * (kSize.cx + kGap) + kGap, 2 * (kSize.cy + kGap) + kGap};
    EXPECT_GOLDEN("controls/frames", sheet, [&](HDC hDC) {
        const Sheet page(hDC, sheet);
        for (int i = 0; i < static_cast<int>(std::size(kCases)); ++i) {
            FrameProps props = kCases[i].props;
            props.Caption = kCases[i].caption;
            page.put(kGap + i % 4 * (kSize.cx + kGap), kGap + i / 4 * (kSize.cy + kGap), kSize,
                     [&](HDC to, SIZE inner) { paintFrame(to, inner, props); });
        }
    });
}

TEST(PaintersGolden, Labels) {
    constexpr SIZE kSize{130, 44};
    constexpr const char16_t* kText = u"Words that go on and on, and so wrap into lines";
    const struct {
        const char16_t* caption;
        LabelProps props;
        bool bEnabled = true;
    } kCases[] = {
        {kText, {}},
        {kText, {.Alignment = 1, .VAlignment = 1, .BorderStyle = 1}},
        {kText, {.Alignment = 2, .VAlignment = 2, .BorderStyle = 1, .RoundedBorders = true}},
        {u"Disabled", {.VAlignment = 1}, false},
        {u"Auto size", {.BorderStyle = 1, .AutoSize = true, .Margin = 4}},
        {u"Tip style ",
         {.BackColor = sysColor(24),
          .ForeColor = sysColor(23),
          .VAlignment = 1,
          .BorderStyle = 1,
          .AutoSize = true,
          .Style = -1,
          .Margin = 2}},
        {u"Transparent", {.BackColor = 0xC0FFFF, .BackStyle = 0}},
        {u"A text that is higher than all of its room, so that it begins at the top of it and is "
         u"cut below",
         {.VAlignment = 2, .BorderStyle = 1}},
        {u"\u202B\u05E9\u05DC\u05D5\u05DD, a\u202C", {.Alignment = 1, .Style = 4}},
    };
    const SIZE sheet{3 * (kSize.cx + kGap) + kGap, 3 * (kSize.cy + kGap) + kGap};
    EXPECT_GOLDEN("controls/labels", sheet, [&](HDC hDC) {
        const Sheet page(hDC, sheet);
        for (int i = 0; i < static_cast<int>(std::size(kCases)); ++i) {
            LabelProps props = kCases[i].props;
            props.Caption = kCases[i].caption;
            SIZE size = kSize;
            if (props.AutoSize) {
                page.put(-1, -1, {1, 1}, [&](HDC to, SIZE) { size = labelAutoSize(to, props); });
            }
            page.put(kGap + i % 3 * (kSize.cx + kGap), kGap + i / 3 * (kSize.cy + kGap), size,
                     [&](HDC to, SIZE inner) { paintLabel(to, inner, props, kCases[i].bEnabled); });
        }
    });
}

TEST(PaintersGolden, ProgressBars) {
    constexpr SIZE kSize{160, 15};
    const ProgressProps workbench{
        .BackColor = sysColor(5), .ForeColor = 0xA78A7F, .Border = false, .BorderColor = 0};
    std::vector<ProgressProps> cases;
    for (const int percent : {0, 1, 3, 25, 60, 99, 100}) {
        for (const bool spaces : {true, false}) {
            ProgressProps props;
            props.Percent = static_cast<std::int16_t>(percent);
            props.Spaces = spaces;
            cases.push_back(props);
        }
    }
    for (const std::int32_t style : {-1, 0, 4}) {
        ProgressProps props = workbench;
        props.Percent = 60;
        props.Style = props.BackStyle = style;
        cases.push_back(props);
    }
    cases.push_back(
        {.Percent = 60, .BorderSpace = false, .Spaces = false, .RoundedBorders = false});
    const int rows = static_cast<int>(cases.size() + 1) / 2;
    const SIZE sheet{2 * (kSize.cx + kGap) + kGap, rows * (kSize.cy + kGap) + kGap};
    EXPECT_GOLDEN("controls/progress", sheet, [&](HDC hDC) {
        const Sheet page(hDC, sheet);
        for (std::size_t i = 0; i < cases.size(); ++i) {
            const auto at = static_cast<int>(i);
            page.put(kGap + at % 2 * (kSize.cx + kGap), kGap + at / 2 * (kSize.cy + kGap), kSize,
                     [&](HDC to, SIZE inner) {
                         ProgressSurfaces surfaces;
                         surfaces.build(inner, cases[i]);
                         surfaces.paint(to, cases[i]);
                     });
        }
    });
}

}  // namespace
