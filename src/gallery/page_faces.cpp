// The table of button faces: styles down, states across, once for each back colour.
#include "gallery/Sheet.h"
#include "gallery/pages.h"
#include "gfx/modCtlCommon_ctl_colors.h"
#include "gfx/modCtlCommon_ctl_faces.h"
#include "gfx/modCtlCommon_ctl_shapes.h"

namespace gallery {
namespace {

using platform::rgb;

struct State {
    TextView name;
    bool bPressed = false, bDefault = false, bCancel = false, bFocus = false;
};
constexpr State kStates[] = {{u"Normal"},
                             {.name = u"Pressed", .bPressed = true},
                             {.name = u"Default", .bDefault = true},
                             {.name = u"Cancel", .bCancel = true},
                             {.name = u"Focus", .bFocus = true}};
constexpr int kStateCount = static_cast<int>(std::size(kStates));
constexpr int kStyles = 9;

constexpr int kLabelWidth = 92, kGroupGap = 20, kCellWidth = 74, kHeaderHeight = 42;

Text styleName(int style) { return style < 0 ? u"Style -1" : u"Style " + number(style); }

// Columns of a table with the square faces at the left and the rounded ones at the right.
int columnLeft(const RECT& area, int column) {
    return area.left + kLabelWidth + column * kCellWidth + (column < kStateCount ? 0 : kGroupGap);
}

void drawHeader(HDC hDC, const RECT& area) {
    for (int group = 0; group < 2; ++group) {
        const int left = columnLeft(area, group * kStateCount);
        write(hDC, box(left, area.top, kCellWidth * kStateCount, 18),
              group == 0 ? u"Square corners" : u"Rounded corners",
              {.bold = true, .color = kAccent});
        for (int i = 0; i < kStateCount; ++i) {
            write(hDC, box(left + i * kCellWidth, area.top + 18, kCellWidth, 18), kStates[i].name,
                  kCaption);
        }
    }
}

void drawFaces(HDC hDC, const RECT& area, Color back, Color ground) {
    drawHeader(hDC, area);
    const int rowHeight = 51;
    const int top = area.top + kHeaderHeight;
    for (int group = 0; group < 2; ++group) {
        DrawRect(hDC,
                 box(columnLeft(area, group * kStateCount) - 8, top, kCellWidth * kStateCount + 8,
                     rowHeight * (kStyles + 1)),
                 ground, true);
    }
    for (int row = 0; row <= kStyles; ++row) {
        const int style = row < kStyles ? row : -1;
        const int y = top + row * rowHeight;
        write(hDC, box(area.left, y, kLabelWidth - 8, rowHeight), styleName(style));
        for (int column = 0; column < 2 * kStateCount; ++column) {
            const State& state = kStates[column % kStateCount];
            const RECT rect = box(columnLeft(area, column), y + 8, kCellWidth - 8, rowHeight - 16);
            DrawButtonFace(hDC, rect,
                           {.iBackColor = back,
                            .bBorder = true,
                            .bPressed = state.bPressed,
                            .bDefault = state.bDefault,
                            .bCancel = state.bCancel,
                            .bFocus = state.bFocus,
                            .bRounded = column >= kStateCount,
                            .iStyle = style,
                            .iOuterColor = ground});
            write(hDC, rect, u"Save", {.color = inkOn(back)}, kOneLine | platform::DT_CENTER);
        }
    }
}

}  // namespace

void drawFacesOnLight(HDC hDC, const RECT& area) {
    drawFaces(hDC, area, rgb(222, 226, 231), rgb(246, 248, 250));
}
void drawFacesOnDark(HDC hDC, const RECT& area) {
    drawFaces(hDC, area, rgb(68, 76, 88), rgb(36, 40, 47));
}
void drawFacesOnColour(HDC hDC, const RECT& area) {
    drawFaces(hDC, area, rgb(86, 156, 214), rgb(223, 236, 248));
}

}  // namespace gallery
