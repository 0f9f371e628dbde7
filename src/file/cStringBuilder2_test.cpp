#include "file/cStringBuilder2.h"

#include <gtest/gtest.h>

namespace {

using Compare = cStringBuilder2::Compare;

// Sizes of main string and tail.
std::string sizes(const cStringBuilder2& builder) {
    return std::to_string(builder.main().size()) + "+" + std::to_string(builder.tail().size());
}

}  // namespace

TEST(cStringBuilder2, MergesTheTailWhenItIsFullForThePiece) {
    const struct {
        std::size_t tail, piece;
        std::string after;
    } cases[] = {
        {1023, 1, "0+1024"},    {1024, 0, "1024+0"},    {1024, 1, "1025+0"},
        {1023, 1024, "0+2047"}, {1024, 1025, "0+2049"}, {8191, 1025, "0+9216"},
        {8192, 1025, "9217+0"}, {8192, 1024, "9216+0"}, {0, 50'000, "0+50000"},
    };
    for (const auto& c : cases) {
        cStringBuilder2 builder;
        builder.Append(Text(c.tail, u'a'));  // one piece on the empty tail
        builder.Append(Text(c.piece, u'b'));
        EXPECT_EQ(sizes(builder), c.after) << c.tail << " then " << c.piece;
        EXPECT_EQ(builder.ToString(), Text(c.tail, u'a') + Text(c.piece, u'b'));
    }
}

TEST(cStringBuilder2, KeepsTheOrderOfAllPieces) {
    cStringBuilder2 builder;
    Text expected;
    for (std::size_t i = 0; i < 3000; ++i) {
        const Text piece(i * 7919 % 2100, static_cast<char16_t>(u'a' + i % 26));
        builder.AppendWithNewLine(piece);
        expected += piece + u"\r\n";
    }
    EXPECT_EQ(builder.Length(), expected.size());
    EXPECT_EQ(builder.ToString(), expected);
    EXPECT_EQ(std::move(builder).ToString(), expected);
}

TEST(cStringBuilder2, SettingAndReplacingGoOverTheWholeText) {
    const struct {
        Text find, replacement;
        Compare compare;
        Text after;
    } cases[] = {
        {u"ab", u"x", Compare::Exact, u"AbaxAB"},
        {u"ab", u"x", Compare::IgnoreCase, u"xaxx"},
        {u"b", u"bb", Compare::Exact, u"AbbaabbAB"},
        {u"", u"x", Compare::Exact, u"AbaabAB"},
        {u"AbaabABc", u"x", Compare::IgnoreCase, u"AbaabAB"},
    };
    for (const auto& c : cases) {
        cStringBuilder2 builder;
        builder.Append(u"dropped");
        builder.TheString(u"Aba");
        builder.Append(u"abAB");  // a hit over the border of main string and tail
        builder.ReplaceString(c.find, c.replacement, c.compare);
        EXPECT_EQ(builder.main(), c.after) << toUtf8(c.find);
        EXPECT_EQ(sizes(builder), std::to_string(c.after.size()) + "+0");
    }
}
