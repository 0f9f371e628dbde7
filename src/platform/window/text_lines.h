// platform/window/text_lines.h: text into lines, and lines into pieces. Internal to this folder.
#pragma once
#include "platform/window/text_face.h"

#include <vector>

namespace platform {

// Text as it is drawn: prefixes taken out, control units and lone surrogates replaced. Line ends
// stay (without DT_SINGLELINE), and so do tabs (with DT_EXPANDTABS).
struct DrawableText {
    // storage is used when the text must differ from what was given.
    DrawableText(TextView given, std::uint32_t flags, Text& storage);

    TextView text;
    std::int64_t mark = -1;  // the unit to be underlined; -1: none
};

// One line, a part of a drawable text.
struct TextLine {
    TextView text;
    std::int64_t width = 0;  // pixels
    std::int64_t mark = -1;  // in this line
};

// What the flags of DrawTextW say about lines.
struct LineOptions {
    explicit LineOptions(std::uint32_t flags);

    bool rightToLeft, wordBreak, breakInWords;
};

// Lines of at most width pixels where they may be broken; see DrawTextW.
[[nodiscard]] std::vector<TextLine> linesOf(Face& face, const DrawableText& drawable,
                                            std::int64_t width, const LineOptions& options);

// The width of a line in pixels.
[[nodiscard]] std::int64_t lineWidth(Face& face, TextView line, bool rightToLeft);
// Of one of its pieces.
[[nodiscard]] std::int32_t pieceWidth(Face& face, TextView piece, bool rightToLeft);

// The pieces of a line in reading order: between tabs, and at most kLongLine units.
class LinePieces {
public:
    explicit LinePieces(TextView line) : m_line(line) {}
    // False at the end.
    [[nodiscard]] bool next();
    [[nodiscard]] TextView piece() const { return m_line.substr(m_start, m_end - m_start); }
    [[nodiscard]] std::size_t start() const { return m_start; }  // in the line
    // Where the piece starts, when the one before ended at x.
    [[nodiscard]] std::int64_t place(const Face& face, std::int64_t x) const;

private:
    TextView m_line;
    std::size_t m_start = 0, m_end = 0, m_tabs = 0;
};

}  // namespace platform
