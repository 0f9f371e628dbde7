#include "platform/base/numbers.h"

#include "platform/base/testhooks.h"

#include <gtest/gtest.h>
#include <limits>

namespace {

TEST(numbers, TheDecimalSeparatorIsThatOfTheUsersLocale) {
    const struct {
        const char* locale;
        char16_t separator;
    } kCases[] = {
        {"C", u'.'},           {"POSIX", u'.'}, {"C.UTF-8", u'.'},     {"en_GB.UTF-8", u'.'},
        {"nl_NL.UTF-8", u','}, {"ru", u','},    {"de_CH.UTF-8", u'.'}, {"fa_IR.UTF-8", u'\x066B'},
        {"no such", u'.'},     {"", u'.'},
    };
    const platform::test::HookScope hooks;
    for (const auto& c : kCases) {
        platform::test::setLocale(c.locale);
        EXPECT_EQ(platform::decimalSeparator(), c.separator) << c.locale;
    }
}

TEST(numbers, TheNumberAtTheStartOfATextIsRoundedAndHeldTo32Bits) {
    const struct {
        TextView text;
        std::int32_t number;
    } kCases[] = {
        {u"", 0},
        {u"x1", 0},
        {u"12", 12},
        {u"  12px", 12},
        {u"\t7", 0},
        {u"-1", -1},
        {u"+7 8", 7},
        {u"- 1", 0},
        {u".", 0},
        {u"-.5", 0},
        {u".6", 1},
        {u"2.5", 2},
        {u"3.5", 4},
        {u"-2.5", -2},
        {u"2.50000001x", 3},
        {u"2.4999999999999999999", 2},
        {u"-2.51", -3},
        {u"1,9", 1},
        {u"1e3", 1},
        {u"1.2.9", 1},
        {u"0x10", 0},
        {u"2147483647.5", 2147483647},
        {u"2147483648", 2147483647},
        {u"-99999999999999999999999", std::numeric_limits<std::int32_t>::min()},
        {u"99999999999999999999999", std::numeric_limits<std::int32_t>::max()},
        {u"\u0663", 0},
    };
    for (const auto& c : kCases) {
        EXPECT_EQ(platform::leadingNumber(c.text), c.number) << toUtf8(c.text);
    }
}

}  // namespace
