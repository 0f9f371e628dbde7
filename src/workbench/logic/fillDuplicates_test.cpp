#include "workbench/logic/fillDuplicates.h"

#include "workbench/logic/columns.h"
#include "workbench/logic/editRow.h"
#include "workbench/logic/recording_test.h"

#include <gtest/gtest.h>

namespace {

using Cells = std::vector<std::pair<Text, Text>>;  // default and translation of each row

std::string dumped(const Cells& cells) {
    std::string all;
    for (const auto& [sDefault, sTrans] : cells) {
        all += toUtf8(sDefault) + "=" + toUtf8(sTrans) + " ";
    }
    return all;
}

Cells cellsOf(const GridData& grid) {
    Cells cells;
    for (std::int32_t i = 1; i <= grid.Rows(); ++i) {
        cells.emplace_back(grid.CellText(i, kDefaultColumn), grid.CellText(i, kTranslationColumn));
    }
    return cells;
}

void put(GridData& grid, const Cells& cells) {
    for (const auto& [sDefault, sTrans] : cells) {
        grid.AddRow(u"1\tS\tk\t" + sDefault + u"\t" + sTrans);
    }
}

Cells anyCells(std::mt19937& random) {
    Cells cells;
    for (std::size_t rows = random() % 40; rows > 0; --rows) {
        cells.emplace_back(anyOf(random, {u"", u"a", u"A", u"b", u" a", u"a longer default text",
                                          u"A longer default text"}),
                           anyOf(random, {u"", u"", u" ", u"x", u"y"}));
    }
    return cells;
}

// Row by row, every time over the whole list.
int simplyFill(Cells& cells, const Text& sDefault, const Text& sTrans) {
    int filled = 0;
    for (auto& [rowDefault, rowTrans] : cells) {
        if (rowDefault == sDefault && rowTrans.empty()) {
            rowTrans = sTrans;
            ++filled;
        }
    }
    return filled;
}

// The first translation of a default text goes to its rows without one; `rows` of them are sources.
int simplyFillAll(Cells& cells, std::size_t rows) {
    int filled = 0;
    for (std::size_t i = 0; i < rows; ++i) {
        if (!cells[i].second.empty()) filled += simplyFill(cells, cells[i].first, cells[i].second);
    }
    return filled;
}

TEST(pvFillAllDuplicates, AgreesWithAPlainFillHoweverFarItComes) {
    std::mt19937 random(2);
    for (int round = 0; round < 400; ++round) {
        Cells cells = anyCells(random);
        ListGrid grid;
        put(grid, cells);
        PairList list(grid);
        RecordingListener listener;
        listener.cancelAt = static_cast<int>(random() % (cells.size() + 2));
        const std::size_t rows =
            listener.cancelAt == 0
                ? cells.size()
                : std::min<std::size_t>(cells.size(), static_cast<std::size_t>(listener.cancelAt));
        const std::string before = dumped(cells);
        const std::int32_t filled = pvFillAllDuplicates(list, listener);
        ASSERT_EQ(filled, simplyFillAll(cells, rows)) << before;
        ASSERT_EQ(dumped(cellsOf(grid)), dumped(cells)) << before;
        ASSERT_EQ(list.m_bDirty, filled > 0);
    }
}

TEST(pvFillAllDuplicates, TellsItsStepsInOrder) {
    ListGrid grid{u"1\tS\ta\tOpen\tOpenen", u"2\tS\tb\tOpen", u"3\tS\tc\topen"};
    PairList list(grid);
    RecordingListener listener;
    grid.drawn = &listener;
    EXPECT_EQ(pvFillAllDuplicates(list, listener), 1);
    EXPECT_EQ(listener.heard, "wait[Searching for untranslated duplicates...\r\n"
                              "Press SHIFT to cancel...] 25 50 75 measure 0 close save");
    EXPECT_EQ(dump(grid), "1|S|a|Open|Openen\n2|S|b|Open|Openen\n3|S|c|open|\n");

    listener.heard.clear();
    EXPECT_EQ(pvFillAllDuplicates(list, listener), 0);
    EXPECT_TRUE(listener.heard.ends_with("75 measure 0 close")) << listener.heard;
    EXPECT_TRUE(list.m_bDirty);
}

TEST(confirmEdit, FillsDuplicatesThroughManyEditsAsAPlainFillDoes) {
    std::mt19937 random(3);
    for (int round = 0; round < 200; ++round) {
        Cells cells = anyCells(random);
        if (cells.empty()) continue;
        ListGrid grid;
        put(grid, cells);
        PairList list(grid);
        RecordingListener listener;
        if (round % 3 == 0) {  // the fill leaves its notes behind
            (void)pvFillAllDuplicates(list, listener);
            simplyFillAll(cells, cells.size());
        }
        for (int edit = 0; edit < 30; ++edit) {
            const std::size_t row = random() % cells.size();
            const Text text(anyOf(random, {u"", u"", u"x", u"y", u" "}));
            confirmEdit(list, static_cast<std::int32_t>(row + 1), text, listener);
            const bool changed = cells[row].second != text;
            cells[row].second = text;
            if (changed && !text.empty()) simplyFill(cells, cells[row].first, text);
            ASSERT_EQ(dumped(cellsOf(grid)), dumped(cells)) << "round " << round;
        }
    }
}

TEST(confirmEdit, ChangesTheCellAndTheDirtyMark) {
    const struct {
        const char* name;
        bool dirtyBefore;
        Text before, confirmed;
        Text after, ofDuplicate;
        bool dirtyAfter;
    } kCases[] = {
        {"a new text goes to the duplicates", false, u"", u"x", u"x", u"x", true},
        {"an unchanged text goes nowhere", false, u"x", u"x", u"x", u"", false},
        {"an unchanged text takes no dirty mark away", true, u"x", u"x", u"x", u"", true},
        {"an empty text clears the cell and goes nowhere", false, u"x", u"", u"", u"", true},
        {"the default itself counts as a change", false, u"", u"Open", u"Open", u"Open", true},
        {"blanks are a text", false, u"", u"  ", u"  ", u"  ", true},
        {"breaks and tabs become blanks", false, u"", u"a\r\nb\n\n\tc\r", u"a b  c ", u"a b  c ",
         true},
        {"a break that was there is no change", false, u"a\nb", u"a\nb", u"a\nb", u"", false},
        {"breaks that become the text as it was", false, u"a b", u"a\r\nb", u"a b", u"", false},
    };
    for (const auto& c : kCases) {
        ListGrid grid{u"1\tS\ta\tOpen\t" + c.before, u"2\tS\tb\tOpen", u"3\tS\tc\tOpen\t "};
        PairList list(grid);
        list.m_bDirty = c.dirtyBefore;
        RecordingListener listener;
        grid.drawn = &listener;
        confirmEdit(list, 1, c.confirmed, listener);
        EXPECT_EQ(cellsOf(grid),
                  (Cells{{u"Open", c.after}, {u"Open", c.ofDuplicate}, {u"Open", u" "}}))
            << c.name;
        EXPECT_EQ(listener.heard, c.dirtyAfter ? "save measure" : "no-save measure") << c.name;
        EXPECT_EQ(list.m_bDirty, c.dirtyAfter) << c.name;
    }
}

TEST(startingText, IsTheDefaultWhereThereIsNothingButBlanks) {
    EXPECT_EQ(startingText(u"Open", u""), u"Open");
    EXPECT_EQ(startingText(u"Open", u"  "), u"Open");
    EXPECT_EQ(startingText(u"Open", u"\t"), u"\t");
    EXPECT_EQ(startingText(u"Open", u" x "), u" x ");
}

}  // namespace
