// platform/window/text_glyphs.h: the masks of single characters, for text that needs no shaping.
// Internal to this folder.
//
// Latin, Greek and Cyrillic characters of most faces look the same in every text: without kerning
// a text is its characters side by side. So such texts are put together here, which costs a tenth
// of shaping them; the pixels are the same.
#pragma once
#include "platform/window/types.h"

#include <vector>

namespace platform {

struct Face;

// Characters from here on are always shaped: Hebrew begins, and with it writing from the right.
constexpr char16_t kGlyphLimit = 0x590;
// Larger faces are always shaped: their masks would need too much memory.
constexpr int kMaxGlyphEm = 64;

// Rows of bytes that start stride apart.
struct Coverage {
    std::vector<std::uint8_t> bytes;
    std::ptrdiff_t stride = 0;
};

class GlyphTable {
public:
    // The width of the text in pixels, or -1 when one of its units needs shaping.
    [[nodiscard]] std::int64_t width(const Face& face, TextView text);

    // A box that holds all pixels of any text of that width, counted from the text's left end and
    // the line's top.
    [[nodiscard]] RECT box(std::int32_t textWidth) const {
        return {-m_overhang, m_top, textWidth + m_overhang, m_bottom};
    }
    // How much the text covers of each pixel in window, 0 to 255. Only for texts that width()
    // knows.
    void cover(TextView text, const RECT& window, Coverage& coverage) const;

private:
    struct Glyph {
        std::int16_t left = 0, top = 0, width = 0, height = 0;
        std::uint32_t mask = 0;  // its place in m_masks
        // Rows are padded by zeros to whole words, so that they can be copied by words.
        [[nodiscard]] int stride() const { return (width + kWord - 1) / kWord * kWord; }
    };
    static constexpr int kWord = 8;
    static constexpr std::int16_t kUnknown = -1, kShaped = -2;
    std::int16_t resolve(const Face& face, char16_t unit);

    std::vector<std::int16_t> m_advances;  // pixels, or one of the two above
    std::vector<Glyph> m_glyphs;
    std::vector<std::uint8_t> m_masks;
    // The most that any glyph so far reaches beyond its advance or start, and up and down.
    std::int32_t m_overhang = 0, m_top = 0, m_bottom = 0;
};

}  // namespace platform
