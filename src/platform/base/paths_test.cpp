#include "platform/base/paths.h"

#include <gtest/gtest.h>
#include <random>

using platform::pathForDisplay;
using platform::pathFromSystem;
using platform::pathToSystem;
using namespace std::string_literals;

const struct {
    std::string system;
    Text inside;
} kBothWays[] = {
    {"", u""},
    {"/", u"\\"},
    {"/home/me/a.lng", u"\\home\\me\\a.lng"},
    {"../a.lng", u"..\\a.lng"},
    {"a//b/", u"a\\\\b\\"},
    {"\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80", u"\u00E9\u20AC\U0001F600"},
    {"a\\b", u"a\uEF5Cb"},                          // a name with a backslash
    {"*?\"|:<>", u"\uEF2A\uEF3F\uEF22|:<>"},        // what patterns and quotes would read
    {"\xE9t\xE9", u"\uEFE9t\uEFE9"},                // no UTF-8
    {"\xED\xA0\x80", u"\uEFED\uEFA0\uEF80"},        // nor are surrogates
    {"\xC0\xAF", u"\uEFC0\uEFAF"},                  // nor an overlong slash
    {"\xE2\x82", u"\uEFE2\uEF82"},                  // nor a character cut short
    {"\xEE\xBD\x9C", u"\uEFEE\uEFBD\uEF9C"},        // a name that holds U+EF5C itself
    {"\xEE\xBB\xBF\xEF\x80\x80", u"\uEEFF\uF000"},  // its neighbours need no escape
    {"//srv/a", u"\\\uEF2F\\srv\\a"},               // two slashes are no server's share
    {"//?/a", u"\\\uEF2F\\\uEF3F\\a"},              // and no long-path prefix
    {"///", u"\\\uEF2F\\\\"},
};

TEST(paths, NamesOfTheSystemHaveOneInsideFormEach) {
    for (const auto& c : kBothWays) {
        EXPECT_EQ(toUtf8(pathFromSystem(c.system)), toUtf8(c.inside)) << c.system;
        EXPECT_EQ(pathToSystem(c.inside), c.system);
        EXPECT_EQ(pathToSystem(u"\\\\?\\" + c.inside), c.system);
    }
}

TEST(paths, AnyBytesComeBackAsTheyWere) {
    std::mt19937 random(7);
    const std::string_view pieces[] = {
        "/",    "\\",           "//",           "?",        "*",    "\"",   "a",    "\xEE",
        "\xBC", "\xEE\xBC\x80", "\xEE\xBF\xBF", "\xF0\x9F", "\x80", "\xC3", "\xA9", "\xED\xA0",
        "\x7F", "\x01"};
    for (int round = 0; round < 20'000; ++round) {
        std::string system;
        const auto length = random() % 12;
        for (unsigned i = 0; i < length; ++i) {
            if (random() % 2 == 0) {
                system += pieces[random() % std::size(pieces)];
            } else {
                system += static_cast<char>(1 + random() % 255);
            }
        }
        const Text inside = pathFromSystem(system);
        ASSERT_EQ(pathToSystem(inside), system) << round;
        ASSERT_EQ(pathToSystem(u"\\\\?\\" + inside), system) << round;
        ASSERT_EQ(inside.find_first_of(u"/*?\""), Text::npos) << round;
    }
}

// Texts that a person or a file may give, but pathFromSystem never does.
const struct {
    Text inside;
    std::string system;
} kOutOnly[] = {
    {u"\\\\server\\share\\x", ""},  // no servers here, and /server/share/x is another file
    {u"\\\\?\\\\\\server\\share", ""},
    {u"\\\\.\\a", ""},
    {u"a/b", ""},    // no name holds a slash
    {u"a\0b"s, ""},  // nor a NUL: it must not end the path early
    {u"a\uEF00"
     u"b",
     "a\xEE\xBC\x80"
     "b"},  // nor does its escape
    {u"\\\\?\\", ""},
    {u"a\uEF41"
     u"b",
     "a\xEE\xBD\x81"
     "b"},               // no second spelling of ASCII
    {u"\\\uEF2F", "/"},  // what stands above "//a"
    {u"a\uEF2F"
     u"b",
     "a\xEE\xBC\xAF"
     "b"},  // nor of a slash
    {u"a\xD800"
     u"b",
     "a\xED\xA0\x80"
     "b"},  // a lone surrogate: a name of its own
    {u"a\xDC00\xD800", "a\xED\xB0\x80\xED\xA0\x80"},
    {u"*.lng", "*.lng"},
};

TEST(paths, NoPathIsSilentlyAnotherFile) {
    for (const auto& c : kOutOnly) EXPECT_EQ(pathToSystem(c.inside), c.system) << toUtf8(c.inside);
}

TEST(paths, PeopleSeeTheSystemsSpelling) {
    EXPECT_EQ(pathForDisplay(u"\\home\\a\uEF5Cb\uEF2A.lng"), u"/home/a\\b*.lng");
    EXPECT_EQ(pathForDisplay(u"\\\\?\\\\home\\\u00E9"), u"/home/\u00E9");
    EXPECT_EQ(pathForDisplay(u"\uEFE9t"), u"\uFFFDt");
    EXPECT_EQ(pathForDisplay(u"\\\\server\\share"), u"\\\\server\\share");
}
