#include "grid/store/clsCtlUniGrid_Column.h"

#include "grid/store/gridDump_test.h"

#include <gtest/gtest.h>

class GridPicture {};

namespace {

using Column = clsCtlUniGrid_Column;

std::string dumpRows(const Column& column) {
    std::string s;
    for (std::int32_t i = 1; i <= column.Rows(); ++i) {
        s += (i > 1 ? ", " : "") + dump(column.record(i));
    }
    return s;
}

void addTexts(Column& column, std::initializer_list<TextView> texts) {
    for (const TextView s : texts) column.AddRow(s);
}

TEST(clsCtlUniGrid_Column, ConvertsWhatIsAddedAndSetByItsType) {
    const std::string kNo = "13 : Type mismatch";
    const struct {
        std::int32_t iType;
        bool bAllowEmptyNumbers;
        GridValue value;
        std::string added, set;
    } kCases[] = {
        {0, true, u"x", "text x", "text x"},
        {0, true, 5, "text 5", "text 5"},
        {0, true, {}, "text ", "text "},
        {1, true, u"5", "num 5", "num 5"},
        {1, true, 5, "num 5", "num 5"},
        {1, true, {}, "num 0", "num 0"},
        {1, true, u"", kNo, "text "},
        {1, false, u"", kNo, kNo},
        {1, true, u" ", kNo, kNo},
        {1, true, u"five", kNo, kNo},
        {2, true, -3, "true", "true"},
        {2, true, u"false", "false", "false"},
        {2, true, u"", kNo, kNo},
        {3, true, 7, "empty", "int 7"},
        {3, true, false, "empty", "false"},
        {3, true, u"y", "empty", "text y"},
    };
    const char* const kDefaults[] = {"text ", "int 0", "false", "empty"};
    for (const auto& c : kCases) {
        Column column;
        column.iType = c.iType;
        column.bAllowEmptyNumbers = c.bAllowEmptyNumbers;
        column.AddRow();
        EXPECT_EQ(dumpRows(column), kDefaults[c.iType]);
        EXPECT_EQ(dumpOf([&] {
                      column.AddRow(c.value);
                      return column.Value(2);
                  }),
                  c.added);
        EXPECT_EQ(dumpOf([&] {
                      column.Value(1, c.value);
                      return column.Value(1);
                  }),
                  c.set);
        EXPECT_EQ(column.Rows(), c.added == kNo ? 1 : 2);
    }
}

TEST(clsCtlUniGrid_Column, GrowsInStepsOf25AndRaisesOutsideItsArray) {
    Column column;
    EXPECT_EQ(column.capacity(), 1);
    for (std::int32_t rows = 1; rows <= 1000; ++rows) {
        column.AddRow();
        EXPECT_EQ(column.capacity(), rows == 1 ? 1 : (rows - 2) / 25 * 25 + 26);
    }
    column.RemoveRow();
    EXPECT_EQ(column.capacity(), 1001);
    const std::string kOutside = "9 : Subscript out of range";
    for (const std::int32_t iRow : {0, -1, 1002, INT32_MIN, INT32_MAX}) {
        EXPECT_EQ(dumpOf([&] { return column.record(iRow); }), kOutside);
        EXPECT_EQ(dumpOf([&] { column.Value(iRow, u"x"); }), kOutside);
        EXPECT_EQ(dumpOf([&] { column.BackColor(iRow, 1); }), kOutside);
        EXPECT_EQ(dumpOf([&] { column.Tag(iRow, {}); }), kOutside);
        EXPECT_EQ(dumpOf([&] { column.OffsetRow(iRow, 0); }), kOutside);
        EXPECT_EQ(dumpOf([&] { column.SwapRows(1, iRow); }), kOutside);
    }
    column.Value(1001, u"behind the last row");  // inside the array
    EXPECT_EQ(dumpOf([&] { return column.Value(1001); }), "text behind the last row");
    EXPECT_EQ(column.Rows(), 999);
}

TEST(clsCtlUniGrid_Column, ARemovedRowShowsNothingInTheNextOne) {
    Column column;
    addTexts(column, {u"a", u"b", u"c"});
    GridCell everyField;
    everyField.Value = u"full";
    everyField.BackColor = 1;
    everyField.ForeColor = 2;
    everyField.Picture = {std::make_shared<GridPicture>(), false, true, 3, 4, 5};
    everyField.Selected = true;
    everyField.Tag = u"tag";
    everyField.TextHeight = 6;
    everyField.CellHeight = 7;
    everyField.OffsetRow = 8;
    column.record(2, everyField);
    const std::string full = "text full back 1 fore 2 picture opaque grayed x 3 y 4 transparent 5 "
                             "selected tag text tag textheight 6 height 7 offset 8";
    EXPECT_EQ(dumpRows(column), "text a, " + full + ", text c");
    column.RemoveRow(2);
    EXPECT_EQ(dumpRows(column), "text a, text c");
    EXPECT_EQ(dump(column.record(3)), full);  // kept until it is overwritten
    column.AddRow(u"d");
    EXPECT_EQ(dumpRows(column), "text a, text c, text d");

    column.RemoveRow(3);
    column.RemoveRow();
    column.RemoveRow();
    column.RemoveRow();  // none left
    column.RemoveRow(1);
    EXPECT_EQ(column.Rows(), 0);
    column.iType = 3;
    column.AddRow();
    EXPECT_EQ(dumpRows(column), "empty");
}

TEST(clsCtlUniGrid_Column, HoldsPicturesAsLongAsTheirRecordsAndClearsAll) {
    Column column;
    addTexts(column, {u"a", u"b"});
    const auto picture = std::make_shared<GridPicture>();
    column.SetPicture(1, picture, {.bPicGrayed = true, .lPicXTransp = 9});
    column.SetPicture(2, picture, {.bPicTransparent = false});
    EXPECT_TRUE(column.HasPicture(1));
    EXPECT_EQ(picture.use_count(), 3);
    column.SetPicture(1, nullptr, {.lPicYTransp = 4});  // fields that are not given stay
    EXPECT_FALSE(column.HasPicture(1));
    EXPECT_EQ(dumpRows(column), "text a grayed x 9 y 4, text b picture opaque");
    column.RemoveRow(2);
    EXPECT_EQ(picture.use_count(), 2);  // in the slot behind the last row
    column.AddRow();
    EXPECT_EQ(picture.use_count(), 1);
    column.SetPicture(1, picture);
    column.OffsetRow(2, 5);
    column.iMaxWidth = column.iCurrentWidth = 70;
    column.ClearRows();
    EXPECT_EQ(picture.use_count(), 1);
    EXPECT_EQ(column.capacity(), 1);
    EXPECT_EQ(column.iCurrentWidth, 0);
    EXPECT_EQ(column.iMaxWidth, 70);
    addTexts(column, {u"c", u"d"});
    EXPECT_EQ(dumpRows(column), "text c, text d");
}

TEST(clsCtlUniGrid_Column, ReordersWholeRecords) {
    const struct {
        TextView order, separator;
        std::string rows;
    } kCases[] = {
        {u"3;1;2;", u";", "text c offset 3, text a back 1, text b tag int 2"},
        {u" 2 ;1;3.0;;", u";", "text b tag int 2, text a back 1, text c offset 3"},
        {u"3, 2, 1", u", ", "text c offset 3, text b tag int 2, text a back 1"},
        {u"2;2;2", u";", "text b tag int 2, text b tag int 2, text b tag int 2"},
        {u"4;4;1", u";", "empty, empty, text a back 1"},  // a slot behind the last row
        {u"3;1", u";", "9 : Subscript out of range"},
        {u"", u";", "9 : Subscript out of range"},
        {u"3;1;", u";", "13 : Type mismatch"},
        {u"1;x;3", u";", "13 : Type mismatch"},
        {u"1;2;27", u";", "9 : Subscript out of range"},
        {u"0;1;2", u";", "9 : Subscript out of range"},
        {u"3;1;2;", u"", "13 : Type mismatch"},
    };
    for (const auto& c : kCases) {
        Column column;
        addTexts(column, {u"a", u"b", u"c"});
        column.BackColor(1, 1);
        column.Tag(2, 2);
        column.OffsetRow(3, 3);
        const std::string before = dumpRows(column);
        const std::string result = dumpOf([&] { column.z_SetRowsOrder(c.order, c.separator); });
        EXPECT_EQ(result == "done" ? dumpRows(column) : result, c.rows) << toUtf8(c.order);
        if (result != "done") {
            EXPECT_EQ(dumpRows(column), before);
        }
    }
    Column column;
    addTexts(column, {u"a", u"b"});
    column.Tag(2, 2);
    column.z_SetRowsOrder(u"2;2", u";");
    column.CellText(1, u"z");  // the two rows that came from one are apart
    column.Tag(1, {});
    EXPECT_EQ(dumpRows(column), "text z, text b tag int 2");
}

TEST(clsCtlUniGrid_Column, GivesAndTakesViewsOfItsOwnTexts) {
    Column column;
    addTexts(column, {u"first text", u"second", u""});
    const TextView first = column.CellText(1);
    for (int i = 0; i < 100000; ++i) column.AddRow(u"more");
    EXPECT_EQ(first.data(), column.CellText(1).data());
    column.CellText(2, first);
    column.CellText(3, column.CellText(2).substr(6));
    column.CellText(1, column.CellText(1).substr(1, 4));  // overlaps itself
    EXPECT_EQ(toUtf8(column.CellText(1)), "irst");
    EXPECT_EQ(toUtf8(column.CellText(2)), "first text");
    EXPECT_EQ(toUtf8(column.CellText(3)), "text");
    EXPECT_EQ(dumpOf([&] {
                  column.iType = 1;
                  column.Value(1, 5);
                  return column.CellText(1);
              }),
              "13 : Type mismatch");
}

TEST(clsCtlUniGrid_Column, ShowsLentTextsWithoutCopyOrChange) {
    const Text words = u"open close save";
    const auto text = std::make_shared<const Text>(Text(100000, u'-') + words);
    const TextView view = TextView(*text).substr(100000);
    Column column;
    column.lendText(nullptr);
    column.lendText(std::make_shared<const Text>());
    column.lendText(text);
    addTexts(column, {view.substr(0, 4), u"own", view.substr(5, 5)});
    EXPECT_EQ(column.CellText(1).data(), view.data());
    column.CellText(2, column.CellText(3));
    column.CellText(1, u"shut");  // fits, but not there
    column.CellText(3, column.CellText(3).substr(1));
    column.CellText(3, u"x");
    EXPECT_EQ(dumpRows(column), "text shut, text close, text x");
    EXPECT_EQ(text->substr(100000), words);
    EXPECT_EQ(text.use_count(), 2);

    for (int i = 0; i < 20000; ++i) column.CellText(1, i % 2 == 0 ? u"short" : u"longer");
    EXPECT_EQ(text.use_count(), 1);  // what was left in use has been copied
    EXPECT_EQ(dumpRows(column), "text longer, text close, text x");
    column.lendText(text);
    column.ClearRows();
    EXPECT_EQ(text.use_count(), 1);
}

TEST(clsCtlUniGrid_Column, TextsThatWereReplacedDoNotAddUp) {
    Column column;
    const Text longText(300000, u'x');  // longer than a block of the arena
    addTexts(column, {u"kept", u"edited", u"grows"});
    for (std::size_t i = 0; i < 1000000; ++i) {
        column.CellText(2, i % 2 == 0 ? u"short" : u"quite a bit longer than that");
    }
    for (std::size_t i = 0; i < 200; ++i) {
        column.CellText(3, TextView(longText).substr(0, 1000 + i * 1000));
        column.AddRow(longText);
        column.RemoveRow();
    }
    EXPECT_EQ(toUtf8(column.CellText(1)), "kept");
    EXPECT_EQ(toUtf8(column.CellText(2)), "quite a bit longer than that");
    EXPECT_EQ(column.CellText(3).size(), 200000U);
    EXPECT_LT(column.memoryHeld(), 4U * (300000 + 200000) * sizeof(char16_t));
}

}  // namespace
