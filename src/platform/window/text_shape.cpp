#include "platform/window/text_shape.h"

#include "platform/window/text_cache.h"
#include "platform/window/text_face.h"
#include "platform/window/toolkit_internal.h"

#include <QFont>
#include <QImage>
#include <QPainter>
#include <QTextLayout>
#include <algorithm>
#include <cmath>

namespace platform {
namespace {

// What a text may need at most to be kept complete; a usual line of 200 characters needs 30,000.
constexpr std::int64_t kMaxKeptPixels = 1 << 20;

// The caches: at most so many texts, and so many bytes in all.
constexpr std::uint32_t kShapedEntries = 2048, kWidthEntries = 8192;
constexpr std::size_t kShapedBytes = 24U << 20, kWidthBytes = 8U << 20;

TextCache<ShapedText>& shapedCache() {
    static TextCache<ShapedText> cache(kShapedEntries, kShapedBytes);
    return cache;
}

TextCache<std::int32_t>& widthCache() {
    static TextCache<std::int32_t> cache(kWidthEntries, kWidthBytes);
    return cache;
}

std::uint32_t variantOf(const ShapeOptions& options) {
    return static_cast<std::uint32_t>(options.mark + 1) << 1 | (options.rightToLeft ? 1U : 0U);
}

// Whether a pictograph is at i: a character of the blocks that hold nothing else, or any that is
// followed by the mark of colour (U+FE0F) or of a keycap (U+20E3). Counts its units.
int pictographAt(TextView text, std::size_t i) {
    const auto unitAt = [&](std::size_t at) { return at < text.size() ? text[at] : u'\0'; };
    if (unitAt(i) == 0xD83C || unitAt(i) == 0xD83D || unitAt(i) == 0xD83E) return 2;
    const std::size_t next = i + (QChar::isHighSurrogate(unitAt(i)) ? 2 : 1);
    const bool marked = unitAt(next) == 0xFE0F || unitAt(next) == 0x20E3;
    return marked ? static_cast<int>(next - i) : 0;
}

// What goes on with the pictograph before it: joiners, marks, tags.
int pictographTailAt(TextView text, std::size_t i) {
    if (text[i] == 0x200D || text[i] == 0xFE0F || text[i] == 0x20E3) return 1;
    const bool tag = text[i] == 0xDB40 && i + 1 < text.size();
    return tag ? 2 : 0;
}

// The pictographs, which are not left to the face: it may have them without colours, or some of
// the parts of one.
QList<QTextLayout::FormatRange> pictographs(const Face& face, TextView text) {
    QList<QTextLayout::FormatRange> ranges;
    if (!face.pictographs) return ranges;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] < 0x20E3 && !(i + 1 < text.size() && text[i + 1] >= 0x20E3)) continue;
        const std::size_t start = i;
        while (i < text.size()) {
            const int units = pictographAt(text, i);
            const int more = units == 0 && i > start ? pictographTailAt(text, i) : units;
            if (more == 0) break;
            i += static_cast<std::size_t>(more);
        }
        if (i == start) continue;
        QTextLayout::FormatRange range;
        range.start = static_cast<int>(start);
        range.length = static_cast<int>(i - start);
        range.format.setFontFamilies(face.pictographs->families());
        ranges.push_back(range);
        --i;
    }
    return ranges;
}

// One line of text as the toolkit lays it out, its left end at 0.
class Line {
public:
    Line(const Face& face, TextView text, bool rightToLeft)
        : m_ascent(face.metrics.ascent), m_layout(toQt(text), *face.font) {
        QTextOption option(Qt::AlignLeft | Qt::AlignAbsolute);
        option.setWrapMode(QTextOption::NoWrap);
        option.setTextDirection(rightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
        option.setFlags(QTextOption::IncludeTrailingSpaces);
        m_layout.setTextOption(option);
        m_layout.setCacheEnabled(true);
        m_layout.setFormats(pictographs(face, text));
        m_layout.beginLayout();
        m_line = m_layout.createLine();
        if (m_line.isValid()) m_line.setLineWidth(kEndless);
        m_layout.endLayout();
    }

    [[nodiscard]] std::int32_t advance() const {
        return m_line.isValid()
                   ? static_cast<std::int32_t>(std::lround(m_line.horizontalAdvance() * 64))
                   : 0;
    }
    [[nodiscard]] std::pair<int, int> extentOf(int unit) const {
        const qreal a = m_line.cursorToX(unit);
        const qreal b = m_line.cursorToX(m_layout.nextCursorPosition(unit));
        return {static_cast<int>(std::floor(std::min(a, b))),
                static_cast<int>(std::ceil(std::max(a, b)))};
    }
    // The rows that the line may use, from the top of a line of the face.
    [[nodiscard]] int top() const {
        return m_ascent - static_cast<int>(std::ceil(m_line.ascent()));
    }
    [[nodiscard]] int bottom() const {
        return m_ascent + static_cast<int>(std::ceil(m_line.descent()));
    }

    // The window's pixels, premultiplied, with the text in that colour.
    [[nodiscard]] QImage image(const RECT& window, Qt::GlobalColor color) const {
        QImage image(window.right - window.left, window.bottom - window.top,
                     QImage::Format_ARGB32_Premultiplied);
        if (image.isNull()) return image;
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.setPen(color);
        m_layout.draw(&painter, QPointF(-window.left, m_ascent - m_line.ascent() - window.top));
        return image;
    }

private:
    static constexpr qreal kEndless = 1 << 24;
    int m_ascent;
    QTextLayout m_layout;
    QTextLine m_line;
};

const std::uint32_t* rowOf(const QImage& image, int y) {
    return reinterpret_cast<const std::uint32_t*>(image.constScanLine(y));
}

bool isBlank(const std::uint32_t* row, int count) {
    std::uint32_t all = 0;  // no early end: many pixels at a time
    for (int x = 0; x < count; ++x) all |= row[x];
    return all == 0;
}

// Rows and columns that are not empty.
RECT usedPart(const QImage& image) {
    RECT used{image.width(), image.height(), 0, 0};
    for (int y = 0; y < image.height(); ++y) {
        const std::uint32_t* row = rowOf(image, y);
        if (isBlank(row, image.width())) continue;
        for (int x = 0; x < used.left; ++x) {
            if (row[x] != 0) used.left = x;
        }
        for (int x = image.width(); x > used.right; --x) {
            if (row[x - 1] != 0) used.right = x;
        }
        used.top = std::min(used.top, y);
        used.bottom = y + 1;
    }
    return used.bottom == 0 ? RECT{} : used;
}

// Pictographs and symbols can come from a face that has its own colours.
bool mayHaveOwnColors(TextView text) {
    return std::any_of(text.begin(), text.end(), [](char16_t unit) {
        return (unit >= 0x2000 && unit < 0x3400) || (unit & 0xF800) == 0xD800 || unit == 0xFE0F ||
               unit == 0xA9 || unit == 0xAE;
    });
}

void addPixels(ShapedText& shape, const Line& line, TextView text, const RECT& window) {
    if (window.right <= window.left || window.bottom <= window.top) return;
    const QImage white = line.image(window, Qt::white);
    const RECT used = usedPart(white);
    shape.left = window.left + used.left;
    shape.top = window.top + used.top;
    shape.boxWidth = used.right - used.left;
    shape.boxHeight = used.bottom - used.top;
    shape.mask.resize(static_cast<std::size_t>(shape.boxWidth) * shape.boxHeight);
    std::uint8_t* mask = shape.mask.data();
    for (int y = used.top; y < used.bottom; ++y) {
        const std::uint32_t* row = rowOf(white, y);
        for (int x = used.left; x < used.right; ++x) *mask++ = row[x] >> 24 & 0xFF;
    }
    if (!mayHaveOwnColors(text)) return;

    // In black only the own colours are left; what is brighter in white is the text colour's share.
    const QImage black = line.image(window, Qt::black);
    bool colored = false;
    for (int y = used.top; y < used.bottom && !colored; ++y) {
        const std::uint32_t *inWhite = rowOf(white, y), *inBlack = rowOf(black, y);
        for (int x = used.left; x < used.right && !colored; ++x) {
            colored = inWhite[x] != (inWhite[x] >> 24) * 0x01010101 || (inBlack[x] & 0xFFFFFF) != 0;
        }
    }
    if (!colored) return;
    shape.own.resize(shape.mask.size());
    std::size_t at = 0;
    for (int y = used.top; y < used.bottom; ++y) {
        const std::uint32_t *inWhite = rowOf(white, y), *inBlack = rowOf(black, y);
        for (int x = used.left; x < used.right; ++x, ++at) {
            shape.own[at] = inBlack[x];
            shape.mask[at] = ((inWhite[x] >> 8 & 0xFF) - (inBlack[x] >> 8 & 0xFF)) & 0xFF;
        }
    }
}

// Room for all pixels of the line: letters reach beyond their advance and, stacked, their line.
RECT roomOf(const Line& line, const ShapedText& shape, int em) {
    return {-em, line.top() - em, shape.width() + em, line.bottom() + em};
}

ShapedText measured(const Line& line, const ShapeOptions& options) {
    ShapedText shape;
    shape.advance = line.advance();
    if (options.mark >= 0) std::tie(shape.markLeft, shape.markRight) = line.extentOf(options.mark);
    return shape;
}

}  // namespace

std::int32_t shapedWidth(const Face& face, TextView text, bool rightToLeft) {
    const std::uint32_t variant = rightToLeft ? 1 : 0;
    std::int32_t advance = 0;
    if (const std::int32_t* known = widthCache().find(face.id, variant, text)) {
        advance = *known;
    } else {
        advance =
            widthCache().insert(face.id, variant, text, Line(face, text, rightToLeft).advance(), 0);
    }
    return (advance + 63) / 64;
}

ShapedText shapedNow(const Face& face, TextView text, const ShapeOptions& options) {
    const Line line(face, text, options.rightToLeft);
    ShapedText shape = measured(line, options);
    addPixels(shape, line, text, roomOf(line, shape, face.metrics.em));
    return shape;
}

const ShapedText& shaped(const Face& face, TextView text, const ShapeOptions& options,
                         const RECT& window) {
    const std::uint32_t variant = variantOf(options);
    if (const ShapedText* known = shapedCache().find(face.id, variant, text)) return *known;

    const Line line(face, text, options.rightToLeft);
    ShapedText shape = measured(line, options);
    const RECT room = roomOf(line, shape, face.metrics.em);
    const std::int64_t pixels =
        (std::int64_t{room.right} - room.left) * (std::int64_t{room.bottom} - room.top);
    if (pixels > kMaxKeptPixels) {
        static ShapedText part;
        addPixels(shape, line, text, intersection(room, window));
        part = std::move(shape);
        return part;
    }
    addPixels(shape, line, text, room);
    const std::size_t bytes = shape.mask.size() + shape.own.size() * sizeof(std::uint32_t);
    return shapedCache().insert(face.id, variant, text, std::move(shape), bytes);
}

void clearShapedText() {
    shapedCache().clear();
    widthCache().clear();
}

}  // namespace platform
