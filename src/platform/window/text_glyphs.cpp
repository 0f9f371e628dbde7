#include "platform/window/text_glyphs.h"

#include "platform/window/surface_internal.h"
#include "platform/window/text_face.h"
#include "platform/window/text_shape.h"

#include <QFontMetrics>
#include <algorithm>
#include <cstring>

namespace platform {
namespace {

// Units that draw nothing by themselves, or attach to what stands beside them.
bool isCharacter(char16_t unit) {
    const bool control = unit < 0x20 || (unit >= 0x7F && unit < 0xA0) || unit == 0xAD;
    const bool modifier = unit >= 0x2B0 && unit < 0x370;
    const bool combining = unit >= 0x483 && unit < 0x48A;
    return !control && !modifier && !combining;
}

// What the toolkit's renderer leaves of a coverage under another one, with its rounding.
std::uint32_t under(std::uint32_t below, std::uint32_t above) {
    const std::uint32_t product = below * (255 - above);
    return (product + (product >> 8) + 128) >> 8;
}

// Puts pixels of a character over what is there.
void coverPixels(std::uint8_t* to, const std::uint8_t* from, int count) {
    for (int i = 0; i < count; ++i) {
        to[i] = static_cast<std::uint8_t>(from[i] + under(to[i], from[i]));
    }
}

void coverWord(std::uint8_t* to, const std::uint8_t* from) {
    std::uint64_t there = 0;
    std::memcpy(&there, to, sizeof there);
    if (there == 0) {
        std::memcpy(to, from, sizeof there);
    } else {
        coverPixels(to, from, sizeof there);
    }
}

}  // namespace

std::int64_t GlyphTable::width(const Face& face, TextView text) {
    if (!face.contextFree) return -1;
    if (m_advances.empty()) {
        m_advances.assign(kGlyphLimit, kUnknown);
        m_glyphs.resize(kGlyphLimit);
    }
    std::int64_t total = 0;
    for (const char16_t unit : text) {
        if (unit >= kGlyphLimit) return -1;
        std::int16_t advance = m_advances[unit];
        if (advance < 0) {
            if (advance == kUnknown) advance = resolve(face, unit);
            if (advance == kShaped) return -1;
        }
        total += advance;
    }
    return total;
}

std::int16_t GlyphTable::resolve(const Face& face, char16_t unit) {
    std::int16_t& advance = m_advances[unit];
    advance = kShaped;
    if (!isCharacter(unit) || !QFontMetrics(*face.font).inFont(QChar(unit))) return advance;
    const ShapedText shape = shapedNow(face, {&unit, 1}, {});
    if (!shape.own.empty() || shape.advance % 64 != 0 || shape.advance < 0) return advance;

    advance = static_cast<std::int16_t>(shape.advance / 64);
    m_glyphs[unit] = {static_cast<std::int16_t>(shape.left), static_cast<std::int16_t>(shape.top),
                      static_cast<std::int16_t>(shape.boxWidth),
                      static_cast<std::int16_t>(shape.boxHeight),
                      static_cast<std::uint32_t>(m_masks.size())};
    const int stride = m_glyphs[unit].stride();
    m_masks.resize(m_masks.size() + static_cast<std::size_t>(stride) * shape.boxHeight + kWord);
    for (int y = 0; y < shape.boxHeight; ++y) {
        std::copy_n(shape.mask.begin() + static_cast<std::ptrdiff_t>(y) * shape.boxWidth,
                    shape.boxWidth, m_masks.begin() + m_glyphs[unit].mask + y * stride);
    }
    m_overhang = std::max({m_overhang, -shape.left, shape.left + shape.boxWidth - advance});
    m_top = std::min(m_top, shape.top);
    m_bottom = std::max(m_bottom, shape.top + shape.boxHeight);
    return advance;
}

void GlyphTable::cover(TextView text, const RECT& window, Coverage& coverage) const {
    // A row's last word may reach beyond the window.
    coverage.stride = window.right - window.left + kWord;
    coverage.bytes.assign(static_cast<std::size_t>(coverage.stride) * (window.bottom - window.top),
                          0);
    std::int64_t pen = 0;
    for (const char16_t unit : text) {
        if (pen - m_overhang >= window.right) break;
        const auto start = static_cast<std::int32_t>(pen);
        pen += m_advances[unit];
        if (pen + m_overhang <= window.left) continue;
        const Glyph& glyph = m_glyphs[unit];
        const int left = start + glyph.left;
        const RECT seen =
            intersection({left, glyph.top, left + glyph.width, glyph.top + glyph.height}, window);
        if (seen.left >= seen.right) continue;
        const std::uint8_t* from =
            m_masks.data() + glyph.mask + (seen.top - glyph.top) * glyph.stride();
        std::uint8_t* to = coverage.bytes.data() + (seen.top - window.top) * coverage.stride +
                           (seen.left - window.left);
        for (int y = seen.top; y < seen.bottom; ++y) {
            if (seen.left > left) {  // words would reach into the next row
                coverPixels(to, from + (seen.left - left), seen.right - seen.left);
            } else {
                for (int x = 0; x < seen.right - left; x += kWord) coverWord(to + x, from + x);
            }
            from += glyph.stride();
            to += coverage.stride;
        }
    }
}

}  // namespace platform
