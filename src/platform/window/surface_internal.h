// platform/window/surface_internal.h: what the sources of this folder share about surfaces: the
// records behind the handles, the pixels, and the hooks of windows and screens. Nothing above the
// folder includes this.
#pragma once
#include "platform/window/handles.h"
#include "platform/window/surface.h"

#include <algorithm>
#include <cstddef>
#include <limits>

namespace platform {

// ---- Coordinates

constexpr std::int32_t between(std::int64_t value, std::int32_t low, std::int32_t high) {
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(value, low, high));
}
// As near as 32 bits come.
constexpr std::int32_t saturated(std::int64_t value) {
    using Limits = std::numeric_limits<std::int32_t>;
    return between(value, Limits::min(), Limits::max());
}

// The part of two rectangles that is common; right <= left or bottom <= top when there is none.
constexpr RECT intersection(const RECT& a, const RECT& b) {
    return {a.left > b.left ? a.left : b.left, a.top > b.top ? a.top : b.top,
            a.right < b.right ? a.right : b.right, a.bottom < b.bottom ? a.bottom : b.bottom};
}
constexpr bool isEmpty(const RECT& r) { return r.right <= r.left || r.bottom <= r.top; }
constexpr bool contains(const RECT& r, std::int64_t x, std::int64_t y) {
    return x >= r.left && x < r.right && y >= r.top && y < r.bottom;
}

// ---- Records

// What all drawing objects have.
struct ObjectRecord {
    std::uint32_t handle = 0;
    std::int32_t selections = 0;  // contexts that hold it; it cannot be deleted meanwhile
    bool stock = false;
};

struct BrushRecord : ObjectRecord {
    COLORREF color = 0xFFFFFF;
    bool null = false;
};

struct PenRecord : ObjectRecord {
    COLORREF color = 0;
    std::int32_t width = 1;  // pixels, at least 1
    std::int32_t style = PS_SOLID;
};

// The text sources fill data and define its type; nullptr is the stock font.
struct FontData;
struct FontRecord : ObjectRecord {
    std::shared_ptr<const FontData> data;
};

// Rectangles that don't overlap, row bands from top to bottom, in a band from left to right.
struct RegionRecord : ObjectRecord {
    std::vector<RECT> rects;
};

// Memory of pixels. Blocks go to a store when they are given back and come from there.
class PixelMemory {
public:
    PixelMemory() = default;
    explicit PixelMemory(std::size_t size);  // not cleared; get() is nullptr when there is none
    PixelMemory(PixelMemory&& other) noexcept { swap(other); }
    PixelMemory& operator=(PixelMemory&& other) noexcept {
        swap(other);
        return *this;
    }
    ~PixelMemory();
    [[nodiscard]] std::uint8_t* get() const { return m_block.get(); }

private:
    void swap(PixelMemory& other) noexcept {
        std::swap(m_size, other.m_size);
        std::swap(m_block, other.m_block);
    }
    std::size_t m_size = 0;
    std::unique_ptr<std::uint8_t[]> m_block;
};

// A colour table and the way back from colours to its entries.
struct ColorTable {
    std::vector<RGBQUAD> entries;  // 2, 16 or 256
    // Index of the closest entry to a colour of the form 0x..RRGGBB.
    [[nodiscard]] std::uint32_t closest(std::uint32_t xrgb) const;

private:
    struct Known {
        std::uint32_t xrgb = ~0U;
        std::uint32_t index = 0;
    };
    mutable std::vector<Known> m_known;  // the last answers, by a hash of the colour
};

struct BitmapRecord : ObjectRecord {
    std::int32_t width = 0, height = 0;
    std::int32_t bitsPerPixel = 0;  // 1, 4, 8, 24, 32
    std::ptrdiff_t stride = 0;      // bytes from a row to the one below it; negative in sections
    std::uint8_t* top = nullptr;    // the top row
    PixelMemory memory;
    std::unique_ptr<ColorTable> colors;  // sections of 1, 4 and 8 bits
    bool section = false;

    // Without a colour table one bit is "text or background colour".
    [[nodiscard]] bool monochrome() const { return bitsPerPixel == 1 && !colors; }
    // The pixels of a row as 0xFFRRGGBB; only for 32 bits. y from 0 to height - 1, 0 at the top.
    [[nodiscard]] std::uint32_t* row(int y) const {
        return reinterpret_cast<std::uint32_t*>(top + y * stride);
    }
};

// A device context. The pointers are never nullptr, and their records outlive the selection.
struct DcRecord {
    HDC handle = 0;
    BitmapRecord* bitmap = nullptr;
    BrushRecord* brush = nullptr;
    PenRecord* pen = nullptr;
    FontRecord* font = nullptr;
    COLORREF textColor = 0, bkColor = 0xFFFFFF;
    std::int32_t bkMode = OPAQUE;
    std::int32_t stretchMode = BLACKONWHITE;
    POINT position;              // of MoveToEx and LineTo
    std::uint32_t penPhase = 0;  // pixels of the pen's pattern that are used up
    // Drawing stays inside: the bitmap's bounds; narrower only by setDcClip. Empty while the bitmap
    // is a stock one: a fresh memory context, the desktop, a window without a surface.
    RECT clip;
    HWND window = 0;  // of GetDC
    bool ofGetDC = false;
};

[[nodiscard]] HandleTable<DcRecord>& dcTable();
[[nodiscard]] HandleTable<BitmapRecord>& bitmapTable();
[[nodiscard]] HandleTable<FontRecord>& fontTable();
[[nodiscard]] HandleTable<BrushRecord>& brushTable();
[[nodiscard]] HandleTable<PenRecord>& penTable();
[[nodiscard]] HandleTable<RegionRecord>& regionTable();

// nullptr for 0, stale handles and handles of another kind.
[[nodiscard]] inline DcRecord* dcOf(HDC hDC) { return dcTable().find(hDC); }
[[nodiscard]] inline BitmapRecord* bitmapOf(HBITMAP h) { return bitmapTable().find(h); }

// Adds an object to its table and enters its handle in the record. 0 when the table is full.
template <class Record>
[[nodiscard]] std::uint32_t addObject(HandleTable<Record>& table, Record record) {
    const std::uint32_t handle = table.add(std::move(record));
    if (handle != 0) table.find(handle)->handle = handle;
    return handle;
}

// ---- Pixels

// A colour as the pixel of a 32-bit surface, and back.
constexpr std::uint32_t pixelOf(COLORREF color) {
    const auto c = static_cast<std::uint32_t>(color);
    return 0xFF000000U | (c & 0xFF) << 16 | (c & 0xFF00) | (c >> 16 & 0xFF);
}
constexpr COLORREF colorOf(std::uint32_t pixel) {
    return static_cast<COLORREF>((pixel >> 16 & 0xFF) | (pixel & 0xFF00) | (pixel & 0xFF) << 16);
}

// Pixels of any bitmap as 0xFFRRGGBB, from (x, y) to the right, and back: what a surface of few
// colours cannot hold becomes the closest it has. Monochrome bits count as black and white. The
// span must lie in the bitmap.
void readPixels(const BitmapRecord& bitmap, int x, int y, std::span<std::uint32_t> pixels);
void writePixels(BitmapRecord& bitmap, int x, int y, std::span<const std::uint32_t> pixels);

// The same in the bitmap's own values: 0xFFRRGGBB with 24 and 32 bits, else indexes or bits.
void readValues(const BitmapRecord& bitmap, int x, int y, std::span<std::uint32_t> values);
void writeValues(BitmapRecord& bitmap, int x, int y, std::span<const std::uint32_t> values);
// The value that comes closest to a colour.
[[nodiscard]] std::uint32_t valueOf(const BitmapRecord& bitmap, COLORREF color);
// Sets all pixels of a rectangle, which must lie in the bitmap, to one value.
void fillValue(BitmapRecord& bitmap, const RECT& rect, std::uint32_t value);

// A bitmap of its own, black (section: all zero), that is in no table yet. Its top is nullptr when
// the size is not from 1 to the limits or there is no memory.
[[nodiscard]] BitmapRecord newBitmap(int width, int height, int bitsPerPixel, bool section);

// A bitmap with the same pixels and colour table that is in no table; its top is nullptr when there
// is no memory.
[[nodiscard]] BitmapRecord copyOfBitmap(const BitmapRecord& bitmap);

// To be called by every operation that has changed pixels of the context: tells the window.
void drawn(const DcRecord& dc);

// ---- Hooks

// Gives a window a surface, a 32-bit bitmap that stays the caller's and cannot be deleted
// meanwhile, or takes it away (hBitmap 0). Contexts of GetDC(hWnd) draw there from now on, those
// that exist already included. False when the bitmap is unknown or in a memory context.
bool setWindowSurface(HWND hWnd, HBITMAP hBitmap);
struct WindowHooks {
    bool (*exists)(HWND) = nullptr;  // asked by GetDC; without it, windows with a surface exist
    void (*drawn)(HWND) = nullptr;   // called after each drawing on a context of GetDC(hWnd)
};
void setWindowHooks(const WindowHooks& hooks);
// Confines a context's drawing to a part of its surface, until it gets another bitmap. False for an
// unknown context.
bool setDcClip(HDC hDC, const RECT& clip);

// The screen's dots per inch; 96 at first.
void setScreenDpi(int dpiX, int dpiY);
// The colours of GetSysColor from index 0 on. At first, and with an empty list, the classic ones.
void setSysColors(std::span<const COLORREF> colors);

// The region's rectangles, valid while it lives; none for an unknown handle.
[[nodiscard]] std::span<const RECT> regionRects(HRGN hRgn);
[[nodiscard]] bool regionContains(HRGN hRgn, POINT point);

}  // namespace platform
