#include "file/ufu_text.h"

#include "platform/base/codepages.h"
#include "platform/base/testhooks.h"
#include "support/TempDir.h"
#include "support/raised.h"

#include <gtest/gtest.h>

namespace {

using namespace std::string_literals;
using platform::test::FileOp;

class ufu_text : public ::testing::Test {
protected:
    ufu_text() { platform::setAnsiCodePage(1252); }
    platform::test::HookScope hooks;
    test::TempDir dir;
};

}  // namespace

TEST_F(ufu_text, TheFirstByteChoosesTheEncoding) {
    const struct {
        std::string bytes;
        ufeEncoding encoding;
        bool read;
        Text text;
    } cases[] = {
        {"", ufeAnsi, true, u""},
        {"A", ufeAnsi, true, u"A"},
        {"\xFE\xFFx\0"s, ufeAnsi, true, u"\u00FE\u00FFx\0"s},
        {"\xC3\xA9", ufeAnsi, true, u"\u00C3\u00A9"},
        {"\x80\x81\r\n", ufeAnsi, true, u"\u20AC\u0081\r\n"},
        {"\xFF", ufeUnicode, false, u""},
        {"\xFF\xFE", ufeUnicode, true, u""},
        {"\xFFx", ufeUnicode, true, u""},  // the second byte is not looked at
        {"\xFF\xFEx", ufeUnicode, true, u""},
        {"\xFF\xFEx\0y"s, ufeUnicode, true, u"x"},
        {"\xFF\xFE\0\xD8\n\0"s, ufeUnicode, true, u"\xD800\n"},
        {"\xEF", ufeUTF8, false, u""},
        {"\xEF\xBB", ufeUTF8, false, u""},
        {"\xEF\xBB\xBF", ufeUTF8, true, u""},
        {"\xEF\xBB\xBF\xE2\x82\xAC\xE2\x82", ufeUTF8, true, u"\u20AC"},
        {"\xEFxy\xC3\xA9", ufeUTF8, true, u"\u00E9"},
    };
    for (const auto& c : cases) {
        dir.write("f", c.bytes);
        Text text = u"old";
        EXPECT_EQ(ufu_GetFileEncoding(dir.inside("f")), c.encoding) << c.bytes;
        EXPECT_EQ(ufu_TextFileToString(dir.inside("f"), text), c.read) << c.bytes;
        EXPECT_EQ(toUtf8(text), toUtf8(c.text)) << c.bytes;
        EXPECT_EQ(ufu_FileLen(dir.inside("f")), static_cast<std::int64_t>(c.bytes.size()));
    }
}

TEST_F(ufu_text, FilesOfAnySizeReadWhole) {
    for (const std::size_t size : {15, 16, 31, 33, 63, 64, 65, 95, 16'381, 16'382, 16'384, 16'385,
                                   16'388, 100'000, 5'242'881}) {
        std::string latin(size, '\0'), utf8, utf16;
        Text expected(size, u'\0');
        for (std::size_t i = 0; i < size; ++i) {
            const auto byte = static_cast<char>(i % 23 < 11 ? 0xE9 : 'a' + i % 26);
            latin[i] = byte;
            expected[i] = static_cast<std::uint8_t>(byte);
            utf8 += byte < 0 ? "\xC3\xA9"s : std::string(1, byte);
            utf16 += {byte, '\0'};
        }
        latin[0] = '!', utf8.erase(0, 2), utf8 = "\xEF\xBB\xBF!" + utf8;
        utf16 = "\xFF\xFE!\0"s + utf16.substr(2);
        expected[0] = u'!';
        for (const auto& bytes : {latin, utf8, utf16}) {
            dir.write("f", bytes);
            Text text;
            EXPECT_TRUE(ufu_TextFileToString(dir.inside("f"), text));
            EXPECT_TRUE(text == expected) << size;  // too long to print
        }
    }
}

TEST_F(ufu_text, DoubleByteCharactersAreJoined) {
    platform::setAnsiCodePage(932);
    dir.write("f", "a\x82\xA0\xB1");
    Text text;
    EXPECT_TRUE(ufu_TextFileToString(dir.inside("f"), text));
    EXPECT_EQ(toUtf8(text), toUtf8(u"a\u3042\uFF71"));
    EXPECT_TRUE(ufu_StringToTextFile(dir.inside("f"), text, ufeAnsi));
    EXPECT_EQ(dir.read("f"), "a\x82\xA0\xB1");
}

TEST_F(ufu_text, WritesEachEncodingWithItsMark) {
    const struct {
        std::int32_t encoding;
        std::string empty, some;
    } cases[] = {
        {ufeAnsi, "", "x\x80\n?"},
        {ufeUnicode, "\xFF\xFE", "\xFF\xFEx\0\xAC\x20\n\0\x16\4"s},
        {ufeUTF8, "\xEF\xBB\xBF", "\xEF\xBB\xBFx\xE2\x82\xAC\n\xD0\x96"},
    };
    for (const auto& c : cases) {
        dir.write("f", "a much longer text was here");
        EXPECT_TRUE(ufu_StringToTextFile(dir.inside("f"), u"x\u20AC\n\u0416", c.encoding));
        EXPECT_EQ(dir.read("f"), c.some);
        EXPECT_TRUE(ufu_StringToTextFile(dir.inside("f"), u"", c.encoding));
        EXPECT_EQ(dir.read("f"), c.empty);
    }
}

TEST_F(ufu_text, FailuresGiveFalseOrAreRaised) {
    const auto write = [&](Text path, TextView text, std::int32_t encoding) {
        EXPECT_FALSE(ufu_StringToTextFile(path, text, encoding)) << toUtf8(path);
        return test::raised([&] { (void)ufu_StringToTextFile(path, text, encoding, true); });
    };
    const std::string kWriteError = "ufu_StringToTextFile: Error writing file";
    for (const std::int32_t encoding : {ufeAnsi, ufeUnicode, ufeUTF8}) {
        EXPECT_EQ(write(dir.inside("none/f"), u"a", encoding), kWriteError);
        EXPECT_EQ(write(u"\\dev\\full", u"a", encoding), kWriteError);
        EXPECT_EQ(write(u"\\dev\\full", Text(50'000, u'a'), encoding), kWriteError);
    }
    dir.write("f", "kept");
    EXPECT_EQ(write(dir.inside("f"), u"a", 3), kWriteError);
    EXPECT_EQ(dir.read("f"), "kept");

    for (const auto& bytes : {"abc"s, "\xEF\xBB\xBF"s + std::string(20'000, 'x'),
                              "\xFF\xFE"s + std::string(20'000, 'x')}) {
        dir.write("f", bytes);
        Text text = u"old";
        platform::test::failNext(FileOp::Read, 1, bytes.size() > 3 ? 2 : 1);  // the content's
        EXPECT_FALSE(ufu_TextFileToString(dir.inside("f"), text));
        EXPECT_EQ(text, u"");
        platform::test::failNext(FileOp::Size, 9);
        EXPECT_FALSE(ufu_TextFileToString(dir.inside("f"), text));
        platform::test::clearFaults();
    }
    Text text = u"old";
    EXPECT_EQ(test::raised([&] { (void)ufu_TextFileToString(dir.inside(""), text, true); }),
              "ufu_TextFileToString: Error reading file");
    EXPECT_EQ(text, u"");
    EXPECT_EQ(ufu_GetFileEncoding(dir.inside("none")), ufeAnsi);
    EXPECT_EQ(ufu_FileLen(dir.inside("none")), 0);
}

TEST_F(ufu_text, TheNameMayStandInTheTextThatIsRead) {
    dir.write("f", "content");
    Text text = dir.inside("f");
    EXPECT_TRUE(ufu_TextFileToString(text, text));
    EXPECT_EQ(text, u"content");
}
