#include "platform/window/text_lines.h"

#include "platform/base/utf8.h"
#include "platform/window/text_shape.h"
#include "platform/window/textout.h"
#include "platform/window/toolkit_internal.h"

#include <QTextBoundaryFinder>
#include <algorithm>

namespace platform {
namespace {

using internal::isHighSurrogate;
using internal::isLowSurrogate;

constexpr char16_t kReplacement = 0xFFFD;
constexpr TextView kBlanks = u" \t";

// Units that the toolkit would take as something else than a character.
bool isControl(char16_t unit) {
    return unit < 0x20 || (unit >= 0x7F && unit < 0xA0) || unit == 0x2028 || unit == 0x2029;
}

class Drawable {
public:
    explicit Drawable(std::uint32_t flags)
        : m_prefix((flags & DT_NOPREFIX) == 0), m_lineEnds((flags & DT_SINGLELINE) == 0),
          m_tabs((flags & DT_EXPANDTABS) != 0) {}

    // The unit at i as it is drawn; a "&" that is a prefix stays.
    [[nodiscard]] char16_t unitAt(TextView text, std::size_t i) const {
        const char16_t unit = text[i];
        if (unit >= 0x20 && unit < 0x7F) return unit;
        if (isControl(unit)) {
            const bool kept =
                unit == u'\t' ? m_tabs : m_lineEnds && (unit == u'\r' || unit == u'\n');
            return kept ? unit : u' ';
        }
        const bool lone =
            (isHighSurrogate(unit) && (i + 1 == text.size() || !isLowSurrogate(text[i + 1]))) ||
            (isLowSurrogate(unit) && (i == 0 || !isHighSurrogate(text[i - 1])));
        // An object's place holder would be invisible.
        return lone || unit == 0xFFFC ? kReplacement : unit;
    }
    [[nodiscard]] bool isPrefix(char16_t unit) const { return m_prefix && unit == u'&'; }

    // Whether nothing in the text can need a change: no prefix, control unit or surrogate. Without
    // an early end, so that the compiler looks at many units at a time.
    [[nodiscard]] bool isPlain(TextView text) const {
        const char16_t prefix = m_prefix ? u'&' : u'\0';
        unsigned special = 0;
        for (const char16_t unit : text) {
            special |= static_cast<unsigned>(unit < 0x20) | (unit == prefix) |
                       ((unit >= 0x7F) & (unit < 0xA0)) | ((unit & 0xFFFE) == 0x2028) |
                       ((unit & 0xF800) == 0xD800) | (unit == 0xFFFC);
        }
        return special == 0;
    }

private:
    bool m_prefix, m_lineEnds, m_tabs;
};

// Whether a line may be cut ahead of i without tearing a character apart.
bool isCharacterStart(TextView line, std::size_t i) {
    const char16_t unit = line[i];
    if (isLowSurrogate(unit) || unit == 0x200D || line[i - 1] == 0x200D) return false;
    if (isHighSurrogate(unit)) {
        // Skin tones and tags belong to the pictograph before them.
        const char32_t code = QChar::surrogateToUcs4(unit, i + 1 < line.size() ? line[i + 1] : 0);
        return !(code >= 0x1F3FB && code <= 0x1F3FF) && !(code >= 0xE0000 && code < 0xE0200);
    }
    return !QChar(unit).isMark();
}

// Where a line is cut that goes on for more than `most` units behind `from`: behind a blank,
// between characters, or at least not inside of a pair.
std::size_t cutNear(TextView line, std::size_t from, std::size_t most) {
    if (line.size() - from <= most) return line.size();
    const std::size_t end = from + most, least = end - most / 8;
    for (std::size_t cut = end; cut > least; --cut) {
        if (line[cut - 1] == u' ') return cut;
    }
    for (std::size_t cut = end; cut > least; --cut) {
        if (isCharacterStart(line, cut)) return cut;
    }
    return isLowSurrogate(line[end]) ? end - 1 : end;
}

// Breaks one line that is too wide.
class Wrapper {
public:
    Wrapper(Face& face, TextView paragraph, std::int64_t mark, std::int64_t width,
            const LineOptions& options, std::vector<TextLine>& lines)
        : m_face(face), m_paragraph(paragraph), m_mark(mark), m_width(width), m_options(options),
          m_lines(lines) {}

    void run() {
        QTextBoundaryFinder finder(QTextBoundaryFinder::Line, toQt(m_paragraph));
        std::size_t from = 0;
        while (from < m_paragraph.size()) {
            const auto next = finder.toNextBoundary();
            const std::size_t to = next < 0 ? m_paragraph.size() : static_cast<std::size_t>(next);
            addWord(from, to);
            from = to;
        }
        endLine(m_paragraph.size());
    }

private:
    // The unbroken part [from, to), which may end in blanks.
    void addWord(std::size_t from, std::size_t to) {
        const TextView all = m_paragraph.substr(from, to - from);
        const std::size_t last = all.find_last_not_of(kBlanks);
        const std::size_t inkEnd = last == TextView::npos ? from : from + last + 1;
        std::int64_t end = after(m_x, from, inkEnd);
        if (end > m_width && from > m_start && inkEnd > from) {
            endLine(from);
            end = after(0, from, inkEnd);
        }
        if (end > m_width && m_options.breakInWords) end = breakWord(from, inkEnd);
        if (inkEnd > from) {
            m_inkEnd = inkEnd;
            m_inkWidth = end;
        }
        m_x = after(end, inkEnd, to);
    }

    // Fills lines with the characters of a word that is wider than a line. Gives where it ends.
    std::int64_t breakWord(std::size_t from, std::size_t to) {
        std::int64_t x = m_x;
        while (from < to) {
            std::size_t next = from + 1;
            while (next < to && !isCharacterStart(m_paragraph, next)) ++next;
            const std::int64_t end = after(x, from, next);
            if (end > m_width && from > m_start) {
                endLine(from);
                x = 0;
                continue;
            }
            m_inkEnd = next;
            m_inkWidth = x = end;
            from = next;
        }
        return x;
    }

    // Where [from, to) ends when it begins at x.
    [[nodiscard]] std::int64_t after(std::int64_t x, std::size_t from, std::size_t to) const {
        LinePieces pieces(m_paragraph.substr(from, to - from));
        while (pieces.next()) {
            x = pieces.place(m_face, x) + pieceWidth(m_face, pieces.piece(), m_options.rightToLeft);
        }
        return x;
    }

    // The line goes up to its last character; the next one starts at `next`.
    void endLine(std::size_t next) {
        const std::size_t end = std::max(m_inkEnd, m_start);
        const auto mark = m_mark - static_cast<std::int64_t>(m_start);
        const bool inside = mark >= 0 && m_mark < static_cast<std::int64_t>(end);
        m_lines.push_back(
            {m_paragraph.substr(m_start, end - m_start), m_inkWidth, inside ? mark : -1});
        m_start = m_inkEnd = next;
        m_x = m_inkWidth = 0;
    }

    Face& m_face;
    TextView m_paragraph;
    std::int64_t m_mark, m_width;
    const LineOptions& m_options;
    std::vector<TextLine>& m_lines;
    std::size_t m_start = 0;   // of the present line
    std::size_t m_inkEnd = 0;  // of its last character that isn't a blank
    std::int64_t m_x = 0, m_inkWidth = 0;
};

}  // namespace

DrawableText::DrawableText(TextView given, std::uint32_t flags, Text& storage) : text(given) {
    const Drawable drawable(flags);
    if (drawable.isPlain(given)) return;
    std::size_t i = 0;
    while (i < given.size() && !drawable.isPrefix(given[i]) &&
           drawable.unitAt(given, i) == given[i]) {
        ++i;
    }
    if (i == given.size()) return;

    storage.assign(given.substr(0, i));
    storage.reserve(given.size());
    for (; i < given.size(); ++i) {
        if (drawable.isPrefix(given[i])) {
            if (++i == given.size()) break;
            if (!drawable.isPrefix(given[i])) mark = static_cast<std::int64_t>(storage.size());
        }
        storage += drawable.unitAt(given, i);
    }
    text = storage;
}

LineOptions::LineOptions(std::uint32_t flags)
    : rightToLeft((flags & DT_RTLREADING) != 0), wordBreak((flags & DT_WORDBREAK) != 0),
      breakInWords((flags & DT_EDITCONTROL) != 0) {}

std::vector<TextLine> linesOf(Face& face, const DrawableText& drawable, std::int64_t width,
                              const LineOptions& options) {
    std::vector<TextLine> lines;
    std::size_t from = 0;
    while (from < drawable.text.size()) {
        const std::size_t end =
            std::min(drawable.text.find_first_of(u"\r\n", from), drawable.text.size());
        const TextView paragraph = drawable.text.substr(from, end - from);
        const std::int64_t mark = drawable.mark - static_cast<std::int64_t>(from);
        const bool marked = mark >= 0 && mark < static_cast<std::int64_t>(paragraph.size());
        const std::int64_t natural = lineWidth(face, paragraph, options.rightToLeft);
        if (options.wordBreak && natural > width) {
            Wrapper(face, paragraph, marked ? mark : -1, width, options, lines).run();
        } else {
            lines.push_back({paragraph, natural, marked ? mark : -1});
        }
        from = end + (drawable.text.substr(end, 2) == u"\r\n" ? 2 : 1);
    }
    return lines;
}

std::int32_t pieceWidth(Face& face, TextView piece, bool rightToLeft) {
    if (!rightToLeft) {
        const std::int64_t width = face.glyphs.width(face, piece);
        if (width >= 0) return static_cast<std::int32_t>(width);
    }
    return piece.empty() ? 0 : shapedWidth(face, piece, rightToLeft);
}

std::int64_t lineWidth(Face& face, TextView line, bool rightToLeft) {
    std::int64_t x = rightToLeft ? -1 : face.glyphs.width(face, line);
    if (x >= 0) return x;
    x = 0;
    LinePieces pieces(line);
    while (pieces.next()) {
        x = pieces.place(face, x) + pieceWidth(face, pieces.piece(), rightToLeft);
    }
    return x;
}

bool LinePieces::next() {
    m_start = m_end;
    m_tabs = 0;
    while (m_start < m_line.size() && m_line[m_start] == u'\t') {
        ++m_start;
        ++m_tabs;
    }
    if (m_start == m_line.size() && m_tabs == 0) return false;
    const std::size_t tab = m_line.substr(m_start, kLongLine).find(u'\t');
    m_end = tab != TextView::npos ? m_start + tab : cutNear(m_line, m_start, kLongLine);
    return true;
}

std::int64_t LinePieces::place(const Face& face, std::int64_t x) const {
    const std::int64_t stop = std::int64_t{8} * face.metrics.averageWidth;
    for (std::size_t i = 0; i < m_tabs; ++i) x = (x / stop + 1) * stop;
    return x;
}

}  // namespace platform
