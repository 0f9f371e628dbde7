#include "platform/base/text.h"

#include <gtest/gtest.h>

using namespace std::string_literals;

TEST(text, Utf8AndBackIsTheSameAtEveryDistanceFromABlockBorder) {
    // Conversions go by blocks of 16: each of these must be seen wherever it stands.
    for (const Text& piece : {u""s, u"\u0080"s, u"\u07FF"s, u"\u0800"s, u"\uFFFF"s, u"\U0001F600"s,
                              u"\U0010FFFF"s, u"\0"s, u"\u007F"s}) {
        for (std::size_t before = 0; before <= 33; ++before) {
            for (const std::size_t behind : {0, 1, 15, 16, 17}) {
                const Text s = Text(before, u'a') + piece + Text(behind, u'z');
                const std::string utf8 = toUtf8(s);
                ASSERT_EQ(fromUtf8(utf8), s) << before << " " << utf8;
                ASSERT_EQ(utf8.substr(0, before), std::string(before, 'a'));
            }
        }
    }
    EXPECT_EQ(toUtf8(u"\u00E9\u20AC\U0001F600"), "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
}

TEST(text, LoneSurrogatesBecomeReplacementCharacters) {
    EXPECT_EQ(toUtf8(u"\xD800"), "\uFFFD");
    EXPECT_EQ(toUtf8(u"a\xDC00\xD800z"), "a\uFFFD\uFFFDz");
    EXPECT_EQ(toUtf8(u"\xD83D\xD83D\xDE00"), "\uFFFD\U0001F600");
}

const struct {
    std::string utf8;
    Text text;
} kMalformed[] = {
    {"\x80", u"\uFFFD"},
    {"a\xC3", u"a\uFFFD"},
    {"\xC3(", u"\uFFFD("},
    {"\xE2\x82z", u"\uFFFD\uFFFDz"},
    {"\xC0\x80", u"\uFFFD\uFFFD"},
    {"\xE0\x80\x80", u"\uFFFD\uFFFD\uFFFD"},
    {"\xED\xA0\x80", u"\uFFFD\uFFFD\uFFFD"},
    {"\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"},
    {"\xF0\x9F\x98\xC3\xA9", u"\uFFFD\uFFFD\uFFFD\u00E9"},
    {"\xFF\xFE", u"\uFFFD\uFFFD"},
};

TEST(text, EachByteThatIsNoUtf8BecomesOneReplacementCharacter) {
    for (const auto& c : kMalformed) EXPECT_EQ(fromUtf8(c.utf8), c.text) << c.utf8;
}
