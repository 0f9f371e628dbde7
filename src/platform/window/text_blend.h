// platform/window/text_blend.h: text onto 32-bit pixels. Internal to this folder.
#pragma once
#include "platform/window/types.h"

#include <cstddef>

namespace platform {

// Rows of 0xFFRRGGBB. Drawing stays inside clip, which must lie inside the pixels.
struct PixelView {
    std::uint8_t* top = nullptr;  // pixel (0, 0)
    std::ptrdiff_t stride = 0;    // bytes to the row below
    RECT clip;
    [[nodiscard]] std::uint32_t* row(int y) const {
        return reinterpret_cast<std::uint32_t*>(top + y * stride);
    }
};

// How much of each pixel the text covers, 0 to 255, in rows from the top that start stride apart.
// With own, characters that bring their colours: their pixels, premultiplied by their coverage;
// mask holds what is still the text colour's share, and the top byte of own covers both.
struct TextMask {
    std::int32_t width = 0, height = 0;
    std::ptrdiff_t stride = 0;
    const std::uint8_t* mask = nullptr;
    const std::uint32_t* own = nullptr;
};

// Draws the mask with its top left at (x, y). color is 0xFFRRGGBB.
void blend(const PixelView& view, std::int64_t x, std::int64_t y, const TextMask& mask,
           std::uint32_t color);
// Sets the part of the rectangle that is inside of the clip.
void fill(const PixelView& view, const RECT& rect, std::uint32_t color);

}  // namespace platform
