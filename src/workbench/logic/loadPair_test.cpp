#include "workbench/logic/loadPair.h"

#include "support/TempDir.h"
#include "workbench/logic/columns.h"
#include "workbench/logic/editRow.h"
#include "workbench/logic/recording_test.h"

#include <gtest/gtest.h>

namespace {

constexpr const char* kLoading =
    "measure measure measure measure measure measure wait[Loading file...] ";
constexpr const char* kFilling = "wait[Searching for untranslated duplicates...\r\n"
                                 "Press SHIFT to cancel...] ";

class LoadPair : public testing::Test {
protected:
    void SetUp() override {
        dir.write("main.lng", "[S]\na=Open\nb=Open\nc=Same\nd=Other\n");
        dir.write("trans.lng", "[S]\na=Openen\nc=same\nd=Anders\n");
        grid.drawn = &listener;
    }
    // What was told, or the message raised.
    std::string load(std::string_view mainName, std::string_view transName,
                     bool bFillDuplicates = true) {
        listener.heard.clear();
        const Text sMainFile = dir.inside(mainName);
        const Text sTransFile = dir.inside(transName);
        try {
            loadPair(list,
                     {.sMainFile = sMainFile,
                      .sTransFile = sTransFile,
                      .bFillDuplicates = bFillDuplicates},
                     listener);
        } catch (const Failure& failure) {
            listener.say(toUtf8(failure.message));
        }
        return listener.heard;
    }

    test::TempDir dir;
    RecordingListener listener;
    ListGrid grid;
    PairList list{grid};
};

TEST_F(LoadPair, BuildsColumnsRowsAndColoursInOrder) {
    list.m_lColDefaultWidth = 200;
    list.m_lColTransWidth = 300;
    EXPECT_EQ(load("main.lng", "trans.lng", false),
              kLoading + std::string("0 50 0 measure close no-save focus"));
    EXPECT_EQ(dump(grid), "1|S|a|Open|Openen\n2|S|b|Open|\n3|S|c|Same|same\n4|S|d|Other|Anders\n");
    std::string columns;
    for (std::int32_t c = 1; c <= grid.Cols(); ++c) {
        columns += toUtf8(grid.ColText(c)) + " " + std::to_string(grid.column(c).iMaxWidth) + " ";
    }
    EXPECT_EQ(columns, "Row -1 Section -1 Key -1 Default 200 Translation 300 ");
    const std::int32_t colors[] = {-1, 65535, 14548991, -1};
    for (std::int32_t i = 1; i <= 4; ++i) {
        EXPECT_EQ(grid.CellBackColor(i, kTranslationColumn), colors[i - 1]) << "row " << i;
        EXPECT_EQ(grid.CellBackColor(i, kDefaultColumn), -1) << "row " << i;
    }
}

TEST_F(LoadPair, SearchesDuplicatesOnceForAPairOfFiles) {
    const std::string told = load("main.lng", "trans.lng");
    EXPECT_EQ(told, kLoading + std::string("0 50 0 measure close no-save ") + kFilling +
                        "20 40 60 80 measure 0 close save focus");
    EXPECT_EQ(grid.CellText(2, kTranslationColumn), u"Openen");
    EXPECT_TRUE(list.m_bDirty);

    EXPECT_EQ(load("main.lng", "trans.lng").find("Searching"), std::string::npos);
    EXPECT_EQ(grid.CellText(2, kTranslationColumn), u"");
    EXPECT_FALSE(list.m_bDirty);

    dir.write("other.lng", "[S]\na=Ouvrir\n");
    EXPECT_NE(load("main.lng", "other.lng").find("Searching"), std::string::npos);
    EXPECT_EQ(grid.CellText(2, kTranslationColumn), u"Ouvrir");
}

// The notes about pending rows belong to the rows of one load.
TEST_F(LoadPair, ForgetsWhichRowsWereWithoutTranslation) {
    (void)load("main.lng", "trans.lng", false);
    confirmEdit(list, 4, u"x", listener);
    dir.write("main.lng", "[S]\na=Other\nb=Other\nc=Open\n");
    (void)load("main.lng", "trans.lng", false);
    confirmEdit(list, 1, u"y", listener);
    EXPECT_EQ(dump(grid), "1|S|a|Other|y\n2|S|b|Other|y\n3|S|c|Open|same\n");
}

TEST_F(LoadPair, KeepsWidthsSetByHandAndTheNamesOfTheLastLoad) {
    (void)load("main.lng", "trans.lng");
    grid.ColWidth(kDefaultColumn, 123);
    grid.ColWidth(kTranslationColumn, 456);
    (void)load("main.lng", "trans.lng");
    EXPECT_EQ(grid.ColWidth(kDefaultColumn), 123);
    EXPECT_EQ(grid.ColWidth(kTranslationColumn), 456);

    grid.ColWidth(kDefaultColumn, 1);
    (void)load("main.lng", "nosuch.lng");  // takes the width and leaves no row
    EXPECT_EQ(grid.ColWidth(kDefaultColumn), 1);
    grid.ColWidth(kDefaultColumn, 77);
    (void)load("main.lng", "trans.lng");  // an empty list: the width in it does not count
    EXPECT_EQ(grid.ColWidth(kDefaultColumn), 1);
    EXPECT_EQ(list.m_sLastMainFile, dir.inside("main.lng"));
    EXPECT_EQ(list.m_sLastTransFile, dir.inside("trans.lng"));
}

TEST_F(LoadPair, LeavesAllAsItIsForOneNameTwice) {
    (void)load("main.lng", "trans.lng");
    const std::string before = dump(grid);
    EXPECT_EQ(load("main.lng", "main.lng"), "Please choose two different files");
    EXPECT_EQ(dump(grid), before);
    EXPECT_TRUE(list.m_bDirty);
    dir.write("MAIN.lng", "[S]\na=Ouvrir\n");  // case counts: another file
    (void)load("main.lng", "MAIN.lng", false);
    EXPECT_EQ(grid.CellText(1, kTranslationColumn), u"Ouvrir");
}

TEST_F(LoadPair, ClosesWaitAndBracketWhenAFileCannotBeRead) {
    (void)load("main.lng", "trans.lng");
    const std::string failed =
        kLoading + std::string("0 50 close measure Please load the file first!");
    EXPECT_EQ(load("main.lng", "nosuch.lng"), failed);
    EXPECT_EQ(grid.Rows(), 0);
    EXPECT_EQ(grid.Cols(), 5);
    EXPECT_TRUE(list.m_bDirty);
    EXPECT_EQ(list.m_sLastTransFile, dir.inside("trans.lng"));
    listener.heard.clear();
    grid.AddRow(u"1");
    EXPECT_EQ(listener.heard, "measure");  // the grid draws again
}

}  // namespace
