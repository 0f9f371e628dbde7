// The drawn grid on real windows: what it paints, and input as the desktop sends it. The rules
// behind both are tested with grid/store.
#include "gfx/clsMEMDC.h"
#include "gfx/modCtlCommon_ctl_faces.h"
#include "gfx/modCtlCommon_ctl_shapes.h"
#include "grid/ctlUniGrid.h"
#include "host/Form.h"
#include "host/tipService.h"
#include "platform/base/failure.h"
#include "platform/window/recorder.h"
#include "platform/window/testhooks.h"
#include "support/Random.h"
#include "support/gui/Golden.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace test {
namespace {

using platform::test::MouseAction;
using platform::test::settle;

class Window : public Form {
public:
    Window() : Form(platform::WindowKind::Main) { ClientSize(700, 500); }
};

class GridTest : public testing::Test {
protected:
    GridTest() {
        platform::test::setKeysDown(std::vector<std::int32_t>{});
        form.Show();
        settle();
        grid.InitProperties();
        EXPECT_TRUE(grid.create(form.hWnd(), {0, 0, 420, 160}));
        grid.SelectionChange = [this] { notes += "change " + std::to_string(grid.Row()) + " "; };
        settle();
    }

    // The columns of a translator's list.
    void makePair() {
        grid.BackColor(0xFFFFFF);
        grid.ForeColor(0x800000);
        grid.BeginUpdate();
        grid.AddColumn({.sText = u"Row", .iAlign = 1, .vKey = u"Row"});
        grid.AddColumn({.sText = u"Section", .vKey = u"Section", .bSortable = true});
        grid.AddColumn({.sText = u"Key", .vKey = u"Key", .iHeaderAlign = 0});
        grid.AddColumn({.sText = u"Default", .iWidth = 120, .vKey = u"Default"});
        grid.AddColumn({.sText = u"Translation", .iWidth = 120, .vKey = u"Translation"});
        const char16_t* rows[] = {
            u"1\tMenu\tOpen\t&Open...\t&\u00d6ffnen...",
            u"2\tMenu\tClose\tClose this window\t",
            u"3\tMenu\tSave\tSave\tSave",
            u"4\tMessages\tLost\tThe file \"%1\" is gone.\t\u0424\u0430\u0439\u043b \u00ab%1\u00bb",
            u"5\tMessages\tWait\tPlease wait\t\u4e2d\u6587",
            u"6\tMessages\tDone\tDone\t\u062a\u0645",
            u"7\tMessages\tLong\tA text that is longer than its cell\tx",
            u"8\tMessages\tLast\tlast\tlast",
        };
        for (const char16_t* row : rows) grid.AddRow(row);
        grid.CellBackColor(2, u"Translation", 0x00FFFF);
        grid.CellBackColor(3, u"Translation", 0xC0FFFF);
        grid.EndUpdate();
    }

    // What the grid shows, without the native bars.
    [[nodiscard]] Picture shown() const {
        return painted({grid.ScaleWidth(), grid.ScaleHeight()}, [this](platform::HDC hDC) {
            const HostWindow& pic = grid.Pic();
            platform::BitBlt(hDC, 0, 0, grid.ScaleWidth(), grid.ScaleHeight(), grid.hDC(), 0, 0,
                             platform::SRCCOPY);
            platform::BitBlt(hDC, pic.Left(), pic.Top(), pic.ScaleWidth(), pic.ScaleHeight(),
                             pic.hDC(), 0, 0, platform::SRCCOPY);
        });
    }
    [[nodiscard]] testing::AssertionResult looksLike(const char* name) const {
        return matchesGolden(std::string("ctlUniGrid/") + name, shown());
    }
    // The drawing of one frame.
    std::string drawing() {
        platform::DrawingRecorder recorder(grid.Pic().hDC());
        grid.Refresh();
        return recorder.text();
    }
    // How many lines of what change draws begin so.
    std::ptrdiff_t drawn(const std::function<void()>& change, const std::string& begin) {
        platform::DrawingRecorder recorder(grid.Pic().hDC());
        change();
        return std::ranges::count_if(recorder.lines(),
                                     [&](const auto& line) { return line.starts_with(begin); });
    }
    [[nodiscard]] Color pixel(int x, int y) const {
        return platform::GetPixel(grid.Pic().hDC(), x, y);
    }
    std::string taken() { return std::exchange(notes, {}); }

    void move(HWND hWnd, POINT at, platform::WPARAM held = 0) const {
        platform::test::mouse(hWnd, MouseAction::Move, at, 0, held);
    }
    void press(HWND hWnd, POINT at, MouseAction action = MouseAction::Press) const {
        move(hWnd, at);
        platform::test::mouse(hWnd, action, at, platform::MK_LBUTTON, platform::MK_LBUTTON);
    }
    void release(HWND hWnd, POINT at) const {
        platform::test::mouse(hWnd, MouseAction::Release, at, platform::MK_LBUTTON);
    }
    void click(HWND hWnd, POINT at, MouseAction action = MouseAction::Press) const {
        press(hWnd, at, action);
        release(hWnd, at);
    }

    platform::test::WindowHookScope hooks;
    Window form;
    ctlUniGrid grid;
    std::string notes;
};

TEST_F(GridTest, LooksRight) {
    makePair();
    grid.Row(2);
    EXPECT_TRUE(looksLike("pair"));
    grid.SetFocus();
    settle();
    EXPECT_TRUE(looksLike("focus"));
    grid.Row(4);
    grid.MultiSelect(true);
    grid.SelectRange(3, 5, true);
    grid.SelectorStyle(4);
    grid.HeaderStyle(4);
    grid.SortByColum(u"Section", false);
    EXPECT_TRUE(looksLike("selection"));
    grid.move(0, 0, 320, 120);
    grid.VScroll_Value(2);
    grid.HScroll_Value(40);
    EXPECT_TRUE(looksLike("scrolled"));
}

TEST_F(GridTest, LooksRightInMultiLineMode) {
    makePair();
    grid.AllowMultiLineText(true);
    grid.Row(2);
    EXPECT_TRUE(looksLike("multiline"));
    grid.CellText(1, 5, u"three\r\nlines\r\nof text");
    grid.ColAlign(5, 2);
    grid.VScroll_Value(12);
    EXPECT_TRUE(looksLike("multiline_scrolled"));
}

TEST_F(GridTest, LooksRightWithFlagsNumbersAndPictures) {
    grid.AddColumn({.sText = u"On", .iType = 2});
    grid.AddColumn({.sText = u"Price", .iAlign = 1, .iType = 1});
    grid.AddColumn({.sText = u"Picture", .iWidth = 70, .bSortable = true});
    grid.SetColFormat(2, {.sNumDecSep = u".", .sNumValSep = u",", .iNumFixDec = 2});
    grid.AddRow(u"true\t1234567.5\ttext");
    grid.AddRow(u"false\t-3\t");
    grid.AddRow(u"true\t0.999\t");
    clsMEMDC drawing;  // red, then green, then blue from the edge
    drawing.CreateDC(8, 12);
    drawing.DrawBackColor(0x0000FF);
    DrawRect(drawing.Hdc(), {1, 1, 7, 11}, 0x00FF00, true);
    DrawRect(drawing.Hdc(), {2, 3, 6, 9}, 0xFF0000, true);
    const auto picture = std::make_shared<GridPicture>(drawing.Picture());
    grid.SetCellPicture(1, 3, picture);
    grid.SetCellPicture(2, 3, picture, {.bPicTransparent = false});
    grid.SetCellPicture(3, 3, picture, {.bPicGrayed = true});
    grid.SortByColum(3, true);
    EXPECT_TRUE(looksLike("types"));
}

TEST_F(GridTest, LooksRightWithPicturesThatAreCutOrLeaveAColourOut) {
    clsMEMDC drawing;  // green, with a blue square in its middle
    drawing.CreateDC(60, 60);
    drawing.DrawBackColor(0x00FF00);
    DrawRect(drawing.Hdc(), {25, 25, 35, 35}, 0xFF0000, true);
    const auto picture = std::make_shared<GridPicture>(drawing.Picture());
    const PictureOptions kOptions[] = {{.bPicTransparent = false},
                                       {.bPicTransparent = true},
                                       {.lPicXTransp = 30, .lPicYTransp = 30},
                                       {.lPicTranspColor = 0x00FF00},
                                       {.bPicTransparent = false}};
    for (const std::int32_t iWidth : {70, 70, 70, 70, 31}) grid.AddColumn({.iWidth = iWidth});
    grid.Rows(2);
    grid.MinRowHeight(70);
    for (std::int32_t c = 1; c <= 5; ++c) grid.SetCellPicture(1, c, picture, kOptions[c - 1]);
    EXPECT_TRUE(looksLike("pictures"));
    grid.MinRowHeight(0);
    EXPECT_TRUE(looksLike("pictures_cut"));
}

TEST_F(GridTest, DrawsInTheDescribedOrder) {
    SetAppButtonStyle(0);  // faces are plain fills
    grid.move(0, 0, 140, 64);
    grid.AddColumn({.sText = u"A", .iWidth = 50, .vKey = u"a", .bSortable = true});
    grid.AddColumn({.sText = u"gone", .iWidth = 0});
    // Codes that there are none of, the header at the right and the cells at the left; and no room
    // beside the arrow.
    grid.AddColumn({.sText = u"B",
                    .iWidth = 12,
                    .iAlign = 7,
                    .iHeaderAlign = 7,
                    .bSortable = true,
                    .bRightToLeft = true});
    for (const char16_t* row : {u"one\t\tx & y", u"two\t\tz", u"three\t\t"}) grid.AddRow(row);
    grid.CellForeColor(2, 1, 0x0000FF);
    grid.CellBackColor(2, 1, 0x00FF00);
    grid.CellForeColor(3, 1, 0xFF0000);
    grid.CellBackColor(3, 1, 0x00FF00);
    grid.RowSel(3, true);  // a flag that does not count
    grid.Row(2);
    const std::string frame = drawing();
    SetAppButtonStyle(3);
    EXPECT_EQ(frame, "FillRect 0,0,121,60 #FFFFFF\n"
                     "FillRect 0,0,50,19 #D4D0C8\n"
                     "FrameRect 0,0,50,19 #8C8C8C\n"
                     "DrawTextW 4,0,34,19 #000000 flags 0x825 \"A\"\n"
                     "FillRect 0,18,50,37 #FFFFFF\n"
                     "FrameRect 0,18,50,37 #8C8C8C\n"
                     "DrawTextW 4,18,44,37 #000000 flags 0x824 \"one\"\n"
                     "FillRect 0,36,50,55 #0A246A\n"
                     "FrameRect 0,36,50,55 #8C8C8C\n"
                     "DrawTextW 4,36,44,55 #FFFFFF flags 0x824 \"two\"\n"
                     "FillRect 0,54,50,73 #00FF00\n"
                     "FrameRect 0,54,50,73 #8C8C8C\n"
                     "DrawTextW 4,54,44,73 #0000FF flags 0x824 \"three\"\n"
                     "FillRect 49,0,61,19 #D4D0C8\n"
                     "FrameRect 49,0,61,19 #8C8C8C\n"
                     "DrawTextW 53,0,53,19 #000000 flags 0x20826 \"B\"\n"
                     "FillRect 49,18,61,37 #FFFFFF\n"
                     "FrameRect 49,18,61,37 #8C8C8C\n"
                     "DrawTextW 53,18,55,37 #000000 flags 0x20824 \"x & y\"\n"
                     "FillRect 49,36,61,55 #0A246A\n"
                     "FrameRect 49,36,61,55 #8C8C8C\n"
                     "DrawTextW 53,36,55,55 #FFFFFF flags 0x20824 \"z\"\n"
                     "FillRect 49,54,61,73 #FFFFFF\n"
                     "FrameRect 49,54,61,73 #8C8C8C\n");
}

TEST_F(GridTest, TheFrameIsDrawnAgainWhenItChanges) {
    const auto border = [&](const auto& change) {
        platform::DrawingRecorder recorder(grid.hDC());
        change();
        return recorder.text();
    };
    EXPECT_EQ(border([&] { grid.Refresh(); }), "");
    EXPECT_EQ(border([&] { grid.BorderColor(0x0000FF); }), "FillRect 0,0,420,160 #FFFFFF\n"
                                                           "FrameRect 1,1,419,159 #FFFFFF\n"
                                                           "FrameRect 0,0,420,160 #FF0000\n");
    EXPECT_NE(border([&] { grid.BackColor(0x00FF00); }), "");
    EXPECT_NE(border([&] { grid.move(30, 10, 430, 170); }), "");  // place and size at once
    for (const POINT corner : {POINT{0, 0}, POINT{429, 0}, POINT{0, 169}, POINT{429, 169}}) {
        EXPECT_EQ(platform::GetPixel(grid.hDC(), corner.x, corner.y), 0x0000FF);
    }
}

TEST_F(GridTest, WithMultiSelectTheFlagsCountAndTheCurrentRowAloneHasTheStyle) {
    grid.AddColumn({.iWidth = 60});
    grid.Rows(4);
    grid.CellBackColor(1, 1, 0x00FF00);
    grid.CellBackColor(2, 1, 0x00FF00);
    grid.RowSel(1, true);
    grid.RowSel(4, true);
    grid.Row(2);
    grid.MultiSelect(true);
    SetAppButtonStyle(0);  // its faces are plain fills
    grid.Refresh();
    const Color selected = platform::GetSysColor(13), plain = platform::GetSysColor(5);
    const Color kBacks[] = {selected, 0x00FF00, plain, selected};
    for (int row = 1; row <= 4; ++row) EXPECT_EQ(pixel(30, row * 18 + 4), kBacks[row - 1]) << row;
    SetAppButtonStyle(3);
}

TEST_F(GridTest, TheFocusRectangleNeedsFocusAndAnEnabledGrid) {
    grid.AddColumn({.iWidth = 60});
    grid.Rows(3);
    grid.Row(2);
    const auto focusDrawn = [&](const auto& change) {
        change();
        return drawing().find("DrawFocusRect") != std::string::npos;
    };
    EXPECT_FALSE(focusDrawn([] {}));
    EXPECT_TRUE(focusDrawn([&] { grid.SetFocus(), settle(); }));
    EXPECT_FALSE(focusDrawn([&] { grid.ShowFocus(false); }));
    EXPECT_FALSE(focusDrawn([&] { grid.ShowFocus(true), grid.Row(-1); }));
    grid.Row(1);
    // Without a frame asked for: that of another enabled state is drawn as it changes.
    const Picture focused = shown();
    grid.Enabled(false);
    EXPECT_FALSE(shown().pixels == focused.pixels);
    EXPECT_FALSE(focusDrawn([] {}));
}

TEST_F(GridTest, OnlyWhatIsInSightIsDrawn) {
    grid.AddColumn({.iWidth = 30000});
    for (int i = 0; i < 30; ++i) grid.AddColumn({.iWidth = 40});
    grid.BeginUpdate();
    grid.Rows(5000);
    grid.EndUpdate();
    const auto cells = [&] { return drawn([&] { grid.Refresh(); }, "FrameRect"); };
    const int rows = 156 / (grid.RowHeight() - 1) + 1;
    EXPECT_EQ(cells(), rows);  // one column
    grid.HScroll_Value(grid.HScroll_Max());
    EXPECT_EQ(cells(), 11 * rows);
    grid.VScroll_Value(4998);
    EXPECT_LT(cells(), 11 * rows);
}

TEST_F(GridTest, HugeCellsAndTinyWindowsAreDrawn) {
    Text huge;
    while (huge.size() < 1U << 19) huge += u"the quick brown fox jumps over it, ";
    for (const std::int32_t align : {0, 1, 2}) {
        grid.Clear();
        grid.AddColumn({.iAlign = align});
        grid.AddColumn({.iWidth = 100, .iAlign = align});
        grid.AddRow();
        grid.CellText(1, 1, huge);
        grid.CellText(1, 2, huge);
        grid.AddRow(u"tab and\r\nline\nends\t\u05e9\u05dc\u05d5\u05dd latin \u4e2d\u6587");
        EXPECT_GT(grid.ColWidth(1), 1000000);
        grid.Row(2);
        grid.AllowMultiLineText(true);
        EXPECT_GT(grid.CellHeight(1, 2), 100000);
        grid.VScroll_Value(grid.VScroll_Max() / 2);
        grid.AllowMultiLineText(false);
    }
    for (const bool multiLine : {false, true}) {
        grid.AllowMultiLineText(multiLine);
        for (const std::int32_t iWidth : {INT32_MAX, INT32_MIN, -2, 0, 30000}) {
            for (std::int32_t c = 1; c <= 2; ++c) grid.ColWidth(c, iWidth);
            grid.HScroll_Value(grid.HScroll_Max() / 2);
            (void)grid.GetCellRect(2, 2);
            click(grid.Pic().hWnd(), {5, 30});
            move(grid.Pic().hWnd(), {5, 5});
        }
    }
    for (const SIZE size : {SIZE{1, 1}, SIZE{0, 0}, SIZE{25, 5}, SIZE{300, 30}}) {
        grid.move(0, 0, size.cx, size.cy);
        grid.Row(1);
        grid.Row(2);
        click(grid.Pic().hWnd(), {0, 0});
        settle();
    }
}

// Whatever comes, from the desktop and from the owner: frames go on, and what is kept between them
// makes no difference to what is seen.
TEST_F(GridTest, RandomStepsLeaveThePictureThatANewWindowWouldShow) {
    Random random(23);
    const auto someText = [&] {
        static constexpr TextView kPieces[] = {
            u"word ",       u"\r\n", u"\n", u"&", u"\u4e2d\u6587", u"\u05e9\u05dc\u05d5\u05dd ",
            u"longer text "};
        Text s;
        for (int n = random.below(6); n > 0; --n) s += random.oneOf(kPieces);
        return s;
    };
    grid.SelectionChange = nullptr;
    grid.ShowFocus(false);
    for (const std::int32_t iWidth : {-1, 70, -1}) {
        grid.AddColumn({.sText = u"Header", .iWidth = iWidth, .bSortable = true});
    }
    std::int32_t iRow = 0, iCol = 0;
    const auto addRow = [&] {
        grid.AddRow(someText() + u"\t" + someText() + u"\t" + someText(), random.oneIn(3));
    };
    const auto use = [&] {
        const auto somewhere = [&] {
            return POINT{random.below(grid.ScaleWidth()), random.below(grid.ScaleHeight())};
        };
        press(grid.Pic().hWnd(), somewhere());
        platform::test::pressKey(grid.hWnd(), 33 + random.below(8));
        release(grid.Pic().hWnd(), somewhere());
    };
    const std::function<void()> kSteps[] = {
        use,
        use,
        [&] { grid.RemoveRow(iRow); },
        [&] { grid.CellText(iRow, iCol, someText()); },
        [&] { grid.CellBackColor(iRow, iCol, random.oneIn(2) ? -1 : 0x80FFFF); },
        [&] { grid.SortByColum(iCol, random.oneIn(2)); },
        [&] { grid.ColWidth(2, random.oneIn(2) ? -1 : random.below(150)); },
        [&] {
            grid.VScroll_Value(random.below(grid.VScroll_Max() + 1));
            grid.HScroll_Value(random.below(grid.HScroll_Max() + 1));
        },
        [&] {
            const bool shift = random.oneIn(3);
            platform::test::setKeysDown(std::vector<std::int32_t>(shift ? 1 : 0, 16));
            grid.MultiSelect(random.oneIn(2));
        },
        [&] {
            if (random.oneIn(5)) grid.AllowMultiLineText(!grid.AllowMultiLineText());
        },
        [&] {
            if (!random.oneIn(7)) return;
            grid.move(random.below(9), random.below(9), 60 + random.below(400),
                      40 + random.below(200));
        },
        [&] {
            if (random.oneIn(11)) grid.Font({.Name = u"Arial", .Size = 7.0 + random.below(8)});
        },
    };
    for (int step = 0; step < 1500; ++step) {
        const std::int32_t rows = grid.Rows();
        iRow = rows == 0 ? 0 : random.below(rows) + 1;
        iCol = random.below(3) + 1;
        (rows == 0 || random.oneIn(7) ? addRow : random.oneOf(kSteps))();
        if (step % 25 != 0) continue;
        grid.Refresh();
        const Picture kept = shown();
        const RECT place{grid.Left(), grid.Top(), grid.Left() + grid.ScaleWidth(),
                         grid.Top() + grid.ScaleHeight()};
        grid.destroy();
        ASSERT_TRUE(grid.create(form.hWnd(), place));
        settle();
        ASSERT_TRUE(shown().pixels == kept.pixels) << "step " << step;
    }
}

TEST_F(GridTest, PropertiesRedrawMeasureOrDoNeitherAndOtherColoursShowAtOnce) {
    makePair();
    grid.CellText(1, 2, u"longer than the header");
    const std::int32_t width = grid.ColWidth(2), height = grid.RowHeight();
    const struct {
        std::function<void()> change;
        int frames;
    } kCases[] = {
        {[&] { grid.BackColor(grid.BackColor()); }, 1},
        {[&] { grid.HeaderStyle(2); }, 1},
        {[&] { grid.ShowFocus(true); }, 1},
        {[&] { grid.Tip(u"tip"); }, 0},
        {[&] { grid.MultiSelect(true); }, 0},
        {[&] { grid.ScrollOnMouseWheel(false); }, 0},
        {[&] { grid.Font({.Name = u"Arial", .Size = 20}); }, 1},
        {[&] { grid.ApplyFontChanges(); }, 1},
        {[&] { platform::SendMessageW(grid.hWnd(), platform::WM_SYSCOLORCHANGE, 0, 0); }, 1},
    };
    const std::string whole = "FillRect 0,0," + std::to_string(grid.Pic().ScaleWidth()) + "," +
                              std::to_string(grid.Pic().ScaleHeight()) + " ";
    for (const auto& c : kCases) EXPECT_EQ(drawn(c.change, whole), c.frames) << &c - kCases;
    EXPECT_GT(grid.ColWidth(2), width);
    EXPECT_GT(grid.RowHeight(), height);
}

TEST_F(GridTest, PropertiesAreStoredUnlessTheyAreTheDefaults) {
    PropertyBag bag;
    grid.WriteProperties(bag);
    EXPECT_EQ(bag.Count(), 0U);
    const struct {
        TextView sName;
        std::function<std::int32_t()> get;
    } kNumbers[] = {
        {u"OLEDropMode", [&] { return grid.OLEDropMode(); }},
        {u"MinRowHeight", [&] { return grid.MinRowHeight(); }},
        {u"BorderColor", [&] { return grid.BorderColor(); }},
        {u"BackColor", [&] { return grid.BackColor(); }},
        {u"ForeColor", [&] { return grid.ForeColor(); }},
        {u"CellsBorderColor", [&] { return grid.CellsBorderColor(); }},
        {u"SelBackColor", [&] { return grid.SelBackColor(); }},
        {u"SelForeColor", [&] { return grid.SelForeColor(); }},
        {u"HeaderBackColor", [&] { return grid.HeaderBackColor(); }},
        {u"HeaderForeColor", [&] { return grid.HeaderForeColor(); }},
        {u"HeaderStyle", [&] { return grid.HeaderStyle(); }},
        {u"SelectorStyle", [&] { return grid.SelectorStyle(); }},
    };
    const struct {
        TextView sName;
        bool usual;
        std::function<bool()> get;
    } kFlags[] = {
        {u"ScrollOnMouseWheel", true, [&] { return grid.ScrollOnMouseWheel(); }},
        {u"MultiSelect", false, [&] { return grid.MultiSelect(); }},
        {u"ShowFocus", true, [&] { return grid.ShowFocus(); }},
        {u"AllowMultiLineText", false, [&] { return grid.AllowMultiLineText(); }},
        {u"Enabled", true, [&] { return grid.Enabled(); }},
    };
    const auto number = [&](const auto& c) { return static_cast<std::int32_t>(&c - kNumbers) + 1; };
    for (const auto& c : kNumbers) bag.WriteProperty(c.sName, number(c), 0);
    for (const auto& c : kFlags) bag.WriteProperty(c.sName, !c.usual, c.usual);
    bag.WriteTextBytes(u"Tip", u"\u4e2d tip", {});
    bag.WriteProperty(u"Font", StdFont{.Name = u"Arial", .Size = 12}, StdFont());

    grid.ReadProperties(bag);
    PropertyBag written;
    grid.WriteProperties(written);
    for (const auto& c : kNumbers) {
        EXPECT_EQ(c.get(), number(c)) << toUtf8(c.sName);
        EXPECT_EQ(written.ReadProperty(c.sName, 0), number(c)) << toUtf8(c.sName);
    }
    for (const auto& c : kFlags) {
        EXPECT_EQ(c.get(), !c.usual) << toUtf8(c.sName);
        EXPECT_EQ(written.ReadProperty(c.sName, c.usual), !c.usual) << toUtf8(c.sName);
    }
    EXPECT_EQ(grid.Tip(), u"\u4e2d tip");
    EXPECT_EQ(written.ReadTextBytes(u"Tip", {}), u"\u4e2d tip");
    EXPECT_EQ(written.ReadProperty(u"Font", StdFont()), (StdFont{.Name = u"Arial", .Size = 12}));
}

TEST_F(GridTest, ReadingPropertiesSetsTheGridUpAnew) {
    makePair();
    grid.SortByColum(2, true);
    grid.Row(2);
    grid.MinRowHeight(40);
    (void)taken();
    PropertyBag bad;  // no reason to keep the earlier values
    bad.WriteProperty(u"MinRowHeight", 15000, 0);
    bad.WriteProperty(u"OLEDropMode", 0x10001, 0);
    grid.ReadProperties(bad);
    EXPECT_EQ(grid.Cols(), 0);
    EXPECT_EQ(grid.Row(), -1);
    EXPECT_EQ(grid.RowHeight(), 0);
    EXPECT_EQ(grid.MinRowHeight(), 0);
    EXPECT_EQ(grid.OLEDropMode(), 0);
    EXPECT_EQ(taken(), "");
}

TEST_F(GridTest, WorksBeforeItsWindowAndAfter) {
    ctlUniGrid other;
    other.AddColumn({});
    other.AddRow(u"a cell, measured anew");
    other.Row(1);
    ASSERT_TRUE(other.create(form.hWnd(), {0, 0, 30, 100}));
    EXPECT_GT(other.ColWidth(1), 60);
    other.destroy();
    other.AddRow(u"another");
    other.Row(2);
    other.Font({.Name = u"Arial", .Size = 20});
    EXPECT_EQ(other.Rows(), 2);
}

TEST_F(GridTest, MouseAndKeysReachItThroughItsWindows) {
    makePair();
    const int step = grid.RowHeight() - 1;
    int clicks = 0, doubleClicks = 0;
    grid.Click = [&] { ++clicks; };
    grid.DblClick = [&] { ++doubleClicks; };
    std::string keys;
    grid.KeyDown = [&](std::int16_t& KeyCode, std::int16_t&) {
        keys += std::to_string(KeyCode) + " ";
    };
    grid.KeyPress = [&](std::int16_t& KeyAscii) { keys += std::to_string(KeyAscii) + " "; };
    const HWND pic = grid.Pic().hWnd();
    const POINT row2{60, step * 2 + 5};
    click(pic, row2);
    EXPECT_EQ(taken(), "change 2 ");
    EXPECT_EQ(clicks, 1);
    EXPECT_TRUE(grid.HasFocus());
    click(pic, row2, MouseAction::DoubleClick);
    EXPECT_EQ(doubleClicks, 1);
    EXPECT_EQ(clicks, 1);
    platform::test::pressKey(platform::GetFocus(), platform::VK_DOWN);
    platform::test::typeText(platform::GetFocus(), u"x");
    EXPECT_EQ(keys, "40 88 120 ");
    EXPECT_EQ(taken(), "change 3 ");
    move(pic, {grid.GetColX(3) - 2, 5});  // a column's edge
    EXPECT_EQ(grid.Pic().MousePointer(), kCustomPointer);
    move(pic, row2);
    EXPECT_EQ(grid.Pic().MousePointer(), 0);
}

TEST_F(GridTest, TheWheelIsHeardOnceFromEveryWindowInside) {
    makePair();
    int turns = 0;
    bool down = false;
    grid.MouseWheel = [&](auto, auto, float, float, bool bDown) {
        ++turns;
        down = bDown;
    };
    for (const HWND hWnd :
         {grid.Pic().hWnd(), grid.hWnd(), grid.verticalBar().hWnd(), grid.horizontalBar().hWnd()}) {
        grid.VScroll_Value(0);
        turns = 0;
        platform::test::wheel(hWnd, {5, 5}, -120);
        EXPECT_EQ(turns, 1);
        EXPECT_TRUE(down);
        EXPECT_GT(grid.VScroll_Value(), 0);
    }
}

TEST_F(GridTest, BarsOfTheDesktopScroll) {
    EXPECT_EQ(grid.horizontalBar().SmallChange(), 25);
    EXPECT_EQ(grid.horizontalBar().LargeChange(), 100);
    makePair();
    int drags = 0;
    grid.VScroll = [&] { ++drags; };
    const HWND bar = grid.verticalBar().hWnd();
    RECT place;
    ASSERT_TRUE(platform::GetClientRect(bar, place));
    const POINT thumb{place.right / 2, 22}, end{place.right / 2, place.bottom - 4};
    click(bar, end);  // the arrow
    EXPECT_EQ(grid.VScroll_Value(), 1);
    EXPECT_EQ(drags, 0);
    grid.VScroll_Value(0);
    press(bar, thumb);
    move(bar, end, platform::MK_LBUTTON);
    release(bar, end);
    EXPECT_EQ(grid.VScroll_Value(), grid.VScroll_Max());
    EXPECT_EQ(drags, 1);
}

TEST_F(GridTest, DragsPassThrough) {
    std::string heard;
    grid.OLEDropMode(1);
    grid.OLEDragOver = [&](DataObject& Data, std::int32_t& Effect, auto, auto, float x, float,
                           std::int16_t State) {
        heard += "over " + std::to_string(State) + " " + std::to_string(static_cast<int>(x)) + " " +
                 toUtf8(Data.GetText()) + "\n";
        Effect = platform::DROPEFFECT_COPY;
    };
    grid.OLEDragDrop = [&](DataObject& Data, std::int32_t&, auto, auto, float, float) {
        heard += "drop " + std::to_string(Data.Files().size()) + "\n";
    };
    platform::DragContent content;
    content.text = u"\u4e2d";
    content.files = {u"\\home\\a.lng"};
    EXPECT_EQ(platform::test::dragInto(grid.Pic().hWnd(), {7, 8}, content,
                                       platform::DROPEFFECT_COPY, true),
              platform::DROPEFFECT_COPY);
    EXPECT_EQ(heard, "over 0 7 \u4e2d\nover 2 7 \u4e2d\ndrop 1\n");
}

TEST_F(GridTest, EveryMoveOfTheMouseHandsItsTipOver) {
    struct Tips : TipWindow {
        explicit Tips(std::string& heard) : said(heard) {}
        void SetTip(const Text& sTip, std::int32_t lMaxWidth, const std::optional<Text>&) override {
            said += toUtf8(sTip) + " " + std::to_string(lMaxWidth) + " ";
        }
        void UpdateTip(const Text&, std::int32_t, const std::optional<Text>&) override {}
        [[nodiscard]] Text GetTip() const override { return {}; }
        [[nodiscard]] Text GetTipTag() const override { return {}; }
        [[nodiscard]] bool TipIsVisible() const override { return false; }
        std::string& said;
    };
    tipService().m_bTipsActive = true;
    tipService().m_oTipForm = std::make_unique<Tips>(notes);
    grid.Tip(u"Rows");
    move(grid.Pic().hWnd(), {50, 50});
    tipService().m_bTipsActive = false;
    tipService().m_oTipForm = nullptr;
    EXPECT_EQ(taken(), "Rows 300 ");
}

TEST_F(GridTest, HelpersOfTheDesktopSeeATable) {
    makePair();
    grid.AccessibleName(u"Rows");
    grid.SetFocus();
    settle();
    platform::AccessibleTable& table = *grid.accessibleTable();
    EXPECT_EQ(table.currentRow(), -1);
    EXPECT_TRUE(table.selectRow(1));
    EXPECT_EQ(taken(), "change 2 ");
    const auto seen = [&](std::optional<std::pair<int, int>> cell) {
        return platform::test::describeAccessible(grid.hWnd(), cell);
    };
    EXPECT_EQ(seen({}), "table \"Rows\" focusable focused 8 x 5");
    EXPECT_EQ(seen({{-1, 3}}), "column header \"Default\"");
    EXPECT_EQ(seen({{7, 2}}), "cell \"Last\" focusable");
    EXPECT_EQ(seen({{1, 0}}), "cell \"2\" focusable focused selected");
    grid.RowInWords = [&](std::int32_t iRow) -> Text {
        if (iRow == 3) throw Failure(5, u"", u"refused");
        return Text(u"row ").append(grid.CellText(iRow, 1)).append(u", untranslated");
    };
    EXPECT_EQ(seen({{1, 0}}), "cell \"row 2, untranslated\" focusable focused selected");
    EXPECT_EQ(seen({{2, 0}}), "cell \"3\" focusable");  // no failure of the owner
    grid.MultiSelect(true);
    EXPECT_TRUE(table.selectRow(4));  // and a selection by Shift would begin there
    platform::test::setKeysDown(std::vector<std::int32_t>{16});
    platform::test::pressKey(grid.hWnd(), platform::VK_UP);
    EXPECT_EQ(grid.CountSelected(), 2);

    for (const int row : {-1, 1}) {
        const RECT cell = table.cellRect(row, 1);
        const auto at = table.cellAt({(cell.left + cell.right) / 2, (cell.top + cell.bottom) / 2});
        EXPECT_EQ(at.row, row);
        EXPECT_EQ(at.column, 1);
    }
    grid.VScroll_Value(grid.VScroll_Max());
    EXPECT_EQ(table.cellRect(0, 0), RECT());  // out of sight
    EXPECT_EQ(table.cellAt({0, 0}).column, -1);
}

TEST_F(GridTest, HelpersOfTheDesktopHearWhatChanges) {
    makePair();
    grid.RowInWords = [&](std::int32_t iRow) {
        return Text(grid.CellText(iRow, 3))
            .append(grid.CellText(iRow, 5).empty() ? u", untranslated" : u", translated");
    };
    grid.AccessibleName(u"Rows");
    grid.SetFocus();
    settle();
    grid.Refresh();
    platform::test::listenAccessible(true);
    grid.Refresh();  // the first frame that is heard tells of all that there is
    EXPECT_EQ(platform::test::takeAccessibleLog(), "table \"Rows\"\n");
    const struct {
        std::function<void()> change;
        std::string heard;
    } kCases[] = {
        {[&] { grid.Refresh(); }, ""},
        {[&] { grid.Row(2); }, "focus \"Close, untranslated\"\n"},
        {[&] { grid.CellText(2, 5, u"Schlie\u00dfen"); }, "name \"Close, translated\"\n"},
        {[&] { grid.CellText(3, 5, u"x"); }, ""},
        {[&] { grid.MultiSelect(true), grid.Refresh(); }, "state \"Close, translated\"\n"},
        {[&] { grid.RowSel(2, true); }, "state \"Close, translated\"\n"},
        {[&] { grid.RowSel(2, true); }, ""},
        {[&] { platform::test::pressKey(grid.hWnd(), platform::VK_DOWN); },
         "focus \"Save, translated\"\n"},
        {[&] { grid.SortByColum(2, false); },
         "table \"Rows\"\nname \"Done, translated\"\nstate \"Done, translated\"\n"},
        {[&] { grid.Clear(); }, "table \"Rows\"\n"},
    };
    for (const auto& c : kCases) {
        c.change();
        EXPECT_EQ(platform::test::takeAccessibleLog(), c.heard) << &c - kCases;
    }
    platform::test::listenAccessible(false);
}

}  // namespace
}  // namespace test
