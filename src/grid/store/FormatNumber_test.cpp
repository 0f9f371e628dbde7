#include "grid/store/FormatNumber.h"

#include "grid/store/pvGetCellText.h"
#include "platform/base/testhooks.h"

#include <gtest/gtest.h>

namespace {

TEST(FormatNumber, GroupsPadsAndCutsDigits) {
    const NumberFormat plain = {.sDecSep = u".", .bAutoValSep = false};
    const auto fixInt = [](std::int32_t digits) {
        return NumberFormat{.sDecSep = u".", .fixInt = digits, .bAutoValSep = false};
    };
    const auto fixDec = [](std::int32_t digits, bool sign = false) {
        return NumberFormat{.sDecSep = u".", .fixDec = digits, .bSgn = sign, .bAutoValSep = false};
    };
    const struct {
        TextView number;
        NumberFormat format;
        std::string text;
    } kCases[] = {
        {u"1234567.5", {.sDecSep = u".", .sValSep = u","}, "1,234,567.5"},
        {u"123", {.sDecSep = u".", .sValSep = u","}, "123"},
        {u"-123456", {.sDecSep = u".", .sValSep = u" "}, "-123 456"},
        {u"1234", {.sDecSep = u".", .sValSep = u"::"}, "1::234"},
        {u"-12", fixInt(5), "-00012"},
        {u"12", {.sDecSep = u".", .sValSep = u",", .fixInt = 5}, "12"},
        {u"123456", fixInt(5), "123456"},  // longer already: no zeros
        {u"7", fixInt(100), std::string(30, '0') + "7"},
        {u"1.999", fixDec(2), "1.99"},
        {u"1.999", fixDec(0), "1"},
        {u"7", fixDec(2, true), "+7.00"},
        {u"-7.5", fixDec(2, true), "-7.50"},
        {u"1.5", {.sDecSep = u",", .bAutoValSep = false}, "15"},
        {u"1.5.2", plain, "1.52"},
        {u"1-2+3", plain, "+123"},
        {u"-", plain, "-"},
        {u"abc", plain, ""},
        {u"", fixDec(2, true), ""},
        {u"1..5", {.sDecSep = u"..", .bAutoValSep = false}, "15"},
        {u"1.5", {.bAutoDecSep = false, .bAutoValSep = false}, "15"},
    };
    for (const auto& c : kCases) {
        EXPECT_EQ(toUtf8(FormatNumber(c.number, c.format)), c.text) << toUtf8(c.number);
    }
}

TEST(FormatNumber, TakesSeparatorsFromTheLocaleWhenAsked) {
    const platform::test::HookScope hooks;
    platform::test::setLocale("en_US.UTF-8");
    EXPECT_EQ(toUtf8(FormatNumber(u"1234.5")), "1,234.5");
    platform::test::setLocale("de_DE.UTF-8");
    EXPECT_EQ(toUtf8(FormatNumber(u"1234,5")), "1.234,5");
    EXPECT_EQ(toUtf8(FormatNumber(u"1234.5", {.sDecSep = u"."})), "1,234.5");
}

TEST(pvGetCellText, ShowsNumbersInTheColumnsFormat) {
    const platform::test::HookScope hooks;
    platform::test::setLocale("de_DE.UTF-8");
    clsCtlUniGrid_Column column;
    EXPECT_EQ(toUtf8(pvGetCellText(1234.5, column)), "1234,5");
    column.iType = 1;
    column.bNumAutoValSep = true;
    column.iNumFixDec = 2;
    EXPECT_EQ(toUtf8(pvGetCellText(1234.5, column)), "1.234,50");
    EXPECT_EQ(toUtf8(pvGetCellText(u"", column)), "");
    column.iType = 2;
    EXPECT_EQ(toUtf8(pvGetCellText(true, column)), "");
}

}  // namespace
