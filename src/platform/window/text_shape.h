// platform/window/text_shape.h: shaped text and its caches. Internal to this folder.
//
// Text here is one piece of a line, at most kLongLine units, without control units and lone
// surrogates.
#pragma once
#include "platform/window/types.h"

#include <vector>

namespace platform {

struct Face;

struct ShapeOptions {
    bool rightToLeft = false;  // the paragraph's direction
    std::int32_t mark = -1;    // the unit whose place is wanted, for underlining
};

// Pixels; places count from the left end of the text and the top of its line.
struct ShapedText {
    std::int32_t advance = 0;                  // in 1/64 pixel
    std::int32_t markLeft = 0, markRight = 0;  // of the marked character
    // The box of all pixels that are drawn, with their coverage; see TextMask.
    std::int32_t left = 0, top = 0, boxWidth = 0, boxHeight = 0;
    std::vector<std::uint8_t> mask;
    std::vector<std::uint32_t> own;

    [[nodiscard]] std::int32_t width() const { return (advance + 63) / 64; }
};

// The width in pixels that shaped() would give.
[[nodiscard]] std::int32_t shapedWidth(const Face& face, TextView text, bool rightToLeft);

// The text with its pixels. Of a huge one only those in the window, which counts from the same
// point as everything else; others are complete, and kept. The result stays until the next call.
[[nodiscard]] const ShapedText& shaped(const Face& face, TextView text, const ShapeOptions& options,
                                       const RECT& window);

// The same by itself, always complete, past the cache.
[[nodiscard]] ShapedText shapedNow(const Face& face, TextView text, const ShapeOptions& options);

// Empties the caches of texts and widths.
void clearShapedText();

}  // namespace platform
