// platform/window/picturefile.h: bitmaps as picture files.
#pragma once
#include "platform/window/types.h"

namespace platform {

// Writes a bitmap of any depth as a PNG file of 24 bits a pixel, over a file that is there. The
// same pixels give the same bytes. The path is in the inside form. False when the bitmap is unknown
// and nothing is written, or when the file cannot be written, or not to its end.
[[nodiscard]] bool writePngFile(HBITMAP hBitmap, TextView path);

}  // namespace platform
