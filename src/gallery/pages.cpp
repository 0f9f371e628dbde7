#include "gallery/pages.h"

#include "gallery/Sheet.h"
#include "gfx/modCtlCommon_ctl_shapes.h"

#include <array>

namespace gallery {
namespace {

constexpr auto kPages = std::to_array<Page>({
    {u"Button faces on light", u"The nine styles in every state, and the style of the program (-1)",
     drawFacesOnLight},
    {u"Button faces on dark", u"The same with a dark back colour", drawFacesOnDark},
    {u"Button faces on colour", u"The same with a coloured back", drawFacesOnColour},
    {u"Face variations", u"Flat frames, lights fitted to the back colour, borders, sizes",
     drawFaceVariations},
    {u"Lines and frames", u"Pens, rectangles, rounded rectangles, focus", drawShapes},
    {u"Gradients and colours", u"Both directions, and the arithmetic that colours are made with",
     drawColours},
    {u"Text in many scripts", u"One font; what it lacks comes from others", drawScripts},
    {u"Text flags",
     u"The tinted area is the rectangle, the red frame goes around what DT_CALCRECT measures",
     drawTextFlags},
    {u"Fonts", u"Sizes, weights, decorations, widths, measures", drawFonts},
    {u"Pictures and icons", u"Centred, cut, with a colour left out, greyed", drawPictures},
    {u"Copies", u"Stretching, operations of source and destination, depths, new sizes", drawCopies},
    {u"Palettes", u"The fixed ones, and those made for a picture", drawPalettes},
    {u"Desktop", u"System colours, measures, screens", drawDesktop},
    {u"Buttons", u"Nine styles and the program's (-1) in every state; colours, corners, sizes",
     drawButtons},
    {u"Check boxes", u"States, sides, colours, long captions", drawChecks},
    {u"Labels", u"Alignments, sizes of their own, transparency, faces", drawLabels},
    {u"Frames", u"With a title band, and with a caption in the border", drawFrames},
    {u"Progress bars", u"Blocks and solid, borders, styles, sizes", drawProgress},
    {u"Text boxes", u"Borders, colours, alignments; those of the next page can be typed in",
     drawTextBoxes},
    {u"Controls",
     u"Press, tick, type, rest the mouse on them. Tab goes through them, Ctrl and Tab leaves them",
     drawControls, openControls},
    {u"Grid", u"Click, drag the edges of headers, sort, scroll; the buttons change what it shows",
     drawGrid, openGrid},
    {u"Menu", u"The program's menu in three looks, and a window to try it in", drawMenu, openMenu},
    {u"Mouse and keys", u"Cursors, messages, a timer, a window with round corners", drawInput,
     openInput},
    {u"Dialogs", u"The desktop's own dialogs, and what was answered last", drawDialogs,
     openDialogs},
});

constexpr int kMargin = 24, kHeaderHeight = 66;

}  // namespace

std::span<const Page> pages() { return kPages; }

RECT contentArea(SIZE size) {
    return {kMargin, kHeaderHeight + 12, size.cx - kMargin, size.cy - 12};
}

void drawPage(HDC hDC, SIZE size, const Page& page) {
    DrawRectXY(hDC, 0, 0, size.cx, size.cy, kPaper, true);
    const int right = size.cx - kMargin;
    write(hDC, {kMargin, 14, right, 40}, page.title, {.points = 15, .bold = true});
    write(hDC, {kMargin, 40, right, 58}, page.note, {.points = 9, .color = kFaint});
    DrawRectXY(hDC, kMargin, kHeaderHeight, right, kHeaderHeight + 1, kRule, true);
    page.draw(hDC, contentArea(size));
}

}  // namespace gallery
