// Contexts, objects, bitmaps and their pixels as memory.
#include "platform/window/surface.h"

#include "platform/window/recorder.h"
#include "platform/window/surface_internal.h"
#include "support/window/Canvas.h"

#include <climits>
#include <gtest/gtest.h>

namespace platform {
namespace {

using test::Canvas;

HBITMAP section(int width, int height, int bits, void*& pixels) {
    BITMAPINFO info;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = height;
    info.bmiHeader.biBitCount = static_cast<std::uint16_t>(bits);
    return CreateDIBSection(0, info, DIB_RGB_COLORS, pixels);
}

TEST(Objects, SelectObjectGivesBackWhatItDisplaces) {
    const HDC hDC = CreateCompatibleDC(0);
    const HPEN pen = CreatePen(PS_SOLID, 1, 0);
    const HBRUSH brush = CreateSolidBrush(0);
    for (const auto& [object, type] : {std::pair{pen, OBJ_PEN}, std::pair{brush, OBJ_BRUSH}}) {
        const HGDIOBJ first = GetCurrentObject(hDC, type);
        EXPECT_NE(first, 0U);
        EXPECT_EQ(SelectObject(hDC, object), first);
        EXPECT_EQ(GetCurrentObject(hDC, type), object);
        EXPECT_FALSE(DeleteObject(object)) << "in use";
        EXPECT_EQ(SelectObject(hDC, object), object);
        EXPECT_EQ(SelectObject(hDC, first), object);
        EXPECT_TRUE(DeleteObject(object));
        EXPECT_FALSE(DeleteObject(object)) << "gone";
        EXPECT_EQ(SelectObject(hDC, object), 0U);
        EXPECT_EQ(GetCurrentObject(hDC, type), first);
    }
    DeleteDC(hDC);
}

TEST(Objects, ABitmapIsInOneContextAtATime) {
    const HDC one = CreateCompatibleDC(0), two = CreateCompatibleDC(one), screen = GetDC(0);
    const HBITMAP bitmap = CreateCompatibleBitmap(screen, 4, 4);
    const HGDIOBJ fresh = SelectObject(one, bitmap);
    EXPECT_NE(fresh, 0U);
    EXPECT_EQ(SelectObject(one, bitmap), bitmap);
    EXPECT_EQ(SelectObject(two, bitmap), 0U);
    EXPECT_EQ(SelectObject(screen, bitmap), 0U);
    EXPECT_FALSE(DeleteObject(bitmap));
    EXPECT_TRUE(DeleteDC(one));  // sets it free
    EXPECT_EQ(SelectObject(two, bitmap), fresh);
    EXPECT_EQ(SelectObject(two, fresh), bitmap);
    EXPECT_TRUE(DeleteObject(bitmap));
    DeleteDC(two);
    EXPECT_EQ(ReleaseDC(0, two), 0);
    EXPECT_EQ(ReleaseDC(0, screen), 1);
}

TEST(Objects, StockObjectsOutliveTheirDeletion) {
    for (const int index : {WHITE_BRUSH, BLACK_BRUSH, NULL_BRUSH, WHITE_PEN, BLACK_PEN, NULL_PEN,
                            SYSTEM_FONT, DEFAULT_GUI_FONT}) {
        const HGDIOBJ object = GetStockObject(index);
        EXPECT_NE(object, 0U) << index;
        EXPECT_TRUE(DeleteObject(object));
        const HDC hDC = CreateCompatibleDC(0);
        EXPECT_NE(SelectObject(hDC, object), 0U) << index;
        DeleteDC(hDC);
    }
    EXPECT_EQ(GetStockObject(99), 0U);
    EXPECT_EQ(GetStockObject(-1), 0U);
}

TEST(Objects, NothingHappensOnContextsThatAreNone) {
    const HDC stale = CreateCompatibleDC(0);
    DeleteDC(stale);
    Canvas canvas(2, 2);
    const HBRUSH brush = CreateSolidBrush(0);
    RGBQUAD colors[2];
    DrawingRecorder recorder;
    for (const HDC none : {HDC{0}, stale, brush, canvas.bitmap()}) {
        EXPECT_FALSE(DeleteDC(none));
        EXPECT_EQ(ReleaseDC(0, none), 0);
        EXPECT_EQ(GetDeviceCaps(none, LOGPIXELSY), 0);
        EXPECT_EQ(GetBkMode(none) + SetBkMode(none, 1) + SetStretchBltMode(none, 3), 0);
        EXPECT_EQ(GetBkColor(none), -1);
        EXPECT_EQ(SetBkColor(none, 0), -1);
        EXPECT_EQ(SetTextColor(none, 0), -1);
        EXPECT_EQ(SelectObject(none, brush), 0U);
        EXPECT_EQ(GetCurrentObject(none, OBJ_BITMAP), 0U);
        EXPECT_EQ(CreateCompatibleBitmap(none, 4, 4), 0U);
        EXPECT_EQ(GetDIBColorTable(none, 0, 2, colors), 0U);
        EXPECT_FALSE(BitBlt(none, 0, 0, 1, 1, canvas.hdc(), 0, 0, SRCCOPY));
        EXPECT_FALSE(BitBlt(canvas.hdc(), 0, 0, 1, 1, none, 0, 0, SRCCOPY));
        EXPECT_FALSE(StretchBlt(canvas.hdc(), 0, 0, 1, 1, none, 0, 0, 2, 2, SRCCOPY));
        EXPECT_FALSE(FillRect(none, {0, 0, 2, 2}, brush));
        EXPECT_FALSE(FrameRect(none, {0, 0, 2, 2}, brush));
        EXPECT_FALSE(FillRect(canvas.hdc(), {0, 0, 2, 2}, none == brush ? 0 : none));
        EXPECT_FALSE(DrawFocusRect(none, {0, 0, 2, 2}));
        EXPECT_EQ(SetPixel(none, 0, 0, 0), -1);
        EXPECT_EQ(GetPixel(none, 0, 0), -1);
        EXPECT_FALSE(MoveToEx(none, 1, 1));
        EXPECT_FALSE(LineTo(none, 1, 1));
        EXPECT_FALSE(RoundRect(none, 0, 0, 2, 2, 1, 1));
    }
    EXPECT_EQ(canvas.picture(), "..\n..\n");
    EXPECT_EQ(recorder.text(), "");
    DeleteObject(brush);
}

TEST(Objects, AFreshContextTakesNoDrawingAndItsSettersGiveWhatWas) {
    const HDC hDC = CreateCompatibleDC(0);
    EXPECT_TRUE(FillRect(hDC, {0, 0, 9, 9}, GetStockObject(BLACK_BRUSH)));
    EXPECT_TRUE(LineTo(hDC, 9, 9));
    EXPECT_EQ(SetPixel(hDC, 0, 0, 0xFFFFFF), -1);
    EXPECT_EQ(SetBkMode(hDC, TRANSPARENT), OPAQUE);
    EXPECT_EQ(SetBkMode(hDC, 3), 0);
    EXPECT_EQ(GetBkMode(hDC), TRANSPARENT);
    EXPECT_EQ(SetStretchBltMode(hDC, COLORONCOLOR), BLACKONWHITE);
    EXPECT_EQ(SetStretchBltMode(hDC, 0), 0);
    EXPECT_EQ(SetStretchBltMode(hDC, WHITEONBLACK), COLORONCOLOR);
    EXPECT_EQ(SetBkColor(hDC, 0x123456), 0xFFFFFF);
    EXPECT_EQ(SetTextColor(hDC, 0x654321), 0);
    EXPECT_EQ(GetDeviceCaps(hDC, BITSPIXEL), 1);
    EXPECT_EQ(GetDeviceCaps(hDC, LOGPIXELSX), 96);
    EXPECT_EQ(GetDeviceCaps(hDC, 9999), 0);
    DeleteDC(hDC);
}

TEST(Bitmaps, TellTheirMeasuresAndFailBeyondTheLimits) {
    constexpr int kScreen = 0;  // compatible with it; else the bits of a section
    const struct {
        int width, height, bits;
        int rowBytes;  // 0: it fails
    } kSizes[] = {
        {5, 7, kScreen, 20},
        {5, 7, Canvas::kMonochrome, 4},
        {3, 2, 24, 12},
        {33, 2, 1, 8},
        {32767, 1, kScreen, 131068},
        {1, 32767, 24, 4},
        {30'000, 30'000, 1, 3752},
        {32768, 1, kScreen, 0},
        {1, 32768, 24, 0},
        {30'000, 30'000, kScreen, 0},
        {30'000, 30'000, 32, 0},
        {-1, 4, kScreen, 0},
        {4, -1, kScreen, 0},
        {INT_MAX, INT_MAX, kScreen, 0},
        {INT_MIN, INT_MIN, 24, 0},
        {0, 4, 24, 0},
        {4, 0, 8, 0},
        {4, -4, 24, 0},
        {4, 4, 16, 0},
        {4, 4, 2, 0},
    };
    const HDC screen = GetDC(GetDesktopWindow()), memory = CreateCompatibleDC(screen);
    BITMAP record;
    for (const auto& c : kSizes) {
        SCOPED_TRACE(testing::Message() << c.width << 'x' << c.height << 'x' << c.bits);
        const bool made = c.rowBytes > 0, isSection = c.bits > 0;
        void* pixels = &pixels;
        const HBITMAP bitmap =
            isSection ? section(c.width, c.height, c.bits, pixels)
                      : CreateCompatibleBitmap(c.bits == 0 ? screen : memory, c.width, c.height);
        EXPECT_EQ(bitmap != 0, made);
        EXPECT_EQ(pixels != nullptr, made || !isSection);
        EXPECT_EQ(GetObjectA(bitmap, record), made ? static_cast<int>(sizeof record) : 0);
        EXPECT_EQ(DeleteObject(bitmap), made);
        if (!made) continue;
        EXPECT_EQ(record.bmWidth, c.width);
        EXPECT_EQ(record.bmHeight, c.height);
        EXPECT_EQ(record.bmWidthBytes, c.rowBytes);
        EXPECT_EQ(record.bmPlanes, 1);
        EXPECT_EQ(record.bmBitsPixel, c.bits == 0 ? 32 : std::abs(c.bits));
        EXPECT_EQ(record.bmBits, isSection ? pixels : nullptr);
    }
    for (const SIZE nothing : {SIZE{0, 7}, SIZE{7, 0}}) {
        const HBITMAP least = CreateCompatibleBitmap(screen, nothing.cx, nothing.cy);
        EXPECT_NE(GetObjectA(least, record), 0);
        EXPECT_EQ((SIZE{record.bmWidth, record.bmHeight}), (SIZE{1, 1}));
        EXPECT_EQ(record.bmBitsPixel, 1);
        DeleteObject(least);
    }
    DeleteDC(memory);
    ReleaseDC(0, screen);
}

TEST(Bitmaps, ReusedMemoryComesBackBlack) {
    const HDC screen = GetDC(0), hDC = CreateCompatibleDC(screen);
    for (const int bits : {0, 24, 32, 8, 1}) {
        (void)Canvas(9, 9, bits);  // white
        void* pixels = nullptr;
        const HBITMAP bitmap =
            bits == 0 ? CreateCompatibleBitmap(screen, 9, 9) : section(9, 9, bits, pixels);
        const HGDIOBJ old = SelectObject(hDC, bitmap);
        EXPECT_EQ(GetPixel(hDC, 8, 8), 0) << bits;
        SelectObject(hDC, old);
        DeleteObject(bitmap);
    }
    DeleteDC(hDC);
    ReleaseDC(0, screen);
}

// The picture "r#" above ".b" in each depth, as the bytes of its rows, bottom row first.
TEST(Bitmaps, TheBytesOfASectionAreItsPixels) {
    const struct {
        int bits;
        const char* picture;
        std::vector<std::uint8_t> bytes;
    } kDepths[] = {
        {32, "r#\n.b\n", {255, 255, 255, 255, 255, 0, 0, 255, 0, 0, 255, 255, 0, 0, 0, 255}},
        {24, "r#\n.b\n", {255, 255, 255, 255, 0, 0, 0, 0, 0, 0, 255, 0, 0, 0, 0, 0}},
        {8, "r#\n.b\n", {1, 4, 0, 0, 2, 0, 0, 0}},
        {4, "r#\n.b\n", {0x14, 0, 0, 0, 0x20, 0, 0, 0}},
        {1, ".#\n..\n", {0xC0, 0, 0, 0, 0x80, 0, 0, 0}},
    };
    for (const auto& c : kDepths) {
        Canvas drawn(c.picture, c.bits);
        EXPECT_EQ(std::vector(drawn.bits(), drawn.bits() + c.bytes.size()), c.bytes) << c.bits;
        Canvas written(2, 2, c.bits);
        std::copy(c.bytes.begin(), c.bytes.end(), written.bits());
        EXPECT_EQ(written.picture(), c.picture) << c.bits;
    }
}

TEST(Bitmaps, GiveTheirColourTableInParts) {
    const RGBQUAD table[] = {{1, 2, 3, 0}, {4, 5, 6, 0}, {7, 8, 9, 0}};
    const Canvas canvas(1, 1, 4, table), deep(1, 1);
    RGBQUAD read[16] = {{9, 9, 9, 9}};
    EXPECT_EQ(GetDIBColorTable(canvas.hdc(), 0, 256, read), 16U);
    EXPECT_EQ(read[2], table[2]);
    EXPECT_EQ(read[3], RGBQUAD());
    EXPECT_EQ(GetDIBColorTable(canvas.hdc(), 1, 1, read), 1U);
    EXPECT_EQ(read[0], table[1]);
    EXPECT_EQ(GetDIBColorTable(canvas.hdc(), 16, 1, read), 0U);
    EXPECT_EQ(GetDIBColorTable(deep.hdc(), 0, 1, read), 0U);
}

TEST(Bitmaps, TakeTheClosestColourOfTheirTable) {
    Canvas canvas(1, 1, 4);
    for (const auto& [wanted, taken] : {std::pair<COLORREF, COLORREF>{0x0A0AF0, 0x0000FF},
                                        {0x7F7F7F, 0x808080},
                                        {0xF0F0F0, 0xFFFFFF},
                                        {0x200000, 0}}) {
        EXPECT_EQ(SetPixel(canvas.hdc(), 0, 0, wanted), taken);
        EXPECT_EQ(GetPixel(canvas.hdc(), 0, 0), taken);
    }
    const Canvas bits(1, 1, Canvas::kMonochrome);
    EXPECT_EQ(SetPixel(bits.hdc(), 0, 0, rgb(127, 127, 128)), 0);
    EXPECT_EQ(SetPixel(bits.hdc(), 0, 0, rgb(127, 128, 128)), 0xFFFFFF);
}

// ---- Windows

int drawings = 0;

TEST(WindowSurfaces, ContextsFollowTheSurfaceOfTheirWindow) {
    constexpr HWND kWindow = 0x40000001;
    EXPECT_EQ(GetDC(kWindow), 0U);
    setWindowHooks({[](HWND hWnd) { return hWnd == kWindow; }, [](HWND) { ++drawings; }});
    const HDC hDC = GetDC(kWindow);
    ASSERT_NE(hDC, 0U);
    EXPECT_EQ(SetPixel(hDC, 0, 0, 0xFF), -1) << "no surface yet";

    const HBITMAP small = CreateCompatibleBitmap(hDC, 1, 1),
                  large = CreateCompatibleBitmap(hDC, 9, 9);
    EXPECT_TRUE(setWindowSurface(kWindow, small));
    EXPECT_FALSE(DeleteObject(small));
    drawings = 0;
    EXPECT_EQ(SetPixel(hDC, 0, 0, 0xFF), 0xFF);
    EXPECT_EQ(SetPixel(hDC, 5, 5, 0xFF), -1);
    EXPECT_TRUE(setWindowSurface(kWindow, large));
    EXPECT_TRUE(DeleteObject(small));
    EXPECT_EQ(SetPixel(hDC, 5, 5, 0xFF), 0xFF);
    EXPECT_EQ(drawings, 2);

    const HDC second = GetDC(kWindow);
    EXPECT_EQ(GetPixel(second, 5, 5), 0xFF);
    EXPECT_EQ(GetCurrentObject(second, OBJ_BITMAP), large);
    EXPECT_TRUE(setDcClip(second, {4, 4, 6, 6}));
    EXPECT_EQ(GetPixel(second, 6, 6), -1);

    EXPECT_EQ(ReleaseDC(kWindow + 1, hDC), 0);
    EXPECT_EQ(ReleaseDC(kWindow, hDC), 1);
    EXPECT_TRUE(setWindowSurface(kWindow, 0));
    EXPECT_EQ(GetPixel(second, 5, 5), -1);
    EXPECT_EQ(ReleaseDC(kWindow, second), 1);
    EXPECT_TRUE(DeleteObject(large));
    setWindowHooks({});
}

// ---- Numbers

TEST(Numbers, MulDivRoundsHalvesAwayFromZero) {
    const struct {
        int number, numerator, denominator, result;
    } kCases[] = {
        {8, 96, 72, 11},
        {9, 96, 72, 12},
        {1, 1, 2, 1},
        {-1, 1, 2, -1},
        {1, -1, 2, -1},
        {-1, -1, 2, 1},
        {-1, 1, -2, 1},
        {1, 1, 3, 0},
        {5, 7, 0, -1},
        {INT_MAX, INT_MAX, INT_MAX, INT_MAX},
        {INT_MAX, 2, 1, -1},
        {INT_MIN, INT_MIN, 1, -1},
        {INT_MIN, 1, 1, INT_MIN},
        {INT_MIN, 1, -1, -1},
        {INT_MIN, INT_MIN, INT_MIN, INT_MIN},
    };
    for (const auto& c : kCases) {
        EXPECT_EQ(MulDiv(c.number, c.numerator, c.denominator), c.result)
            << c.number << '*' << c.numerator << '/' << c.denominator;
    }
}

TEST(Numbers, RectanglesGrowAndShrinkAndStopAtTheEndOfTheRange) {
    RECT rect{10, 20, 30, 40};
    InflateRect(rect, -2, 3);
    EXPECT_EQ(rect, (RECT{12, 17, 28, 43}));
    SetRect(rect, INT_MIN, 0, INT_MAX, 0);
    InflateRect(rect, INT_MAX, INT_MIN);
    EXPECT_EQ(rect, (RECT{INT_MIN, INT_MAX, INT_MAX, INT_MIN}));
}

TEST(Numbers, SystemColoursAreTheClassicOnesUntilSet) {
    EXPECT_EQ(GetSysColor(5), 0xFFFFFF);
    EXPECT_EQ(GetSysColor(15), rgb(212, 208, 200));
    EXPECT_EQ(GetSysColor(31), 0);
    EXPECT_EQ(GetSysColor(-1), 0);
    const COLORREF colors[] = {1, 2, 3};
    setSysColors(colors);
    EXPECT_EQ(GetSysColor(2), 3);
    EXPECT_EQ(GetSysColor(5), 0xFFFFFF);
    setSysColors({});
    EXPECT_EQ(GetSysColor(2), rgb(10, 36, 106));
}

// ---- Icons and pictures

TEST(Icons, GiveCopiesOfTheirBitmaps) {
    HICON icon = 0;
    {
        const Canvas mask("#.\n.#\n", Canvas::kMonochrome), color("rg\nb#\n", 24), high(2, 3);
        const Canvas odd(2, 3, Canvas::kMonochrome);
        icon = CreateIconIndirect({false, 1, 2, mask.bitmap(), color.bitmap()});
        EXPECT_EQ(CreateIconIndirect({true, 0, 0, mask.bitmap(), high.bitmap()}), 0U);
        EXPECT_EQ(CreateIconIndirect({true, 0, 0, color.bitmap(), 0}), 0U) << "mask of 24 bits";
        EXPECT_EQ(CreateIconIndirect({true, 0, 0, odd.bitmap(), 0}), 0U) << "no lower half";
        EXPECT_EQ(CreateIconIndirect({}), 0U);
    }
    ICONINFO info;
    ASSERT_TRUE(GetIconInfo(icon, info));
    EXPECT_FALSE(info.fIcon);
    EXPECT_EQ(info.xHotspot, 1U);
    EXPECT_EQ(info.yHotspot, 2U);
    const HDC hDC = CreateCompatibleDC(0);
    SelectObject(hDC, info.hbmColor);
    EXPECT_EQ(GetPixel(hDC, 1, 0), 0x00FF00);
    SelectObject(hDC, info.hbmMask);
    EXPECT_EQ(GetPixel(hDC, 1, 0), 0xFFFFFF);
    DeleteDC(hDC);
    DeleteObject(info.hbmMask);
    DeleteObject(info.hbmColor);
    EXPECT_TRUE(DestroyIcon(icon));
    EXPECT_FALSE(GetIconInfo(icon, info));
    EXPECT_EQ(info.hbmMask, 0U);
}

TEST(Pictures, OwnWhatTheyAreToldToOwn) {
    const HDC screen = GetDC(0);
    const HBITMAP bitmap = CreateCompatibleBitmap(screen, 5, 7);
    ReleaseDC(0, screen);
    {
        const auto lent = OleCreatePictureIndirect({PICTYPE_BITMAP, bitmap}, false);
        ASSERT_NE(lent, nullptr);
        EXPECT_EQ(lent->Width(), 5);
        EXPECT_EQ(lent->Height(), 7);
    }
    const auto owned = OleCreatePictureIndirect({PICTYPE_BITMAP, bitmap}, true);
    EXPECT_EQ(owned->Handle(), bitmap);
    EXPECT_EQ(owned->Type(), PICTYPE_BITMAP);
    EXPECT_EQ(OleCreatePictureIndirect({PICTYPE_ICON, bitmap}, true), nullptr);
    EXPECT_EQ(OleCreatePictureIndirect({PICTYPE_BITMAP, 0}, true), nullptr);

    Canvas mask(4, 8, Canvas::kMonochrome);
    const HICON icon = CreateIconIndirect({true, 0, 0, mask.bitmap(), 0});
    const auto drawn = OleCreatePictureIndirect({PICTYPE_ICON, icon}, true);
    EXPECT_EQ(drawn->Type(), PICTYPE_ICON);
    EXPECT_EQ(drawn->Height(), 4) << "half of a monochrome icon's mask";
}

}  // namespace
}  // namespace platform
