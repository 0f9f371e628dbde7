#include "grid/store/GridData.h"

#include "grid/store/gridDump_test.h"
#include "grid/store/plainSort_test.h"
#include "platform/base/collation.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <set>

class GridPicture {};

namespace {

const std::string kNoColumns = "Please add some columns first!";
const std::string kWrongRow = "80040001 Wrong Row";
const std::string kOutside = "9 Subscript out of range";

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
        {u"", "5 There is no column \"\"."},
        {u"Last", "5 There is no column \"Last\"."},
        {{}, "13 Type mismatch"},
        {true, "13 Type mismatch"},
    };
    for (const auto& c : kCases) {
        EXPECT_EQ(dumpOf([&] { return grid.ColText(c.key); }), c.text) << dump(c.key);
        EXPECT_EQ(grid.ColExists(c.key), c.text.starts_with("text"));
    }
    EXPECT_EQ(dumpOf([&] { grid.AddColumn({.vKey = u"FIRST"}); }),
              "457 There is a column \"FIRST\" already.");
    EXPECT_EQ(dumpOf([&] { grid.AddColumn({.vKey = 7}); }), "13 Type mismatch");
    EXPECT_EQ(grid.Cols(), 3);
    grid.RemoveColumn(u"first");
    EXPECT_FALSE(grid.ColExists(u"First"));
    EXPECT_EQ(toUtf8(grid.ColText(u"2")), "Three");
    grid.RemoveColumn();
    EXPECT_EQ(toUtf8(grid.ColText(grid.Cols())), "Two");
    grid.RemoveColumn();
    grid.RemoveColumn(u"none left");
    EXPECT_EQ(grid.Cols(), 0);
}

TEST(GridData, ColumnSettingsTellTheWindowWhatTheyChange) {
    NotingGrid grid(1);
    const struct {
        std::function<void()> set;
        std::function<std::int32_t()> get;
        std::int32_t before, after;
        std::string notes;
    } kCases[] = {
        {[&] { grid.ColWidth(1, 40); }, [&] { return grid.ColWidth(1); }, 17, 40, "measure"},
        {[&] { grid.ColWidth(1, -1); }, [&] { return grid.ColWidth(1); }, 40, 17, "measure"},
        {[&] { grid.ColAlign(1, 1); }, [&] { return grid.ColAlign(1); }, 0, 1, "draw"},
        {[&] { grid.ColHeaderAlign(1, 0); }, [&] { return grid.ColHeaderAlign(1); }, 2, 0, "draw"},
        {[&] { grid.ColResizable(1, false); }, [&] { return grid.ColResizable(1); }, 1, 0,
         "measure"},
        {[&] { grid.ColRightToLeft(1, true); }, [&] { return grid.ColRightToLeft(1); }, 0, 1,
         "draw"},
        {[&] { grid.ColSortable(1, true); }, [&] { return grid.ColSortable(1); }, 0, 1, ""},
        {[&] { grid.ColSortWithCustomEvent(1, true); },
         [&] { return grid.ColSortWithCustomEvent(1); }, 0, 1, ""},
        {[&] { grid.ColAllowEmptyNumbers(1, false); }, [&] { return grid.ColAllowEmptyNumbers(1); },
         1, 0, ""},
        {[&] { grid.ColText(1, u"abc"); },
         [&] { return static_cast<std::int32_t>(grid.ColText(1).size()); }, 0, 3, "measure"},
        {[&] { grid.SetColFormat(1, {.iNumFixDec = 2}); },
         [&] { return std::int32_t{grid.column(1).iNumFixDec}; }, -1, 2, "measure"},
    };
    grid.column(1).iCurrentWidth = 17;
    for (const auto& c : kCases) {
        EXPECT_EQ(c.get(), c.before);
        c.set();
        EXPECT_EQ(c.get(), c.after);
        EXPECT_EQ(grid.notes(), c.notes);
    }
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
    std::mt19937 random(5);
    for (int i = 0; i < 2000; ++i) {
        NotingGrid joined(4);
        joined.AddColumn({.iType = 1});
        NotingGrid split(4);
        split.AddColumn({.iType = 1});
        std::vector<Text> fields(random() % 7);
        Text row;
        for (Text& field : fields) {
            field.assign(random() % 3 == 0 ? 0 : random() % 40, u'1');
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
    EXPECT_EQ(dumpOf([&] { grid.AddRow(u"a\t1\tmaybe", true); }), "13 Type mismatch");
    EXPECT_EQ(dumpOf([&] { grid.AddRow(u"a\tone\ttrue"); }), "13 Type mismatch");
    EXPECT_EQ(dumpOf([&] { grid.AddRow(u"a\t\ttrue"); }), "13 Type mismatch");
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
    NotingGrid grid;
    EXPECT_EQ(dumpOf([&] { grid.AddRow(u"a"); }), "80040001 AddRow: " + kNoColumns);
    EXPECT_EQ(dumpOf([&] { grid.AddRow(std::vector<TextView>{u"a"}); }),
              "80040001 AddRow: " + kNoColumns);
    EXPECT_EQ(dumpOf([&] { grid.RemoveRow(); }), "80040001 RemoveRow: " + kNoColumns);
    EXPECT_EQ(dumpOf([&] { return grid.RowSel(1); }), "80040001 RowSel: " + kNoColumns);
    EXPECT_EQ(dumpOf([&] { grid.RowSel(1, true); }), "80040001 RowSel: " + kNoColumns);
    EXPECT_EQ(dumpOf([&] { grid.SelectRange(1, 1, true); }), "80040001 SelectRange: " + kNoColumns);
    EXPECT_EQ(dumpOf([&] { grid.Rows(2); }), "80040001 AddRow: " + kNoColumns);
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

TEST(GridData, KeepsSelectionFlagsWhileMultiSelectIsOff) {
    NotingGrid grid(2);
    grid.Rows(5);
    grid.Row(4);
    grid.SelectRange(3, 2, true);
    EXPECT_EQ(selectedRows(grid), "4");
    EXPECT_EQ(grid.CountSelected(), 1);
    grid.MultiSelect(true);
    EXPECT_EQ(selectedRows(grid), "23");
    grid.RowSel(3, false);
    grid.RowSel(5, true);
    EXPECT_EQ(selectedRows(grid), "25");
    grid.CellText(1, 2, u"z");
    grid.SortByColum(2, true);  // row 1 goes to the end, its flag with it
    EXPECT_EQ(selectedRows(grid), "14");
    EXPECT_EQ(grid.Row(), 4);
    grid.SelectAll(false);
    EXPECT_EQ(grid.CountSelected(), 0);
}

TEST(GridData, ClearKeepsTheHeaderWhenAsked) {
    NotingGrid grid;
    grid.AddColumn({.iWidth = 50, .vKey = u"a"});
    grid.AddRow(u"x");
    grid.Clear(false);
    EXPECT_EQ(grid.Rows(), 0);
    EXPECT_EQ(grid.ColWidth(u"a"), 50);
    grid.AddRow(u"y");
    EXPECT_EQ(dumpCells(grid), "y");
    grid.Clear();
    EXPECT_EQ(grid.Cols(), 0);
    EXPECT_FALSE(grid.ColExists(u"a"));
}

TEST(GridData, TheOwnerMayChangeTheGridFromItsEvents) {
    GridData grid;
    grid.AddColumn({});
    grid.Rows(10);
    int calls = 0;
    grid.SelectionChange = [&] {
        if (++calls > 3) return;
        grid.AddColumn({});
        grid.AddRow(u"a\tb");
        grid.RemoveRow(grid.Row());  // raises it again
        grid.SortByColum(1, false);
    };
    grid.Row(5);
    EXPECT_EQ(calls, 4);
    EXPECT_EQ(grid.Cols(), 4);
    EXPECT_EQ(grid.Rows(), 10);
    grid.SelectionChange = [&] {
        if (grid.Cols() > 0) grid.Clear();  // raises it again
    };
    grid.RemoveRow(5);
    EXPECT_EQ(grid.Cols(), 0);
}

// Rows are exchanged in place while the owner is asked: a row that it removes then must not come
// back in place of one that is there.
TEST(GridData, ASortEndsWhenItsOwnerChangesTheNumberOfRows) {
    const std::function<void(GridData&)> kChanges[] = {
        [](GridData& g) { g.RemoveRow(1); },   [](GridData& g) { g.RemoveRow(); },
        [](GridData& g) { g.AddRow(u"new"); }, [](GridData& g) { g.Clear(false); },
        [](GridData& g) { g.Clear(); },
    };
    for (const auto& change : kChanges) {
        for (int after = 1; after < 12; ++after) {
            GridData grid;
            grid.AddColumn({.bSortWithCustomEvent = true});
            for (const char16_t* row : {u"d", u"f", u"a", u"c", u"e", u"b"}) grid.AddRow(row);
            int asked = 0;
            std::multiset<Text> left;
            const auto rows = [&] {
                std::multiset<Text> all;
                for (std::int32_t i = 1; i <= grid.Rows(); ++i) all.emplace(grid.CellText(i, 1));
                return all;
            };
            grid.SortCompareRows = [&](const GridValue&, std::int32_t iRow1, std::int32_t iRow2,
                                       bool, bool& bRetFirstIsMajor) {
                bRetFirstIsMajor = grid.CellText(iRow1, 1) > grid.CellText(iRow2, 1);
                if (++asked != after) return;
                change(grid);
                left = rows();
            };
            grid.SortByColum(1, true);
            EXPECT_EQ(asked, after);
            EXPECT_EQ(rows(), left);
        }
    }
}

// The grid as a list of rows of records, and random steps on both.
struct PlainGrid {
    std::vector<std::vector<GridCell>> rows;

    void sort(std::size_t column, bool isText, bool bSortAsc) {
        const PlainSort sort(rows, [=](const auto& a, const auto& b) {
            const GridValue& left = a[column].Value;
            const GridValue& right = b[column].Value;
            return (isText ? platform::compareText(left.text(), right.text())
                           : left.compare(right)) < 0;
        });
        if (!bSortAsc) std::reverse(rows.begin(), rows.end());
    }
};

TEST(GridData, AgreesWithAPlainListOfRecordsOverRandomSteps) {
    std::mt19937 random(11);
    const auto below = [&random](std::size_t n) { return random() % n; };
    const auto someText = [&] { return Text(below(2) * below(60), u"aAbBcxyz"[below(8)]); };
    const std::int32_t kTypes[] = {0, 0, 1};
    GridData grid;
    for (const std::int32_t iType : kTypes) grid.AddColumn({.iType = iType});
    PlainGrid plain;
    std::size_t mostRows = 0;

    for (int step = 0; step < 10000; ++step) {
        const std::size_t count = plain.rows.size();
        mostRows = std::max(mostRows, count);
        const std::size_t r = count == 0 ? 0 : below(count);
        const auto iRow = static_cast<std::int32_t>(r + 1);
        const std::size_t c = below(3);
        const auto iCol = static_cast<std::int32_t>(c + 1);
        const auto number = static_cast<std::int32_t>(below(20));
        const std::size_t action = count == 0 ? 0 : below(16);
        GridCell* const cell = count == 0 ? nullptr : &plain.rows[r][c];
        if (action <= 3) {
            const Text a = someText();
            const Text b = someText();
            grid.AddRow(a + u"\t" + b + u"\t" + GridValue(number).toText());
            plain.rows.emplace_back(3);
            plain.rows.back()[0].Value = a;
            plain.rows.back()[1].Value = b;
            plain.rows.back()[2].Value = double{static_cast<double>(number)};
        } else if (action == 4) {
            grid.RemoveRow(iRow);
            plain.rows.erase(plain.rows.begin() + static_cast<std::ptrdiff_t>(r));
        } else if (action <= 7) {
            const GridValue value = c < 2           ? GridValue(someText())
                                    : below(3) == 0 ? GridValue(u"")
                                                    : GridValue(static_cast<double>(number));
            grid.CellValue(iRow, iCol, value);
            cell->Value = value;
        } else if (action == 8) {
            grid.CellBackColor(iRow, iCol, number);
            cell->BackColor = number;
        } else if (action == 9) {
            grid.CellForeColor(iRow, iCol, number - 1);
            cell->ForeColor = number - 1;
        } else if (action == 10) {
            grid.CellTag(iRow, iCol, someText());
            cell->Tag = grid.CellTag(iRow, iCol);
        } else if (action == 11) {
            cell->Picture.oPic = below(2) == 0 ? nullptr : std::make_shared<GridPicture>();
            cell->Picture.lPicXTransp = number;
            grid.SetCellPicture(iRow, iCol, cell->Picture.oPic, {.lPicXTransp = number});
        } else if (action == 12) {
            grid.column(iCol).OffsetRow(iRow, number);
            cell->OffsetRow = number;
        } else if (action == 13) {
            grid.SelectRange(iRow, static_cast<std::int32_t>(count), number % 2 == 0);
            for (std::size_t i = r; i < count; ++i) plain.rows[i][0].Selected = number % 2 == 0;
        } else if (action == 14 && step % 3 == 0) {
            grid.SortByColum(iCol, number % 2 == 0);
            plain.sort(c, kTypes[c] == 0, number % 2 == 0);
        } else if (action == 15 && step % 50 == 0) {
            const std::size_t rows = below(2) == 0 ? 0 : count / 2;
            grid.Rows(static_cast<std::int32_t>(rows));
            plain.rows.resize(rows);
        }
        ASSERT_EQ(grid.Rows(), static_cast<std::int32_t>(plain.rows.size()));
        if (step % 20 != 0) continue;
        for (std::size_t i = 0; i < plain.rows.size(); ++i) {
            for (std::size_t k = 0; k < 3; ++k) {
                ASSERT_EQ(dump(grid.columnAt(static_cast<std::int32_t>(k + 1))
                                   .record(static_cast<std::int32_t>(i + 1))),
                          dump(plain.rows[i][k]))
                    << "step " << step << " row " << i + 1 << " column " << k + 1;
            }
        }
    }
    EXPECT_GT(mostRows, 100U);
}

}  // namespace
