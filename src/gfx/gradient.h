// gfx/gradient.h: gradients of which only a part is drawn, for the sources of this folder.
#pragma once
#include "gfx/types.h"

namespace gfx {

struct Span {
    std::int32_t begin = 0, end = 0;  // end exclusive
};

// A gradient over all rows of `rows`, of which those inside of `shown` are drawn, each over
// `columns`. The colours may be those of the desktop. A context of 0 draws nothing.
void gradientRows(HDC hDC, Span columns, Span rows, Span shown, Color from, Color to);
void gradientColumns(HDC hDC, Span rows, Span columns, Span shown, Color from, Color to);

}  // namespace gfx
