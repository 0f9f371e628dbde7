// gallery/samples.h: the pictures that the pages show. Drawn by the program, so that they are the
// same everywhere.
#pragma once
#include "gfx/clsDIBSection.h"
#include "platform/window/surface.h"

namespace gallery {

// A landscape with many colours, 24 bits. Sizes below 1 count as 1.
[[nodiscard]] clsDIBSection landscape(int width, int height);

// A flower of 48 x 48 on kKeyColor, which also is its top left pixel.
constexpr Color kKeyColor = platform::rgb(255, 0, 255);
[[nodiscard]] std::shared_ptr<platform::PictureObject> flower();
// The same as an icon, its background left out by the mask; and a black and white one of 32 x 32.
[[nodiscard]] std::shared_ptr<platform::PictureObject> flowerIcon();
[[nodiscard]] std::shared_ptr<platform::PictureObject> monochromeIcon();

// Squares of two greys, so that what is left out of a picture shows.
void drawCheckers(HDC hDC, const RECT& rect);

}  // namespace gallery
