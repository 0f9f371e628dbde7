#include "platform/base/codepages.h"

#include "platform/base/testhooks.h"

#include <cstdlib>
#include <gtest/gtest.h>

using namespace platform;
using namespace std::string_literals;

static Text toText(const std::string& bytes, std::uint32_t page) {
    return bytesToText(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size(), page);
}
static std::string toBytes(TextView s, std::uint32_t page) {
    const Bytes bytes = textToBytes(s, page);
    return {bytes.begin(), bytes.end()};
}

const struct {
    std::uint32_t page;
    std::string bytes;
    Text text;
} kBothWays[] = {
    {1252, "\x80\x81\x8D\x8F\x90\x9D\xE9\xFF", u"\u20AC\u0081\u008D\u008F\u0090\u009D\u00E9\u00FF"},
    {1250, "\xA5\x9A", u"\u0104\u0161"},
    {1251, "\xCF\xF0\xE8\xB8", u"\u041F\u0440\u0438\u0451"},
    {1253, "\xC1\xFE", u"\u0391\u03CE"},
    {1254, "\xDD\xFD", u"\u0130\u0131"},
    {1255, "\xF9\xEC", u"\u05E9\u05DC"},
    {1256, "\xC7", u"\u0627"},
    {1257, "\xE0", u"\u0105"},
    {1258, "\xD0\xEC", u"\u0110\u0301"},
    {874, "\xA1\xDF", u"\u0E01\u0E3F"},
    {437, "\x81\x9C", u"\u00FC\u00A3"},
    {866, "\x8F", u"\u041F"},
    {932, "\x83\x65\x83\x58\xB1\x5C", u"\u30C6\u30B9\uFF71\\"},
    {936, "\xD6\xD0\x80", u"\u4E2D\u20AC"},
    {949, "\xC7\xD1\xB1\xDB", u"\uD55C\uAE00"},
    {950, "\xA4\xA4", u"\u4E2D"},
};

TEST(codepages, CharactersGoToBytesAndBack) {
    for (const auto& c : kBothWays) {
        EXPECT_EQ(toText(c.bytes, c.page), c.text) << c.page;
        EXPECT_EQ(toBytes(c.text, c.page), c.bytes) << c.page;
    }
}

TEST(codepages, AsciiIsAsciiInEveryPageAndEveryKnownByteComesBack) {
    std::string ascii;
    for (char c = 0; c != '\x7F'; ++c) ascii += c;
    ascii += '\x7F';
    int pages = 0;
    for (std::uint32_t page = 1; page < 2000; ++page) {
        if (!codePageKnown(page)) continue;
        ++pages;
        EXPECT_EQ(toText(ascii, page), Text(ascii.begin(), ascii.end())) << page;
        EXPECT_EQ(toBytes(Text(ascii.begin(), ascii.end()), page), ascii) << page;
        const char16_t* const table = singleByteTable(page);
        for (unsigned byte = 0x80; table != nullptr && byte < 256; ++byte) {
            if (table[byte] == 0xFFFD) continue;
            EXPECT_EQ(toBytes(Text(1, table[byte]), page), std::string(1, static_cast<char>(byte)))
                << page << " " << byte;
        }
    }
    EXPECT_EQ(pages, 29);
    EXPECT_FALSE(codePageKnown(65001));
}

const struct {
    std::uint32_t page;
    std::string bytes;
    Text text;
} kMalformed[] = {
    {1253, "a\xD2z", u"a\uFFFDz"},         // a byte that the page lacks
    {932, "a\x83", u"a\uFFFD"},            // a lead byte at the end
    {932, "\xFD\x80z", u"\uFFFD\uFFFDz"},  // bytes that begin nothing
    {936, "\x81\x20z", u"\uFFFD z"},       // an ASCII byte behind a lead byte stays
    {936, "\x81\x0D\x0A", u"\uFFFD\r\n"}, {949, "\xC7\x0Az", u"\uFFFD\nz"},
    {950, "\xA4=z", u"\uFFFD=z"},
};

TEST(codepages, MalformedBytesBecomeReplacementCharactersAndTakeNoAsciiAlong) {
    for (const auto& c : kMalformed) {
        EXPECT_EQ(toUtf8(toText(c.bytes, c.page)), toUtf8(c.text)) << c.page;
    }
}

TEST(codepages, EachUnitThatThePageLacksBecomesAQuestionMark) {
    for (const std::uint32_t page : {1252u, 1251u, 437u, 932u, 936u, 949u, 950u, 12345u}) {
        EXPECT_EQ(toBytes(u"a\u0E01\U0001F600\xD800"
                          u"b\xDC00z\xD83D",
                          page),
                  "a????b?z?")
            << page;
    }
    EXPECT_EQ(toBytes(u"\uFFFD\u0101\u0000"s, 1252), "??\0"s);
}

TEST(codepages, LongTextsAreConvertedTheSameAsTheirParts) {
    // Longer than every buffer, with bytes above ASCII at every distance from a block border.
    std::string bytes;
    for (std::size_t i = 0; i < 9'001; ++i) {
        bytes += static_cast<char>(i % 23 == 0 || i / 64 % 5 == 0 ? 0x80 + i % 128 : 'a' + i % 26);
    }
    for (const std::uint32_t page : {1252u, 1251u, 866u}) {
        const char16_t* const table = singleByteTable(page);
        Text expected;
        for (const char c : bytes) expected += table[static_cast<std::uint8_t>(c)];
        EXPECT_EQ(toText(bytes, page), expected);
        for (const std::size_t start : {1, 7, 15, 8'990}) {
            EXPECT_EQ(toText(bytes.substr(start), page), expected.substr(start));
        }
        EXPECT_EQ(toBytes(expected, page), bytes);
    }
    // At every place of a block: a unit that the page lacks, and one that is another byte or none.
    for (const auto& [unit, byte] :
         {std::pair{u'\u0100', '?'}, {u'\uFF41', '?'}, {u'\u0085', '?'}, {u'\u20AC', '\x80'}}) {
        for (std::size_t at = 0; at < 40; ++at) {
            Text s(40, u'\u00E9');
            s[at] = unit;
            std::string latin(40, '\xE9');
            latin[at] = byte;
            EXPECT_EQ(toBytes(s, 1252), latin) << at;
        }
    }
    std::string japanese;
    Text expected;
    for (int i = 0; i < 3'000; ++i) {
        japanese += "\x83\x65k";
        expected += u"\u30C6k";
    }
    EXPECT_EQ(toText(japanese, 932), expected);
    EXPECT_EQ(toBytes(expected, 932), japanese);
}

const struct {
    const char* locale;
    std::uint32_t page;
} kLocales[] = {
    {"C", 1252},          {"", 1252},
    {"POSIX", 1252},      {"C.UTF-8", 1252},
    {"de_DE", 1252},      {"ru_RU.UTF-8", 1251},
    {"ru", 1251},         {"ja_JP.eucJP", 932},
    {"zh_CN", 936},       {"zh_TW.UTF-8", 950},
    {"zh_HK", 950},       {"zh_Hant_SG", 950},
    {"zh", 936},          {"ko_KR@euro", 949},
    {"el-GR", 1253},      {"tr_TR", 1254},
    {"he_IL", 1255},      {"ar_EG", 1256},
    {"lv_LV", 1257},      {"vi_VN", 1258},
    {"th_TH", 874},       {"pl_PL", 1250},
    {"sr_RS", 1251},      {"sr_RS@latin", 1250},
    {"sr_Latn_RS", 1250}, {"uz_UZ@cyrillic", 1251},
    {"rus", 1252},        {"tw_TW", 1252},
};

TEST(codepages, ThePageGoesWithTheLanguage) {
    for (const auto& c : kLocales) EXPECT_EQ(codePageOfLocale(c.locale), c.page) << c.locale;
}

TEST(codepages, AnOverrideGoesBeforeTheEnvironmentAndThatBeforeTheLanguage) {
    const test::HookScope hooks;
    test::setLocale("ru_RU.UTF-8");
    ::unsetenv(kCodePageVariable);
    EXPECT_EQ(GetACP(), 1251u);
    EXPECT_TRUE(setAnsiCodePage(932));
    EXPECT_FALSE(setAnsiCodePage(65001));
    EXPECT_EQ(GetACP(), 932u);
    const struct {
        const char* value;
        std::uint32_t page;
        bool usable;
    } kCases[] = {{"950", 950, true},  {"00950", 950, true},  {"", 1251, true},
                  {"12", 1251, false}, {"950x", 1251, false}, {" 950", 1251, false}};
    for (const auto& c : kCases) {
        ::setenv(kCodePageVariable, c.value, 1);
        EXPECT_TRUE(setAnsiCodePage(std::nullopt));
        EXPECT_EQ(GetACP(), c.page) << c.value;
        EXPECT_EQ(unusableCodePageVariable(), c.usable ? "" : c.value);
    }
    ::unsetenv(kCodePageVariable);
    EXPECT_EQ(unusableCodePageVariable(), "");
}
