#include "grid/store/GridValue.h"

#include "grid/store/gridDump_test.h"
#include "platform/base/testhooks.h"

#include <gtest/gtest.h>
#include <limits>

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(GridValue, WritesNumbersWithFifteenDigitsAndTheLocalesSeparator) {
    const struct {
        GridValue value;
        const char *american, *german;
    } kCases[] = {
        {{}, "", ""},
        {-32768, "-32768", "-32768"},
        {100000, "100000", "100000"},
        {0.1, "0.1", "0,1"},
        {-1234567.5, "-1234567.5", "-1234567,5"},
        {0.1 + 0.2, "0.3", "0,3"},
        {1.0 / 3, "0.333333333333333", "0,333333333333333"},
        {-0.0, "0", "0"},
        {123456789012345.0, "123456789012345", "123456789012345"},
        {1e15, "1E+15", "1E+15"},
        {1.5e-5, "1.5E-05", "1,5E-05"},
        {true, "True", "True"},
        {u"as it is 1.5", "as it is 1.5", "as it is 1.5"},
    };
    const platform::test::HookScope hooks;
    for (const auto& c : kCases) {
        platform::test::setLocale("en_US.UTF-8");
        EXPECT_EQ(toUtf8(c.value.toText()), c.american);
        platform::test::setLocale("de_DE.UTF-8");
        EXPECT_EQ(toUtf8(c.value.toText()), c.german);
    }
}

TEST(GridValue, ReadsNumbersAndRefusesWhatIsNone) {
    const std::string kNo = "13 : Type mismatch";
    const std::string kLarge = "6 : Overflow";
    const struct {
        GridValue value;
        std::string number, flag;
    } kCases[] = {
        {{}, "num 0", "false"},
        {true, "num -1", "true"},
        {-7, "num -7", "true"},
        {u"True", kNo, "true"},
        {u"fAlSe", kNo, "false"},
        {u" true", kNo, kNo},
        {u"0", "num 0", "false"},
        {u"  -1.5  ", "num -1.5", "true"},
        {u"+.5", "num 0.5", "true"},
        {u"5.", "num 5", "true"},
        {u"1e3", "num 1000", "true"},
        {u"25E-1", "num 2.5", "true"},
        {u"1,234,567.5", "num 1234567.5", "true"},
        {u"1,23", kNo, kNo},
        {u"1234,567", kNo, kNo},
        {u",5", kNo, kNo},
        {u"1.2,345", kNo, kNo},
        {u"", kNo, kNo},
        {u" ", kNo, kNo},
        {u"-", kNo, kNo},
        {u".", kNo, kNo},
        {u"1e", kNo, kNo},
        {u"e5", kNo, kNo},
        {u"1 2", kNo, kNo},
        {u"12x", kNo, kNo},
        {u"0x10", kNo, kNo},
        {u"inf", kNo, kNo},
        {u"\x0661", kNo, kNo},
        {u"1e999", kLarge, kLarge},
        {u"-1e99999999999999999999", kLarge, kLarge},
        {u"1e-999", "num 0", "false"},
        {u"0e999", "num 0", "false"},
        {Text(400, u'9'), kLarge, kLarge},
        {Text(400, u'9') + u"e-390", "num 10000000000", "true"},
        {u"0." + Text(400, u'0') + u"1", "num 0", "false"},
    };
    const platform::test::HookScope hooks;
    platform::test::setLocale("en_US.UTF-8");
    for (const auto& c : kCases) {
        EXPECT_EQ(dumpOf([&] { return c.value.toDouble(); }), c.number) << dump(c.value);
        EXPECT_EQ(dumpOf([&] { return c.value.toBoolean(); }), c.flag) << dump(c.value);
    }
    platform::test::setLocale("de_DE.UTF-8");
    EXPECT_EQ(GridValue(u"1.234,5").toDouble(), 1234.5);
    EXPECT_EQ(dumpOf([] { return GridValue(u"1.5").toDouble(); }), kNo);  // and not 15
}

TEST(GridValue, EveryNumberComesBackFromItsText) {
    const platform::test::HookScope hooks;
    for (const char* const locale : {"en_US.UTF-8", "fr_FR.UTF-8"}) {
        platform::test::setLocale(locale);
        for (const double d : {0.0, 0.5, -123.456, 1e15, 1.5e-300, 1e300, 32767.0}) {
            EXPECT_EQ(GridValue(GridValue(d).toText()).toDouble(), d);
        }
    }
}

TEST(GridValue, OrdersNumbersBeforeTextsAndTrueBeforeFalse) {
    // Each line is equal within and less than the next.
    const std::vector<std::vector<GridValue>> ascending = {
        {-kInfinity}, {-2, -2.0},       {true, -1},  {{}, false, 0, -0.0},
        {0.5},        {40000, 40000.0}, {kInfinity}, {kNaN},
        {u""},        {u"-5"},          {u"A"},      {u"a"},
    };
    for (std::size_t i = 0; i < ascending.size(); ++i) {
        for (std::size_t k = 0; k < ascending.size(); ++k) {
            for (const GridValue& a : ascending[i]) {
                for (const GridValue& b : ascending[k]) {
                    const int order = a.compare(b);
                    EXPECT_EQ((order > 0) - (order < 0), (i > k) - (i < k))
                        << dump(a) << " and " << dump(b);
                }
            }
        }
    }
}

}  // namespace
