#include "file/clsUniFile.h"

#include "platform/base/codepages.h"
#include "platform/base/testhooks.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

namespace {

std::string encoded(TextView s, std::int32_t encoding) {
    const Bytes bytes = encoding == ufeUTF8 ? ufu_StringToUTF8(s) : platform::textToBytes(s, 1252);
    if (encoding != ufeUnicode) return {bytes.begin(), bytes.end()};
    return {reinterpret_cast<const char*>(s.data()), s.size() * 2};
}

// All lines as they come, each with the result of its read, up to an empty one that failed.
std::string lines(const Text& path, std::int32_t encoding, bool cache) {
    clsUniFile file;
    file.UseCache(cache);
    EXPECT_TRUE(file.OpenFileRead(path));
    std::string all;
    for (;;) {
        Text line = u"old";
        const bool ended = file.ReadLine(line, encoding);
        if (!ended && line.empty()) return all;
        all += toUtf8(line) + (ended ? "|" : "~");
    }
}

}  // namespace

TEST(clsUniFile, LinesEndAtLFAndTakeOneCRAlong) {
    const platform::test::HookScope hooks;
    platform::setAnsiCodePage(1252);
    const std::string u500(500, 'u'), u1024(1024, 'v'), u5501(5501, 'w'), u20000(20'000, 'x');
    const struct {
        std::string text, lines;
    } cases[] = {
        {"", ""},
        {"ab", "ab~"},
        {"a\r\nb\n", "a|b|"},
        {"a\rb\n\n\r\n\r\r\nc\r", "a\rb|||\r|c\r~"},
        {"\xC3\xA9\n\xC3\xA9", "\xC3\xA9|\xC3\xA9~"},
        {u500 + "\n" + u500 + "u\n", u500 + "|" + u500 + "u|"},
        {u1024 + "v\n" + u1024 + "vv\r\nz", u1024 + "v|" + u1024 + "vv|z~"},
        {u5501 + "\n" + u20000 + "\r\n\n" + u20000, u5501 + "|" + u20000 + "||" + u20000 + "~"},
    };
    for (const auto& c : cases) {
        for (const std::int32_t encoding : {ufeAnsi, ufeUnicode, ufeUTF8}) {
            const test::TempDir dir;
            dir.write("f", encoded(fromUtf8(c.text), encoding));
            for (const bool cache : {true, false}) {
                EXPECT_EQ(lines(dir.inside("f"), encoding, cache), c.lines)
                    << encoding << ' ' << c.text.substr(0, 20);
            }
        }
    }
    const test::TempDir dir;
    dir.write("f", std::string("a\0\n\0b", 5));  // an odd byte at the end
    EXPECT_EQ(lines(dir.inside("f"), ufeUnicode, true), "a|");
}

TEST(clsUniFile, AnsiLinesConvertEachByteAlone) {
    const platform::test::HookScope hooks;
    const test::TempDir dir;
    dir.write("f", "\x82\xA0\xB1\n");  // in page 932 a double-byte character and a single one
    for (const auto& [page, line] :
         {std::pair{1252, u"\u201A\u00A0\u00B1"}, std::pair{1251, u"\u201A\u00A0\u00B1"},
          std::pair{932, u"\uFFFD\uFFFD\uFF71"}}) {
        ASSERT_TRUE(platform::setAnsiCodePage(page));
        clsUniFile file;
        ASSERT_TRUE(file.OpenFileRead(dir.inside("f")));
        Text read;
        EXPECT_TRUE(file.ReadAnsiLine(read));
        EXPECT_EQ(toUtf8(read), toUtf8(line)) << page;
    }
}

TEST(clsUniFile, WritesMarksAndLines) {
    const platform::test::HookScope hooks;
    platform::setAnsiCodePage(1252);
    const struct {
        std::int32_t encoding;
        std::string bytes;
        ufeEncoding found;
    } cases[] = {
        {ufeAnsi, "\x80\n\r\n\r\n", ufeAnsi},
        {ufeUnicode, {"\xFF\xFE\xAC\x20\n\0\r\0\n\0\r\0\n\0", 14}, ufeUnicode},
        {ufeUTF8, "\xEF\xBB\xBF\xE2\x82\xAC\n\r\n\r\n", ufeUTF8},
    };
    for (const auto& c : cases) {
        const test::TempDir dir;
        clsUniFile file;
        ASSERT_TRUE(file.OpenFileWrite(dir.inside("f")));
        EXPECT_TRUE(file.WriteBOM(c.encoding));
        EXPECT_FALSE(file.WriteBOM(7));
        EXPECT_TRUE(file.WriteLine(u"\u20AC\n", c.encoding));
        EXPECT_TRUE(file.WriteLine(u"", c.encoding));
        file.CloseFile();
        EXPECT_EQ(dir.read("f"), c.bytes);

        ASSERT_TRUE(file.OpenFileRead(dir.inside("f")));
        EXPECT_EQ(file.ReadBOM(), c.found);
        Text line;
        EXPECT_TRUE(file.ReadLine(line, c.encoding));
        EXPECT_EQ(line, u"\u20AC");
    }
    clsUniFile closed;
    EXPECT_FALSE(closed.WriteUnicodeLine(u"a") || closed.WriteLine(u"", ufeAnsi));
}

TEST(clsUniFile, MarksAreToldByTheirFirstByte) {
    const struct {
        std::string bytes;
        ufeEncoding encoding;
        std::int64_t posAfter;
        std::int64_t posBefore = 0;
    } cases[] = {
        {"", ufeAnsi, 0},           {"abc", ufeAnsi, 0},     {"\xFE\xFF", ufeAnsi, 0},
        {"\xFFxyz", ufeUnicode, 2}, {"\xEFxyz", ufeUTF8, 3}, {"\xFF", ufeUnicode, 1},
        {"ab\xFF", ufeAnsi, 0, 1},  // the start, not where the read began
    };
    for (const auto& c : cases) {
        const test::TempDir dir;
        dir.write("f", c.bytes);
        clsUniFile file;
        ASSERT_TRUE(file.OpenFileRead(dir.inside("f")));
        file.SetFilePos(c.posBefore);
        EXPECT_EQ(file.ReadBOM(), c.encoding) << c.bytes;
        EXPECT_EQ(file.GetFilePos(), c.posAfter) << c.bytes;
    }
}
