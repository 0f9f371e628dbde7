// gallery/Sheet.h: the few means by which all pages draw their captions and lay out their samples,
// so that they look like sheets of one set. Sizes are pixels, whatever the screen has; the sheets
// don't grow with its dots per inch.
#pragma once
#include "gfx/clsGdiHandle.h"
#include "gfx/types.h"
#include "platform/window/textout.h"

#include <functional>

namespace gallery {

constexpr Color kPaper = platform::rgb(255, 255, 255);
constexpr Color kInk = platform::rgb(31, 38, 48);
constexpr Color kFaint = platform::rgb(99, 109, 122);  // captions
constexpr Color kRule = platform::rgb(214, 220, 227);  // lines between things
constexpr Color kTint = platform::rgb(244, 246, 249);  // behind samples that need a ground
constexpr Color kAccent = platform::rgb(42, 96, 160);

constexpr RECT box(int x, int y, int width, int height) { return {x, y, x + width, y + height}; }
constexpr RECT inset(const RECT& r, int by) {
    return {r.left + by, r.top + by, r.right - by, r.bottom - by};
}
constexpr int widthOf(const RECT& r) { return r.right - r.left; }
constexpr int heightOf(const RECT& r) { return r.bottom - r.top; }

struct Lettering {
    int points = 8;
    bool bold = false;
    Color color = kInk;
    TextView face = u"Tahoma";
};
constexpr Lettering kCaption{.color = kFaint};
constexpr Lettering kStrong{.bold = true};
constexpr std::uint32_t kOneLine =
    platform::DT_SINGLELINE | platform::DT_VCENTER | platform::DT_NOPREFIX;

// Draws a text with flags of platform::DrawTextW.
void write(HDC hDC, const RECT& rect, TextView s, const Lettering& lettering = {},
           std::uint32_t flags = kOneLine);
// What DT_CALCRECT makes of the rectangle.
[[nodiscard]] RECT measure(HDC hDC, RECT rect, TextView s, const Lettering& lettering,
                           std::uint32_t flags);

// A font of its own in a context, for the length of a scope: height and weight as CreateFontW has
// them.
class FontScope {
public:
    FontScope(HDC hDC, int height, int weight = 400, TextView face = u"Tahoma");
    ~FontScope();
    FontScope(const FontScope&) = delete;
    FontScope& operator=(const FontScope&) = delete;

private:
    HDC m_hDC;
    clsGdiHandle m_font;
    platform::HGDIOBJ m_old;
};

constexpr int kHeadingHeight = 26;
// A heading with a line below it at the top of the area; takes its height off the area.
void heading(HDC hDC, RECT& area, TextView s);

// Paints a control as its window shows it, from (0, 0) and with the font of controls, and copies it
// to its place.
void putControl(HDC hDC, const RECT& place, const std::function<void(HDC, SIZE)>& paint);

// Cells of one size, side by side and then line by line, from the top left of an area. The size is
// that of one cell with its distance to the next.
class Cells {
public:
    Cells(const RECT& area, int columns, int width, int height)
        : m_area(area), m_columns(columns), m_width(width), m_height(height) {}
    RECT next() {
        const int i = m_next++;
        return box(m_area.left + i % m_columns * m_width, m_area.top + i / m_columns * m_height,
                   m_width, m_height);
    }

private:
    RECT m_area;
    int m_columns, m_width, m_height;
    int m_next = 0;
};

[[nodiscard]] Text number(std::int64_t value);
[[nodiscard]] Text hexColor(Color color);  // #RRGGBB, of a plain colour
// Black or white, whichever can be read on that ground.
[[nodiscard]] Color inkOn(Color ground);

}  // namespace gallery
