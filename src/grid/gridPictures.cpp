#include "grid/gridPictures.h"

#include "gfx/Selection.h"

#include <cstddef>
#include <span>
#include <string_view>

namespace {

using namespace platform;
using Drawing = std::span<const std::string_view>;  // rows from the top

// # black, o nearly white, . background.
constexpr std::string_view kFlag[] = {
    ".....o#",  //
    "....o##",  //
    "#o.o##o",  //
    "##o##o.",  //
    "o###o..",  //
    ".o#o...",  //
    "..o....",
};
constexpr std::string_view kSortDown[] = {
    ".#######.",
    "..#####..",
    "...###...",
    "....#....",
};
constexpr std::string_view kSortUp[] = {
    "....#....",
    "...###...",
    "..#####..",
    ".#######.",
};
// Two guides with an arrow to each side; the hot spot is in the middle.
constexpr std::string_view kVGuide[] = {
    "....ooooo....",  //
    "....o#o#o....",  //
    "....o#o#o....",  //
    "....o#o#o....",  //
    "..o.o#o#o.o..",  //
    ".o#oo#o#oo#o.",  //
    "o##oo#o#oo##o",  //
    "######o######",  //
    "o##oo#o#oo##o",  //
    ".o#oo#o#oo#o.",  //
    "..o.o#o#o.o..",  //
    "....o#o#o....",  //
    "....o#o#o....",  //
    "....o#o#o....",  //
    "....ooooo....",
};
constexpr int kCursorExtent = 32;
constexpr ICONINFO kVGuideInfo{.fIcon = false, .xHotspot = 6, .yHotspot = 7};

constexpr COLORREF kRed = rgb(255, 0, 0), kBlack = rgb(0, 0, 0), kNearlyWhite = rgb(250, 250, 250);

// Calls draw with a context that the bitmap is in.
template <class Draw> void drawOn(HBITMAP bitmap, Draw draw) {
    const HDC hDC = CreateCompatibleDC(0);
    {
        const gfx::Selection selected(hDC, bitmap);
        draw(hDC);
    }
    DeleteDC(hDC);
}

void putDrawing(HDC hDC, Drawing rows, COLORREF background) {
    for (std::size_t y = 0; y < rows.size(); ++y) {
        for (std::size_t x = 0; x < rows[y].size(); ++x) {
            const COLORREF color = rows[y][x] == '#'   ? kBlack
                                   : rows[y][x] == 'o' ? kNearlyWhite
                                                       : background;
            SetPixel(hDC, static_cast<int>(x), static_cast<int>(y), color);
        }
    }
}

HBITMAP newSection(int width, int height, std::uint16_t bits, std::span<const RGBQUAD> colors) {
    BITMAPINFO info;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = height;
    info.bmiHeader.biBitCount = bits;
    info.bmiColors = colors;
    void* pixels = nullptr;
    return CreateDIBSection(0, info, DIB_RGB_COLORS, pixels);
}

std::shared_ptr<PictureObject> pictureOf(Drawing rows) {
    const HBITMAP bitmap =
        newSection(static_cast<int>(rows[0].size()), static_cast<int>(rows.size()), 24, {});
    drawOn(bitmap, [&](HDC hDC) { putDrawing(hDC, rows, kRed); });
    return OleCreatePictureIndirect({PICTYPE_BITMAP, bitmap}, true);
}

std::shared_ptr<PictureObject> cursorOf(Drawing rows, ICONINFO info) {
    const HDC screen = CreateCompatibleDC(0);  // as it comes, for a monochrome bitmap
    info.hbmMask = CreateCompatibleBitmap(screen, kCursorExtent, kCursorExtent);
    DeleteDC(screen);
    info.hbmColor = newSection(kCursorExtent, kCursorExtent, 24, {});
    drawOn(info.hbmMask, [&](HDC hDC) {
        BitBlt(hDC, 0, 0, kCursorExtent, kCursorExtent, 0, 0, 0, WHITENESS);
        for (std::size_t y = 0; y < rows.size(); ++y) {
            for (std::size_t x = 0; x < rows[y].size(); ++x) {
                if (rows[y][x] == '.') continue;
                SetPixel(hDC, static_cast<int>(x), static_cast<int>(y), kBlack);
            }
        }
    });
    drawOn(info.hbmColor, [&](HDC hDC) { putDrawing(hDC, rows, kBlack); });
    const HICON icon = CreateIconIndirect(info);
    DeleteObject(info.hbmMask);
    DeleteObject(info.hbmColor);
    return OleCreatePictureIndirect({PICTYPE_ICON, icon}, true);
}

}  // namespace

GridPictures gridPictures() {
    return {.picFlag = pictureOf(kFlag),
            .picSortDown = pictureOf(kSortDown),
            .picSortUp = pictureOf(kSortUp),
            .picCurVGuide = cursorOf(kVGuide, kVGuideInfo)};
}
