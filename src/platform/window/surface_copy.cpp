// Copies between surfaces: the 256 raster operations, the way between depths, stretching.
#include "platform/window/recorder.h"
#include "platform/window/surface_internal.h"

#include <algorithm>
#include <cstring>

namespace platform {
namespace {

using Values = std::span<std::uint32_t>;

// ---- Raster operations

// Bit p * 4 + s * 2 + d of the code is what the operation gives for a bit p of the pattern, s of
// the source and d of the destination.
constexpr std::uint32_t codeOf(std::uint32_t rop) { return rop >> 16 & 0xFF; }
constexpr bool needsPattern(std::uint32_t rop) {
    return ((codeOf(rop) >> 4 ^ rop >> 16) & 0xF) != 0;
}
constexpr bool needsSource(std::uint32_t rop) {
    return ((codeOf(rop) >> 2 ^ rop >> 16) & 0x33) != 0;
}

// An operation with its pattern settled: what remains are the four cases of source and destination.
class RasterOp {
public:
    RasterOp(std::uint32_t rop, std::uint32_t pattern, std::uint32_t unused)
        : m_none(gives(rop, pattern, 0)), m_destination(gives(rop, pattern, 1)),
          m_source(gives(rop, pattern, 2)), m_both(gives(rop, pattern, 3)), m_unused(unused) {}

    // values and present have one length; present takes the result.
    void operator()(std::span<const std::uint32_t> source, Values present) const {
        for (std::size_t i = 0; i < present.size(); ++i) {
            const std::uint32_t s = source[i], d = present[i];
            present[i] = (~s & ((~d & m_none) | (d & m_destination))) |
                         (s & ((~d & m_source) | (d & m_both))) | m_unused;
        }
    }

private:
    static std::uint32_t gives(std::uint32_t rop, std::uint32_t pattern, unsigned bits) {
        const bool without = (codeOf(rop) >> bits & 1) != 0;
        const bool with = (codeOf(rop) >> (4 + bits) & 1) != 0;
        return (with ? pattern : 0) | (without ? ~pattern : 0);
    }
    std::uint32_t m_none, m_destination, m_source, m_both, m_unused;
};

// ---- Between depths

// Source pixels on their way to a destination. read gives them in a form that can be joined bit by
// bit: bits of a monochrome source, else colours, or the values themselves where both sides agree
// on them. convert makes values of the destination out of that.
class SourcePixels {
public:
    // bitmap: the source's, or a copy of it. joined: pixels are joined between read and convert.
    SourcePixels(const DcRecord& source, const DcRecord& destination, const BitmapRecord& bitmap,
                 bool joined)
        : m_bitmap(bitmap), m_to(*destination.bitmap), m_way(wayBetween(bitmap, m_to, joined)),
          m_background(pixelOf(source.bkColor)) {
        if (m_way == Way::FromBits) {
            m_bits[0] = valueOf(m_to, destination.textColor);
            m_bits[1] = valueOf(m_to, destination.bkColor);
        }
    }

    void read(int x, int y, Values values) const {
        if (m_way == Way::Same || m_way == Way::FromBits) {
            readValues(m_bitmap, x, y, values);
        } else {
            readPixels(m_bitmap, x, y, values);
        }
    }
    void convert(Values values) const {
        switch (m_way) {
        case Way::Same:
        case Way::ToColors:
            break;
        case Way::FromBits:
            for (std::uint32_t& value : values) value = m_bits[value & 1];
            break;
        case Way::ToTable:
            for (std::uint32_t& value : values) value = m_to.colors->closest(value);
            break;
        case Way::ToBits:
            for (std::uint32_t& value : values) value = value == m_background ? 1 : 0;
            break;
        }
    }

private:
    enum class Way { Same, ToColors, ToTable, ToBits, FromBits };

    static Way wayBetween(const BitmapRecord& from, const BitmapRecord& to, bool joined) {
        const bool equalTables = !joined && from.colors && to.colors &&
                                 from.bitsPerPixel == to.bitsPerPixel &&
                                 from.colors->entries == to.colors->entries;
        if (equalTables || (from.monochrome() && to.monochrome())) return Way::Same;
        if (from.monochrome()) return Way::FromBits;
        if (to.monochrome()) return Way::ToBits;
        if (to.colors) return Way::ToTable;
        return from.bitsPerPixel >= 24 ? Way::Same : Way::ToColors;
    }

    const BitmapRecord& m_bitmap;
    const BitmapRecord& m_to;
    Way m_way;
    std::uint32_t m_background;
    std::uint32_t m_bits[2] = {};
};

// ---- Writing

// Rows of values joined with the destination by a raster operation.
class RowWriter {
public:
    RowWriter(DcRecord& dc, std::uint32_t rop)
        : m_bitmap(*dc.bitmap), m_plain(codeOf(rop) == codeOf(SRCCOPY)),
          m_op(rop, needsPattern(rop) ? valueOf(m_bitmap, dc.brush->color) : 0,
               m_bitmap.bitsPerPixel >= 24 ? 0xFF000000U : 0),
          m_mask(m_bitmap.bitsPerPixel >= 24 ? ~0U : (1U << m_bitmap.bitsPerPixel) - 1) {}

    void write(int x, int y, std::span<const std::uint32_t> values) {
        if (m_plain) {
            writeValues(m_bitmap, x, y, values);
        } else if (m_bitmap.bitsPerPixel == 32) {
            m_op(values, Values(m_bitmap.row(y) + x, values.size()));
        } else {
            m_present.resize(values.size());
            readValues(m_bitmap, x, y, m_present);
            m_op(values, m_present);
            for (std::uint32_t& value : m_present) value &= m_mask;
            writeValues(m_bitmap, x, y, m_present);
        }
    }

private:
    BitmapRecord& m_bitmap;
    bool m_plain;
    RasterOp m_op;
    std::uint32_t m_mask;
    std::vector<std::uint32_t> m_present;
};

// Where the pixels of a context's bitmap can be read; nowhere in a stock bitmap.
RECT readableArea(const DcRecord& dc) {
    return dc.bitmap->stock ? RECT() : RECT{0, 0, dc.bitmap->width, dc.bitmap->height};
}

// The part of width x height pixels at (x, y) that lies in bounds.
RECT partWithin(const RECT& bounds, std::int64_t x, std::int64_t y, std::int64_t width,
                std::int64_t height) {
    return {between(x, bounds.left, bounds.right), between(y, bounds.top, bounds.bottom),
            between(x + width, bounds.left, bounds.right),
            between(y + height, bounds.top, bounds.bottom)};
}

// A row of scratch memory; one for all copies, as none runs inside of another.
Values scratchRow(std::size_t length) {
    static std::vector<std::uint32_t> row;
    if (row.size() < length) row.resize(length);
    return Values(row).first(length);
}

// An operation of brush and destination alone.
void paint(DcRecord& dc, const RECT& area, std::uint32_t rop) {
    const Values nothing = scratchRow(static_cast<std::size_t>(area.right - area.left));
    RowWriter writer(dc, rop);
    for (int y = area.top; y < area.bottom; ++y) writer.write(area.left, y, nothing);
}

// Copies to area from (area.left + dx, area.top + dy) of the source.
void copy(DcRecord& dc, const RECT& area, const DcRecord& source, int dx, int dy,
          std::uint32_t rop) {
    BitmapRecord& to = *dc.bitmap;
    const BitmapRecord& from = *source.bitmap;
    const auto width = static_cast<std::size_t>(area.right - area.left);
    const bool plain = codeOf(rop) == codeOf(SRCCOPY);
    const bool straight = plain && to.bitsPerPixel == 32 && from.bitsPerPixel == 32;
    const bool same = &to == &from;
    // A section may hold anything in the unused bytes, so its rows are read, not moved.
    const bool move = straight && !from.section;
    const bool read = straight && !move && !same;
    if (move && area.right - area.left == to.width && to.stride == from.stride && !to.section) {
        // Whole rows touch each other.
        std::memmove(to.row(area.top), from.row(area.top + dy),
                     width * 4 * static_cast<std::size_t>(area.bottom - area.top));
        return;
    }
    const Values row = move || read ? Values() : scratchRow(width);
    const SourcePixels pixels(source, dc, from, false);
    RowWriter writer(dc, rop);

    const int rows = area.bottom - area.top;
    const bool upwards = same && dy < 0;  // the rows still to be read lie above
    for (int i = 0; i < rows; ++i) {
        const int y = upwards ? area.bottom - 1 - i : area.top + i;
        if (move) {
            std::memmove(to.row(y) + area.left, from.row(y + dy) + area.left + dx, width * 4);
        } else if (read) {
            readValues(from, area.left + dx, y + dy, Values(to.row(y) + area.left, width));
        } else {
            pixels.read(area.left + dx, y + dy, row);
            pixels.convert(row);
            writer.write(area.left, y, row);
        }
    }
}

// ---- Stretching

// One direction of a stretched copy: for each destination coordinate from first on the source
// coordinates from begin to end, end exclusive, that are joined in it.
struct Axis {
    struct Range {
        std::int32_t begin = 0, end = 0;
    };
    std::int32_t first = 0;
    std::vector<Range> ranges;

    // to + extent and from + extent as StretchBlt has them; both extents are not 0. Keeps what lies
    // in the bounds of destination and source.
    Axis(std::int32_t to, std::int32_t toExtent, std::int32_t from, std::int32_t fromExtent,
         std::int32_t toLow, std::int32_t toHigh, std::int32_t fromHigh, bool join) {
        const std::int64_t toSize = std::abs(std::int64_t{toExtent});
        const std::int64_t fromSize = std::abs(std::int64_t{fromExtent});
        const std::int64_t low = toExtent > 0 ? to : std::int64_t{to} + toExtent + 1;
        const std::int32_t begin = between(low, toLow, toHigh);
        const std::int32_t end = between(low + toSize, toLow, toHigh);
        for (std::int32_t at = begin; at < end; ++at) {
            const std::int64_t i = toExtent > 0 ? std::int64_t{at} - to : std::int64_t{to} - at;
            std::int64_t step = (2 * i + 1) * fromSize / (2 * toSize), stepEnd = step + 1;
            if (join && fromSize > toSize) {
                step = i * fromSize / toSize;
                stepEnd = (i + 1) * fromSize / toSize;
            }
            const bool forward = fromExtent > 0;
            const std::int64_t rangeBegin = forward ? from + step : from - stepEnd + 1;
            const std::int64_t rangeEnd = forward ? from + stepEnd : from - step + 1;
            const Range range{between(rangeBegin, 0, fromHigh), between(rangeEnd, 0, fromHigh)};
            if (range.begin >= range.end) continue;
            if (ranges.empty()) first = at;  // what is inside of the source is in one piece
            ranges.push_back(range);
        }
    }
    // The source coordinates in use, end exclusive.
    [[nodiscard]] Range span() const {
        const Range &a = ranges.front(), &b = ranges.back();
        return {std::min(a.begin, b.begin), std::max(a.end, b.end)};
    }
};

// The rows of a stretched copy, one by one.
class Stretcher {
public:
    Stretcher(const SourcePixels& pixels, const Axis& columns, int mode)
        : m_pixels(pixels), m_columns(columns), m_or(mode == WHITEONBLACK),
          m_line(static_cast<std::size_t>(columns.span().end - columns.span().begin)),
          m_row(columns.ranges.size()), m_joined(columns.ranges.size()) {}

    // The destination's values of the joined source rows; valid until the next call.
    std::span<const std::uint32_t> row(Axis::Range rows) {
        if (rows.begin != m_last.begin || rows.end != m_last.end) {
            readLine(rows.begin, m_joined);
            for (int y = rows.begin + 1; y < rows.end; ++y) {
                readLine(y, m_row);
                for (std::size_t i = 0; i < m_row.size(); ++i) join(m_joined[i], m_row[i]);
            }
            m_pixels.convert(m_joined);
            m_last = rows;
        }
        return m_joined;
    }

private:
    void join(std::uint32_t& value, std::uint32_t other) const {
        value = m_or ? value | other : value & other;
    }
    void readLine(int y, std::vector<std::uint32_t>& row) {
        const int left = m_columns.span().begin;
        m_pixels.read(left, y, m_line);
        for (std::size_t i = 0; i < row.size(); ++i) {
            const Axis::Range range = m_columns.ranges[i];
            std::uint32_t value = m_line[static_cast<std::size_t>(range.begin - left)];
            for (int x = range.begin + 1; x < range.end; ++x) {
                join(value, m_line[static_cast<std::size_t>(x - left)]);
            }
            row[i] = value;
        }
    }

    const SourcePixels& m_pixels;
    const Axis& m_columns;
    bool m_or;
    std::vector<std::uint32_t> m_line, m_row, m_joined;
    Axis::Range m_last;
};

}  // namespace

bool BitBlt(HDC hDC, int x, int y, int width, int height, HDC hSource, int xSource, int ySource,
            std::uint32_t rop) {
    DcRecord* dc = dcOf(hDC);
    const DcRecord* source = dcOf(hSource);
    if (dc == nullptr || (source == nullptr && (needsSource(rop) || hSource != 0))) return false;
    if (recording()) {
        record(hDC, "BitBlt %d,%d %dx%d from %d,%d rop 0x%06X", x, y, width, height, xSource,
               ySource, static_cast<unsigned>(rop));
    }
    if (width < 1 || height < 1 || (needsPattern(rop) && dc->brush->null)) return true;

    RECT area = partWithin(dc->clip, x, y, width, height);
    const std::int64_t dx = std::int64_t{xSource} - x, dy = std::int64_t{ySource} - y;
    if (needsSource(rop)) {
        const RECT readable = readableArea(*source);
        area = partWithin(area, readable.left - dx, readable.top - dy, readable.right,
                          readable.bottom);
    }
    if (isEmpty(area)) return true;
    if (needsSource(rop)) {
        // Both areas lie in bitmaps, so the way between them is short.
        copy(*dc, area, *source, static_cast<int>(dx), static_cast<int>(dy), rop);
    } else {
        paint(*dc, area, rop);
    }
    drawn(*dc);
    return true;
}

bool StretchBlt(HDC hDC, int x, int y, int width, int height, HDC hSource, int xSource, int ySource,
                int widthSource, int heightSource, std::uint32_t rop) {
    DcRecord* dc = dcOf(hDC);
    const DcRecord* source = dcOf(hSource);
    if (dc == nullptr || (source == nullptr && (needsSource(rop) || hSource != 0))) return false;
    if (recording()) {
        record(hDC, "StretchBlt %d,%d %dx%d from %d,%d %dx%d rop 0x%06X", x, y, width, height,
               xSource, ySource, widthSource, heightSource, static_cast<unsigned>(rop));
    }
    if (width == 0 || height == 0 || (needsPattern(rop) && dc->brush->null)) return true;
    if (!needsSource(rop)) {
        const std::int64_t left = width > 0 ? x : std::int64_t{x} + width + 1;
        const std::int64_t top = height > 0 ? y : std::int64_t{y} + height + 1;
        const RECT area = partWithin(dc->clip, left, top, std::abs(std::int64_t{width}),
                                     std::abs(std::int64_t{height}));
        if (isEmpty(area)) return true;
        paint(*dc, area, rop);
        drawn(*dc);
        return true;
    }
    if (widthSource == 0 || heightSource == 0) return true;

    const RECT readable = readableArea(*source);
    const bool join = dc->stretchMode != COLORONCOLOR;
    const Axis columns(x, width, xSource, widthSource, dc->clip.left, dc->clip.right,
                       readable.right, join);
    const Axis rows(y, height, ySource, heightSource, dc->clip.top, dc->clip.bottom,
                    readable.bottom, join);
    if (columns.ranges.empty() || rows.ranges.empty()) return true;

    BitmapRecord before;  // the source as it was, when drawing would change it
    if (source->bitmap == dc->bitmap) {
        before = copyOfBitmap(*source->bitmap);
        if (before.top == nullptr) return false;
    }
    const SourcePixels pixels(*source, *dc, before.top != nullptr ? before : *source->bitmap, join);
    Stretcher stretcher(pixels, columns, dc->stretchMode);
    RowWriter writer(*dc, rop);
    for (std::size_t i = 0; i < rows.ranges.size(); ++i) {
        writer.write(columns.first, rows.first + static_cast<int>(i),
                     stretcher.row(rows.ranges[i]));
    }
    drawn(*dc);
    return true;
}

}  // namespace platform
