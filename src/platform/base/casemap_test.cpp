#include "platform/base/casemap.h"

#include "platform/base/collation.h"
#include "platform/base/testhooks.h"

#include <gtest/gtest.h>

using namespace platform;
using namespace std::string_literals;

TEST(casemap, EachUnitHasOneLowerCaseUnit) {
    EXPECT_EQ(lowerCase(u"AZ[@`az\u00C0\u00D7\u00DF\u0130\u0410\u03A3\u1E9E\u2126\uFF21"),
              u"az[@`az\u00E0\u00D7\u00DF\u0069\u0430\u03C3\u00DF\u03C9\uFF41");
    EXPECT_EQ(lowerCase(u"\xD801\xDC00\xDC00\xD800\0Z"s), u"\xD801\xDC00\xDC00\xD800\0z"s);
    Text to = u"KEPT ";
    appendLowerCase(u"ADDED", to);
    EXPECT_EQ(to, u"KEPT added");
}

namespace {

const char* order(TextView a, TextView b) {
    const int compared = compareText(a, b);
    Bytes keyA;
    Bytes keyB;
    appendSortKey(a, keyA);
    appendSortKey(b, keyB);
    const int byKeys = keyA < keyB ? -1 : keyA > keyB;
    EXPECT_EQ(compared < 0, byKeys < 0) << toUtf8(a) << " " << toUtf8(b);
    EXPECT_EQ(compared > 0, byKeys > 0) << toUtf8(a) << " " << toUtf8(b);
    EXPECT_EQ(keyA.back(), 0);
    return compared < 0 ? "<" : compared > 0 ? ">" : "=";
}

const struct {
    const char* locale;
    Text a;
    const char* order;
    Text b;
} kOrders[] = {
    {"C", u"File", "=", u"fILE"},
    {"C", u"a", "<", u"B"},
    {"C", u"", "<", u"a"},
    {"C", u"resume", "<", u"r\u00E9sum\u00E9"},
    {"C", u"r\u00E9sum\u00E9", "<", u"resumes"},
    {"C", u"\u00E4", "<", u"z"},
    {"sv_SE.UTF-8", u"\u00E4", ">", u"z"},
    {"C.UTF-8", u"e\u0301", "=", u"\u00E9"},
    {"no such locale", u"a", "<", u"B"},
    {"zh_CN.UTF-8", u"\x554A", "<", u"\x4E2D"},  // by sound, and by strokes
    {"zh_TW.UTF-8", u"\x554A", ">", u"\x4E2D"},
    {"C", u"a\xD800", ">", u"a"},  // lone surrogates count
    {"C", u"a\0b"s, "=", u"ab"},   // control characters do not
    {"C", Text(5000, u'a'), "<", Text(5000, u'a') + u"b"},
};

}  // namespace

TEST(collation, TextsStandInTheOrderOfTheUsersLocaleAndSortKeysAgree) {
    const test::HookScope hooks;
    for (const auto& c : kOrders) {
        test::setLocale(c.locale);
        EXPECT_STREQ(order(c.a, c.b), c.order) << toUtf8(c.a) << " " << toUtf8(c.b);
    }
}
