#include "gallery/Sheet.h"

#include "gfx/clsFontHDC.h"
#include "gfx/clsMEMDC.h"
#include "gfx/modCtlCommon_ctl_colors.h"
#include "gfx/modCtlCommon_ctl_shapes.h"
#include "gfx/modCtlCommon_ctl_text.h"
#include "platform/window/fonts.h"

#include <array>
#include <cstdio>

namespace gallery {

namespace {

// The font of a lettering in a context, for the length of a scope.
class LetteringScope {
public:
    LetteringScope(HDC hDC, const Lettering& lettering) {
        if (hDC == 0) return;
        FontRequest wish;
        wish.sFontName = lettering.face;
        wish.iFontSize = lettering.points;
        wish.bFontBold = lettering.bold;
        wish.bForce96DPI = true;
        m_font.SetFontToDC(hDC, wish);
    }

private:
    clsFontHDC m_font;
};

}  // namespace

void write(HDC hDC, const RECT& rect, TextView s, const Lettering& lettering, std::uint32_t flags) {
    const LetteringScope font(hDC, lettering);
    TextDrawColor(hDC, s, rect, lettering.color, flags);
}

void putControl(HDC hDC, const RECT& place, const std::function<void(HDC, SIZE)>& paint) {
    if (hDC == 0 || widthOf(place) <= 0 || heightOf(place) <= 0) return;
    clsMEMDC surface;
    surface.CreateDC(widthOf(place), heightOf(place));
    clsFontHDC font;
    font.SetFontToDCStdFont(surface.Hdc(), StdFont(), {.bForce96DPI = true});
    paint(surface.Hdc(), {widthOf(place), heightOf(place)});
    font.Destroy();
    surface.PaintPicture(hDC, place.left, place.top);
}

RECT measure(HDC hDC, RECT rect, TextView s, const Lettering& lettering, std::uint32_t flags) {
    const LetteringScope font(hDC, lettering);
    platform::DrawTextW(hDC, s, rect, flags | platform::DT_CALCRECT);
    return rect;
}

FontScope::FontScope(HDC hDC, int height, int weight, TextView face)
    : m_hDC(hDC), m_font(platform::CreateFontW(height, 0, 0, 0, weight, 0, 0, 0,
                                               platform::DEFAULT_CHARSET, 0, 0, 0, 0, face)),
      m_old(platform::SelectObject(hDC, m_font.Handle())) {}

FontScope::~FontScope() { platform::SelectObject(m_hDC, m_old); }

void heading(HDC hDC, RECT& area, TextView s) {
    write(hDC, box(area.left, area.top, widthOf(area), 18), s, {.bold = true, .color = kAccent});
    DrawRect(hDC, box(area.left, area.top + 18, widthOf(area), 1), kRule, true);
    area.top += kHeadingHeight;
}

Text number(std::int64_t value) { return fromUtf8(std::to_string(value)); }

Text hexColor(Color color) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "#%02X%02X%02X", platform::redOf(color),
                  platform::greenOf(color), platform::blueOf(color));
    return fromUtf8(text.data());
}

Color inkOn(Color ground) {
    return ColorLuminance(ground) < 140 ? platform::rgb(255, 255, 255) : kInk;
}

}  // namespace gallery
