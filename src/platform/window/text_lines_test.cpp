#include "platform/window/text_lines.h"

#include "platform/window/textout.h"
#include "support/window/texts.h"

#include <gtest/gtest.h>

using namespace platform;
using test::repeated;

namespace {

// Lines with a bar between them, the underlined character in brackets.
std::string dump(const std::vector<TextLine>& lines) {
    std::string all;
    for (const TextLine& line : lines) {
        if (&line != lines.data()) all += '|';
        Text text(line.text);
        if (line.mark >= 0) {
            text.insert(static_cast<std::size_t>(line.mark) + 1, u"]");
            text.insert(static_cast<std::size_t>(line.mark), u"[");
        }
        all += toUtf8(text);
    }
    return all;
}

std::string linesIn(TextView text, std::uint32_t flags, TextView asWideAs) {
    Face& face = *faceFor({u"MS Sans Serif", -11});
    const LineOptions options(flags);
    Text storage;
    const DrawableText drawable(text, flags, storage);
    const std::int64_t width = lineWidth(face, asWideAs, options.rightToLeft);
    const auto lines = linesOf(face, drawable, width, options);
    for (const TextLine& line : lines) {
        EXPECT_EQ(line.width, lineWidth(face, line.text, options.rightToLeft)) << toUtf8(line.text);
    }
    return dump(lines);
}

constexpr std::uint32_t kWrap = DT_WORDBREAK | DT_NOPREFIX;
constexpr std::uint32_t kEdit = kWrap | DT_EDITCONTROL;

const struct {
    TextView text;
    std::uint32_t flags;
    TextView asWideAs;
    const char* lines;
} kLines[] = {
    // Line ends
    {u"", 0, u"", ""},
    {u"a\r\nb\rc\nd", 0, u"", "a|b|c|d"},
    {u"a\r\n", 0, u"", "a"},
    {u"\r\n\r\na\n\n", 0, u"", "||a|"},
    {u"a\n\rb", 0, u"", "a||b"},
    // Between words
    {u"one two three", kWrap, u"one two three", "one two three"},
    {u"one two three", kWrap, u"one two", "one two|three"},
    {u"one two three", kWrap, u"one tw", "one|two|three"},
    {u"one   two", kWrap, u"one", "one|two"},
    {u"one   two", kWrap, u"one ", "one|two"},
    {u"  one two ", kWrap, u"  one", "  one|two"},
    {u"one two ", kWrap, u"one two ", "one two "},
    {u"     ", kWrap, u" ", ""},
    {u"one two\r\nthree four", kWrap, u"three", "one|two|three|four"},
    {u"semi-detached", kWrap, u"semi-", "semi-|detached"},
    {u"one \ttwo", kWrap | DT_EXPANDTABS, u"one", "one|two"},
    {u"one two", 0, u"one", "one two"},
    // A word that is too wide
    {u"incomprehensible", kWrap, u"incom", "incomprehensible"},
    {u"an incomprehensible word", kWrap, u"incom", "an|incomprehensible|word"},
    {u"an incomprehensible word", kEdit, u"incompreh", "an|incompreh|ensible|word"},
    {u"one two", kEdit, u"", "o|n|e|t|w|o"},
    {u"e\u0301e\u0301e\u0301", kEdit, u"ee", "e\u0301e\u0301|e\u0301"},
    {u"\U0001F469\u200D\U0001F469\u200D\U0001F467\U0001F44D\U0001F3FD", kEdit, u"x",
     "\U0001F469\u200D\U0001F469\u200D\U0001F467|\U0001F44D\U0001F3FD"},
    {u"\U0001F3F4\U000E0067\U000E0062x", kEdit, u"", "\U0001F3F4\U000E0067\U000E0062|x"},
    // Scripts without blanks
    {u"一是在不了有和人", kWrap, u"一是在", "一是在|不了有|和人"},
    {u"他说「一是在」", kWrap, u"他说", "他说|「一|是|在」"},
    {u"שלום עולם", kWrap | DT_RTLREADING, u"שלום", "שלום|עולם"},
    // Prefixes
    {u"&File", 0, u"", "[F]ile"},
    {u"Save &as", 0, u"", "Save [a]s"},
    {u"&a&b", 0, u"", "a[b]"},
    {u"a && b", 0, u"", "a & b"},
    {u"&&&&", 0, u"", "&&"},
    {u"a &&&b", 0, u"", "a &[b]"},
    {u"a&", 0, u"", "a"},
    {u"&", 0, u"", ""},
    {u"R&&D &x", DT_NOPREFIX, u"", "R&&D &x"},
    {u"one t&wo three", DT_WORDBREAK, u"one", "one|t[w]o|three"},
    {u"one& two", DT_WORDBREAK, u"one", "one|two"},
    {u"a\r\n&b", 0, u"", "a|[b]"},
    // Units that are no characters
    {{u"a\0b\x1F\x7F\x85"
      u"c",
      7},
     0,
     u"",
     "a b   c"},
    {u"a\u2028b\u2029c\uFFFC", 0, u"", "a b c\uFFFD"},
    {u"a\tb", 0, u"", "a b"},
    {u"a\tb", DT_EXPANDTABS, u"", "a\tb"},
    {u"a\r\nb", DT_SINGLELINE, u"", "a  b"},
};

}  // namespace

TEST(TextLines, BreakAtLineEndsAndWhereAWordMayEnd) {
    for (const auto& c : kLines) {
        EXPECT_EQ(linesIn(c.text, c.flags, c.asWideAs), c.lines)
            << toUtf8(c.text) << " as wide as " << toUtf8(c.asWideAs) << std::hex << ", flags 0x"
            << c.flags;
    }
}

TEST(TextLines, LoneSurrogatesBecomeReplacementsAndPairsStay) {
    const Text text{0xD800, u'a', 0xDC00, 0xD83D, 0xDE00, 0xD83D};
    EXPECT_EQ(linesIn(text, DT_NOPREFIX, u""), "\uFFFDa\uFFFD\U0001F600\uFFFD");
}

TEST(TextLines, TabsGoToMultiplesOfEightAverageCharacters) {
    Face& face = *faceFor({u"MS Sans Serif", -11});
    const std::int64_t stop = std::int64_t{8} * face.metrics.averageWidth;
    const std::int64_t i = lineWidth(face, u"i", false), wide = lineWidth(face, u"WWWWWWWW", false);
    ASSERT_GT(wide, stop);
    EXPECT_EQ(lineWidth(face, u"\t", false), stop);
    EXPECT_EQ(lineWidth(face, u"i\ti", false), stop + i);
    EXPECT_EQ(lineWidth(face, u"i\t\ti", false), 2 * stop + i);
    EXPECT_EQ(lineWidth(face, u"WWWWWWWW\ti", false), 2 * stop + i);
    EXPECT_EQ(lineWidth(face, u"\u4E00\ti", true), stop + i);
}

TEST(TextLines, LongLinesAreMeasuredInPiecesThatTearNoCharacter) {
    Face& face = *faceFor({u"MS Sans Serif", -11});
    for (const TextView unit : {u"abc ", u"e\u0301\u0323", u"\U0001F44D\U0001F3FD", u"\u4E00",
                                u"\u0928\u092E\u0938\u094D\u0924\u0947 "}) {
        const Text text = repeated(unit, 3 * kLongLine);
        LinePieces pieces(text);
        std::size_t end = 0;
        while (pieces.next()) {
            EXPECT_EQ(pieces.start(), end);
            EXPECT_LE(pieces.piece().size(), kLongLine);
            end = pieces.start() + pieces.piece().size();
            EXPECT_EQ(end % unit.size(), 0U) << toUtf8(unit);
        }
        EXPECT_EQ(end, text.size());
        const auto times = static_cast<std::int64_t>(text.size() / unit.size());
        EXPECT_EQ(lineWidth(face, text, false), times * lineWidth(face, unit, false))
            << toUtf8(unit);
    }
    // One character without an end: not even then a pair is torn.
    const Text tones = u'a' + repeated(u"\U0001F3FD", 2 * kLongLine);
    LinePieces pieces(tones);
    EXPECT_TRUE(pieces.next());
    EXPECT_EQ(pieces.piece().size(), kLongLine - 1);
}
