// grid/gridPictures.h: the grid's own small pictures.
//
// The bitmaps have 24 bits on a pure red background, which their pixel at 0, 0 shows: it is the
// colour to leave out. None when the desktop has no room for more.
#pragma once
#include "platform/window/surface.h"

#include <memory>

struct GridPictures {
    std::shared_ptr<platform::PictureObject> picFlag;       // 7 x 7, the mark of a true flag cell
    std::shared_ptr<platform::PictureObject> picSortDown;   // 9 x 4, a triangle that points down
    std::shared_ptr<platform::PictureObject> picSortUp;     // 9 x 4, and up
    std::shared_ptr<platform::PictureObject> picCurVGuide;  // a 32 x 32 cursor, hot spot at 6, 7
};
[[nodiscard]] GridPictures gridPictures();
