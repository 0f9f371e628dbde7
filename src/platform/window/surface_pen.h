// platform/window/surface_pen.h: what lines and outlines share about pens.
#pragma once
#include "platform/window/surface_internal.h"

#include <string>

namespace platform {

// "#000000 width 1 style 0"
[[nodiscard]] std::string recordedPen(const PenRecord& pen);

// Draws with the context's pen of style dash to dash-dot-dot, pixel by pixel or in straight runs.
class PatternedPen {
public:
    PatternedPen(DcRecord& dc, std::uint32_t phase);

    // The pixel (x, y), which must be visible.
    void put(int x, int y);
    void skip(std::int64_t pixels);
    // length pixels from (x, y) on; one of the steps is 0, the other 1 or -1.
    void run(std::int64_t x, std::int64_t y, int stepX, int stepY, std::int64_t length);
    [[nodiscard]] std::uint32_t phase() const { return m_phase; }  // where in the pattern it is

private:
    DcRecord& m_dc;
    std::uint32_t m_on, m_length;  // a bit for each pixel of the pattern; its pixels
    std::uint32_t m_phase;
    std::uint32_t m_value, m_gap;
    bool m_gaps;  // the gaps are drawn, too
};

}  // namespace platform
