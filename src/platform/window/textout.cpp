#include "platform/window/textout.h"

#include "platform/window/recorder.h"
#include "platform/window/text_blend.h"
#include "platform/window/text_face.h"
#include "platform/window/text_lines.h"
#include "platform/window/text_shape.h"

#include <algorithm>

namespace platform {
namespace {

// The pixels that text is drawn on: those of the context, or for other depths than 32 bits a copy
// of the area, whose changes go back at the end; see forStrips.
class Target {
public:
    Target(const DcRecord& dc, const RECT& area) : m_dc(dc), m_area(area) {
        const BitmapRecord& bitmap = *dc.bitmap;
        if (bitmap.bitsPerPixel == 32) {
            m_view = {bitmap.top, bitmap.stride, area};
            return;
        }
        m_origin = {area.left, area.top};
        const int width = area.right - area.left, height = area.bottom - area.top;
        m_view = {nullptr, static_cast<std::ptrdiff_t>(width) * 4, {0, 0, width, height}};
        m_before.resize(static_cast<std::size_t>(width) * height);
        for (int y = 0; y < height; ++y) {
            readPixels(*dc.bitmap, area.left, area.top + y, rowOf(m_before, y));
        }
        m_pixels = m_before;
        m_view.top = reinterpret_cast<std::uint8_t*>(m_pixels.data());
    }
    ~Target() {
        for (int y = 0; !m_pixels.empty() && y < m_view.clip.bottom; ++y) writeChanges(y);
        drawn(m_dc);
    }
    Target(const Target&) = delete;
    Target& operator=(const Target&) = delete;

    [[nodiscard]] const PixelView& view() const { return m_view; }
    [[nodiscard]] POINT origin() const { return m_origin; }  // of the view in the context

private:
    [[nodiscard]] std::span<std::uint32_t> rowOf(std::vector<std::uint32_t>& pixels, int y) const {
        const auto width = static_cast<std::size_t>(m_view.clip.right);
        return std::span(pixels).subspan(y * width, width);
    }
    // Only what has changed: a table can have one colour twice, and a pixel keeps its index.
    void writeChanges(int y) {
        const auto before = rowOf(m_before, y), after = rowOf(m_pixels, y);
        for (std::size_t x = 0; x < after.size();) {
            std::size_t end = x;
            while (end < after.size() && after[end] != before[end]) ++end;
            if (end > x) {
                writePixels(*m_dc.bitmap, m_area.left + static_cast<int>(x), m_area.top + y,
                            after.subspan(x, end - x));
            }
            x = end + 1;
        }
    }

    const DcRecord& m_dc;
    RECT m_area;
    PixelView m_view;
    POINT m_origin;
    std::vector<std::uint32_t> m_before, m_pixels;
};

// How far above and below its line text may reach: letters by less than their height, but marks are
// stacked, and other faces can have a higher line.
std::int64_t rowsBeside(const Face& face) { return std::int64_t{2} * face.metrics.em; }

// The rows of an area that text of that height may touch.
RECT touchedRows(const RECT& area, const Face& face, std::int64_t top, std::int64_t height) {
    return {area.left, std::max(area.top, saturated(top - rowsBeside(face))), area.right,
            std::min(area.bottom, saturated(top + height + rowsBeside(face)))};
}

// Calls f for the parts of an area, from the top: on 32 bits for all of it at once, else for so
// many rows that their copy needs little memory, however large the surface is.
template <class F> void forStrips(const DcRecord& dc, const RECT& area, F f) {
    constexpr int kMostPixels = 1 << 16;
    if (isEmpty(area)) return;
    const int rows = dc.bitmap->bitsPerPixel == 32
                         ? area.bottom - area.top
                         : std::max(kMostPixels / (area.right - area.left), 1);
    for (int top = area.top; top < area.bottom; top += rows) {
        f(RECT{area.left, top, area.right, std::min(top + rows, area.bottom)});
    }
}

// Draws lines of one DrawTextW.
class Painter {
public:
    Painter(const DcRecord& dc, Face& face, const RECT& area, bool rightToLeft)
        : m_face(face), m_rightToLeft(rightToLeft), m_opaque(dc.bkMode == OPAQUE),
          m_color(pixelOf(dc.textColor)), m_background(pixelOf(dc.bkColor)), m_target(dc, area),
          m_view(m_target.view()) {}

    // A line with its top left at (x, y). Its width is only looked at in text from right to left.
    void drawLine(const TextLine& line, std::int64_t x, std::int64_t y) {
        x -= m_target.origin().x;
        y -= m_target.origin().y;
        if (y - rowsBeside(m_face) >= m_view.clip.bottom) return;
        if (y + m_face.metrics.height() + rowsBeside(m_face) <= m_view.clip.top) return;
        const int reach = m_face.metrics.em;  // how far letters may reach out of their columns

        LinePieces pieces(line.text);
        std::int64_t end = 0;  // of the pieces so far, from where reading begins
        while (pieces.next()) {
            const TextView piece = pieces.piece();
            const bool whole = piece.size() == line.text.size();
            const std::int64_t start = pieces.place(m_face, end);
            if (m_opaque && start > end) {
                fillRow(m_rightToLeft ? x + line.width - start : x + end, y, start - end, 0,
                        m_face.metrics.height(), m_background);
            }
            if (!m_rightToLeft && x + start - reach >= m_view.clip.right) break;
            const std::int64_t width =
                whole && !m_rightToLeft ? 0 : pieceWidth(m_face, piece, m_rightToLeft);
            const std::int64_t left = m_rightToLeft ? x + line.width - start - width : x + start;
            const bool inSight = whole || (left - reach < m_view.clip.right &&
                                           left + width + reach > m_view.clip.left);
            const std::int64_t mark = line.mark - static_cast<std::int64_t>(pieces.start());
            const bool marked = mark >= 0 && mark < static_cast<std::int64_t>(piece.size());
            end = start + (inSight && !piece.empty()
                               ? drawPiece(piece, left, y, marked ? static_cast<int>(mark) : -1)
                               : width);
        }
    }

private:
    // Gives the width.
    std::int64_t drawPiece(TextView piece, std::int64_t x, std::int64_t y, int mark) {
        const RECT window{saturated(m_view.clip.left - x), saturated(m_view.clip.top - y),
                          saturated(m_view.clip.right - x), saturated(m_view.clip.bottom - y)};
        std::int64_t width = m_rightToLeft ? -1 : m_face.glyphs.width(m_face, piece);
        std::int64_t markLeft = 0, markRight = 0;
        if (width >= 0) {
            drawBackground(x, y, width);
            const RECT seen =
                intersection(m_face.glyphs.box(static_cast<std::int32_t>(width)), window);
            if (!isEmpty(seen)) {
                m_face.glyphs.cover(piece, seen, m_coverage);
                blend(m_view, x + seen.left, y + seen.top,
                      {seen.right - seen.left, seen.bottom - seen.top, m_coverage.stride,
                       m_coverage.bytes.data()},
                      m_color);
            }
            if (mark >= 0) {
                markLeft = m_face.glyphs.width(m_face, piece.substr(0, mark));
                markRight = m_face.glyphs.width(m_face, piece.substr(0, mark + 1));
            }
        } else {
            const ShapedText& text = shaped(m_face, piece, {m_rightToLeft, mark}, window);
            width = text.width();
            drawBackground(x, y, width);
            blend(m_view, x + text.left, y + text.top,
                  {text.boxWidth, text.boxHeight, text.boxWidth, text.mask.data(),
                   text.own.empty() ? nullptr : text.own.data()},
                  m_color);
            markLeft = text.markLeft;
            markRight = text.markRight;
        }
        const FaceMetrics& metrics = m_face.metrics;
        const auto drawStroke = [&](std::int64_t from, std::int64_t to, int top) {
            fillRow(x + from, y, to - from, top, metrics.lineThickness, m_color);
        };
        if (m_face.wish.underline) {
            drawStroke(0, width, metrics.underlineTop);
        } else if (mark >= 0) {
            drawStroke(markLeft, markRight, metrics.underlineTop);
        }
        if (m_face.wish.strikeOut) drawStroke(0, width, metrics.strikeOutTop);
        return width;
    }

    void drawBackground(std::int64_t x, std::int64_t y, std::int64_t width) {
        if (m_opaque) fillRow(x, y, width, 0, m_face.metrics.height(), m_background);
    }

    void fillRow(std::int64_t x, std::int64_t y, std::int64_t width, int top, int height,
                 std::uint32_t color) {
        fill(m_view,
             {saturated(x), saturated(y + top), saturated(x + width), saturated(y + top + height)},
             color);
    }

    Face& m_face;
    bool m_rightToLeft, m_opaque;
    std::uint32_t m_color, m_background;
    Target m_target;
    const PixelView& m_view;
    Coverage& m_coverage = sharedCoverage();

    // Kept, so that a cell of text allocates nothing.
    static Coverage& sharedCoverage() {
        static Coverage coverage;
        return coverage;
    }
};

std::int64_t leftOf(const RECT& rect, std::int64_t width, std::uint32_t flags) {
    if ((flags & DT_CENTER) != 0) {
        return rect.left + (std::int64_t{rect.right} - rect.left - width) / 2;
    }
    return (flags & DT_RIGHT) != 0 ? rect.right - width : rect.left;
}

std::int64_t topOf(const RECT& rect, std::int64_t height, std::uint32_t flags) {
    if ((flags & DT_SINGLELINE) == 0) return rect.top;
    if ((flags & DT_VCENTER) != 0) {
        return rect.top + (std::int64_t{rect.bottom} - rect.top - height) / 2;
    }
    return (flags & DT_BOTTOM) != 0 ? rect.bottom - height : rect.top;
}

RECT drawingArea(const DcRecord& dc, const RECT& rect, std::uint32_t flags) {
    return (flags & DT_NOCLIP) != 0 ? dc.clip : intersection(dc.clip, rect);
}

// One line that is drawable as it is, or its size in the rectangle. Gives where its bottom is.
std::int64_t putSingleLine(const DcRecord& dc, Face& face, const TextLine& line, RECT& rect,
                           std::uint32_t flags) {
    const std::int64_t height =
        face.metrics.height() +
        ((flags & DT_EXTERNALLEADING) != 0 ? face.metrics.externalLeading : 0);
    if ((flags & DT_CALCRECT) != 0) {
        rect.right = saturated(rect.left + line.width);
        rect.bottom = saturated(rect.top + height);
        return height;
    }
    const std::int64_t top = topOf(rect, height, flags);
    const RECT area = touchedRows(drawingArea(dc, rect, flags), face, top, height);
    forStrips(dc, area, [&](const RECT& strip) {
        Painter(dc, face, strip, (flags & DT_RTLREADING) != 0)
            .drawLine(line, leftOf(rect, line.width, flags), top);
    });
    return top + height - rect.top;
}

std::int64_t putLines(const DcRecord& dc, Face& face, const DrawableText& drawable, RECT& rect,
                      std::uint32_t flags) {
    const LineOptions options(flags);
    const std::vector<TextLine> lines =
        linesOf(face, drawable, std::int64_t{rect.right} - rect.left, options);
    const std::int64_t step =
        face.metrics.height() +
        ((flags & DT_EXTERNALLEADING) != 0 ? face.metrics.externalLeading : 0);
    const std::int64_t height = step * static_cast<std::int64_t>(lines.size());
    if ((flags & DT_CALCRECT) != 0) {
        std::int64_t width = 0;
        for (const TextLine& line : lines) width = std::max(width, line.width);
        rect.right = saturated(rect.left + width);
        rect.bottom = saturated(rect.top + height);
        return height;
    }
    const std::int64_t lineHeight = face.metrics.height();
    const RECT area = touchedRows(drawingArea(dc, rect, flags), face, rect.top, height);
    forStrips(dc, area, [&](const RECT& strip) {
        Painter painter(dc, face, strip, options.rightToLeft);
        const std::int64_t above = (strip.top - rowsBeside(face) - lineHeight - rect.top) / step;
        for (auto i = static_cast<std::size_t>(std::max<std::int64_t>(above, 0)); i < lines.size();
             ++i) {
            const std::int64_t y = rect.top + static_cast<std::int64_t>(i) * step;
            const bool partly = y + lineHeight > rect.bottom && y > rect.top;
            if ((flags & DT_EDITCONTROL) != 0 && partly) break;
            if (y - rowsBeside(face) >= strip.bottom) break;
            painter.drawLine(lines[i], leftOf(rect, lines[i].width, flags), y);
        }
    });
    return height;
}

}  // namespace

int DrawTextW(HDC hDC, TextView text, RECT& rect, std::uint32_t flags) {
    const DcRecord* dc = dcOf(hDC);
    if (dc == nullptr) return 0;
    if (recording() && (flags & DT_CALCRECT) == 0) {
        record(hDC, "DrawTextW %s %s flags 0x%X %s", recordedRect(rect).c_str(),
               recordedColor(dc->textColor).c_str(), flags, recordedText(text).c_str());
    }
    Face& face = faceOf(*dc);
    const bool rightToLeft = (flags & DT_RTLREADING) != 0;
    if ((flags & DT_SINGLELINE) == 0) {
        Text storage;
        return saturated(putLines(*dc, face, DrawableText(text, flags, storage), rect, flags));
    }

    // Most text is a line of simple characters: known ones need no other look.
    const bool mayHavePrefix = (flags & DT_NOPREFIX) == 0 && text.find(u'&') != TextView::npos;
    if (!rightToLeft && !mayHavePrefix) {
        if (const std::int64_t width = face.glyphs.width(face, text); width >= 0) {
            return saturated(putSingleLine(*dc, face, {text, width, -1}, rect, flags));
        }
    }
    Text storage;
    const DrawableText drawable(text, flags, storage);
    TextLine line{drawable.text, 0, drawable.mark};
    // Text from left to right that starts at the left is drawn up to where it leaves the rectangle,
    // however long it is.
    if (rightToLeft || (flags & (DT_CENTER | DT_RIGHT | DT_CALCRECT)) != 0) {
        line.width = lineWidth(face, line.text, rightToLeft);
    }
    return saturated(putSingleLine(*dc, face, line, rect, flags));
}

}  // namespace platform
