// Lines with thin, patterned and wide pens.
#include "platform/window/recorder.h"
#include "platform/window/surface_pen.h"

#include <algorithm>
#include <cmath>

namespace platform {
namespace {

__extension__ using Wide = unsigned __int128;

// ---- Patterns

struct Pattern {
    std::uint32_t on = 0, length = 0;
};
constexpr Pattern pattern(std::initializer_list<std::uint32_t> onAndOff) {
    Pattern made;
    bool on = true;
    for (const std::uint32_t pixels : onAndOff) {
        if (on) made.on |= ((1U << pixels) - 1) << made.length;
        made.length += pixels;
        on = !on;
    }
    return made;
}
constexpr Pattern kPatterns[] = {
    pattern({18, 6}),             // PS_DASH
    pattern({3, 3}),              // PS_DOT
    pattern({9, 6, 3, 6}),        // PS_DASHDOT
    pattern({9, 3, 3, 3, 3, 3}),  // PS_DASHDOTDOT
};

// ---- Thin lines

// A line in steps along its longer direction: pixel i lies i steps along it and across(i) steps
// along the other. The numbers may be those of any 32-bit coordinates.
class ThinLine {
public:
    ThinLine(POINT from, POINT to) : m_from(from) {
        const std::int64_t dx = std::int64_t{to.x} - from.x, dy = std::int64_t{to.y} - from.y;
        m_signX = dx < 0 ? -1 : 1;
        m_signY = dy < 0 ? -1 : 1;
        m_steep = std::abs(dy) > std::abs(dx);
        m_length = std::max(std::abs(dx), std::abs(dy));
        m_whole = 2 * m_length;
        m_step = 2 * std::min(std::abs(dx), std::abs(dy));
        // Half way between two pixels the smaller coordinate wins: going up or left, the step
        // comes at the middle already.
        m_round = m_length - ((m_steep ? m_signX : m_signY) > 0 ? 1 : 0);
    }

    [[nodiscard]] std::int64_t length() const { return m_length; }  // without the end point

    // Calls before(n) with the number of pixels ahead of the first visible one, then f(x, y) for
    // the visible ones, in order. Gives how many pixels of the line are done then.
    template <class Before, class F> std::int64_t draw(const RECT& clip, Before before, F f) const {
        if (isEmpty(clip) || m_length == 0) return 0;
        const std::int64_t along = m_steep ? m_from.y : m_from.x;
        const std::int64_t other = m_steep ? m_from.x : m_from.y;
        const int alongSign = m_steep ? m_signY : m_signX, otherSign = m_steep ? m_signX : m_signY;
        const Steps first = steps(along, alongSign, m_steep ? clip.top : clip.left,
                                  m_steep ? clip.bottom : clip.right);
        const Steps second = steps(other, otherSign, m_steep ? clip.left : clip.top,
                                   m_steep ? clip.right : clip.bottom);
        const std::int64_t low = std::clamp<std::int64_t>(first.low, 0, m_length);
        const std::int64_t high = std::clamp<std::int64_t>(first.high, low, m_length);
        const std::int64_t begin = firstAcross(second.low, low, high);
        const std::int64_t end = firstAcross(second.high, begin, high);
        before(begin);

        std::int64_t k = across(begin);
        auto rest = static_cast<std::int64_t>(scaled(begin) % static_cast<Wide>(m_whole));
        for (std::int64_t i = begin; i < end; ++i) {
            const auto a = static_cast<int>(along + alongSign * i);
            const auto o = static_cast<int>(other + otherSign * k);
            m_steep ? f(o, a) : f(a, o);
            rest += m_step;
            if (rest >= m_whole) {
                rest -= m_whole;
                ++k;
            }
        }
        return end;
    }

private:
    struct Steps {
        std::int64_t low, high;
    };
    // The steps from start in the direction of sign that stay in [begin, end), high exclusive.
    static Steps steps(std::int64_t start, int sign, std::int64_t begin, std::int64_t end) {
        return sign > 0 ? Steps{begin - start, end - start}
                        : Steps{start - end + 1, start - begin + 1};
    }
    // How far pixel i lies across, times m_whole.
    [[nodiscard]] Wide scaled(std::int64_t i) const {
        return static_cast<Wide>(m_step) * static_cast<Wide>(i) + static_cast<Wide>(m_round);
    }
    [[nodiscard]] std::int64_t across(std::int64_t i) const {
        return static_cast<std::int64_t>(scaled(i) / static_cast<Wide>(m_whole));
    }
    // The first i from low on, high at most, whose pixel is at least so many steps across.
    [[nodiscard]] std::int64_t firstAcross(std::int64_t count, std::int64_t low,
                                           std::int64_t high) const {
        while (low < high) {
            const std::int64_t middle = low + (high - low) / 2;
            if (across(middle) >= count) {
                high = middle;
            } else {
                low = middle + 1;
            }
        }
        return low;
    }

    POINT m_from;
    int m_signX, m_signY;
    bool m_steep;
    std::int64_t m_length, m_whole, m_step, m_round;
};

void drawThin(DcRecord& dc, POINT from, POINT to) {
    BitmapRecord& bitmap = *dc.bitmap;
    const std::uint32_t value = valueOf(bitmap, dc.pen->color);
    if (from.y == to.y || from.x == to.x) {
        if (from == to) return;
        // From a to b without b; a alone where the line doesn't go.
        const auto firstOf = [](std::int64_t a, std::int64_t b) { return a <= b ? a : b + 1; };
        const auto endOf = [](std::int64_t a, std::int64_t b) { return a < b ? b : a + 1; };
        const RECT& clip = dc.clip;
        fillValue(bitmap,
                  {between(firstOf(from.x, to.x), clip.left, clip.right),
                   between(firstOf(from.y, to.y), clip.top, clip.bottom),
                   between(endOf(from.x, to.x), clip.left, clip.right),
                   between(endOf(from.y, to.y), clip.top, clip.bottom)},
                  value);
        return;
    }
    const auto none = [](std::int64_t) {};
    if (bitmap.bitsPerPixel == 32) {
        ThinLine(from, to).draw(dc.clip, none, [&](int x, int y) { bitmap.row(y)[x] = value; });
    } else {
        ThinLine(from, to).draw(dc.clip, none, [&](int x, int y) {
            writeValues(bitmap, x, y, {&value, 1});
        });
    }
}

void drawPatterned(DcRecord& dc, POINT from, POINT to) {
    PatternedPen pen(dc, dc.penPhase);
    const ThinLine line(from, to);
    const std::int64_t end = line.draw(
        dc.clip, [&](std::int64_t pixels) { pen.skip(pixels); },
        [&](int x, int y) { pen.put(x, y); });
    pen.skip(line.length() - end);
    dc.penPhase = pen.phase();
}

// ---- Wide lines

// The pixels of a row whose middles are nearer to the line between two points than the pen's
// radius.
class WideLine {
public:
    WideLine(POINT from, POINT to, int width)
        : m_radius(width / 2.0), m_ax(from.x - lean(width)), m_ay(from.y - lean(width)),
          m_bx(to.x - lean(width)), m_by(to.y - lean(width)) {
        m_length = std::hypot(m_bx - m_ax, m_by - m_ay);
        m_ux = m_length > 0 ? (m_bx - m_ax) / m_length : 1;
        m_uy = m_length > 0 ? (m_by - m_ay) / m_length : 0;
    }

    void fill(DcRecord& dc, std::uint32_t value) const {
        const RECT& clip = dc.clip;
        const int top = pixel(std::ceil(std::min(m_ay, m_by) - m_radius), clip.top, clip.bottom);
        const int bottom =
            pixel(std::floor(std::max(m_ay, m_by) + m_radius) + 1, clip.top, clip.bottom);
        for (int y = top; y < bottom; ++y) {
            Span span;
            addEnd(span, m_ax, m_ay, y);
            addEnd(span, m_bx, m_by, y);
            addMiddle(span, y);
            if (span.right < span.left) continue;
            fillValue(*dc.bitmap,
                      {pixel(std::ceil(span.left - kTiny), clip.left, clip.right), y,
                       pixel(std::floor(span.right + kTiny) + 1, clip.left, clip.right), y + 1},
                      value);
        }
    }

private:
    static constexpr double kTiny = 1e-6;  // takes rounding errors
    struct Span {
        double left = 1e12, right = -1e12;
        void add(double from, double to) {
            left = std::min(left, from);
            right = std::max(right, to);
        }
    };
    static double lean(int width) { return width % 2 == 0 ? 0.5 : 0; }
    static int pixel(double value, int low, int high) {
        return static_cast<int>(std::clamp<double>(value, low, high));
    }
    void addEnd(Span& span, double x, double y, int row) const {
        const double square = m_radius * m_radius - (row - y) * (row - y);
        if (square < 0) return;
        span.add(x - std::sqrt(square), x + std::sqrt(square));
    }
    // The part beside the line: within the radius across it, and between its ends along it.
    void addMiddle(Span& span, int row) const {
        double left = -1e12, right = 1e12;
        const double dy = row - m_ay;
        const auto narrow = [&](double slope, double offset, double low, double high) {
            // low <= slope * (x - ax) + offset <= high
            if (std::abs(slope) < 1e-12) {
                if (offset < low || offset > high) right = -1e12;
                return;
            }
            const double a = m_ax + (low - offset) / slope, b = m_ax + (high - offset) / slope;
            left = std::max(left, std::min(a, b));
            right = std::min(right, std::max(a, b));
        };
        narrow(-m_uy, dy * m_ux, -m_radius, m_radius);
        narrow(m_ux, dy * m_uy, 0, m_length);
        if (left <= right) span.add(left, right);
    }

    double m_radius, m_ax, m_ay, m_bx, m_by, m_length = 0, m_ux = 1, m_uy = 0;
};

}  // namespace

std::string recordedPen(const PenRecord& pen) {
    return recordedColor(pen.color) + " width " + std::to_string(pen.width) + " style " +
           std::to_string(pen.style);
}

PatternedPen::PatternedPen(DcRecord& dc, std::uint32_t phase)
    : m_dc(dc), m_on(kPatterns[dc.pen->style - PS_DASH].on),
      m_length(kPatterns[dc.pen->style - PS_DASH].length), m_phase(phase % m_length),
      m_value(valueOf(*dc.bitmap, dc.pen->color)), m_gap(valueOf(*dc.bitmap, dc.bkColor)),
      m_gaps(dc.bkMode == OPAQUE) {}

void PatternedPen::put(int x, int y) {
    const bool on = (m_on >> m_phase & 1) != 0;
    if (on || m_gaps) writeValues(*m_dc.bitmap, x, y, {on ? &m_value : &m_gap, 1});
    if (++m_phase == m_length) m_phase = 0;
}

void PatternedPen::skip(std::int64_t pixels) {
    m_phase = static_cast<std::uint32_t>((m_phase + pixels) % m_length);
}

void PatternedPen::run(std::int64_t x, std::int64_t y, int stepX, int stepY, std::int64_t length) {
    const RECT& clip = m_dc.clip;
    const bool across = stepX != 0;
    const std::int64_t start = across ? x : y;
    const std::int64_t low = across ? clip.left : clip.top,
                       high = across ? clip.right : clip.bottom;
    const int sign = stepX + stepY;
    std::int64_t begin = std::max<std::int64_t>(sign > 0 ? low - start : start - high + 1, 0);
    std::int64_t end = std::min(sign > 0 ? high - start : start - low + 1, length);
    if (end <= begin || !contains(clip, x + begin * stepX, y + begin * stepY)) begin = end = 0;
    skip(begin);
    for (std::int64_t i = begin; i < end; ++i) {
        put(static_cast<int>(x + i * stepX), static_cast<int>(y + i * stepY));
    }
    skip(length - end);
}

bool MoveToEx(HDC hDC, int x, int y, POINT* pPrevious) {
    DcRecord* dc = dcOf(hDC);
    if (dc == nullptr) return false;
    if (pPrevious != nullptr) *pPrevious = dc->position;
    dc->position = {x, y};
    dc->penPhase = 0;
    return true;
}

bool LineTo(HDC hDC, int x, int y) {
    DcRecord* dc = dcOf(hDC);
    if (dc == nullptr) return false;
    const POINT from = dc->position, to{x, y};
    const PenRecord& pen = *dc->pen;
    if (recording()) {
        record(hDC, "LineTo %d,%d %d,%d %s", from.x, from.y, x, y, recordedPen(pen).c_str());
    }
    dc->position = to;
    if (pen.style == PS_NULL) return true;
    if (pen.width > 1) {
        WideLine(from, to, pen.width).fill(*dc, valueOf(*dc->bitmap, pen.color));
    } else if (pen.style == PS_SOLID) {
        drawThin(*dc, from, to);
    } else {
        drawPatterned(*dc, from, to);
    }
    drawn(*dc);
    return true;
}

}  // namespace platform
