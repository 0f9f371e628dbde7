#include "workbench/logic/findRows.h"

#include "langfile/simpleDocument_test.h"
#include "workbench/logic/columns.h"
#include "workbench/logic/recording_test.h"

#include <gtest/gtest.h>

namespace {

TEST(findRows, FindsTheFirstRowThatASearchFromTheFrontFinds) {
    std::mt19937 random(5);
    const auto anySection = [&] {
        return Text(anyOf(random, {u"", u"A", u"a ", u"\u00C4", u" b"}));
    };
    const auto anyKey = [&] {
        return Text(
            anyOf(random, {u"k", u"K", u" k", u"\u00E4", u"\u00C4", u"longer key", u"LONGER KEY"}));
    };
    for (int round = 0; round < 300; ++round) {
        ListGrid grid;
        for (std::size_t rows = random() % 20; rows > 0; --rows) {
            grid.AddRow(u"1\t" + anySection() + u"\t" + anyKey() + u"\tx\ty");
        }
        std::vector<std::pair<Text, Text>> texts(random() % 10);
        std::vector<RowName> names;
        std::vector<std::int32_t> expected;
        for (auto& [section, key] : texts) {
            section = anySection() + (random() % 2 == 0 ? u"\t" : u"");
            key = u"\t " + anyKey() + u"\t";
            names.push_back({section, key});
            expected.push_back(-1);
            for (std::int32_t i = grid.Rows(); i >= 1; --i) {
                if (simple::folded(Text(grid.CellText(i, kSectionColumn))) ==
                        simple::folded(section) &&
                    simple::folded(Text(grid.CellText(i, kKeyColumn))) == simple::folded(key)) {
                    expected.back() = i;
                }
            }
        }
        ASSERT_EQ(findRows(grid, names), expected) << dump(grid);
    }
}

}  // namespace
