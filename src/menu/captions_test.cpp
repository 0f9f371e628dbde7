#include "menu/captions.h"

#include "menu/clsBase64.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace {

// prefix? / text / image number / key
std::string parsed(TextView sCaption) {
    return std::string(isTextSeparator(sCaption) ? "SEP " : "") + '<' +
           toUtf8(pvCleanCaption(sCaption)) + "> " + std::to_string(pvImageIndex(sCaption)) + " <" +
           toUtf8(pvShortcutText(sCaption)) + '>';
}

TEST(Captions, FallIntoPrefixTextImageNumberAndKey) {
    const struct {
        Text caption;
        std::string parts;
    } kCases[] = {
        {u"Open|3\tCtrl+O", "<Open> 3 <Ctrl+O>"},
        {u"", "<> -1 <>"},
        {u"\t", "<> -1 <>"},
        {u"|", "<> 0 <>"},
        {u"\t\t||\t|", "<\t\t|> 0 <|>"},
        {u"|\t|", "<> 0 <|>"},
        {u"[SEP]Files", "SEP <Files> -1 <>"},
        {u"[sEp]Files|7\tF1", "SEP <Files> 7 <F1>"},
        {u"[SEP]", "SEP <> -1 <>"},
        {u"[SEP", "<[SEP> -1 <>"},
        {u" [SEP]", "< [SEP]> -1 <>"},
        {u"[SEP][SEP]x", "SEP <[SEP]x> -1 <>"},
        {u"[\u0405EP]x", "<[\u0405EP]x> -1 <>"},
        {u"a|b|12", "<a|b> 12 <>"},
        {u"a|-1", "<a> -1 <>"},
        {u"a|x", "<a> 0 <>"},
        {u"a| 4 b", "<a> 4 <>"},
        {u"a|99999999999", "<a> 2147483647 <>"},
        {u"a|2|\tF2", "<a|2> 0 <F2>"},
        {u"a\tb|3\tc|4", "<a\tb> 3 <c|4>"},
        {u"&Find\t", "<&Find> -1 <>"},
        {u"\u6253\u5F00|1\t\u2318O", "<\u6253\u5F00> 1 <\u2318O>"},
    };
    for (const auto& c : kCases) EXPECT_EQ(parsed(c.caption), c.parts) << toUtf8(c.caption);
    EXPECT_EQ(pvCaptionWithoutShortcut(u"[SEP]a|3\tb\tc"), u"[SEP]a|3\tb");
}

TEST(Captions, AreDecodedByTheStringMode) {
    const struct {
        Text text;
        std::int32_t mode;
        Text shown;
    } kCases[] = {
        {u"0XRgBvAG8A3B", smPlain, u"0XRgBvAG8A3B"},
        {u"\u00C3\u2013", 7, u"\u00C3\u2013"},
        {u"", smPackedUTF8, u""},
        {u"\u00C3\u2013ffnen", smPackedUTF8, u"\u00D6ffnen"},  // C3 96 in code page 1252
        {u"", smEncoded, u""},
        {u"Open", smEncoded, u"Open"},
        // Worked out by hand: 41 00 in base 64 is "QQA=", 51^51^41^3D = 7C.
        {u"0XQQA=7C", smEncoded, u"A"},
        {u"0XQQA=7c", smEncoded, u"0XQQA=7c"},
        {u"0xQQA=7C", smEncoded, u"0xQQA=7C"},
        {u"0XQQA7C", smEncoded, u"0XQQA7C"},  // the middle is cut short, so the check is wrong
        {u"0XQQA41", smEncoded, u"A"},        // cut short, with the check of that
        {u"0XQQ00", smEncoded, u""},          // half of a unit
        {u"0X00", smEncoded, u""},
        {u"0X0", smEncoded, u"0X0"},
        {u"0X", smEncoded, u"0X"},
        {u"0X\u0141\u014100", smEncoded, u""},  // the high bytes count as well
        {u"0X\u014140", smEncoded, u""},
        {u"0X\u014141", smEncoded, u"0X\u014141"},
        {u" 0XQQA=7C", smEncoded, u" 0XQQA=7C"},
    };
    for (const auto& c : kCases) {
        EXPECT_EQ(pvDecodedCaption(c.text, c.mode), c.shown) << toUtf8(c.text) << ' ' << c.mode;
    }
}

TEST(Captions, OfAnyTextSurviveTheEncodedForm) {
    for (const Text& text :
         {Text(), Text(u"A"), Text(u"&Datei \u2026"), Text(u"\u6253\u5F00"), Text(u"\xD83D\xDE00"),
          Text(u"\xD800|\t[SEP]\0x", 10), Text(500, u'\xFFFF')}) {
        const Text encoded = encodedText(text);
        EXPECT_TRUE(isEncodedText(encoded));
        EXPECT_EQ(pvDecodedCaption(encoded, smEncoded), text) << toUtf8(encoded);
        EXPECT_TRUE(std::ranges::all_of(encoded, [](char16_t u) { return u > 32 && u < 127; }));
    }
}

TEST(clsBase64, CodesUnitsAsOneByteOrTwo) {
    const struct {
        Text plain;
        bool unicode;
        Text coded;
    } kCases[] = {
        {u"", false, u""},
        {u"f", false, u"Zg=="},
        {u"fo", false, u"Zm8="},
        {u"foo", false, u"Zm9v"},
        {u"foobar", false, u"Zm9vYmFy"},
        {u"\u00FB\u00FF", false, u"+/8="},
        {u"foo", true, u"ZgBvAG8A"},
        {u"\u4E2D", true, u"LU4="},
    };
    for (const auto& c : kCases) {
        EXPECT_EQ(clsBase64::GetEncodedB64String(c.plain, c.unicode), c.coded);
        EXPECT_EQ(clsBase64::GetDecodedB64String(c.coded, c.unicode), c.plain);
    }
    EXPECT_EQ(clsBase64::GetDecodedB64String(u" Zm\r\n9v\tYm Fy\n", false), u"foobar");
    EXPECT_EQ(clsBase64::GetDecodedB64String(u"Zm9v=Zm9v", false), u"foo");
    EXPECT_EQ(clsBase64::GetDecodedB64String(u"Zm9v?Zm9v", false), u"foo");
    EXPECT_EQ(clsBase64::GetDecodedB64String(u"Zm9vY\u4E2D", false), u"foo");
}

}  // namespace
