#include "cli/Output.h"

#include "support/TempDir.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <random>
#include <unistd.h>

namespace cli {
namespace {

// What the calls put out.
template <class Put> std::string written(Put put) {
    const test::TempDir dir;
    const int file = ::open((dir.path() / "out").c_str(), O_WRONLY | O_CREAT, 0600);
    Output out(file);
    put(out);
    EXPECT_TRUE(out.finish());
    ::close(file);
    return dir.read("out");
}

TEST(Output, EscapesWhatJsonAsksFor) {
    const struct {
        Text text;
        const char* json;
        std::string plain;
    } kCases[] = {
        {u"", "\"\"", ""},
        {u"a\"b\\c/d", R"("a\"b\\c/d")", "a\"b\\c/d"},
        {u"\b\f\n\r\t\u001f\u007f", "\"\\b\\f\\n\\r\\t\\u001f\x7f\"", "\b\f\n\r\t\x1f\x7f"},
        {Text(1, u'\0'), R"("\u0000")", std::string(1, '\0')},
        {u"\u00e9\u0416\u20ac", "\"\xC3\xA9\xD0\x96\xE2\x82\xAC\"", "\xC3\xA9\xD0\x96\xE2\x82\xAC"},
        {u"\xD83D\xDE00", "\"\xF0\x9F\x98\x80\"", "\xF0\x9F\x98\x80"},
        {u"\xD83Dx", R"("\ud83dx")", "\xEF\xBF\xBDx"},
        {u"\xDE00\xD83D", R"("\ude00\ud83d")", "\xEF\xBF\xBD\xEF\xBF\xBD"},
        {u"eight: \u001f after a block", R"("eight: \u001f after a block")",
         "eight: \x1f after a block"},
    };
    for (const auto& c : kCases) {
        EXPECT_EQ(written([&](Output& out) { out.json(c.text); }), c.json);
        EXPECT_EQ(written([&](Output& out) { out.plain(c.text); }), c.plain);
    }
}

// Long texts cross the edges of the buffer, pairs included.
TEST(Output, GivesBackRandomTextsOfAnyLength) {
    std::mt19937 random(6);
    for (int round = 0; round < 60; ++round) {
        Text text;
        for (std::size_t pieces = random() % 30'000; pieces > 0; --pieces) {
            switch (random() % 12) {
            case 0:
                text += static_cast<char16_t>(random() % 0xD800);
                break;
            case 1:
                text += static_cast<char16_t>(0xD800 + random() % 0x400);
                text += static_cast<char16_t>(0xDC00 + random() % 0x400);
                break;
            case 2:
                text += static_cast<char16_t>(random() % 0x80);
                break;
            default:
                text += u"plain text";
            }
        }
        const std::string json = written([&](Output& out) {
            out.json(text);
            out.bytes("\n");
        });
        ASSERT_EQ(fromUtf8(nlohmann::json::parse(json).get<std::string>()), text);
        ASSERT_EQ(written([&](Output& out) { out.plain(text); }), toUtf8(text));
    }
}

TEST(Output, RemembersAWriteThatFailed) {
    Output nowhere(-1);
    EXPECT_TRUE(nowhere.finish());  // nothing to write
    nowhere.bytes("x");
    EXPECT_FALSE(nowhere.finish());

    const int full = ::open("/dev/full", O_WRONLY);
    Output out(full);
    out.bytes(std::string(200'000, 'x'));
    out.plain(u"more");
    EXPECT_FALSE(out.finish());
    ::close(full);
}

TEST(Output, KnowsAFileFromAnythingThatIsReadAlong) {
    const test::TempDir dir;
    const int file = ::open((dir.path() / "out").c_str(), O_WRONLY | O_CREAT, 0600);
    EXPECT_TRUE(Output(file).toFile());
    ::close(file);
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    EXPECT_FALSE(Output(ends[1]).toFile());
    ::close(ends[0]);
    ::close(ends[1]);
    EXPECT_FALSE(Output(-1).toFile());
}

}  // namespace
}  // namespace cli
