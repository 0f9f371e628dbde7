#include "gfx/modCtlCommon_ctl_text.h"

#include "gfx/modCtlCommon_ctl_colors.h"
#include "platform/base/casemap.h"
#include "platform/window/fonts.h"
#include "platform/window/surface.h"
#include "platform/window/textout.h"

#include <algorithm>
#include <limits>

namespace {

constexpr std::uint32_t kMeasureLine = platform::DT_CALCRECT | platform::DT_SINGLELINE;
constexpr std::uint32_t kMeasureWrapped = platform::DT_CALCRECT | platform::DT_WORDBREAK;

// Measures with flags that hold DT_CALCRECT.
SIZE measured(HDC hDC, TextView s, RECT rect, std::uint32_t iFlags) {
    if (platform::GetBkMode(hDC) == 0) return {};  // no context
    platform::DrawTextW(hDC, s, rect, iFlags);
    // Text wider than 32 bits can tell ends at their limit, wherever it began.
    const auto extent = [](std::int64_t from, std::int64_t to) {
        return static_cast<std::int32_t>(
            std::min<std::int64_t>(to - from, std::numeric_limits<std::int32_t>::max()));
    };
    return {extent(rect.left, rect.right), extent(rect.top, rect.bottom)};
}

}  // namespace

void TextDraw(HDC hDC, TextView s, RECT& rect, std::uint32_t iFlags) {
    if (hDC != 0) platform::DrawTextW(hDC, s, rect, iFlags);
}

void TextDraw(HDC hDC, TextView s, const RECT& rect, std::uint32_t iFlags) {
    RECT unchanged = rect;
    TextDraw(hDC, s, unchanged, iFlags);
}

void TextDrawColor(HDC hDC, TextView s, const RECT& rect, Color iColor, std::uint32_t iFlags) {
    if (hDC != 0) platform::SetTextColor(hDC, TranslateColor(iColor));
    TextDraw(hDC, s, rect, iFlags);
}

void TextDrawColorXY(HDC hDC, TextView s, int x1, int y1, int x2, int y2, Color iColor,
                     std::uint32_t iFlags) {
    TextDrawColor(hDC, s, {x1, y1, x2, y2}, iColor, iFlags);
}

SIZE TextSize(HDC hDC, TextView s, std::uint32_t iFlags) {
    return measured(hDC, s, {}, iFlags | kMeasureLine);
}

int TextMaxLineWidth(HDC hDC, TextView s, std::uint32_t iFlags) {
    int widest = 0;
    for (;;) {
        const std::size_t end = s.find(u'\r');
        widest = std::max(widest, TextSize(hDC, s.substr(0, end), iFlags).cx);
        if (end == TextView::npos) return widest;
        s.remove_prefix(end + 1);
        if (s.starts_with(u'\n')) s.remove_prefix(1);
    }
}

void TextSizeWrapped(HDC hDC, TextView s, std::uint32_t iFlags, bool bKeepWidth, bool bKeepHeight,
                     SIZE& size) {
    const int width =
        bKeepWidth ? size.cx : TextMaxLineWidth(hDC, s, iFlags | platform::DT_SINGLELINE);
    size = measured(hDC, s, {0, 0, width, bKeepHeight ? size.cy : 0}, iFlags | kMeasureWrapped);
}

SIZE TextSizeInRect(HDC hDC, TextView s, int iLeft, int iTop, int iRight, int iBottom,
                    std::uint32_t iFlags) {
    return measured(hDC, s, {iLeft, iTop, iRight, iBottom}, iFlags | kMeasureWrapped);
}

bool FontExists(TextView sName) {
    const std::size_t begin = sName.find_first_not_of(u' ');
    if (begin == TextView::npos) return false;
    const std::size_t end = sName.find_last_not_of(u' ') + 1;
    const Text wanted = platform::lowerCase(sName.substr(begin, end - begin));
    const auto families = platform::fontFamilies();
    return std::any_of(families.begin(), families.end(),
                       [&](const Text& family) { return platform::lowerCase(family) == wanted; });
}
