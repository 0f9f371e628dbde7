#include "grid/store/gridDump_test.h"
#include "grid/store/plainGrid_test.h"
#include "support/Random.h"

#include <gtest/gtest.h>

namespace test {
namespace {

std::string dump(const GridRect& r) {
    return std::to_string(r.X1) + "," + std::to_string(r.Y1) + "," + std::to_string(r.X2) + "," +
           std::to_string(r.Y2);
}

// Self-sizing columns are told by -1.
void fill(PlainGrid& grid, const std::vector<std::int32_t>& widths, std::int32_t rows) {
    for (const std::int32_t width : widths) grid.AddColumn({.iWidth = width});
    grid.Rows(rows);
}

TEST(GridGeometry, IsEmptyBeforeTheFirstMeasuring) {
    PlainGrid grid;
    EXPECT_EQ(grid.GetVisibleRows(), 0);
    EXPECT_EQ(grid.GetRowByY(50), -1);
    EXPECT_EQ(grid.GetColByX(5), -1);
    EXPECT_EQ(grid.GetColX(1), 2);
    grid.Refresh();  // measures nothing without columns
    EXPECT_EQ(grid.RowHeight(), 0);
    grid.AllowMultiLineText(true);
    EXPECT_EQ(grid.pvGetRowByOffset(0), -1);
    EXPECT_EQ(grid.GetVisibleRows(), -1);
    grid.AllowMultiLineText(false);
    grid.BeginUpdate();
    fill(grid, {50}, 3);
    grid.NoUpdate();
    EXPECT_EQ(grid.RowHeight(), 0);
    grid.Row(-1);  // a frame that asks for no measuring
    EXPECT_EQ(grid.RowHeight(), 19);
    EXPECT_EQ(grid.TotalWidth(), 50);
}

TEST(GridGeometry, AFrameInsideOfAFrameIsNoneAndAStepThatFailsIsLeftOut) {
    PlainGrid grid;
    fill(grid, {150}, 3);
    grid.frames = 0;
    grid.onPaint = [&] { grid.Refresh(); };
    grid.Refresh();
    EXPECT_EQ(grid.frames, 1);
    grid.surface.fails = true;
    grid.surface.size.cx = 100;
    grid.Refresh();  // cannot measure
    EXPECT_EQ(grid.HScroll_Max(), 50);
    EXPECT_EQ(grid.frames, 2);
    EXPECT_EQ(grid.failedSteps, 1);
    grid.surface.fails = false;
    grid.onPaint = [] { throw Failure(5, u"", u"refused"); };
    grid.Refresh();
    EXPECT_EQ(grid.failedSteps, 2);
    grid.onPaint = nullptr;
    grid.Refresh();
    EXPECT_EQ(grid.frames, 4);
}

TEST(GridGeometry, SingleLineRowsAreOneStepApart) {
    PlainGrid grid;
    fill(grid, {50, 50, 50}, 20);
    EXPECT_EQ(grid.RowHeight(), 19);
    EXPECT_EQ(grid.GetRowY(0), 2);
    EXPECT_EQ(grid.GetRowY(1), 20);
    EXPECT_EQ(grid.GetRowY(20), 362);
    EXPECT_EQ(grid.CellHeight(0, 1), 19);
    EXPECT_EQ(grid.CurrCellHeight(1), 19);
    EXPECT_EQ(grid.GetVisibleRows(), 5);  // 100 / 18, the header counted
    const struct {
        std::int32_t scroll, y, row, absolute;
    } kRows[] = {{0, 0, 0, 0},    {0, 17, 0, 0},    {0, 18, 1, 1},   {0, 36, 2, 2},
                 {0, -17, 0, 0},  {0, -18, -1, -1}, {3, 18, 4, 1},   {3, 0, 3, 0},
                 {16, 90, -1, 5}, {0, 378, -1, -1}, {0, 377, 20, 20}};
    for (const auto& c : kRows) {
        grid.VScroll_Value(c.scroll);
        EXPECT_EQ(grid.GetRowByY(c.y), c.row) << c.scroll << " " << c.y;
        EXPECT_EQ(grid.GetRowByAbsY(c.y), c.absolute) << c.y;
    }
    grid.VScroll_Value(2);
    EXPECT_EQ(dump(grid.GetCellRect(3, 2)), "51,20,101,38");
    EXPECT_EQ(dump(grid.GetCellAbsRect(3, 2)), "51,56,101,75");
    EXPECT_EQ(dump(grid.GetCellRectByCoords(50, 20)), "51,20,101,38");
    EXPECT_EQ(dumpOf([&] { (void)grid.GetCellRect(1, 9); }), "9 : Subscript out of range");
}

TEST(GridGeometry, ColumnsShareTheirBorderPixel) {
    PlainGrid grid;
    fill(grid, {50, 0, 30, 30}, 1);
    EXPECT_EQ(grid.GetColX(2), 51);
    EXPECT_EQ(grid.GetColX(3), 51);  // a column of width 0 takes up nothing
    EXPECT_EQ(grid.GetColX(4), 80);
    EXPECT_EQ(grid.TotalWidth(), 49 + 29 + 29 + 1);
    const struct {
        std::int32_t x, col;
    } kColumns[] = {{-1, -1}, {0, 1}, {48, 1}, {49, 3}, {77, 3}, {78, 4}, {106, 4}, {107, -1}};
    for (const auto& c : kColumns) EXPECT_EQ(grid.GetColByX(c.x), c.col) << c.x;
    grid.surface.size.cx = 60;
    grid.Refresh();
    grid.HScroll_Value(40);
    EXPECT_EQ(grid.GetColByX(9), 3);
    EXPECT_EQ(grid.GetColByAbsX(49), 3);
    EXPECT_EQ(dump(grid.GetCellRect(1, 1)), "-38,20,12,38");
}

TEST(GridGeometry, ColumnsAreAsWideAsHeaderAndCellsOfTheFirst749RowsInTheirFormat) {
    const Text wide(40, u'w'), wider(50, u'w');
    for (const bool multiLine : {false, true}) {
        PlainGrid grid;
        grid.surface.size = {10, 100};  // the last column has no room to grow into
        grid.AddColumn({.sText = u"Header"});
        grid.AddColumn({.sText = u"Header", .bSortable = true});
        grid.AddColumn({.iWidth = 33});
        grid.AddColumn({.iType = 2});
        grid.AddColumn({.iType = 1});
        grid.AllowMultiLineText(multiLine);
        grid.BeginUpdate();
        grid.Rows(800);
        grid.CellText(749, 1, wide);
        grid.CellText(750, 1, wider);
        grid.EndUpdate();
        EXPECT_EQ(grid.widths(), multiLine ? "310 57 33 17 16" : "250 57 33 17 16");
        grid.RemoveRow(1);  // 750 becomes 749
        EXPECT_EQ(grid.widths(), "310 57 33 17 16");
        grid.RemoveRow(749);
        EXPECT_EQ(grid.widths(), "250 57 33 17 16");
        grid.SetCellPicture(5, 4, std::make_shared<GridPicture>());
        EXPECT_EQ(grid.widths(), "250 57 33 30 16");
        grid.CellText(748, 1, u"");
        grid.SetCellPicture(5, 4);
        EXPECT_EQ(grid.widths(), "46 57 33 17 16");
        grid.ColWidth(1, -7);  // no width that there is
        grid.ColText(2, u"x");
        grid.SetColFormat(5, {.sNumDecSep = u".", .iNumFixDec = 3});  // 0.000
        EXPECT_EQ(grid.widths(), "0 27 33 17 40");
    }
}

TEST(GridGeometry, TheLastColumnFillsTheSurfaceWhenItSizesItself) {
    PlainGrid grid;
    fill(grid, {50, -1}, 2);
    EXPECT_EQ(grid.widths(), "50 151");
    EXPECT_EQ(grid.TotalWidth(), 200);
    EXPECT_FALSE(grid.h.shown);
    grid.ColWidth(2, 60);
    EXPECT_EQ(grid.widths(), "50 60");
    EXPECT_EQ(grid.TotalWidth(), 109);
}

TEST(GridGeometry, ViewPortShrinksByTheHorizontalBarAtOnce) {
    PlainGrid grid;
    fill(grid, {150}, 4);
    EXPECT_EQ(grid.ViewPortHeight(), 100);
    EXPECT_EQ(grid.ViewPortWidth(), 200);
    grid.ColWidth(1, 230);
    EXPECT_TRUE(grid.h.shown);
    EXPECT_EQ(grid.HScroll_Max(), 29 + 1);
    EXPECT_EQ(grid.ViewPortHeight(), 84);
    EXPECT_EQ(grid.GetVisibleRows(), 4);
    EXPECT_EQ(grid.VScroll_Max(), 4 - 3 + 1);
    EXPECT_EQ(std::to_string(grid.v.small) + " " + std::to_string(grid.v.large), "1 5");
    grid.ColWidth(1, 200);
    EXPECT_FALSE(grid.h.shown);
    EXPECT_EQ(grid.HScroll_Max(), 0);
    EXPECT_EQ(grid.VScroll_Max(), 0);  // 4 rows and the header fit
    EXPECT_TRUE(grid.v.shown);
}

TEST(GridGeometry, BarsOf16BitsAreScaled) {
    PlainGrid grid;
    grid.v.onChange = grid.h.onChange = nullptr;  // a frame would set the maximum itself
    const struct {
        std::int32_t max, bar, read, set, value;
    } kBars[] = {
        {0, 0, 0, 5, 0},
        {14999, 14999, 14999, 7000, 7000},
        {15000, 7500, 15000, 7001, 7000},  // 1.5 rounds to 2, and so does 3500.5 to 3500
        {30000, 15000, 30000, 7003, 7004},
        {1000000, 29412, 1000000, 999999, 1000000},  // 29412 x 34 is more
        {INT32_MAX, 32767, 32767 * 32767, 0, 0},
        {-1, 0, 0, 3, 0},
    };
    for (const auto& c : kBars) {
        grid.VScroll_Max(c.max);
        grid.VScroll_Value(c.set);
        EXPECT_EQ(grid.v.Max(), c.bar) << c.max;
        EXPECT_EQ(grid.VScroll_Max(), c.read) << c.max;
        EXPECT_EQ(grid.VScroll_Value(), c.value) << c.max;
        grid.HScroll_Max(c.max);
        EXPECT_EQ(grid.HScroll_Max(), c.read);
    }
}

TEST(GridGeometry, MultiLineRowsHaveHeightsOfTheirOwn) {
    PlainGrid grid;
    grid.AllowMultiLineText(true);
    fill(grid, {36, 60}, 0);
    grid.AddRow(u"a\tb");
    grid.AddRow(u"abcdefghijklm\tb");  // 13 units of 6 in 36: three lines
    grid.AddRow(u"a\tb\nc");
    grid.AddRow(u"\tx");
    const auto row = [&](std::int32_t i) {
        const clsCtlUniGrid_Column& column = grid.column(2);
        return std::to_string(column.OffsetRow(i)) + "+" + std::to_string(column.CellHeight(i));
    };
    // Row 2 stands one pixel lower than rows usually do.
    EXPECT_EQ(row(1) + " " + row(2) + " " + row(3) + " " + row(4), "0+19 19+45 63+32 94+19");
    EXPECT_EQ(grid.column(1).TextHeight(2), 39);
    EXPECT_EQ(grid.GetRowY(0), 2);
    EXPECT_EQ(grid.GetRowY(2), 19 + 19 + 2);
    EXPECT_EQ(grid.CellHeight(2, 2), 45);
    EXPECT_EQ(grid.CellHeight(0, 2), 19);
    EXPECT_EQ(grid.VScroll_Max(), 19 + 113 - 100);
    EXPECT_EQ(std::to_string(grid.v.small) + " " + std::to_string(grid.v.large), "25 100");
    const struct {
        std::int32_t y, row;
    } kRows[] = {{0, 0}, {20, 0}, {21, 1}, {39, 1}, {40, 2}, {83, 2}, {84, 3}, {99, 3}};
    for (const auto& c : kRows) EXPECT_EQ(grid.GetRowByY(c.y), c.row) << c.y;
    grid.VScroll_Value(20);
    EXPECT_EQ(grid.GetRowByY(20), 2);
    EXPECT_EQ(grid.GetRowByAbsY(20), 0);
    EXPECT_EQ(dump(grid.GetCellRect(2, 2)), "37,20,97,64");
    EXPECT_EQ(dumpOf([&] { (void)grid.CurrCellHeight(1); }), "9 : Subscript out of range");
}

TEST(GridGeometry, FocusBringsTheCurrentRowToTheMiddle) {
    const struct {
        bool multiLine;
        std::int32_t scroll, row, after;
    } kCases[] = {
        {false, 0, 4, 0},                         // visible
        {false, 0, 5, 2},                         // 5 - 5 + 2
        {false, 30, 30, 27},                      // above
        {false, 0, 100, 97},                      // 100 - 5 + 2, within the maximum of 97
        {false, 9, 1, 0},     {false, 9, -1, 9},  // no row
        {true, 0, 4, 0},      {true, 0, 5, 42},   // 73 - 50 + 19
        {true, 0, 100, 1721},                     // 1783 - 50 + 19, beyond the maximum
        {true, 80, 1, 0},
    };
    for (const auto& c : kCases) {
        PlainGrid grid;
        grid.AllowMultiLineText(c.multiLine);
        fill(grid, {50}, 100);
        grid.VScroll_Value(c.scroll);
        grid.BeginUpdate();
        grid.Row(c.row);
        grid.NoUpdate();
        grid.frames = 0;
        grid.FocusSelectedRow();
        EXPECT_EQ(grid.VScroll_Value(), c.after) << c.multiLine << " " << c.row;
        EXPECT_EQ(grid.frames, c.row == -1 ? 0 : 1);  // the bar's change draws none of its own
    }
}

// To the pixel: where a row stops being visible, and where the content stops fitting.
TEST(GridGeometry, RowsAndContentAreVisibleToTheirLastPixel) {
    PlainGrid grid;
    fill(grid, {50}, 4);
    const auto visible = [&](std::int32_t height, std::int32_t row) {
        grid.surface.size.cy = height;
        grid.Refresh();
        return grid.IsRowCompletelyVisible(row);
    };
    EXPECT_TRUE(visible(93, 4));  // 74 + 19
    EXPECT_FALSE(visible(92, 4));
    grid.AllowMultiLineText(true);
    EXPECT_FALSE(visible(58, 2));  // 19 + 19 + 2 + 19
    EXPECT_TRUE(visible(59, 2));
    grid.VScroll_Value(2);
    EXPECT_TRUE(grid.IsRowCompletelyVisible(1));
    grid.VScroll_Value(3);
    EXPECT_FALSE(grid.IsRowCompletelyVisible(1));
    grid.surface.size.cy = 74;  // offset of row 4 is 55
    grid.Refresh();
    EXPECT_EQ(grid.VScroll_Max(), 0);
    grid.surface.size.cy = 73;
    grid.Refresh();
    EXPECT_EQ(grid.VScroll_Max(), 19 + 74 - 73);
    // Half of an odd height: 77 - 50.5 + 20 goes to the even number.
    grid.MinRowHeight(20);
    grid.Rows(100);
    grid.surface.size.cy = 101;
    grid.Refresh();
    grid.Row(5);
    EXPECT_EQ(grid.VScroll_Value(), 46);
}

TEST(GridGeometry, HoldsTheLeastRowHeight) {
    PlainGrid grid;
    fill(grid, {50}, 3);
    grid.MinRowHeight(30);
    EXPECT_EQ(grid.RowHeight(), 30);
    for (const std::int32_t ignored : {-1, 15000}) grid.MinRowHeight(ignored);
    EXPECT_EQ(grid.MinRowHeight(), 30);
    grid.MinRowHeight(14999);
    EXPECT_EQ(grid.RowHeight(), 14999);
    EXPECT_EQ(grid.GetVisibleRows(), 0);
    EXPECT_EQ(grid.VScroll_Max(), 4);
    grid.MinRowHeight(0);
    EXPECT_EQ(grid.RowHeight(), 19);
}

TEST(GridGeometry, PlacesItsParts) {
    const struct {
        GridSize control;
        std::string pic, h, v;
    } kCases[] = {
        {{300, 200}, "2,2,281,198", "2,182,281,198", "282,2,298,198"},
        {{1, 1}, "2,2,2,2", "2,-17,2,-1", "-17,2,-1,2"},
        {{0, 0}, "2,2,2,2", "2,-18,2,-2", "-18,2,-2,2"},
    };
    for (const auto& c : kCases) {
        const auto parts = GridGeometry::partsOf(c.control, 16, 16);
        EXPECT_EQ(dump(parts.pic), c.pic);
        EXPECT_EQ(dump(parts.hScroll), c.h);
        EXPECT_EQ(dump(parts.vScroll), c.v);
    }
}

TEST(GridGeometry, AMillionRowsAreMeasuredByTheirFirst) {
    PlainGrid grid;
    fill(grid, {50, -1}, 1000000);
    EXPECT_LT(grid.surface.questions, 2000);
    EXPECT_EQ(grid.VScroll_Max(), 999997);
    grid.key(35);  // End
    EXPECT_EQ(grid.Row(), 1000000);
    EXPECT_TRUE(grid.IsRowCompletelyVisible(1000000));
    const GridRect last = grid.GetCellRect(1000000, 2);
    EXPECT_EQ(grid.GetRowByY(last.Y1 - 2), 1000000);
    EXPECT_EQ(grid.GetRowByY(last.Y1 + 16), -1);
    grid.click(10, static_cast<float>(last.Y1 - 2));
    EXPECT_EQ(grid.Row(), 1000000);
    // A notch of the wheel is less than the bar can tell, and moves it all the same.
    grid.wheel(0, 120, 0, 0);
    EXPECT_EQ(grid.VScroll_Value(), 29411 * 34);
    grid.wheel(0, -120, 0, 0);
    EXPECT_EQ(grid.VScroll_Value(), 999997);
    // Every last row can be reached, wherever rounding goes.
    for (std::int32_t rows = 999950; rows <= 999999; ++rows) {
        grid.RemoveRow(-1, false);
        grid.VScroll_Value(0);
        grid.key(35);
        ASSERT_TRUE(grid.IsRowCompletelyVisible(grid.Rows())) << grid.Rows();
    }
    EXPECT_EQ(grid.GetRowY(200000000), INT32_MAX);
}

// The described measuring, all of it anew each time.
struct FullMeasuring {
    std::vector<std::int32_t> widths, heights, offsets;

    explicit FullMeasuring(PlainGrid& grid) {
        PlainMeasuring surface;
        const std::int32_t least = std::max<std::int32_t>(grid.MinRowHeight(), 19);
        std::vector<std::int32_t> own(static_cast<std::size_t>(grid.Rows()), least);
        for (std::int32_t c = 1; c <= grid.Cols(); ++c) {
            const clsCtlUniGrid_Column& column = grid.column(c);
            std::int32_t width = static_cast<std::int32_t>(column.sText.size()) * 6;
            std::optional<std::int32_t> fixed;
            if (column.iMaxWidth != -1) fixed = column.iMaxWidth;
            for (std::int32_t i = 1; i <= grid.Rows(); ++i) {
                if (!grid.AllowMultiLineText() && i > 749) break;
                GridSize size = grid.AllowMultiLineText()
                                    ? surface.textSizeWrapped(column.CellText(i), fixed)
                                    : surface.textSize(column.CellText(i));
                if (column.HasPicture(i)) {
                    size = {std::max(size.cx, 20), std::max(size.cy, 30)};
                }
                width = std::max(width, size.cx);
                auto& height = own[static_cast<std::size_t>(i) - 1];
                if (grid.AllowMultiLineText()) height = std::max(height, size.cy + 6);
            }
            widths.push_back(fixed.value_or(width + 10));
        }
        std::int32_t offset = 0;
        for (const std::int32_t height : own) {
            heights.push_back(height);
            offsets.push_back(offset);
            offset += offsets.size() == 1 ? height : height - 1;
        }
    }
};

TEST(GridGeometry, KeptMeasuresAgreeWithMeasuringAnewOverRandomSteps) {
    Random random(3);
    const auto someText = [&] {
        Text s(random.below(30U), u'x');
        if (!s.empty() && random.oneIn(4)) s[random.below(s.size())] = u'\n';
        return s;
    };
    PlainGrid grid;
    grid.surface.size.cx = 1;
    grid.SelectionChange = nullptr;
    fill(grid, {-1, 40, -1}, 5);
    std::int32_t iRow = 0, iCol = 0;
    const auto addRow = [&] { grid.AddRow(someText() + u"\t" + someText() + u"\t" + someText()); };
    const auto setText = [&] { grid.CellText(iRow, iCol, someText()); };
    const std::function<void()> kSteps[] = {
        setText,
        setText,
        [&] { grid.RemoveRow(iRow); },
        [&] { grid.RemoveRow(); },
        [&] {
            const auto picture = random.oneIn(2) ? nullptr : std::make_shared<GridPicture>();
            grid.SetCellPicture(iRow, iCol, picture);
        },
        [&] { grid.SortByColum(iCol, random.oneIn(2)); },
        [&] {
            grid.column(iCol).SwapRows(iRow, random.below(grid.Rows()) + 1);
            grid.Refresh();
        },
        [&] { grid.ColText(iCol, someText()); },
    };
    const std::function<void()> kRareSteps[] = {
        [&] { grid.ColWidth(2, 12 + random.below(90)); },
        [&] {
            if (grid.Cols() == 3) grid.RemoveColumn(random.below(3) + 1);
            if (grid.Cols() == 2 && random.oneIn(2)) grid.AddColumn({});
        },
        [&] { grid.Clear(false); },
        [&] { grid.AllowMultiLineText(!grid.AllowMultiLineText()); },
        [&] { grid.MinRowHeight(random.below(40)); },
    };
    std::int32_t mostRows = 0;
    for (int step = 0; step < 10000; ++step) {
        const std::int32_t rows = grid.Rows();
        mostRows = std::max(mostRows, rows);
        iRow = rows == 0 ? 0 : random.below(rows) + 1;
        iCol = random.below(grid.Cols()) + 1;
        const bool lock = random.oneIn(3);  // several changes before the next measuring
        if (lock) grid.BeginUpdate();
        if (random.oneIn(30)) {
            random.oneOf(kRareSteps)();
        } else {
            (rows == 0 || random.oneIn(3) ? addRow : random.oneOf(kSteps))();
        }
        if (lock) grid.NoUpdate();
        if (!random.oneIn(3)) continue;
        grid.Refresh();
        const FullMeasuring full(grid);
        for (std::int32_t c = 1; c <= grid.Cols(); ++c) {
            const clsCtlUniGrid_Column& column = grid.column(c);
            ASSERT_EQ(column.iCurrentWidth, full.widths[static_cast<std::size_t>(c) - 1])
                << "step " << step << " column " << c;
            if (!grid.AllowMultiLineText()) continue;
            for (std::int32_t i = 1; i <= grid.Rows(); ++i) {
                const auto at = static_cast<std::size_t>(i) - 1;
                ASSERT_EQ(column.CellHeight(i), full.heights[at]) << step << " row " << i;
                ASSERT_EQ(column.OffsetRow(i), full.offsets[at]) << step << " row " << i;
            }
        }
    }
    EXPECT_GT(mostRows, 100);
}

TEST(GridGeometry, OneChangedCellIsAllThatIsMeasuredAnew) {
    for (const bool multiLine : {false, true}) {
        PlainGrid grid;
        grid.AllowMultiLineText(multiLine);
        fill(grid, {-1, -1, 40}, 5000);
        const auto questions = [&](const auto& change) {
            const int before = grid.surface.questions;
            change();
            return grid.surface.questions - before;
        };
        const int headers = 3;  // "Xg" and two self-sizing headers
        EXPECT_EQ(questions([&] { grid.Refresh(); }), headers);
        EXPECT_EQ(questions([&] { grid.CellText(700, 1, u"new"); }), headers + 1);
        EXPECT_EQ(questions([&] { grid.CellBackColor(700, 1, 5); }), headers);
        EXPECT_EQ(questions([&] { grid.RemoveRow(9); }), headers + (multiLine ? 0 : 2));
        grid.forgetMeasuredTexts();
        EXPECT_GT(questions([&] { grid.Refresh(); }), 700);
    }
}

}  // namespace
}  // namespace test
