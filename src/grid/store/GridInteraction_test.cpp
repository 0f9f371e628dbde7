#include "grid/store/gridDump_test.h"
#include "grid/store/plainGrid_test.h"

#include <gtest/gtest.h>
#include <random>
#include <set>

namespace test {
namespace {

enum : std::int16_t { kPgUp = 33, kPgDn, kEnd, kHome, kLeft, kUp, kRight, kDown };
constexpr std::int32_t kShift = 1, kCtrl = 2;

// Two columns of 60 pixels, header and rows 18 apart, on a surface of 200 by 100.
void makeRows(PlainGrid& grid, std::int32_t rows, bool multiSelect = false) {
    grid.AddColumn({.iWidth = 60, .vKey = u"a", .bSortable = true});
    grid.AddColumn({.iWidth = 60, .vKey = u"b", .bResizable = false, .bSortable = true});
    grid.Rows(rows);
    grid.MultiSelect(multiSelect);
    (void)grid.notes();
}

float rowAt(std::int32_t shown) { return static_cast<float>(18 * shown + 5); }

TEST(GridInteraction, APressOnARowMakesItCurrent) {
    const struct {
        float x, y;
        std::int16_t button;
        std::int32_t row;
        std::string notes;
    } kCases[] = {
        {10, 40, 1, 2, "change 2 up click"},
        {10, 40, 2, -1, "up click"},  // only the left button
        {10, 10, 1, -1, "up"},        // the header
        {117, 40, 1, 2, "change 2 up click"},
        {118, 40, 1, -1, "up"},       // right of the last column
        {10, 80, 1, -1, "up click"},  // below the last row
    };
    for (const auto& c : kCases) {
        PlainGrid grid;
        makeRows(grid, 3);
        grid.column(1).bSortable = false;
        grid.click(c.x, c.y, c.button);
        EXPECT_EQ(grid.Row(), c.row) << c.x << "," << c.y;
        EXPECT_EQ(grid.notes(), c.notes) << c.x << "," << c.y;
    }
}

TEST(GridInteraction, TheAreaRightOfTheColumnsCountsWhileThereIsAHorizontalBar) {
    PlainGrid grid;
    makeRows(grid, 3);
    grid.ColWidth(1, 200);
    (void)grid.notes();
    grid.HScroll_Value(1000);
    grid.click(199, 40);
    EXPECT_EQ(grid.notes(), "change 2 up click");
}

TEST(GridInteraction, APressInAnUnmeasuredGridIsIgnored) {
    PlainGrid grid;
    grid.click(10, 40);
    grid.doubleClick(10, 10);
    grid.move(5, 5);
    EXPECT_EQ(grid.Row(), -1);
    EXPECT_EQ(grid.notes(), "up up up");  // nothing but releases; every x is right of no columns
}

TEST(GridInteraction, APressOnTheFirstPixelsOfAMultiLineRowIsIgnoredWhereItCountsAsHeader) {
    PlainGrid grid;
    grid.AllowMultiLineText(true);
    makeRows(grid, 3, true);
    grid.click(10, 19);
    EXPECT_EQ(grid.notes(), "up click");
    grid.click(10, 21);
    EXPECT_EQ(grid.notes(), "change 1 up click");
}

TEST(GridInteraction, SelectsRowsByMouseAndKeys) {
    struct Step {
        std::int32_t shift;
        std::int32_t row;  // clicked; 0: the key
        std::int16_t key;
        std::string selection;
    };
    const std::vector<Step> kRuns[] = {
        {{0, 3, 0, "3"}, {kShift, 5, 0, "3 4 5"}, {kShift, 1, 0, "1 2 3"}, {0, 2, 0, "2"}},
        {{0, 3, 0, "3"}, {kCtrl, 5, 0, "3 5"}, {kCtrl, 3, 0, "5"}, {kShift, 4, 0, "3 4"}},
        {{kShift, 4, 0, "4"}, {kShift | kCtrl, 2, 0, "2 3 4"}},
        {{0, 2, 0, "2"},
         {0, 0, kDown, "3"},
         {kShift, 0, kDown, "3 4"},
         {kShift, 0, kUp, "3"},
         {kCtrl, 0, kDown, "3"},
         {kCtrl, 0, kEnd, "3"},
         {kShift, 0, kHome, "1 2 3"}},
        {{0, 0, kDown, ""}, {0, 0, kDown, "1"}},  // from no row to row 0 to row 1
        {{0, 1, 0, "1"}, {0, 0, kRight, "1"}, {4, 2, 0, "2"}},
    };
    for (const auto& run : kRuns) {
        PlainGrid grid;
        grid.surface.size.cy = 200;
        makeRows(grid, 6, true);
        for (const Step& step : run) {
            grid.shift = step.shift;
            if (step.row > 0) {
                grid.click(10, rowAt(step.row));
            } else {
                grid.key(step.key);
            }
            EXPECT_EQ(grid.selection(), step.selection) << &step - run.data();
        }
    }
    PlainGrid grid;
    makeRows(grid, 6, true);
    grid.click(10, rowAt(3));
    grid.shift = kCtrl;
    grid.click(10, rowAt(3));
    EXPECT_EQ(grid.selection(), "");
    EXPECT_EQ(grid.Row(), 3);  // moved to, though deselected
}

TEST(GridInteraction, ClearForgetsWhereASelectionBegan) {
    PlainGrid grid;
    makeRows(grid, 6, true);
    grid.click(10, rowAt(2));
    grid.Clear(false);
    grid.Rows(6);
    grid.shift = kShift;
    grid.click(10, rowAt(4));
    EXPECT_EQ(grid.selection(), "4");
}

TEST(GridInteraction, WithoutMultiSelectTheSelectionIsTheCurrentRow) {
    PlainGrid grid;
    makeRows(grid, 6);
    EXPECT_EQ(grid.CountSelected(), 0);
    grid.shift = kShift;
    grid.click(10, rowAt(2));
    grid.click(10, rowAt(4));
    EXPECT_EQ(grid.selection(), "4");
    EXPECT_EQ(grid.CountSelected(), 1);
}

TEST(GridInteraction, KeysMoveAndScroll) {
    const struct {
        bool multiLine;
        std::int32_t rows, row;
        std::int16_t key;
        std::int32_t after;
        std::string notes;
    } kCases[] = {
        {false, 20, 3, kDown, 4, "change 4"},
        {false, 20, 20, kDown, 20, ""},
        {false, 20, -1, kDown, 0, "change 0"},
        {false, 20, 3, kUp, 2, "change 2"},
        {false, 20, 1, kUp, 1, ""},
        {false, 20, -1, kUp, -1, ""},
        {false, 20, 3, kPgDn, 6, "change 6"},  // 3 + 5 / 2 = 5.5
        {false, 20, 4, kPgDn, 6, "change 6"},  // 6.5
        {false, 20, 19, kPgDn, 20, "change 20"},
        {false, 20, 8, kPgUp, 6, "change 6"},  // 5.5
        {false, 20, 9, kPgUp, 6, "change 6"},  // 6.5
        {false, 20, 2, kPgUp, 1, "change 1"},
        {true, 20, 3, kPgDn, 8, "change 8"},
        {true, 20, 9, kPgUp, 4, "change 4"},
        {true, 20, 3, kPgUp, 1, "change 1"},
        {false, 20, 7, kHome, 1, "change 1"},
        {false, 20, 7, kEnd, 20, "change 20"},
        {false, 0, -1, kHome, -1, ""},
        {false, 0, -1, kEnd, -1, ""},
    };
    for (const auto& c : kCases) {
        PlainGrid grid;
        grid.AllowMultiLineText(c.multiLine);
        makeRows(grid, c.rows);
        grid.Row(c.row);
        (void)grid.notes();
        EXPECT_TRUE(grid.key(c.key));
        EXPECT_EQ(grid.Row(), c.after) << c.row << " key " << c.key;
        EXPECT_EQ(grid.notes(), c.notes) << c.row << " key " << c.key;
    }
    PlainGrid grid;
    makeRows(grid, 20);
    EXPECT_FALSE(grid.key(65));
    grid.ColWidth(1, 155);  // 15 pixels too wide
    grid.key(kRight);
    EXPECT_EQ(grid.HScroll_Value(), 10);
    grid.key(kRight);
    EXPECT_EQ(grid.HScroll_Value(), 14);
    grid.key(kLeft);
    EXPECT_EQ(grid.HScroll_Value(), 4);
    grid.key(kLeft);
    EXPECT_EQ(grid.HScroll_Value(), 0);
    grid.key(kRight);
    grid.key(kHome);
    EXPECT_EQ(grid.HScroll_Value(), 0);
}

TEST(GridInteraction, HomeWithoutRowsScrollsToTheTop) {
    PlainGrid grid;
    makeRows(grid, 0);
    grid.v.onChange = nullptr;  // a frame would set the maximum itself
    grid.VScroll_Max(50);
    grid.VScroll_Value(20);
    EXPECT_TRUE(grid.key(kHome));
    EXPECT_EQ(grid.VScroll_Value(), 0);
}

TEST(GridInteraction, EventsComeBeforeOrAfterTheGridsOwnPart) {
    PlainGrid grid;
    makeRows(grid, 30);
    std::string heard;
    const auto note = [&](const char* what) {
        heard += std::string(what) + " row " + std::to_string(grid.Row()) + " top " +
                 std::to_string(grid.VScroll_Value()) + (grid.resizeCursor ? " edge" : "") + "\n";
    };
    grid.SelectionChange = nullptr;
    grid.MouseMove = [&](auto, auto, float, float) { note("move"); };
    grid.MouseDown = [&](auto, auto, float, float) { note("down"); };
    grid.MouseWheel = [&](auto, auto, float, float, bool) { note("wheel"); };
    grid.KeyDown = [&](std::int16_t&, std::int16_t&) { note("key"); };
    grid.KeyUp = [&](std::int16_t& KeyCode, std::int16_t&) {
        note("key up");
        KeyCode = 7;
    };
    grid.KeyPress = [&](std::int16_t& KeyAscii) {
        note("key press");
        KeyAscii = 8;
    };
    grid.press(10, rowAt(2));
    grid.key(kDown);
    grid.wheel(0, -120, 0, 0);
    grid.move(59, 5);
    grid.move(59, 5);
    EXPECT_EQ(heard, "move row -1 top 0\ndown row 2 top 0\nkey row 2 top 0\n"
                     "wheel row 3 top 0\nmove row 3 top 3\nmove row 3 top 3 edge\n");
    heard.clear();
    std::int16_t code = kDown, unit = u'x', none = 0;
    grid.keyUp(code, none);
    grid.keyPress(unit);
    EXPECT_EQ(heard, "key up row 3 top 3 edge\nkey press row 3 top 3 edge\n");
    EXPECT_EQ(code * 10 + unit, 78);  // what the owner made of them
}

TEST(GridInteraction, TheOwnerMayKeepAKeyFromTheGrid) {
    PlainGrid grid;
    makeRows(grid, 5);
    grid.KeyDown = [](std::int16_t& KeyCode, std::int16_t&) {
        if (KeyCode == kDown) KeyCode = 0;
        if (KeyCode == 74) KeyCode = kDown;  // J
    };
    grid.key(kDown);
    EXPECT_EQ(grid.Row(), -1);
    grid.key(74);
    EXPECT_EQ(grid.Row(), 0);
}

TEST(GridInteraction, DrawsOncePerKey) {
    for (const bool multiSelect : {false, true}) {
        PlainGrid grid;
        makeRows(grid, 5, multiSelect);
        grid.Row(1);
        grid.frames = grid.framesAtOnce = 0;
        grid.key(kDown);
        EXPECT_EQ(grid.frames, 1);
        EXPECT_EQ(grid.framesAtOnce, 1);
        grid.click(10, rowAt(4));
        EXPECT_EQ(grid.frames, 2);
        EXPECT_EQ(grid.framesAtOnce, 2);
        const int questions = grid.surface.questions;
        grid.key(kUp);
        EXPECT_EQ(grid.surface.questions, questions);  // nothing is measured for it
    }
}

TEST(GridInteraction, OtherSurroundingsAreMeasuredAnew) {
    PlainGrid grid;
    makeRows(grid, 5);
    grid.ColWidth(1, -1);
    const int frames = grid.frames, questions = grid.surface.questions;
    grid.ambientChanged();
    EXPECT_EQ(grid.frames, frames + 1);
    EXPECT_GE(grid.surface.questions, questions + 5);
}

TEST(GridInteraction, TheWheelScrollsByRowsOrPixels) {
    const struct {
        bool multiLine;
        std::int32_t start, delta, after;
    } kCases[] = {
        {false, 0, -120, 3}, {false, 0, 120, 0},    {false, 2, 120, 0},
        {false, 5, 120, 2},  {false, 15, -120, 17}, {false, 17, -120, 17},
        {true, 0, -120, 25}, {true, 20, 120, 0},    {true, 40, 120, 15},
    };
    for (const auto& c : kCases) {
        PlainGrid grid;
        grid.AllowMultiLineText(c.multiLine);
        makeRows(grid, 20);
        grid.VScroll_Value(c.start);
        grid.wheel(0, c.delta, 0, 0);
        EXPECT_EQ(grid.VScroll_Value(), c.after) << c.start << " " << c.delta;
    }
    PlainGrid grid;
    makeRows(grid, 20);
    grid.ScrollOnMouseWheel(false);
    grid.shift = kCtrl;
    grid.wheel(1 + 16, -240, 700, -5);
    grid.wheel(2, 60, 0, 0);
    EXPECT_EQ(grid.VScroll_Value(), 0);
    EXPECT_EQ(grid.notes(), "wheel 5 2 700,-5 down wheel 2 2 0,0 up");
}

TEST(GridInteraction, BarsDrawAtOnceAndTellOfDrags) {
    PlainGrid grid;
    makeRows(grid, 50);
    int vertical = 0, horizontal = 0;
    grid.VScroll = [&] { ++vertical; };
    grid.HScroll = [&] { ++horizontal; };
    grid.frames = grid.framesAtOnce = 0;
    grid.VScroll_Value(10);
    EXPECT_EQ(grid.framesAtOnce, 1);
    grid.VScroll_Value(10);
    EXPECT_EQ(grid.frames, 1);
    grid.vScrollDragged();
    grid.hScrollDragged();
    EXPECT_EQ(grid.framesAtOnce, 3);
    EXPECT_EQ(vertical + horizontal, 2);
}

TEST(GridInteraction, FocusRedrawsWhereItShows) {
    PlainGrid grid;
    makeRows(grid, 5);
    grid.frames = 0;
    grid.focusChanged(true);
    grid.focusChanged(false);
    EXPECT_EQ(grid.frames, 2);
    grid.ShowFocus(false);
    grid.focusChanged(true);
    EXPECT_EQ(grid.frames, 3);
}

TEST(GridInteraction, HeaderClicksSort) {
    PlainGrid grid;
    makeRows(grid, 0);
    for (const char16_t* row : {u"b\t1", u"c\t3", u"a\t2"}) grid.AddRow(row);
    const auto column = [&] {
        std::string all;
        for (std::int32_t i = 1; i <= 3; ++i) all += toUtf8(grid.CellText(i, 1));
        return all;
    };
    const auto clicked = [&](float x) {
        grid.click(x, 5);
        return column();
    };
    EXPECT_EQ(clicked(20), "abc");
    EXPECT_TRUE(grid.isSortedColumn(1));
    EXPECT_EQ(clicked(20), "cba");
    EXPECT_EQ(clicked(80), "bac");  // another column: ascending again
    EXPECT_TRUE(grid.isSortedColumn(2));
    EXPECT_EQ(clicked(20), "abc");
    // Moved by a pixel, released elsewhere, pressed below the header, another button.
    grid.press(20, 5);
    grid.release(21, 5);
    EXPECT_EQ(column(), "abc");
    grid.press(20, 5);
    grid.release(20, 50);
    EXPECT_EQ(column(), "cba");
    grid.press(20, 50);
    grid.release(20, 5);
    grid.click(20, 5, 2);
    EXPECT_EQ(column(), "cba");
    // A double click sorts once: its second press is none.
    grid.doubleClick(20, 5);
    EXPECT_EQ(column(), "abc");
    // The column of the last sort may have been named by its key.
    grid.SortByColum(u"b", true);
    EXPECT_TRUE(grid.isSortedColumn(2));
    EXPECT_EQ(clicked(80), "cab");
    grid.ColSortable(1, false);
    EXPECT_EQ(clicked(20), "cab");
    // No name is nobody's name, and neither is none.
    grid.AddColumn({});
    grid.AddColumn({.vKey = GridValue()});
    for (const GridValue& name : {GridValue(Text()), GridValue()}) {
        grid.SortByColum(name, true);
        for (std::int32_t c = 1; c <= 4; ++c) EXPECT_FALSE(grid.isSortedColumn(c)) << c;
    }
    grid.Clear(false);
    EXPECT_FALSE(grid.isSortedColumn(1) || grid.isSortedColumn(2));
}

TEST(GridInteraction, ColumnEdgesAreDraggedAndGivenBack) {
    PlainGrid grid;
    makeRows(grid, 3);
    const std::set<int> zone = {57, 58, 59, 60, 61};  // around 59; the second column has none
    for (int x = 0; x < 150; ++x) {
        grid.move(static_cast<float>(x), 5);
        EXPECT_EQ(grid.resizeCursor, zone.contains(x)) << x;
    }
    grid.move(59, 30);
    EXPECT_FALSE(grid.resizeCursor);

    grid.move(60, 5);
    for (const std::int16_t button : {2, 4}) grid.move(80, 5, button);  // drag nothing, leave it
    EXPECT_EQ(grid.ColWidth(1), 60);
    EXPECT_TRUE(grid.resizeCursor);
    grid.move(10, 5);
    grid.move(60, 5, 2);
    EXPECT_FALSE(grid.resizeCursor);

    grid.press(60, 5);
    grid.drag(80, 5);  // the left edge counts from -1, as the width is one more than its step
    EXPECT_EQ(grid.ColWidth(1), 81);
    grid.drag(-300, 50);
    EXPECT_EQ(grid.ColWidth(1), 0);
    grid.drag(41, 5);
    EXPECT_EQ(grid.ColWidth(1), 42);
    grid.release(41, 5);
    EXPECT_EQ(grid.notes(), "up");  // no click, no sort
    EXPECT_FALSE(grid.isSortedColumn(1));
    grid.drag(90, 5);  // the zone stays until a move without a button
    EXPECT_EQ(grid.ColWidth(1), 91);
    grid.move(10, 5);
    grid.drag(95, 5);
    EXPECT_EQ(grid.ColWidth(1), 91);

    grid.CellText(2, 1, u"twelve units");
    grid.doubleClick(90, 5);
    EXPECT_EQ(grid.ColWidth(1), 12 * 6 + 10);
    grid.drag(120, 5);  // a double click ends it
    EXPECT_EQ(grid.ColWidth(1), 82);
}

TEST(GridInteraction, EdgesAreFoundInTheScrolledContent) {
    PlainGrid grid;
    makeRows(grid, 3);
    grid.ColWidth(1, 180);
    grid.HScroll_Value(30);
    grid.move(149, 5);
    EXPECT_TRUE(grid.resizeCursor);
    grid.press(149, 5);
    grid.drag(159, 5);
    EXPECT_EQ(grid.ColWidth(1), 190);
}

// Whatever an owner does inside of an event, the grid goes on with what is there.
TEST(GridInteraction, TheOwnerMayCallBackFromEveryEvent) {
    const std::function<void(PlainGrid&)> kCalls[] = {
        [](PlainGrid& g) { g.AddRow(u"x"); },
        [](PlainGrid& g) {
            if (g.Rows() > 1) g.RemoveRow(g.Rows());
        },
        [](PlainGrid& g) {
            if (g.Cols() > 0) g.Clear();
        },
        [](PlainGrid& g) { g.Rows(0); },
        [](PlainGrid& g) { g.SortByColum(1, true); },
        [](PlainGrid& g) { g.RemoveColumn(); },
        [](PlainGrid& g) { g.AllowMultiLineText(!g.AllowMultiLineText()); },
        [](PlainGrid& g) { g.VScroll_Value(g.VScroll_Max()); },
        [](PlainGrid& g) { g.MultiSelect(!g.MultiSelect()); },
        [](PlainGrid& g) { g.BeginUpdate(); },
    };
    for (const auto& call : kCalls) {
        for (const bool multiSelect : {false, true}) {
            PlainGrid grid;
            makeRows(grid, 30, multiSelect);
            int depth = 0;
            const auto react = [&] {
                if (++depth < 3) {
                    try {
                        call(grid);
                    } catch (const Failure&) {  // of a grid that has no columns any more
                    }
                }
                --depth;
            };
            grid.SelectionChange = react;
            grid.Click = grid.DblClick = grid.HScroll = grid.VScroll = react;
            grid.MouseDown = grid.MouseMove =
                grid.MouseUp = [&](auto, auto, float, float) { react(); };
            grid.MouseWheel = [&](auto, auto, float, float, bool) { react(); };
            grid.KeyDown = [&](std::int16_t&, std::int16_t&) { react(); };
            for (int round = 0; round < 3; ++round) {
                grid.click(10, rowAt(3));
                for (std::int16_t key = kPgUp; key <= kDown; ++key) grid.key(key);
                grid.click(30, 5);
                grid.press(59, 5);
                grid.drag(70, 5);
                grid.doubleClick(59, 5);
                grid.wheel(0, -120, 0, 0);
                grid.vScrollDragged();
                grid.NoUpdate();
            }
            EXPECT_GE(grid.Rows(), 0);
            EXPECT_LE(grid.Row(), std::max(grid.Rows(), 100));
        }
    }
}

TEST(GridInteraction, AFailingOwnerLeavesTheGridUsable) {
    PlainGrid grid;
    makeRows(grid, 0);
    for (const char16_t* row : {u"b", u"c", u"a"}) grid.AddRow(row);
    grid.column(1).bSortWithCustomEvent = true;
    grid.SortCompareRows = [](const GridValue&, auto, auto, bool, bool&) {
        throw Failure(5, u"", u"refused");
    };
    const int before = grid.frames;
    grid.click(20, 5);
    EXPECT_EQ(grid.Rows(), 3);
    EXPECT_EQ(grid.frames, before + 1);  // the arrow, and what has moved
    grid.SortCompareRows = [](auto&&...) { throw 1; };
    grid.SortByColum(1, true);
    grid.SelectionChange = [] { throw Failure(5, u"", u"refused"); };
    EXPECT_EQ(dumpOf([&] { grid.key(kDown); }), "5 : refused");
    EXPECT_EQ(grid.Row(), 0);
    grid.SelectionChange = nullptr;
    const int frames = grid.frames;
    grid.key(kDown);
    EXPECT_EQ(grid.Row(), 1);
    EXPECT_EQ(grid.frames, frames + 1);  // the grid still draws
}

// Rows as a plain list of names with marks, and the rules of selection on it.
TEST(GridInteraction, AgreesWithAPlainModelOverRandomSteps) {
    std::mt19937 random(17);
    const auto below = [&random](std::int32_t n) {
        return static_cast<std::int32_t>(random() % static_cast<std::uint32_t>(n));
    };
    PlainGrid grid;
    makeRows(grid, 0, true);
    grid.ColSortable(1, false);
    grid.SelectionChange = nullptr;
    struct Item {
        std::int32_t name;
        bool selected;
    };
    std::vector<Item> items;
    std::int32_t row = -1, anchor = -1, names = 0;
    const auto select = [&](std::int32_t at, bool byMouse) {
        const std::int32_t rows = static_cast<std::int32_t>(items.size());
        if (at < 1 || at > rows) return;
        const bool shift = (grid.shift & kShift) != 0, control = (grid.shift & kCtrl) != 0;
        if (shift || !control) {
            for (Item& item : items) item.selected = false;
        }
        if (shift) {
            if (anchor < 1 || anchor > rows) anchor = at;
            for (std::int32_t i = std::min(at, anchor); i <= std::max(at, anchor); ++i) {
                items[static_cast<std::size_t>(i) - 1].selected = true;
            }
        } else if (!control || byMouse) {
            anchor = at;
            bool& selected = items[static_cast<std::size_t>(at) - 1].selected;
            selected = control ? !selected : true;
        }
    };
    for (int step = 0; step < 10000; ++step) {
        const std::int32_t rows = static_cast<std::int32_t>(items.size());
        grid.shift = below(4);
        switch (below(12)) {
        case 0:
        case 1:
            items.push_back({++names, false});
            grid.AddRow(GridValue(names).toText());
            break;
        case 2:
            if (rows > 0) {
                const std::int32_t gone = below(rows) + 1;
                grid.RemoveRow(gone);
                items.erase(items.begin() + (gone - 1));
                if (row == gone) row = rows == 1 ? -1 : std::min(row, rows - 1);
            }
            break;
        case 3:
            row = below(rows + 3) - 1;
            grid.Row(row);
            if (row < 1 || row > rows) row = -1;
            break;
        case 4:
        case 5:
        case 6: {
            const std::int32_t at = below(6) + grid.VScroll_Value();
            const std::int32_t shown = at - grid.VScroll_Value();
            grid.click(10, rowAt(shown));
            if (shown > 0 && at <= rows) {
                select(at, true);
                row = at;
            }
            break;
        }
        case 7:
        case 8: {
            const std::int16_t key = below(2) == 0 ? kDown : kUp;
            grid.key(key);
            if (key == kDown ? row < rows : row >= 2) row += key == kDown ? 1 : -1;
            select(row, false);
            break;
        }
        case 9: {
            const bool end = below(2) == 0;
            grid.key(end ? kEnd : kHome);
            if (rows > 0) row = end ? rows : 1;
            select(row, false);
            break;
        }
        case 10:
            grid.wheel(0, below(2) == 0 ? 120 : -120, 0, 0);
            break;
        case 11:
            if (below(20) == 0) {
                grid.Clear(false);
                items.clear();
                row = anchor = -1;
            }
            break;
        }
        ASSERT_EQ(grid.Rows(), static_cast<std::int32_t>(items.size())) << step;
        ASSERT_EQ(grid.Row(), row) << step;
        if (!items.empty()) {
            ASSERT_GE(grid.VScroll_Value(), 0) << step;
            ASSERT_LE(grid.VScroll_Value(), grid.VScroll_Max()) << step;
        }
        for (std::size_t i = 0; i < items.size(); ++i) {
            const auto iRow = static_cast<std::int32_t>(i) + 1;
            ASSERT_EQ(grid.CellText(iRow, 1), GridValue(items[i].name).toText()) << step;
            ASSERT_EQ(grid.RowSel(iRow), items[i].selected) << step << " row " << iRow;
        }
    }
}

}  // namespace
}  // namespace test
