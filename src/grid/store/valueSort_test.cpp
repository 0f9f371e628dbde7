#include "grid/store/valueSort.h"

#include "grid/store/GridData.h"
#include "grid/store/gridDump_test.h"
#include "grid/store/plainSort_test.h"
#include "platform/base/testhooks.h"
#include "support/Random.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <set>

namespace {

std::vector<SortItem> itemsOf(const std::vector<std::uint32_t>& ranks) {
    std::vector<SortItem> items;
    items.reserve(ranks.size());
    for (const std::uint32_t rank : ranks) {
        items.push_back({rank, static_cast<std::uint32_t>(items.size() + 1)});
    }
    return items;
}

bool lessRank(const SortItem& a, const SortItem& b) { return a.rank < b.rank; }

// Sorts in both ways; the rows come out in one order.
void expectDescribedOrder(const std::vector<std::uint32_t>& ranks) {
    std::vector<SortItem> items = itemsOf(ranks), described = items;
    sortPlainly(described, lessRank);
    pvQuickSort(items);
    EXPECT_TRUE(std::is_sorted(items.begin(), items.end(), lessRank));
    EXPECT_TRUE(std::ranges::equal(items, described, {}, &SortItem::Row, &SortItem::Row));
}

// Input whose middle is the greatest (or the least) of each part in turn, so that every partition
// takes off one item only. The values that are taken off last are equal in fours.
std::vector<std::uint32_t> slowInput(std::int32_t count, bool greatest) {
    std::vector<std::uint32_t> ranks(static_cast<std::size_t>(count));
    const auto at = [&ranks](std::int32_t i) -> std::uint32_t& {
        return ranks[static_cast<std::size_t>(i) - 1];
    };
    for (std::int32_t size = 1; size <= count; ++size) {
        const auto distance = static_cast<std::uint32_t>(size < count / 4 ? size / 4 : size);
        const std::int32_t added = greatest ? size : count + 1 - size;
        const std::int32_t middle = greatest ? middleRow(1, added) : middleRow(added, count);
        at(added) = at(middle);
        at(middle) = greatest ? distance : static_cast<std::uint32_t>(count) - distance;
    }
    return ranks;
}

TEST(valueSort, LeavesEqualValuesInTheOrderThatTheDescribedStepsLeave) {
    test::Random random(7);
    for (const std::uint32_t count : {0, 1, 2, 20, 21, 22, 50, 300, 1000, 5000}) {
        for (const std::uint32_t different : {1U, 2U, 5U, 100U, 100000U}) {
            std::vector<std::uint32_t> ranks(count);
            for (std::uint32_t& rank : ranks) rank = random.below(different);
            expectDescribedOrder(ranks);
            std::sort(ranks.begin(), ranks.end());
            expectDescribedOrder(ranks);
            std::reverse(ranks.begin(), ranks.end());
            expectDescribedOrder(ranks);
        }
    }
}

TEST(valueSort, LeavesThemSoOnSlowInputTooAndDoesNotTakeForEver) {
    for (const bool greatest : {true, false}) {
        expectDescribedOrder(slowInput(8000, greatest));
        // Step by step this would be more than 100 thousand million comparisons.
        std::vector<SortItem> many = itemsOf(slowInput(500000, greatest));
        pvQuickSort(many);
        EXPECT_TRUE(std::is_sorted(many.begin(), many.end(), lessRank));
    }
}

std::string sorted(std::int32_t iType, const std::vector<GridValue>& values, bool bSortAsc) {
    GridData grid;
    grid.AddColumn({.iType = iType});
    grid.AddColumn({});
    for (const GridValue& value : values) {
        grid.AddRow();
        grid.CellValue(grid.Rows(), 1, value);
        grid.CellValue(grid.Rows(), 2, grid.Rows());
    }
    grid.SortByColum(1, bSortAsc);
    std::string s;
    for (std::int32_t i = 1; i <= grid.Rows(); ++i) {
        s += toUtf8(grid.CellValue(i, 1).toText()) + "/" + toUtf8(grid.CellText(i, 2)) + " ";
    }
    return s;
}

TEST(valueSort, OrdersRowsByTheColumnsType) {
    const platform::test::HookScope hooks;
    platform::test::setLocale("en_US.UTF-8");
    const struct {
        std::int32_t iType;
        std::vector<GridValue> values;
        std::string ascending, descending;
    } kCases[] = {
        {0, {u"b", u"A", u"a"}, "A/2 a/3 b/1 ", "b/1 a/3 A/2 "},
        {0,
         {u"z", u"\x00E9t\x00E9", u"Eta", u"zebra", u"", u"\x0416"},
         "/5 Eta/3 \xC3\xA9t\xC3\xA9/2 z/1 zebra/4 \xD0\x96/6 ",
         "\xD0\x96/6 zebra/4 z/1 \xC3\xA9t\xC3\xA9/2 Eta/3 /5 "},
        {0, {u"10", u"9"}, "10/1 9/2 ", "9/2 10/1 "},
        {1, {10, u"", 9, -1.5, u""}, "-1.5/4 9/3 10/1 /2 /5 ", "/5 /2 10/1 9/3 -1.5/4 "},
        {2, {false, true, false}, "True/2 False/1 False/3 ", "False/3 False/1 True/2 "},
    };
    for (const auto& c : kCases) {
        EXPECT_EQ(sorted(c.iType, c.values, true), c.ascending);
        EXPECT_EQ(sorted(c.iType, c.values, false), c.descending);
    }
}

TEST(SortByColum, AsksTheOwnerInTheDescribedOrder) {
    test::Random random(3);
    for (const std::size_t count : {2U, 3U, 7U, 40U, 200U}) {
        GridData grid;
        grid.AddColumn({.vKey = u"Size", .bSortWithCustomEvent = true, .iType = 1});
        std::vector<std::size_t> values(count);
        for (std::size_t& value : values) {
            value = random.below(count);
            grid.AddRow(GridValue(static_cast<double>(value)).toText());
        }
        const auto question = [](std::int32_t iRow1, std::int32_t iRow2) {
            return std::to_string(iRow1) + ">" + std::to_string(iRow2) + " ";
        };
        std::string asked, described;
        PlainSort(values, 0, [&](std::int32_t iRow1, std::int32_t iRow2) {
            described += question(iRow1, iRow2);
            return values[static_cast<std::size_t>(iRow1) - 1] >
                   values[static_cast<std::size_t>(iRow2) - 1];
        });
        grid.SortCompareRows = [&](const GridValue& vColKey, std::int32_t iRow1, std::int32_t iRow2,
                                   bool bSortAscending, bool& bMajor) {
            EXPECT_EQ(dump(vColKey), "text Size");
            EXPECT_FALSE(bSortAscending);
            EXPECT_TRUE(bMajor);
            asked += question(iRow1, iRow2);
            bMajor = grid.CellValue(iRow1, 1).toDouble() > grid.CellValue(iRow2, 1).toDouble();
        };
        grid.SortByColum(1, false);
        EXPECT_EQ(asked, described);
        for (std::size_t i = 0; i < count; ++i) {
            EXPECT_EQ(grid.CellValue(static_cast<std::int32_t>(count - i), 1).toDouble(),
                      static_cast<double>(values[i]));
        }
    }
}

// Rows are exchanged in place while the owner is asked: whatever it does then, no row is lost, and
// none that it has removed comes back.
TEST(SortByColum, KeepsTheRowsThatAreThereWhateverItsOwnerDoes) {
    const std::function<void(GridData&, bool&)> kOwners[] = {
        [](GridData&, bool& b) { b = true; },
        [](GridData&, bool& b) { b = false; },
        [](GridData&, bool&) { throw Failure(5, u"", u"refused"); },
        [](GridData& g, bool&) { g.RemoveRow(1); },
        [](GridData& g, bool&) { g.RemoveRow(); },
        [](GridData& g, bool&) { g.AddRow(u"new"); },
        [](GridData& g, bool&) { g.Clear(false); },
        [](GridData& g, bool&) { g.Clear(); },
        [](GridData& g, bool&) { g.AddColumn({}); },
        [depth = 0](GridData& g, bool&) mutable {
            if (++depth < 5) g.SortByColum(1, false);
        },
    };
    for (const auto& owner : kOwners) {
        for (int after = 1; after < 12; ++after) {
            GridData grid;
            grid.AddColumn({.bSortWithCustomEvent = true});
            for (const char16_t* row : {u"d", u"f", u"a", u"c", u"e", u"b"}) grid.AddRow(row);
            const auto rows = [&] {
                std::multiset<Text> all;
                for (std::int32_t i = 1; i <= grid.Rows(); ++i) all.emplace(grid.CellText(i, 1));
                return all;
            };
            int asked = 0;
            std::multiset<Text> left = rows();
            grid.SortCompareRows = [&](auto&&, std::int32_t iRow1, std::int32_t iRow2, bool,
                                       bool& bMajor) {
                bMajor = grid.CellText(iRow1, 1) > grid.CellText(iRow2, 1);
                if (++asked < after) return;
                owner(grid, bMajor);
                left = rows();
            };
            grid.SortByColum(1, true);
            EXPECT_EQ(rows(), left) << &owner - kOwners << " after " << after;
            if (left.size() != 6) {
                EXPECT_EQ(asked, after) << "it ends when the number of rows changes";
            }
        }
    }
}

}  // namespace
