#include "workbench/logic/searchRows.h"

#include "workbench/logic/clsCommandArgs.h"
#include "workbench/logic/recording_test.h"
#include "workbench/logic/settingsRules.h"

#include "support/raised.h"

#include <gtest/gtest.h>

namespace {

TEST(settingsRules, NarrowColumnsAreTenPixelsAndOnlyOneMeansOn) {
    for (const std::int32_t lStored : {-400, 0, 9, 10}) EXPECT_EQ(columnWidthSetting(lStored), 10);
    EXPECT_EQ(columnWidthSetting(11), 11);
    EXPECT_TRUE(emptyTransSetting(1));
    for (const std::int32_t lStored : {0, -1, 2}) EXPECT_FALSE(emptyTransSetting(lStored));
}

std::string parsed(TextView sCommand) {
    clsCommandArgs args;
    args.ParseCommand(sCommand);
    std::string all;
    for (const Text& arg : args.Args()) all += "<" + toUtf8(arg) + ">";
    return all;
}

TEST(clsCommandArgs, SplitsAtBlanksAndQuotes) {
    const struct {
        Text command;
        std::string args;
    } kCases[] = {
        {u"", ""},
        {u"   ", ""},
        {u"a b", "<a><b>"},
        {u"  a   b  ", "<a><b>"},
        {u"\"a b\"", "<a b>"},
        {u"\"a b\"\"c d\"", "<a b><c d>"},  // no blank between them
        {u"a\"b c\"d", "<ab c><d>"},        // the closing quote ends the argument
        {u"\"\" x", "<x>"},
        {u"\"open end ", "<open end>"},  // the blank in front of it was trimmed
        {u"a\tb", "<a\tb>"},
        {u"\" \"", "< >"},
    };
    for (const auto& c : kCases) EXPECT_EQ(parsed(c.command), c.args) << toUtf8(c.command);
    EXPECT_EQ(parsed(u" " + Text(32767, u'x') + u" ").size(), 32769U);
    EXPECT_EQ(test::raised([] { (void)parsed(Text(32768, u'x')); }),
              "6 clsCommandArgs.ParseCommand: Overflow");
}

TEST(clsCommandArgs, GivesTheValueOfANamedArgument) {
    clsCommandArgs args;
    args.ParseCommand(u"x /lang:nl lang: /Lang:de lang:lang:fr");
    EXPECT_EQ(args.GetValue(u"lang"), u"/nl");
    EXPECT_EQ(args.GetValue(u"lang:"), u"") << "its colon is part of the name";
    EXPECT_EQ(args.GetValue(u"Lang"), u"/de");
    EXPECT_EQ(args.GetValue(u"/lang"), u"nl");
    EXPECT_TRUE(args.ExistParName(u"Lang"));
    EXPECT_FALSE(args.ExistParName(u"none"));
    args.ParseCommand(u"lang: lang:lang:fr");
    EXPECT_FALSE(args.ExistParName(u"lang")) << "the first one counts, and it is empty";
    args.ParseCommand(u"lang:lang:fr");
    EXPECT_EQ(args.GetValue(u"lang"), u"fr");
}

// Rows: number, default, translation.
ListGrid sample() {
    return ListGrid{u"1\tS\ta\txABCy\tEins", u"2\tS\tb\tSave \t  ", u"5\tS\tc\tabc\t",
                    u"7\tS\td\t\u00C4rger\tSAVE"};
}

TEST(searchRows, GoDownwardFromTheRowBelowAndStopAtTheEnd) {
    const struct {
        std::int32_t row;
        std::int32_t untranslated, abc, save;
    } kCases[] = {{-1, 2, 1, 4}, {1, 2, 3, 4}, {2, 3, 3, 4}, {3, -1, -1, 4}, {4, -1, -1, -1}};
    for (const auto& c : kCases) {
        ListGrid grid = sample();
        grid.Row(c.row);
        EXPECT_EQ(nextUntranslated(grid), c.untranslated) << c.row;
        EXPECT_EQ(nextWithText(grid, kFindDefault, u"aBc"), c.abc) << c.row;
        EXPECT_EQ(nextWithText(grid, kFindTranslation, u"save"), c.save) << c.row;
        EXPECT_EQ(grid.Row(), c.row) << "nothing moves";
    }
}

TEST(searchRows, ComparesLowerCasedUnitsWithTheBlanksOfTheText) {
    const struct {
        Text text;
        std::int32_t row;
    } kCases[] = {{u"\u00E4RG", 4}, {u"save ", 2}, {u"save  ", -1}, {u" ", -1},
                  {u"", -1},        {u"abcd", -1}, {u"y", 1},       {u"arger", -1}};
    for (const auto& c : kCases) {
        EXPECT_EQ(nextWithText(sample(), kFindDefault, c.text), c.row) << toUtf8(c.text);
    }
    EXPECT_EQ(nextUntranslated(GridData()), -1) << "without columns";
    EXPECT_EQ(nextWithText(GridData(), kFindDefault, u"a"), -1);
}

TEST(searchRows, GoToTheNumberOfTheRowColumn) {
    const struct {
        Text entered;
        std::int32_t row;
    } kCases[] = {{u"5", 3},   {u"7abc", 4}, {u" 2.4", 2}, {u"3", -1}, {u"abc", -1},
                  {u"  ", -1}, {u"0", -1},   {u"-1", -1},  {u"", -1}};
    for (const auto& c : kCases) {
        EXPECT_EQ(rowOfNumber(sample(), c.entered), c.row) << toUtf8(c.entered);
    }
}

}  // namespace
