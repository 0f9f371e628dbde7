// Device contexts, the objects selected into them, system colours and the small arithmetic.
#include "platform/window/surface.h"

#include "platform/window/surface_internal.h"

#include <algorithm>
#include <unordered_map>

namespace platform {
namespace {

// The desktop's handle is of no kind that a table gives out.
constexpr HWND kDesktopWindow = 0x10010;

// The objects that are always there.
struct Stock {
    BitmapRecord* monochrome = nullptr;  // in a fresh memory context
    BitmapRecord* screen = nullptr;      // in a context of the desktop or a window without surface
    BrushRecord* brushes[6] = {};        // white to null
    PenRecord* pens[3] = {};             // white, black, null
    FontRecord* font = nullptr;
};

template <class Record> Record* addStock(HandleTable<Record>& table, Record record) {
    record.stock = true;
    const std::uint32_t handle = table.addStock(std::move(record));
    Record* added = table.find(handle);
    added->handle = handle;
    return added;
}

const Stock& stock() {
    static const Stock objects = [] {
        Stock made;
        made.monochrome = addStock(bitmapTable(), newBitmap(1, 1, 1, false));
        made.screen = addStock(bitmapTable(), newBitmap(1, 1, 32, false));
        constexpr COLORREF kBrushes[] = {0xFFFFFF, 0xC0C0C0, 0x808080, 0x404040, 0, 0xFFFFFF};
        for (int i = WHITE_BRUSH; i <= NULL_BRUSH; ++i) {
            BrushRecord brush;
            brush.color = kBrushes[i];
            brush.null = i == NULL_BRUSH;
            made.brushes[i] = addStock(brushTable(), brush);
        }
        for (int i = WHITE_PEN; i <= NULL_PEN; ++i) {
            PenRecord pen;
            pen.color = i == WHITE_PEN ? 0xFFFFFF : 0;
            pen.style = i == NULL_PEN ? PS_NULL : PS_SOLID;
            made.pens[i - WHITE_PEN] = addStock(penTable(), pen);
        }
        made.font = addStock(fontTable(), FontRecord());
        return made;
    }();
    return objects;
}

// What only windows and the screen need.
struct Environment {
    std::unordered_map<HWND, BitmapRecord*> windowSurfaces;
    WindowHooks hooks;
    int dpiX = 96, dpiY = 96;
};

Environment& environment() {
    static Environment here;
    return here;
}

void setBitmap(DcRecord& dc, BitmapRecord& bitmap) {
    dc.bitmap = &bitmap;
    dc.clip = bitmap.stock ? RECT() : RECT{0, 0, bitmap.width, bitmap.height};
}

HDC addContext(BitmapRecord& bitmap, HWND window, bool ofGetDC) {
    DcRecord dc;
    dc.brush = stock().brushes[WHITE_BRUSH];
    dc.pen = stock().pens[BLACK_PEN - WHITE_PEN];
    dc.font = stock().font;
    dc.window = window;
    dc.ofGetDC = ofGetDC;
    setBitmap(dc, bitmap);
    const HDC handle = dcTable().add(dc);
    if (handle == 0) return 0;
    dcTable().find(handle)->handle = handle;
    ++dc.brush->selections;
    ++dc.pen->selections;
    ++dc.font->selections;
    if (!ofGetDC) ++bitmap.selections;
    return handle;
}

// Moves one of the context's pointers to another object and gives the old one's handle.
template <class Record> HGDIOBJ exchange(Record*& selected, Record& next) {
    const HGDIOBJ previous = selected->handle;
    --selected->selections;
    selected = &next;
    ++next.selections;
    return previous;
}

template <class Record> bool deleteFrom(HandleTable<Record>& table, std::uint32_t handle) {
    const Record* object = table.find(handle);
    if (object == nullptr) return false;
    if (object->stock) return true;
    return object->selections == 0 && table.remove(handle);
}

// The result of a setter of modes, whose values go from 1 to last.
int exchangeMode(std::int32_t& present, int mode, int last) {
    if (mode < 1 || mode > last) return 0;
    return std::exchange(present, mode);
}

constexpr COLORREF kPlain = 0xFFFFFF;  // the bits of a plain colour

// 0 to 30, as desktops had them before they could be themed.
constexpr COLORREF kClassicColors[] = {
    rgb(212, 208, 200), rgb(58, 110, 165),  rgb(10, 36, 106),   rgb(128, 128, 128),
    rgb(212, 208, 200), rgb(255, 255, 255), rgb(0, 0, 0),       rgb(0, 0, 0),
    rgb(0, 0, 0),       rgb(255, 255, 255), rgb(212, 208, 200), rgb(212, 208, 200),
    rgb(128, 128, 128), rgb(10, 36, 106),   rgb(255, 255, 255), rgb(212, 208, 200),
    rgb(128, 128, 128), rgb(128, 128, 128), rgb(0, 0, 0),       rgb(212, 208, 200),
    rgb(255, 255, 255), rgb(64, 64, 64),    rgb(212, 208, 200), rgb(0, 0, 0),
    rgb(255, 255, 225), rgb(181, 181, 181), rgb(0, 0, 128),     rgb(166, 202, 240),
    rgb(192, 192, 192), rgb(10, 36, 106),   rgb(212, 208, 200)};
constexpr int kSysColors = static_cast<int>(std::size(kClassicColors));

std::vector<COLORREF>& sysColors() {
    static std::vector<COLORREF> colors(std::begin(kClassicColors), std::end(kClassicColors));
    return colors;
}

}  // namespace

HandleTable<DcRecord>& dcTable() {
    static HandleTable<DcRecord> table(HandleKind::DeviceContext);
    return table;
}
HandleTable<FontRecord>& fontTable() {
    static HandleTable<FontRecord> table(HandleKind::Font);
    return table;
}
HandleTable<BrushRecord>& brushTable() {
    static HandleTable<BrushRecord> table(HandleKind::Brush);
    return table;
}
HandleTable<PenRecord>& penTable() {
    static HandleTable<PenRecord> table(HandleKind::Pen);
    return table;
}
HandleTable<RegionRecord>& regionTable() {
    static HandleTable<RegionRecord> table(HandleKind::Region);
    return table;
}

// ---- Device contexts

HDC CreateCompatibleDC(HDC hDC) {
    if (hDC != 0 && dcOf(hDC) == nullptr) return 0;
    return addContext(*stock().monochrome, 0, false);
}

bool DeleteDC(HDC hDC) {
    DcRecord* dc = dcOf(hDC);
    if (dc == nullptr) return false;
    if (!dc->ofGetDC) --dc->bitmap->selections;
    --dc->brush->selections;
    --dc->pen->selections;
    --dc->font->selections;
    return dcTable().remove(hDC);
}

HWND GetDesktopWindow() { return kDesktopWindow; }

HDC GetDC(HWND hWnd) {
    if (hWnd == 0 || hWnd == kDesktopWindow) {
        return addContext(*stock().screen, kDesktopWindow, true);
    }
    const Environment& env = environment();
    const auto surface = env.windowSurfaces.find(hWnd);
    const bool known = surface != env.windowSurfaces.end();
    if (env.hooks.exists != nullptr ? !env.hooks.exists(hWnd) : !known) return 0;
    return addContext(known ? *surface->second : *stock().screen, hWnd, true);
}

int ReleaseDC(HWND hWnd, HDC hDC) {
    const DcRecord* dc = dcOf(hDC);
    const HWND window = hWnd == 0 ? kDesktopWindow : hWnd;
    if (dc == nullptr || !dc->ofGetDC || dc->window != window) return 0;
    return DeleteDC(hDC) ? 1 : 0;
}

int GetDeviceCaps(HDC hDC, int index) {
    const DcRecord* dc = dcOf(hDC);
    if (dc == nullptr) return 0;
    switch (index) {
    case BITSPIXEL:
        return dc->bitmap->bitsPerPixel;
    case LOGPIXELSX:
        return environment().dpiX;
    case LOGPIXELSY:
        return environment().dpiY;
    default:
        return 0;
    }
}

int GetBkMode(HDC hDC) {
    const DcRecord* dc = dcOf(hDC);
    return dc != nullptr ? dc->bkMode : 0;
}

int SetBkMode(HDC hDC, int mode) {
    DcRecord* dc = dcOf(hDC);
    return dc != nullptr ? exchangeMode(dc->bkMode, mode, OPAQUE) : 0;
}

COLORREF GetBkColor(HDC hDC) {
    const DcRecord* dc = dcOf(hDC);
    return dc != nullptr ? dc->bkColor : -1;
}

COLORREF SetBkColor(HDC hDC, COLORREF color) {
    DcRecord* dc = dcOf(hDC);
    return dc != nullptr ? std::exchange(dc->bkColor, color & kPlain) : -1;
}

COLORREF GetTextColor(HDC hDC) {
    const DcRecord* dc = dcOf(hDC);
    return dc != nullptr ? dc->textColor : -1;
}

COLORREF SetTextColor(HDC hDC, COLORREF color) {
    DcRecord* dc = dcOf(hDC);
    return dc != nullptr ? std::exchange(dc->textColor, color & kPlain) : -1;
}

int SetStretchBltMode(HDC hDC, int mode) {
    DcRecord* dc = dcOf(hDC);
    return dc != nullptr ? exchangeMode(dc->stretchMode, mode, COLORONCOLOR) : 0;
}

// ---- Objects

HGDIOBJ SelectObject(HDC hDC, HGDIOBJ hObject) {
    DcRecord* dc = dcOf(hDC);
    if (dc == nullptr) return 0;
    switch (handleKind(hObject)) {
    case HandleKind::Pen:
        if (PenRecord* pen = penTable().find(hObject)) return exchange(dc->pen, *pen);
        return 0;
    case HandleKind::Brush:
        if (BrushRecord* brush = brushTable().find(hObject)) return exchange(dc->brush, *brush);
        return 0;
    case HandleKind::Font:
        if (FontRecord* font = fontTable().find(hObject)) return exchange(dc->font, *font);
        return 0;
    case HandleKind::Bitmap: {
        BitmapRecord* bitmap = bitmapOf(hObject);
        if (bitmap == nullptr || dc->ofGetDC) return 0;
        if (bitmap == dc->bitmap) return hObject;
        if (bitmap->selections > 0 && !bitmap->stock) return 0;
        const HGDIOBJ previous = exchange(dc->bitmap, *bitmap);
        setBitmap(*dc, *bitmap);
        return previous;
    }
    default:
        return 0;
    }
}

HGDIOBJ GetCurrentObject(HDC hDC, std::uint32_t type) {
    const DcRecord* dc = dcOf(hDC);
    if (dc == nullptr) return 0;
    switch (type) {
    case OBJ_PEN:
        return dc->pen->handle;
    case OBJ_BRUSH:
        return dc->brush->handle;
    case OBJ_FONT:
        return dc->font->handle;
    case OBJ_BITMAP:
        return dc->bitmap->handle;
    default:
        return 0;
    }
}

HGDIOBJ GetStockObject(int index) {
    if (index >= WHITE_BRUSH && index <= NULL_BRUSH) return stock().brushes[index]->handle;
    if (index >= WHITE_PEN && index <= NULL_PEN) return stock().pens[index - WHITE_PEN]->handle;
    if (index == SYSTEM_FONT || index == DEFAULT_GUI_FONT) return stock().font->handle;
    return 0;
}

bool DeleteObject(HGDIOBJ hObject) {
    switch (handleKind(hObject)) {
    case HandleKind::Bitmap:
        return deleteFrom(bitmapTable(), hObject);
    case HandleKind::Font:
        return deleteFrom(fontTable(), hObject);
    case HandleKind::Brush:
        return deleteFrom(brushTable(), hObject);
    case HandleKind::Pen:
        return deleteFrom(penTable(), hObject);
    case HandleKind::Region:
        return deleteFrom(regionTable(), hObject);
    default:
        return false;
    }
}

HBRUSH CreateSolidBrush(COLORREF color) {
    BrushRecord brush;
    brush.color = color & kPlain;
    return addObject(brushTable(), brush);
}

HPEN CreatePen(int style, int width, COLORREF color) {
    PenRecord pen;
    pen.color = color & kPlain;
    pen.width = std::max(width, 1);
    const bool patterned = style >= PS_DASH && style <= PS_DASHDOTDOT && pen.width == 1;
    pen.style = patterned || style == PS_NULL ? style : PS_SOLID;
    return addObject(penTable(), pen);
}

// ---- Hooks

void drawn(const DcRecord& dc) {
    if (dc.ofGetDC && environment().hooks.drawn != nullptr) environment().hooks.drawn(dc.window);
}

bool setWindowSurface(HWND hWnd, HBITMAP hBitmap) {
    auto& surfaces = environment().windowSurfaces;
    const auto present = surfaces.find(hWnd);
    BitmapRecord* bitmap = bitmapOf(hBitmap);
    if (present != surfaces.end() && present->second == bitmap) return true;
    if (hBitmap != 0 && (bitmap == nullptr || bitmap->stock || bitmap->selections > 0))
        return false;

    if (present != surfaces.end()) --present->second->selections;
    if (bitmap != nullptr) {
        ++bitmap->selections;
        surfaces[hWnd] = bitmap;
    } else {
        surfaces.erase(hWnd);
        bitmap = stock().screen;
    }
    dcTable().forEach([&](HDC, DcRecord& dc) {
        if (dc.ofGetDC && dc.window == hWnd) setBitmap(dc, *bitmap);
    });
    return true;
}

void setWindowHooks(const WindowHooks& hooks) { environment().hooks = hooks; }

bool setDcClip(HDC hDC, const RECT& clip) {
    DcRecord* dc = dcOf(hDC);
    if (dc == nullptr) return false;
    setBitmap(*dc, *dc->bitmap);
    dc->clip = intersection(dc->clip, clip);
    if (isEmpty(dc->clip)) dc->clip = RECT();
    return true;
}

void setScreenDpi(int dpiX, int dpiY) {
    environment().dpiX = dpiX;
    environment().dpiY = dpiY;
}

void setSysColors(std::span<const COLORREF> colors) {
    sysColors().assign(std::begin(kClassicColors), std::end(kClassicColors));
    const std::size_t count = std::min(colors.size(), std::size(kClassicColors));
    for (std::size_t i = 0; i < count; ++i) sysColors()[i] = colors[i] & kPlain;
}

// ---- Colours, rectangles, numbers

COLORREF GetSysColor(int index) {
    return index >= 0 && index < kSysColors ? sysColors()[static_cast<std::size_t>(index)] : 0;
}

void SetRect(RECT& rect, int left, int top, int right, int bottom) {
    rect = {left, top, right, bottom};
}

void InflateRect(RECT& rect, int dx, int dy) {
    rect.left = saturated(std::int64_t{rect.left} - dx);
    rect.top = saturated(std::int64_t{rect.top} - dy);
    rect.right = saturated(std::int64_t{rect.right} + dx);
    rect.bottom = saturated(std::int64_t{rect.bottom} + dy);
}

int MulDiv(int number, int numerator, int denominator) {
    if (denominator == 0) return -1;
    const std::int64_t product = std::int64_t{number} * numerator;
    const bool negative = (product < 0) != (denominator < 0);
    const auto dividend = static_cast<std::uint64_t>(product < 0 ? -product : product);
    const auto divisor = static_cast<std::uint64_t>(denominator < 0 ? -std::int64_t{denominator}
                                                                    : std::int64_t{denominator});
    const std::uint64_t quotient = (2 * dividend + divisor) / (2 * divisor);
    const auto limit = std::uint64_t{0x7FFFFFFF} + (negative ? 1 : 0);
    if (quotient > limit) return -1;
    const auto result = static_cast<std::int64_t>(quotient);
    return static_cast<int>(negative ? -result : result);
}

}  // namespace platform
