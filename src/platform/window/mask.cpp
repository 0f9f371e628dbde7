#include "platform/window/mask.h"

#include "platform/window/surface_internal.h"

#include <algorithm>

namespace platform {

HRGN createMaskRgn(HBITMAP hBitmap, COLORREF transparent) {
    const BitmapRecord* bitmap = bitmapOf(hBitmap);
    if (bitmap == nullptr) return 0;
    const std::uint32_t hole = pixelOf(transparent) & 0xFFFFFF;
    RegionRecord region;
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(bitmap->width));
    std::vector<RECT> band, above;
    const auto flush = [&] { region.rects.insert(region.rects.end(), above.begin(), above.end()); };
    for (int y = 0; y < bitmap->height; ++y) {
        readPixels(*bitmap, 0, y, pixels);
        band.clear();
        for (int x = 0; x < bitmap->width; ++x) {
            if ((pixels[static_cast<std::size_t>(x)] & 0xFFFFFF) == hole) continue;
            if (!band.empty() && band.back().right == x) {
                ++band.back().right;
            } else {
                band.push_back({x, y, x + 1, y + 1});
            }
        }
        // Rows of the same runs make one band.
        const auto sameRun = [](const RECT& a, const RECT& b) {
            return a.left == b.left && a.right == b.right;
        };
        if (std::ranges::equal(above, band, sameRun)) {
            for (RECT& run : above) ++run.bottom;
        } else {
            flush();
            above.swap(band);
        }
    }
    flush();
    return addObject(regionTable(), std::move(region));
}

}  // namespace platform
