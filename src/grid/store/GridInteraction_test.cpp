#include "grid/store/gridDump_test.h"
#include "grid/store/plainGrid_test.h"

#include <gtest/gtest.h>
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
    const auto plain = [](PlainGrid&) {};
    const auto scrolled = [](PlainGrid& g) { g.ColWidth(1, 200), g.HScroll_Value(1000); };
    const auto multiLine = [](PlainGrid& g) { g.AllowMultiLineText(true), g.MultiSelect(true); };
    const struct {
        std::function<void(PlainGrid&)> prepare;
        float x, y;
        std::int16_t button;
        std::string notes;
    } kCases[] = {
        {plain, 10, 40, 1, "change 2 up click"},
        {plain, 10, 40, 2, "up click"},  // only the left button
        {plain, 10, 10, 1, "up"},        // the header
        {plain, 117, 40, 1, "change 2 up click"},
        {plain, 118, 40, 1, "up"},                    // right of the last column
        {scrolled, 300, 40, 1, "change 2 up click"},  // counts while there is a horizontal bar
        {plain, 10, 80, 1, "up click"},               // below the last row
        {multiLine, 10, 19, 1, "up click"},           // counts as the header there
        {multiLine, 10, 21, 1, "change 1 up click"},
        // Unmeasured: nothing but releases, as every x is right of no columns.
        {[](PlainGrid& g) { g.Clear(); }, 10, 40, 1, "up"},
    };
    for (const auto& c : kCases) {
        PlainGrid grid;
        makeRows(grid, 3);
        grid.column(1).bSortable = false;
        c.prepare(grid);
        (void)grid.notes();
        grid.click(c.x, c.y, c.button);
        EXPECT_EQ(grid.notes(), c.notes) << c.x << "," << c.y;
    }
    PlainGrid never;
    never.doubleClick(10, 40);
    EXPECT_EQ(never.notes(), "up up");
}

TEST(GridInteraction, SelectsRowsByMouseAndKeys) {
    struct Step {
        std::int32_t shift;
        std::int32_t row;  // clicked; 0: the key
        std::int16_t key;
        std::string selection;
    };
    const struct {
        bool multiSelect;
        std::vector<Step> steps;
    } kRuns[] = {
        {true, {{0, 3, 0, "3"}, {kShift, 5, 0, "3 4 5"}, {kShift, 1, 0, "1 2 3"}, {4, 2, 0, "2"}}},
        {true,
         {{0, 3, 0, "3"},
          {kCtrl, 5, 0, "3 5"},
          {kCtrl, 3, 0, "5"},
          {kCtrl, 6, 0, "5 6"},
          {kShift, 4, 0, "4 5 6"}}},
        {true, {{kShift, 4, 0, "4"}, {kShift | kCtrl, 2, 0, "2 3 4"}}},
        {true,
         {{0, 2, 0, "2"},
          {0, 0, kDown, "3"},
          {kShift, 0, kDown, "3 4"},
          {kCtrl, 0, kDown, "3 4"},
          {kShift, 0, kHome, "1 2 3"},
          {0, 0, kRight, "1"}}},
        {true, {{0, 0, kDown, ""}, {0, 0, kDown, "1"}}},  // from no row to row 0 to row 1
        {false, {{kShift, 2, 0, "2"}, {kShift, 4, 0, "4"}, {kCtrl, 0, kUp, "3"}}},
    };
    for (const auto& run : kRuns) {
        PlainGrid grid;
        grid.surface.size.cy = 200;
        makeRows(grid, 6, run.multiSelect);
        EXPECT_EQ(grid.CountSelected(), 0);
        for (const Step& step : run.steps) {
            grid.shift = step.shift;
            if (step.row > 0) {
                grid.click(10, rowAt(step.row));
                EXPECT_EQ(grid.Row(), step.row);  // also when it is deselected
            } else {
                grid.key(step.key);
            }
            EXPECT_EQ(grid.selection(), step.selection)
                << "run " << &run - kRuns << " step " << &step - run.steps.data();
        }
    }
    // Where a selection began is forgotten with the rows, and as soon as it is no row.
    const std::function<void(PlainGrid&)> kForget[] = {
        [](PlainGrid& g) { g.Clear(false), g.Rows(6); },
        [](PlainGrid& g) { g.Rows(4); },
    };
    for (const auto& forget : kForget) {
        PlainGrid grid;
        grid.surface.size.cy = 200;
        makeRows(grid, 6, true);
        grid.click(10, rowAt(5));
        forget(grid);
        grid.shift = kShift;
        grid.click(10, rowAt(3));
        EXPECT_EQ(grid.selection(), "3");
    }
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
    const std::int32_t kScrolling[][2] = {{kRight, 10}, {kRight, 14}, {kLeft, 4},
                                          {kLeft, 0},   {kRight, 10}, {kHome, 0}};
    for (const auto& [key, left] : kScrolling) {
        grid.key(static_cast<std::int16_t>(key));
        EXPECT_EQ(grid.HScroll_Value(), left);
    }
    grid.Rows(0);
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
    grid.KeyDown = [&](std::int16_t& KeyCode, std::int16_t&) {
        note("key");
        if (KeyCode == kUp) KeyCode = 0;     // keeps it from the grid
        if (KeyCode == 74) KeyCode = kDown;  // J
    };
    grid.KeyUp = [&](std::int16_t& KeyCode, std::int16_t&) {
        note("key up");
        KeyCode = 7;
    };
    grid.KeyPress = [&](std::int16_t& KeyAscii) {
        note("key press");
        KeyAscii = 8;
    };
    grid.press(10, rowAt(2));
    grid.key(kUp);
    grid.key(74);
    grid.wheel(0, -120, 0, 0);
    grid.move(59, 5);
    grid.move(59, 5);
    std::int16_t code = kDown, unit = u'x', none = 0;
    grid.keyUp(code, none);
    grid.keyPress(unit);
    EXPECT_EQ(heard, "move row -1 top 0\ndown row 2 top 0\nkey row 2 top 0\nkey row 2 top 0\n"
                     "wheel row 3 top 0\nmove row 3 top 3\nmove row 3 top 3 edge\n"
                     "key up row 3 top 3 edge\nkey press row 3 top 3 edge\n");
    EXPECT_EQ(code * 10 + unit, 78);  // what the owner made of them
}

TEST(GridInteraction, DrawsOnceForEachInputAndMeasuresOnlyForOthersSurroundings) {
    const struct {
        std::function<void(PlainGrid&)> act;
        int frames, atOnce, questions;
        std::string notes;
    } kCases[] = {
        {[](PlainGrid& g) { g.key(kDown); }, 1, 1, 0, "change 2"},
        {[](PlainGrid& g) { g.click(10, rowAt(3)); }, 1, 1, 0, "change 3 up click"},
        {[](PlainGrid& g) { g.FocusSelectedRow(true, false); }, 1, 0, 0, ""},
        {[](PlainGrid& g) { g.FocusSelectedRow(false, true); }, 0, 0, 0, ""},
        {[](PlainGrid& g) { g.VScroll_Value(10); }, 1, 1, 0, ""},
        {[](PlainGrid& g) { g.VScroll_Value(0); }, 0, 0, 0, ""},
        {[](PlainGrid& g) { g.vScrollDragged(); }, 1, 1, 0, "vscroll"},
        {[](PlainGrid& g) { g.hScrollDragged(); }, 1, 1, 0, "hscroll"},
        {[](PlainGrid& g) { g.focusChanged(true), g.focusChanged(false); }, 2, 0, 0, ""},
        {[](PlainGrid& g) { g.ShowFocus(false), g.focusChanged(true); }, 1, 0, 0, ""},
        // "Xg", a header, and fifty cells.
        {[](PlainGrid& g) { g.ambientChanged(); }, 1, 0, 52, ""},
    };
    for (const bool multiSelect : {false, true}) {
        for (const auto& c : kCases) {
            PlainGrid grid;
            makeRows(grid, 50, multiSelect);
            grid.ColWidth(2, -1);
            grid.Row(1);
            grid.VScroll = [&] { grid.note("vscroll"); };
            grid.HScroll = [&] { grid.note("hscroll"); };
            (void)grid.notes();
            grid.frames = grid.framesAtOnce = grid.surface.questions = 0;
            c.act(grid);
            EXPECT_EQ(grid.frames, c.frames) << &c - kCases;
            EXPECT_EQ(grid.framesAtOnce, c.atOnce) << &c - kCases;
            EXPECT_EQ(grid.surface.questions, c.questions) << &c - kCases;
            EXPECT_EQ(grid.notes(), c.notes) << &c - kCases;
        }
    }
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

TEST(GridInteraction, HeaderClicksSort) {
    PlainGrid grid;
    makeRows(grid, 0);
    for (const char16_t* row : {u"b\t1", u"c\t3", u"a\t2"}) grid.AddRow(row);
    const auto column = [&] {
        std::string all;
        for (std::int32_t i = 1; i <= 3; ++i) all += toUtf8(grid.CellText(i, 1));
        return all;
    };
    const struct {
        std::function<void()> act;
        std::string rows;
        std::int32_t sorted;  // column
    } kSteps[] = {
        {[&] { grid.click(20, 5); }, "abc", 1},
        {[&] { grid.click(20, 5); }, "cba", 1},
        {[&] { grid.click(80, 5); }, "bac", 2},  // another column: ascending again
        {[&] { grid.click(20, 5); }, "abc", 1},
        {[&] { grid.press(20, 5), grid.release(21, 5); }, "abc", 1},   // moved by a pixel
        {[&] { grid.press(20, 5), grid.release(20, 50); }, "cba", 1},  // released elsewhere
        {[&] { grid.press(20, 50), grid.release(20, 5); }, "cba", 1},  // pressed below the header
        {[&] { grid.click(20, 5, 2); }, "cba", 1},                     // another button
        {[&] { grid.doubleClick(20, 5); }, "abc", 1},       // once: its second press is none
        {[&] { grid.SortByColum(u"b", true); }, "bac", 2},  // named by its key
        {[&] { grid.click(80, 5); }, "cab", 2},
        {[&] { grid.ColSortable(1, false), grid.click(20, 5); }, "cab", 2},
    };
    for (const auto& c : kSteps) {
        c.act();
        EXPECT_EQ(column(), c.rows) << &c - kSteps;
        EXPECT_TRUE(grid.isSortedColumn(c.sorted)) << &c - kSteps;
        EXPECT_FALSE(grid.isSortedColumn(3 - c.sorted)) << &c - kSteps;
    }
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
    grid.CellText(2, 1, u"twelve units");
    const struct {
        std::function<void()> act;
        std::int32_t width;
        bool cursor;
    } kSteps[] = {
        {[&] { grid.move(59, 30); }, 60, false},
        {[&] { grid.move(60, 5); }, 60, true},
        {[&] { grid.move(80, 5, 2), grid.move(80, 5, 4); }, 60, true},  // drag nothing, leave it
        {[&] { grid.move(10, 5), grid.move(60, 5, 2); }, 60, false},
        // The left edge counts from -1, as the width is one more than its step.
        {[&] { grid.press(60, 5), grid.drag(80, 5); }, 81, true},
        {[&] { grid.drag(-300, 50); }, 0, true},
        {[&] { grid.drag(41, 5), grid.release(41, 5); }, 42, true},
        {[&] { grid.drag(90, 5); }, 91, true},  // the zone stays until a move without a button
        {[&] { grid.move(10, 5), grid.drag(95, 5); }, 91, false},
        {[&] { grid.doubleClick(90, 5); }, 12 * 6 + 10, true},
        {[&] { grid.drag(120, 5); }, 82, true},  // a double click has ended it
        {[&] { grid.ColWidth(1, 180), grid.HScroll_Value(30), grid.move(149, 5); }, 180, true},
        {[&] { grid.press(149, 5), grid.drag(159, 5); }, 190, true},
    };
    for (const auto& c : kSteps) {
        c.act();
        EXPECT_EQ(grid.ColWidth(1), c.width) << &c - kSteps;
        EXPECT_EQ(grid.resizeCursor, c.cursor) << &c - kSteps;
    }
    EXPECT_EQ(grid.notes(), "up up up");  // no click, no sort
    EXPECT_FALSE(grid.isSortedColumn(1));
}

// Whatever an owner does inside of an event, the grid goes on with what is there.
TEST(GridInteraction, TheOwnerMayCallBackFromEveryEvent) {
    const std::function<void(PlainGrid&)> kCalls[] = {
        [](PlainGrid& g) { g.AddRow(u"x"); },
        [](PlainGrid& g) { g.RemoveRow(g.Rows()); },
        [](PlainGrid& g) { g.Clear(); },
        [](PlainGrid& g) { g.Rows(0); },
        [](PlainGrid& g) { g.SortByColum(1, true); },
        [](PlainGrid& g) { g.RemoveColumn(); },
        [](PlainGrid& g) { g.AddColumn({}); },
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
    makeRows(grid, 3, true);
    grid.SelectionChange = [] { throw Failure(5, u"", u"refused"); };
    EXPECT_EQ(dumpOf([&] { grid.key(kDown); }), "5 : refused");
    EXPECT_EQ(grid.Row(), 0);
    grid.SelectionChange = nullptr;
    const int frames = grid.frames;
    grid.key(kDown);
    EXPECT_EQ(grid.Row(), 1);
    EXPECT_EQ(grid.frames, frames + 1);  // the grid still draws
}

}  // namespace
}  // namespace test
