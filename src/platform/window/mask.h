// platform/window/mask.h: regions made of pictures.
#pragma once
#include "platform/window/types.h"

namespace platform {

// The region of all pixels of a bitmap that have another colour than the given one. The caller
// deletes it. 0 on failure; a bitmap of that colour alone gives a region without any pixel.
[[nodiscard]] HRGN createMaskRgn(HBITMAP hBitmap, COLORREF transparent);

}  // namespace platform
