// platform/window/surface.h: drawing surfaces and everything drawn on them but text.
//
// Device contexts, bitmaps, brushes, pens, regions, icons and picture objects, with the operations
// on them. All coordinates are pixels from the top left corner of the surface, right and bottom of
// a rectangle exclusive; pixels outside the surface are left out without a word. Colours are plain
// ones, red in the low byte: system colours are resolved by the caller.
//
// Failures: handles that are 0 or stale, sizes that cannot be met and memory that is not there give
// the result named "on failure" at each operation; nothing here raises. Coordinates may be any
// 32-bit values. All of it belongs to the window thread.
//
// Drawing writes 255 to the unused byte of a 32-bit pixel.
#pragma once
#include "platform/window/types.h"

#include <memory>
#include <span>
#include <vector>

namespace platform {

// ---- Device contexts

// A memory context. It starts with a monochrome bitmap of 1 x 1 that takes no drawing, a white
// brush, a solid black pen of width 1, the stock font, black text on white, opaque background,
// stretch mode 1. hDC: any living context, or 0 for the screen; it has no influence. 0 on failure.
[[nodiscard]] HDC CreateCompatibleDC(HDC hDC);
// Ends a context, also one of GetDC. The objects selected into it live on and are free again. False
// for an unknown context.
bool DeleteDC(HDC hDC);

// A handle that stands for the whole screen. It is no window of the window table.
[[nodiscard]] HWND GetDesktopWindow();
// A context that draws on the inner area of a window. With 0 or the desktop's handle: a context of
// 32 bits whose surface is one pixel that nobody sees, to make compatible ones from. With a window
// that has no surface yet it draws nothing until there is one. Every call gives a context of its
// own. 0 on failure, also for an unknown window.
[[nodiscard]] HDC GetDC(HWND hWnd);
// Ends a context of GetDC. 1, or 0 for a context that is not one of GetDC(hWnd).
int ReleaseDC(HWND hWnd, HDC hDC);

constexpr int BITSPIXEL = 12;   // bits of one pixel of the context's surface
constexpr int LOGPIXELSX = 88;  // dots per inch of the screen
constexpr int LOGPIXELSY = 90;
// 0 on failure and for any other index.
[[nodiscard]] int GetDeviceCaps(HDC hDC, int index);

constexpr int TRANSPARENT = 1;
constexpr int OPAQUE = 2;
// The setters give the previous value. On failure, also of a value that doesn't exist: 0 for modes,
// -1 for colours, and nothing is changed.
int GetBkMode(HDC hDC);
int SetBkMode(HDC hDC, int mode);
COLORREF GetBkColor(HDC hDC);
COLORREF SetBkColor(HDC hDC, COLORREF color);
COLORREF GetTextColor(HDC hDC);
COLORREF SetTextColor(HDC hDC, COLORREF color);

// What becomes of the lines and columns that StretchBlt leaves out: 1 joins them by AND with those
// that stay, 2 by OR, 3 drops them.
constexpr int BLACKONWHITE = 1;
constexpr int WHITEONBLACK = 2;
constexpr int COLORONCOLOR = 3;
int SetStretchBltMode(HDC hDC, int mode);

// ---- Objects

// Puts a bitmap, brush, pen or font in place of the context's present one and gives that back. A
// bitmap can be in one memory context at a time and in none of GetDC. 0 on failure, and nothing is
// changed.
HGDIOBJ SelectObject(HDC hDC, HGDIOBJ hObject);

constexpr std::uint32_t OBJ_PEN = 1;
constexpr std::uint32_t OBJ_BRUSH = 2;
constexpr std::uint32_t OBJ_FONT = 6;
constexpr std::uint32_t OBJ_BITMAP = 7;
// 0 on failure and for any other type.
[[nodiscard]] HGDIOBJ GetCurrentObject(HDC hDC, std::uint32_t type);

constexpr int WHITE_BRUSH = 0;
constexpr int BLACK_BRUSH = 4;
constexpr int NULL_BRUSH = 5;
constexpr int WHITE_PEN = 6;
constexpr int BLACK_PEN = 7;
constexpr int NULL_PEN = 8;
constexpr int SYSTEM_FONT = 13;
constexpr int DEFAULT_GUI_FONT = 17;
// The objects that are always there; 1 to 3 are the light, middle and dark grey brush. Both fonts
// are one. 0 for any other index.
[[nodiscard]] HGDIOBJ GetStockObject(int index);

// Ends a bitmap, brush, pen, font or region. A stock object stays, and that counts as success.
// False for an unknown handle and for an object that is selected into a context: it lives on.
bool DeleteObject(HGDIOBJ hObject);

// A brush that fills with one colour. 0 on failure.
[[nodiscard]] HBRUSH CreateSolidBrush(COLORREF color);

constexpr int PS_SOLID = 0;
constexpr int PS_DASH = 1;
constexpr int PS_DOT = 2;
constexpr int PS_DASHDOT = 3;
constexpr int PS_DASHDOTDOT = 4;
constexpr int PS_NULL = 5;
// A width of 0 or 1, or below 0, draws lines of one pixel. Wider pens are always solid, with round
// ends, and hold the line in their middle; with an even width they lean to the left and up. An
// unknown style is a solid one. 0 on failure.
[[nodiscard]] HPEN CreatePen(int style, int width, COLORREF color);

// ---- Bitmaps

// The limits of every bitmap; what is beyond them fails. A pixel of 32 bits has 4 bytes.
constexpr int kMaxBitmapExtent = 32767;                          // pixels in each direction
constexpr std::int64_t kMaxBitmapBytes = std::int64_t{1} << 30;  // 1 GiB

// A black bitmap of 32 bits; or of one bit, monochrome, when the bitmap in hDC is monochrome, as in
// a fresh memory context. A width or height of 0 gives a monochrome bitmap of 1 x 1. 0 on failure.
[[nodiscard]] HBITMAP CreateCompatibleBitmap(HDC hDC, int width, int height);

struct RGBQUAD {
    std::uint8_t rgbBlue = 0, rgbGreen = 0, rgbRed = 0, rgbReserved = 0;
    friend bool operator==(const RGBQUAD&, const RGBQUAD&) = default;
};
struct BITMAPINFOHEADER {
    std::uint32_t biSize = 40;
    std::int32_t biWidth = 0, biHeight = 0;
    std::uint16_t biPlanes = 1, biBitCount = 0;
    std::uint32_t biCompression = 0, biSizeImage = 0;
    std::int32_t biXPelsPerMeter = 0, biYPelsPerMeter = 0;
    std::uint32_t biClrUsed = 0, biClrImportant = 0;
};
struct BITMAPINFO {
    BITMAPINFOHEADER bmiHeader;
    std::span<const RGBQUAD> bmiColors;  // for 1, 4 and 8 bits; entries that are missing are black
};
constexpr std::uint32_t DIB_RGB_COLORS = 0;
constexpr std::uint32_t BI_RGB = 0;
// A bitmap of 1, 4, 8, 24 or 32 bits, all zero, whose pixels the caller may read and write through
// pBits for as long as the bitmap lives. The bottom row comes first; each row is padded to a
// multiple of 4 bytes. 24 and 32 bits: blue, green, red. 4 bits: the left pixel in the high half;
// 1 bit: the left pixel in the highest bit. hDC has no influence and may be 0. On failure 0, and
// pBits is nullptr: sizes not above 0 or beyond the limits, planes other than 1, another depth or
// compression, another usage than DIB_RGB_COLORS.
[[nodiscard]] HBITMAP CreateDIBSection(HDC hDC, const BITMAPINFO& info, std::uint32_t usage,
                                       void*& pBits);

// Copies up to count entries of the colour table, from entry first on, of the section of 1, 4 or 8
// bits in hDC. How many were copied; 0 on failure.
std::uint32_t GetDIBColorTable(HDC hDC, std::uint32_t first, std::uint32_t count, RGBQUAD* pColors);

struct BITMAP {
    std::int32_t bmType = 0, bmWidth = 0, bmHeight = 0;
    std::int32_t bmWidthBytes = 0;  // of one row, with its padding
    std::uint16_t bmPlanes = 0, bmBitsPixel = 0;
    void* bmBits = nullptr;  // the bottom row of a section; nullptr for other bitmaps
};
// Describes a bitmap. The size of the record; on failure 0, and the record is unchanged.
int GetObjectA(HGDIOBJ hObject, BITMAP& record);

// ---- Copies

constexpr std::uint32_t BLACKNESS = 0x00000042;
constexpr std::uint32_t NOTSRCCOPY = 0x00330008;
constexpr std::uint32_t DSTINVERT = 0x00550009;
constexpr std::uint32_t PATINVERT = 0x005A0049;
constexpr std::uint32_t SRCINVERT = 0x00660046;
constexpr std::uint32_t SRCAND = 0x008800C6;
constexpr std::uint32_t SRCCOPY = 0x00CC0020;
constexpr std::uint32_t SRCPAINT = 0x00EE0086;
constexpr std::uint32_t PATCOPY = 0x00F00021;
constexpr std::uint32_t WHITENESS = 0x00FF0062;

// Copies width x height pixels. rop: any of the 256 operations on source, brush pattern and
// destination, its code in bits 16 to 23; the other bits are not looked at. Source pixels outside
// the source leave the destination as it is. Overlapping copies within one bitmap are as if the
// source had been read first. Nothing is copied when width or height is below 1, which is a
// success. False when one of the contexts is unknown; hSource may be 0 if rop needs no source.
//
// Between depths a pixel keeps its colour; in a section of up to 8 bits it becomes the closest
// colour of the table (least sum of squared differences, the first of equals), and rop works on
// the table's indexes. A monochrome bitmap gives the destination's text colour for 0 and background
// colour for 1, and takes 1 for pixels of the source's background colour, else 0; from one
// monochrome bitmap to another bits stay bits.
bool BitBlt(HDC hDC, int x, int y, int width, int height, HDC hSource, int xSource, int ySource,
            std::uint32_t rop);
// The same with the source area stretched to the destination area. Enlarged, a destination pixel
// takes the source pixel under its middle; reduced, the stretch mode of hDC says what becomes of
// the pixels left out. A negative extent goes from the given point, itself included, to the left
// or up; when the signs of the extents differ between source and destination, the picture is
// mirrored. An extent of 0 copies nothing, which is a success. False also when memory is short.
bool StretchBlt(HDC hDC, int x, int y, int width, int height, HDC hSource, int xSource, int ySource,
                int widthSource, int heightSource, std::uint32_t rop);

// ---- Shapes. They give false (0, -1) when the context or the brush is unknown.

bool FillRect(HDC hDC, const RECT& rect, HBRUSH hBrush);
// One pixel wide, inside the rectangle.
bool FrameRect(HDC hDC, const RECT& rect, HBRUSH hBrush);
// A dotted line of one pixel inside the rectangle that inverts every second pixel, those whose
// x + y is odd: drawn twice it is gone.
bool DrawFocusRect(HDC hDC, const RECT& rect);

// The colour that the surface took, the closest one it has; -1 outside.
COLORREF SetPixel(HDC hDC, int x, int y, COLORREF color);
// -1 outside.
[[nodiscard]] COLORREF GetPixel(HDC hDC, int x, int y);

// Sets the current point and begins the pen's pattern anew.
bool MoveToEx(HDC hDC, int x, int y, POINT* pPrevious = nullptr);
// A line from the current point to (x, y), which becomes the current point. The end point itself is
// left out with pens of one pixel. Exactly half way between two pixels the one with the smaller
// coordinate is taken, so a line has the same pixels from either end. Patterns, in pixels on and
// off: dash 18 6, dot 3 3, dash-dot 9 6 3 6, dash-dot-dot 9 3 3 3 3 3; they run on from line to
// line, and the gaps have the background colour when the background mode is OPAQUE.
bool LineTo(HDC hDC, int x, int y);
// Fills with the brush and draws the outline with the pen, inside the rectangle for a pen of one
// pixel. Each corner is a quarter of an ellipse of the given width and height, at most those of the
// rectangle: a pixel belongs to the shape when its middle lies in the ellipse. All four corners are
// alike. With a null pen the shape is one pixel less wide and high.
bool RoundRect(HDC hDC, int left, int top, int right, int bottom, int ellipseWidth,
               int ellipseHeight);

// The region of a rounded rectangle, with corners as RoundRect, which ends one pixel before right
// and bottom. 0 on failure: larger than kMaxBitmapExtent in a direction.
[[nodiscard]] HRGN CreateRoundRectRgn(int left, int top, int right, int bottom, int ellipseWidth,
                                      int ellipseHeight);

// ---- Icons and pictures

struct ICONINFO {
    bool fIcon = true;  // false: a cursor
    std::uint32_t xHotspot = 0, yHotspot = 0;
    HBITMAP hbmMask = 0;   // monochrome, 1 where the background shows
    HBITMAP hbmColor = 0;  // 0: a monochrome icon, the lower half of the mask is its image
};
// Makes an icon from copies of the bitmaps. 0 on failure: no mask, one of more than one bit, or a
// size that doesn't match.
[[nodiscard]] HICON CreateIconIndirect(const ICONINFO& info);
// Gives copies of the icon's bitmaps, which the caller deletes. On failure false, and both are 0.
bool GetIconInfo(HICON hIcon, ICONINFO& info);
bool DestroyIcon(HICON hIcon);

constexpr int PICTYPE_BITMAP = 1;
constexpr int PICTYPE_ICON = 3;
struct PICTDESC {
    std::int32_t picType = PICTYPE_BITMAP;
    std::uint32_t handle = 0;  // HBITMAP, or HICON for PICTYPE_ICON
};
// A picture that others hold and draw.
class PictureObject {
public:
    PictureObject(const PICTDESC& description, SIZE size, bool fOwn)
        : m_description(description), m_size(size), m_own(fOwn) {}
    ~PictureObject();
    PictureObject(const PictureObject&) = delete;
    PictureObject& operator=(const PictureObject&) = delete;

    [[nodiscard]] std::uint32_t Handle() const { return m_description.handle; }
    [[nodiscard]] int Type() const { return m_description.picType; }
    [[nodiscard]] int Width() const { return m_size.cx; }  // pixels
    [[nodiscard]] int Height() const { return m_size.cy; }

private:
    PICTDESC m_description;
    SIZE m_size;
    bool m_own;
};
// With fOwn the picture deletes its bitmap or icon at its end. None when the handle isn't alive, or
// isn't what picType says; the caller keeps it then.
[[nodiscard]] std::shared_ptr<PictureObject> OleCreatePictureIndirect(const PICTDESC& description,
                                                                      bool fOwn);

// ---- Colours, rectangles, numbers

// A colour of the desktop, index 0 to 30; 0 for any other index.
[[nodiscard]] COLORREF GetSysColor(int index);

void SetRect(RECT& rect, int left, int top, int right, int bottom);
// Moves every side outwards, inwards for values below 0. Stops at the ends of the 32-bit range.
void InflateRect(RECT& rect, int dx, int dy);

// number x numerator / denominator in 64 bits, rounded to the nearest, halves away from 0. -1 when
// the denominator is 0 or the result needs more than 32 bits.
[[nodiscard]] int MulDiv(int number, int numerator, int denominator);

}  // namespace platform
