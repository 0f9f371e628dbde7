#include "platform/base/numbers.h"

#include "platform/base/testhooks.h"

#include <gtest/gtest.h>

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

}  // namespace
