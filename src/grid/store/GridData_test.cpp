#include "grid/store/GridData.h"

#include "grid/store/gridDump_test.h"
#include "grid/store/plainSort_test.h"
#include "platform/base/collation.h"
#include "support/Random.h"

#include <algorithm>
#include <gtest/gtest.h>

class GridPicture {};

namespace {

const std::string kWrongRow = ": Wrong Row";
const std::string kOutside = "9 : Subscript out of range";

// Notes what a window would be told: "measure", "draw", "focus", "change", "!" for at once.
class NotingGrid : public GridData {
public:
    explicit NotingGrid(int columns = 0) {
        for (int i = 0; i < columns; ++i) AddColumn({});
        SelectionChange = [this] { note("change"); };
        m_notes.clear();
    }
    std::string notes() { return std::exchange(m_notes, {}); }

private:
    void DrawControl(bool bCheckSize, bool bRefreshNow) override {
        note((bCheckSize ? "measure" : "draw") + std::string(bRefreshNow ? "!" : ""));
    }
    void FocusSelectedRow(bool bDoRefresh, bool bRefreshNow) override {
        note("focus" + std::string(bDoRefresh && bRefreshNow ? "!" : "?"));
    }
    void note(const std::string& what) { m_notes += (m_notes.empty() ? "" : " ") + what; }

    std::string m_notes;
};

// "a|b / c|d"
std::string dumpCells(const GridData& grid) {
    std::string s;
    for (std::int32_t i = 1; i <= grid.Rows(); ++i) {
        if (i > 1) s += " / ";
        for (std::int32_t c = 1; c <= grid.Cols(); ++c) {
            s += (c > 1 ? "|" : "") + toUtf8(grid.CellValue(i, c).toText());
        }
    }
    return s;
}

std::string selectedRows(const GridData& grid) {
    std::string s;
    for (std::int32_t i = 1; i <= grid.Rows(); ++i) s += grid.RowSel(i) ? std::to_string(i) : "";
    return s;
}

TEST(GridData, FindsColumnsByKeyOrPosition) {
    NotingGrid grid;
    grid.AddColumn({.sText = u"One", .vKey = u"First"});
    grid.AddColumn({.sText = u"Two"});
    grid.AddColumn({.sText = u"Three", .vKey = u"2"});
    const struct {
        GridValue key;
        std::string text;
    } kCases[] = {
        {1, "text One"},
        {2.5, "text Two"},
        {u"2", "text Three"},
        {u"fIRST", "text One"},
        {0, kOutside},
        {4, kOutside},
        {-1, kOutside},
        {1e300, kOutside},
        {u"", "5 : There is no column \"\"."},
        {u"Last", "5 : There is no column \"Last\"."},
        {{}, "13 : Type mismatch"},
        {true, "13 : Type mismatch"},
    };
    for (const auto& c : kCases) {
        EXPECT_EQ(dumpOf([&] { return grid.ColText(c.key); }), c.text) << dump(c.key);
        EXPECT_EQ(grid.ColExists(c.key), c.text.starts_with("text"));
    }
    EXPECT_EQ(dumpOf([&] { grid.AddColumn({.vKey = u"FIRST"}); }),
              "457 : There is a column \"FIRST\" already.");
    EXPECT_EQ(dumpOf([&] { grid.AddColumn({.vKey = 7}); }), "13 : Type mismatch");
    grid.AddRow(u"x");
    grid.Clear(false);
    EXPECT_EQ(grid.Cols(), 3);
    grid.RemoveColumn(u"first");
    EXPECT_FALSE(grid.ColExists(u"First"));
    EXPECT_EQ(toUtf8(grid.ColText(u"2")), "Three");
    grid.RemoveColumn();
    EXPECT_EQ(toUtf8(grid.ColText(grid.Cols())), "Two");
    grid.RemoveColumn();
    grid.RemoveColumn(u"none left");
    EXPECT_EQ(grid.Cols(), 0);
    grid.AddColumn({.vKey = u"a"});
    grid.Clear();
    EXPECT_FALSE(grid.ColExists(u"a"));
}

TEST(GridData, ColumnSettingsTellTheWindowWhatTheyChange) {
    NotingGrid grid(1);
    const struct {
        bool (GridData::*get)(const GridValue&) const;
        void (GridData::*set)(const GridValue&, bool);
        bool before;
        std::string notes;
    } kFlags[] = {
        {&GridData::ColResizable, &GridData::ColResizable, true, "measure"},
        {&GridData::ColRightToLeft, &GridData::ColRightToLeft, false, "draw"},
        {&GridData::ColSortable, &GridData::ColSortable, false, ""},
        {&GridData::ColSortWithCustomEvent, &GridData::ColSortWithCustomEvent, false, ""},
        {&GridData::ColAllowEmptyNumbers, &GridData::ColAllowEmptyNumbers, true, ""},
    };
    for (const auto& c : kFlags) {
        EXPECT_EQ((grid.*c.get)(1), c.before);
        (grid.*c.set)(1, !c.before);
        EXPECT_EQ((grid.*c.get)(1), !c.before);
        EXPECT_EQ(grid.notes(), c.notes);
    }
    const struct {
        std::int32_t (GridData::*get)(const GridValue&) const;
        void (GridData::*set)(const GridValue&, std::int32_t);
        std::int32_t before, given, after;
        std::string notes;
    } kNumbers[] = {
        {&GridData::ColWidth, &GridData::ColWidth, 17, 40, 40, "measure"},
        {&GridData::ColWidth, &GridData::ColWidth, 40, -1, 17, "measure"},
        {&GridData::ColAlign, &GridData::ColAlign, 0, 1, 1, "draw"},
        {&GridData::ColHeaderAlign, &GridData::ColHeaderAlign, 2, 0, 0, "draw"},
    };
    grid.column(1).iCurrentWidth = 17;
    for (const auto& c : kNumbers) {
        EXPECT_EQ((grid.*c.get)(1), c.before);
        (grid.*c.set)(1, c.given);
        EXPECT_EQ((grid.*c.get)(1), c.after);
        EXPECT_EQ(grid.notes(), c.notes);
    }
    grid.ColText(1, u"abc");
    grid.SetColFormat(1, {});
    EXPECT_EQ(toUtf8(grid.ColText(1)) + " " + grid.notes(), "abc measure measure");
}

TEST(GridData, SplitsRowTextsAtTabs) {
    const std::string longField(200, 'x');
    const struct {
        int columns;
        std::string text, cells;
    } kCases[] = {
        {3, "a\tb", "a|b|"},
        {1, "a\tb", "a"},
        {3, "", "||"},
        {3, "\t", "||"},
        {3, "\t\tc\td", "||c"},
        {2, "a\t\tc", "a|"},
        {2, "a\\tb", "a\\tb|"},
        {3, longField + "\t" + longField + "\t\xE2\x82\xAC",
         longField + "|" + longField + "|\xE2\x82\xAC"},
        // Units that differ from a tab in one bit only.
        {2, "\b\v\r)\xE0\xA4\x89\t\xE2\x80\x89", "\b\v\r)\xE0\xA4\x89|\xE2\x80\x89"},
    };
    for (const auto& c : kCases) {
        NotingGrid grid(c.columns);
        grid.AddRow(fromUtf8(c.text));
        EXPECT_EQ(dumpCells(grid), c.cells);
    }
    // Fields that are split already give the same rows, also one empty field, which is no field.
    test::Random random(5);
    for (int i = 0; i < 2000; ++i) {
        NotingGrid joined(4);
        joined.AddColumn({.iType = 1});
        NotingGrid split(4);
        split.AddColumn({.iType = 1});
        std::vector<Text> fields(random.below(7U));
        Text row;
        for (Text& field : fields) {
            field.assign(random.oneIn(3) ? 0 : random.below(40), u'1');
            row.append(&field == fields.data() ? u"" : u"\t").append(field);
        }
        const std::vector<TextView> views(fields.begin(), fields.end());
        EXPECT_EQ(dumpOf([&] { joined.AddRow(row); }), dumpOf([&] { split.AddRow(views); }));
        EXPECT_EQ(dumpCells(joined), dumpCells(split));
    }
}

TEST(GridData, ARowThatCannotBeConvertedIsNotAdded) {
    NotingGrid grid(1);
    grid.AddColumn({.iType = 1});
    grid.AddColumn({.iType = 2});
    (void)grid.notes();
    EXPECT_EQ(dumpOf([&] { grid.AddRow(u"a\t1\tmaybe", true); }), "13 : Type mismatch");
    EXPECT_EQ(dumpOf([&] { grid.AddRow(u"a\tone\ttrue"); }), "13 : Type mismatch");
    EXPECT_EQ(dumpOf([&] { grid.AddRow(u"a\t\ttrue"); }), "13 : Type mismatch");
    EXPECT_EQ(grid.Rows(), 0);
    EXPECT_EQ(grid.Row(), -1);
    EXPECT_EQ(grid.notes(), "");
    grid.AddRow(u"b\t2");
    EXPECT_EQ(dumpCells(grid), "b|2|False");
    for (std::int32_t c = 1; c <= 3; ++c) EXPECT_EQ(grid.column(c).Rows(), 1);
    grid.AddColumn({.iType = 1});
    EXPECT_EQ(dumpCells(grid), "b|2|False|0");
}

TEST(GridData, RowOperationsNeedColumns) {
    const struct {
        std::function<void(GridData&)> call;
        std::string source;
    } kCases[] = {
        {[](GridData& g) { g.AddRow(u"a"); }, "AddRow"},
        {[](GridData& g) { g.AddRow(std::vector<TextView>{u"a"}); }, "AddRow"},
        {[](GridData& g) { g.Rows(2); }, "AddRow"},
        {[](GridData& g) { g.RemoveRow(); }, "RemoveRow"},
        {[](GridData& g) { (void)g.RowSel(1); }, "RowSel"},
        {[](GridData& g) { g.RowSel(1, true); }, "RowSel"},
        {[](GridData& g) { g.SelectRange(1, 1, true); }, "SelectRange"},
    };
    NotingGrid grid;
    for (const auto& c : kCases) {
        EXPECT_EQ(dumpOf([&] { c.call(grid); }), c.source + ": Please add some columns first!");
    }
    EXPECT_EQ(grid.notes(), "");
    grid.Rows(0);
    grid.SelectAll(true);
    EXPECT_EQ(grid.CountSelected(), 0);
    EXPECT_EQ(grid.notes(), "measure draw");  // the lock is free again
}

TEST(GridData, TellsTheWindowAndTheOwnerWhatHappensToRows) {
    const struct {
        std::int32_t rowsBefore, rowBefore;
        std::function<void(GridData&)> call;
        std::string notes;
        std::int32_t rows, row;
    } kCases[] = {
        {0, -1, [](GridData& g) { g.AddRow(u"x"); }, "measure", 1, -1},
        {2, 1, [](GridData& g) { g.AddRow(u"x", true); }, "focus! measure change", 3, 3},
        {2, 1, [](GridData& g) { g.RemoveRow(2); }, "measure", 1, 1},
        {3, 3, [](GridData& g) { g.RemoveRow(1); }, "measure", 2, 3},
        {3, 2, [](GridData& g) { g.RemoveRow(2); }, "focus! change measure", 2, 2},
        {3, 3, [](GridData& g) { g.RemoveRow(3, false); }, "focus! change draw", 2, 2},
        {1, 1, [](GridData& g) { g.RemoveRow(1); }, "focus! change measure", 0, -1},
        {3, 3, [](GridData& g) { g.RemoveRow(); }, "measure", 2, 3},
        {3, -1, [](GridData& g) { g.RemoveRow(-1, false); }, "draw", 2, -1},
        {3, 1, [](GridData& g) { g.Row(2); }, "focus! change", 3, 2},
        {3, 2, [](GridData& g) { g.Row(2); }, "focus! change", 3, 2},
        {3, 2, [](GridData& g) { g.Row(0); }, "draw change", 3, -1},
        {3, 2, [](GridData& g) { g.Row(4); }, "draw change", 3, -1},
        {3, 3, [](GridData& g) { g.Rows(1); }, "change change measure draw", 1, 1},
        {1, 1, [](GridData& g) { g.Rows(4); }, "measure draw", 4, 1},
        {2, 2, [](GridData& g) { g.Clear(); }, "measure change", 0, -1},
        {2, 2, [](GridData& g) { g.Clear(false); }, "measure change", 0, -1},
        {2, 1,
         [](GridData& g) {
             g.BeginUpdate();
             g.AddRow(u"x", true);
             g.Row(9);
             g.RemoveRow();
             g.NoUpdate();
         },
         "change change", 2, -1},
        {2, 1,
         [](GridData& g) {
             g.BeginUpdate();
             g.BeginUpdate();
             g.EndUpdate();
             g.CellText(1, 1, u"y");
             g.EndUpdate(false, true);
             g.EndUpdate();  // one too many
             g.Refresh();
         },
         "draw! measure measure", 2, 1},
        {2, 1, [](GridData& g) { g.CellValue(1, 1, 5); }, "measure", 2, 1},
        {2, 1, [](GridData& g) { g.CurrCellBackColor(1, 5); }, "measure", 2, 1},
        {2, 1, [](GridData& g) { g.CellForeColor(1, 1, 5); }, "measure", 2, 1},
        {2, 1, [](GridData& g) { g.SetCellPicture(1, 1); }, "measure", 2, 1},
        {2, 1, [](GridData& g) { g.CellTag(1, 1, 5); }, "", 2, 1},
        {2, 1, [](GridData& g) { g.RowSel(1, true); }, "draw", 2, 1},
        {2, 1, [](GridData& g) { g.SelectAll(true); }, "draw", 2, 1},
        {2, 1, [](GridData& g) { g.SelectAll(true, false); }, "", 2, 1},
        {2, 1, [](GridData& g) { g.SortByColum(1, true); }, "draw", 2, 1},
        {1, 1, [](GridData& g) { g.SortByColum(1, true); }, "", 1, 1},
        {2, 1, [](GridData& g) { g.SortByColum(u"none", true); }, "", 2, 1},
        {2, 1,
         [](GridData& g) {
             g.AllowMultiLineText(true);
             g.ColSortWithCustomEvent(1, true);
             g.SortCompareRows = [](auto&&...) { throw Failure(5, u"", u"refused"); };
             g.SortByColum(1, true);
         },
         "measure measure", 2, 1},
        {2, 1,
         [](GridData& g) {
             g.AllowMultiLineText(true);
             g.SortByColum(1, true);
         },
         "measure measure", 2, 1},
    };
    for (const auto& c : kCases) {
        NotingGrid grid(2);
        grid.Rows(c.rowsBefore);
        grid.Row(c.rowBefore);
        (void)grid.notes();
        c.call(grid);
        EXPECT_EQ(grid.notes(), c.notes) << &c - kCases;
        EXPECT_EQ(grid.Rows(), c.rows) << &c - kCases;
        EXPECT_EQ(grid.Row(), c.row) << &c - kCases;
    }
}

TEST(GridData, RefusesRowsOutsideTheList) {
    NotingGrid grid(2);
    grid.Rows(3);
    grid.Row(-1);
    (void)grid.notes();
    for (const std::int32_t iRow : {0, 4, -2, INT32_MAX, INT32_MIN}) {
        EXPECT_EQ(dumpOf([&] { grid.RemoveRow(iRow); }), kWrongRow);
        EXPECT_EQ(dumpOf([&] { return grid.RowSel(iRow); }), kWrongRow);
        EXPECT_EQ(dumpOf([&] { grid.RowSel(iRow, true); }), kWrongRow);
    }
    EXPECT_EQ(dumpOf([&] { grid.Rows(-1); }), kWrongRow);
    EXPECT_EQ(grid.Rows(), 3);
    EXPECT_EQ(dumpOf([&] { return grid.CellText(0, 1); }), kOutside);
    EXPECT_EQ(dumpOf([&] { return grid.CellText(1, 0); }), kOutside);
    EXPECT_EQ(dumpOf([&] { return grid.CellText(1, 3); }), kOutside);
    EXPECT_EQ(dumpOf([&] { grid.CellText(1000, 1, u"x"); }), kOutside);
    EXPECT_EQ(dumpOf([&] { return grid.CurrCellValue(1); }), kOutside);  // no current row
    EXPECT_EQ(dumpOf([&] { grid.SelectRange(1, 1000, true); }), kOutside);
    EXPECT_EQ(dumpOf([&] { grid.SelectRange(2, 0, true); }), kOutside);
    EXPECT_EQ(grid.notes(), "");
    // -1 passes the check of rows and fails where a flag is touched.
    EXPECT_TRUE(grid.RowSel(-1));
    EXPECT_EQ(dumpOf([&] { grid.RowSel(-1, true); }), kOutside);
    grid.MultiSelect(true);
    EXPECT_EQ(dumpOf([&] { return grid.RowSel(-1); }), kOutside);
    EXPECT_EQ(grid.CountSelected(), 0);
}

TEST(GridData, SelectionFlagsMoveWithTheirRowsAndTheCurrentRowStaysANumber) {
    NotingGrid grid(2);
    grid.Rows(5);
    grid.Row(4);
    grid.SelectRange(3, 1, true);
    EXPECT_EQ(selectedRows(grid), "4");  // the flags are kept, but do not count yet
    grid.MultiSelect(true);
    EXPECT_EQ(selectedRows(grid), "123");
    grid.RowSel(3, false);
    grid.RowSel(5, true);
    grid.CellText(1, 2, u"z");
    grid.SortByColum(2, true);  // row 1 goes to the end
    EXPECT_EQ(selectedRows(grid), "145");
    EXPECT_EQ(grid.CountSelected(), 3);
    EXPECT_EQ(grid.Row(), 4);
}

// The grid as a list of rows of records, and random steps on both.
struct PlainGrid {
    std::vector<std::vector<GridCell>> rows;

    void sort(std::size_t column, bool isText, bool bSortAsc) {
        sortPlainly(rows, [=](const auto& a, const auto& b) {
            const GridValue& left = a[column].Value;
            const GridValue& right = b[column].Value;
            return (isText ? platform::compareText(left.text(), right.text())
                           : left.compare(right)) < 0;
        });
        if (!bSortAsc) std::reverse(rows.begin(), rows.end());
    }
};

TEST(GridData, AgreesWithAPlainListOfRecordsOverRandomSteps) {
    test::Random random(11);
    const auto someText = [&] {
        return Text(random.below(2U) * random.below(60U), u"aAbBcxyz"[random.below(8)]);
    };
    const std::int32_t kTypes[] = {0, 0, 1};
    GridData grid;
    for (const std::int32_t iType : kTypes) grid.AddColumn({.iType = iType});
    PlainGrid plain;
    auto& rows = plain.rows;
    std::size_t r = 0, c = 0;                     // where a step takes place, from 0
    std::int32_t iRow = 0, iCol = 0, number = 0;  // the same from 1; of that step
    const auto addRow = [&] {
        const Text a = someText(), b = someText();
        grid.AddRow(a + u"\t" + b + u"\t" + GridValue(number).toText());
        rows.emplace_back(3);
        rows.back()[0].Value = a;
        rows.back()[1].Value = b;
        rows.back()[2].Value = double{static_cast<double>(number)};
    };
    const auto setValue = [&] {
        GridCell& cell = rows[r][c];
        cell.Value = c < 2             ? GridValue(someText())
                     : random.oneIn(3) ? GridValue(u"")
                                       : GridValue(static_cast<double>(number));
        grid.CellValue(iRow, iCol, cell.Value);
    };
    const std::function<void()> kSteps[] = {
        setValue,
        setValue,
        setValue,
        [&] {
            grid.RemoveRow(iRow);
            rows.erase(rows.begin() + static_cast<std::ptrdiff_t>(r));
        },
        [&] { grid.CellBackColor(iRow, iCol, rows[r][c].BackColor = number); },
        [&] { grid.CellForeColor(iRow, iCol, rows[r][c].ForeColor = number - 1); },
        [&] {
            rows[r][c].Tag = someText();
            grid.CellTag(iRow, iCol, rows[r][c].Tag);
        },
        [&] {
            CellPicture& picture = rows[r][c].Picture;
            picture.oPic = random.oneIn(2) ? nullptr : std::make_shared<GridPicture>();
            picture.lPicXTransp = number;
            grid.SetCellPicture(iRow, iCol, picture.oPic, {.lPicXTransp = number});
        },
        [&] { grid.column(iCol).OffsetRow(iRow, rows[r][c].OffsetRow = number); },
        [&] {
            grid.SelectRange(iRow, grid.Rows(), number % 2 == 0);
            for (std::size_t i = r; i < rows.size(); ++i) rows[i][0].Selected = number % 2 == 0;
        },
        [&] {
            if (!random.oneIn(3)) return;
            grid.SortByColum(iCol, number % 2 == 0);
            plain.sort(c, kTypes[c] == 0, number % 2 == 0);
        },
        [&] {
            if (!random.oneIn(50)) return;
            rows.resize(random.oneIn(2) ? 0 : rows.size() / 2);
            grid.Rows(static_cast<std::int32_t>(rows.size()));
        },
    };
    std::size_t mostRows = 0;
    for (int step = 0; step < 10000; ++step) {
        const std::size_t count = rows.size();
        mostRows = std::max(mostRows, count);
        r = count == 0 ? 0 : random.below(count);
        c = random.below(3U);
        iRow = static_cast<std::int32_t>(r + 1);
        iCol = static_cast<std::int32_t>(c + 1);
        number = random.below(20);
        (count == 0 || random.oneIn(4) ? addRow : random.oneOf(kSteps))();
        ASSERT_EQ(grid.Rows(), static_cast<std::int32_t>(rows.size()));
        if (step % 20 != 0) continue;
        for (std::size_t i = 0; i < rows.size(); ++i) {
            for (std::size_t k = 0; k < 3; ++k) {
                const auto& column = grid.columnAt(static_cast<std::int32_t>(k + 1));
                ASSERT_EQ(dump(column.record(static_cast<std::int32_t>(i + 1))), dump(rows[i][k]))
                    << "step " << step << " row " << i + 1 << " column " << k + 1;
            }
        }
    }
    EXPECT_GT(mostRows, 100U);
}

}  // namespace
