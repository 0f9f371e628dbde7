// What the desktop says of itself: its colours, measures and screens.
#include "gallery/Sheet.h"
#include "gallery/pages.h"
#include "gfx/modCtlCommon_ctl_colors.h"
#include "gfx/modCtlCommon_ctl_shapes.h"
#include "win/clsScreens.h"

namespace gallery {
namespace {

constexpr TextView kColorNames[] = {u"Scroll bar",
                                    u"Desktop",
                                    u"Active title",
                                    u"Inactive title",
                                    u"Menu",
                                    u"Window",
                                    u"Window frame",
                                    u"Menu text",
                                    u"Window text",
                                    u"Title text",
                                    u"Active border",
                                    u"Inactive border",
                                    u"Work space",
                                    u"Selection",
                                    u"Selected text",
                                    u"Button face",
                                    u"Button shadow",
                                    u"Grey text",
                                    u"Button text",
                                    u"Inactive title text",
                                    u"Button light",
                                    u"Dark shadow",
                                    u"3-D light",
                                    u"Tip text",
                                    u"Tip",
                                    u"",
                                    u"Link",
                                    u"Active title, right",
                                    u"Inactive title, right",
                                    u"Menu selection",
                                    u"Menu bar"};

void drawColors(HDC hDC, RECT area) {
    heading(hDC, area, u"System colours");
    Cells cells(area, 4, 213, 32);
    for (int i = 0; i < static_cast<int>(std::size(kColorNames)); ++i) {
        if (kColorNames[i].empty()) continue;  // a number that stands for nothing
        const RECT cell = cells.next();
        const RECT swatch = box(cell.left, cell.top, 48, 24);
        DrawRect(hDC, swatch, sysColor(i), true);
        DrawRect(hDC, swatch, kRule, false);
        write(hDC, swatch, number(i), {.color = inkOn(sysColor(i))},
              kOneLine | platform::DT_CENTER);
        write(hDC, box(cell.left + 56, cell.top - 2, 150, 15), kColorNames[i]);
        write(hDC, box(cell.left + 56, cell.top + 12, 150, 14),
              hexColor(TranslateColor(sysColor(i))), kCaption);
    }
}

void drawFacts(HDC hDC, const RECT& area, std::span<const std::pair<TextView, Text>> facts,
               int labelWidth) {
    int y = area.top;
    for (const auto& [name, value] : facts) {
        write(hDC, box(area.left, y, labelWidth, 17), name, kCaption);
        write(hDC, {area.left + labelWidth, y, area.right, y + 17}, value);
        y += 17;
    }
}

Text by(std::int32_t width, std::int32_t height) { return number(width) + u" × " + number(height); }
Text yesNo(bool yes) { return yes ? u"yes" : u"no"; }

void drawMeasures(HDC hDC, RECT area) {
    heading(hDC, area, u"Measures, in pixels");
    const clsSystemMetrics metrics;
    const std::pair<TextView, Text> kLeft[] = {
        {u"Border", by(metrics.WindowBorderWidth(), metrics.WindowBorderHeight())},
        {u"Frame", by(metrics.FrameWidth(), metrics.FrameHeight())},
        {u"Smallest window", by(metrics.WindowMinWidth(), metrics.WindowMinHeight())},
        {u"Title bar", number(metrics.TitleBarHeight())},
        {u"Small title bar", number(metrics.SmallTitleBarHeight())},
        {u"Title button", by(metrics.TitleBarButtonWidth(), metrics.TitleBarButtonHeight())},
        {u"Small title button",
         by(metrics.TitleBarSmallButtonWidth(), metrics.TitleBarSmallButtonHeight())},
        {u"Menu bar", number(metrics.MenuBarHeight())},
    };
    const std::pair<TextView, Text> kMiddle[] = {
        {u"Icon", by(metrics.IconWidth(), metrics.IconHeight())},
        {u"Small icon", by(metrics.SmallIconWidth(), metrics.SmallIconHeight())},
        {u"Cursor", by(metrics.CursorWidth(), metrics.CursorHeight())},
        {u"Scroll bar arrow, upright", by(metrics.VScrollBmpWidth(), metrics.VScrollBmpHeight())},
        {u"Scroll bar arrow, level", by(metrics.HScrollBmpWidth(), metrics.HScrollBmpHeight())},
        {u"Mouse buttons", number(metrics.MouseButtons())},
        {u"Mouse wheel", yesNo(metrics.MouseWheelPresent())},
        {u"Buttons swapped", yesNo(metrics.MouseSwapButtons())},
    };
    drawFacts(hDC, box(area.left, area.top, 280, 180), kLeft, 130);
    drawFacts(hDC, box(area.left + 290, area.top, 270, 180), kMiddle, 150);
}

void drawScreens(HDC hDC, RECT area) {
    heading(hDC, area, u"Screens");
    const clsScreens screens;
    const auto main = screens.GetMonitorHandleFromPoint(0, 0);
    const std::pair<TextView, Text> kFacts[] = {
        {u"Screens", number(screens.Count())},
        {u"At 0, 0", by(screens.Width(main), screens.Height(main))},
        {u"without bars", by(screens.WorkWidth(main), screens.WorkHeight(main))},
        {u"it is the main one", yesNo(screens.IsPrimaryMon(main))},
        {u"All together", by(screens.VirtualWidth(), screens.VirtualHeight())},
        {u"from", number(screens.VirtualLeft()) + u", " + number(screens.VirtualTop())},
        {u"Same depth", yesNo(screens.AllSameColourDepth())},
        {u"Dots per inch", number(platform::GetDeviceCaps(hDC, platform::LOGPIXELSX)) + u" × " +
                               number(platform::GetDeviceCaps(hDC, platform::LOGPIXELSY))},
    };
    drawFacts(hDC, box(area.left, area.top, 280, 180), kFacts, 110);
}

}  // namespace

void drawDesktop(HDC hDC, const RECT& area) {
    drawColors(hDC, box(area.left, area.top, widthOf(area), 300));
    drawMeasures(hDC, box(area.left, area.top + 312, 560, 200));
    drawScreens(hDC, box(area.left + 590, area.top + 312, widthOf(area) - 590, 200));
}

}  // namespace gallery
