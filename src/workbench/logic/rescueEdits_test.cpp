#include "workbench/logic/rescueEdits.h"

#include "platform/base/testhooks.h"
#include "support/TempDir.h"
#include "support/raised.h"
#include "workbench/logic/editRow.h"
#include "workbench/logic/fillDuplicates.h"
#include "workbench/logic/loadPair.h"
#include "workbench/logic/recording_test.h"

#include <gtest/gtest.h>

namespace {

using platform::test::FileOp;

class RescueEdits : public testing::Test {
protected:
    void edit(std::int32_t iRow, TextView s) { confirmEdit(list, iRow, s, listener); }

    test::TempDir dir;
    JobListener listener;
    ListGrid grid{u"1\t\ta\tOpen\t", u"2\tS\tb\tOpen\tOpenen", u"3\tS\t\"c\"\tOpen\t",
                  u"4\tS\td\tQuit\tEinde", u"5\tS\te\tQuit\t"};
    PairList list{grid};
};

TEST_F(RescueEdits, HoldsEachChangedRowOnceAndWhatWasClearedLast) {
    EXPECT_EQ(changedAsEdits(list), "");
    edit(4, u"Einde") /* no change */;
    EXPECT_EQ(changedAsEdits(list), "");
    edit(4, u"");
    edit(1, u"O\u00E9\"n");  // fills row 3
    edit(1, u"Nog eens");
    EXPECT_EQ(changedAsEdits(list),
              "{\"section\":\"\",\"key\":\"a\",\"translation\":\"Nog eens\"}\n"
              "{\"section\":\"S\",\"key\":\"\\\"c\\\"\",\"translation\":\"O\xC3\xA9\\\"n\"}\n"
              "{\"section\":\"S\",\"key\":\"d\",\"translation\":\"\"}\n");
}

TEST_F(RescueEdits, HoldsAnOpenEditInPlaceOfItsRow) {
    edit(5, u"Stop");
    edit(4, u"");
    const std::string cleared = "{\"section\":\"S\",\"key\":\"d\",\"translation\":\"\"}\n";
    EXPECT_EQ(changedAsEdits(list, OpenEdit{5, u"Halt\r\nnu"}),
              "{\"section\":\"S\",\"key\":\"e\",\"translation\":\"Halt nu\"}\n" + cleared);
    EXPECT_EQ(changedAsEdits(list, OpenEdit{5, u""}),
              cleared + "{\"section\":\"S\",\"key\":\"e\",\"translation\":\"\"}\n");
}

TEST_F(RescueEdits, HoldsWhatTheWholeListFillDidAndForgetsItAtALoad) {
    EXPECT_EQ(pvFillAllDuplicates(list, listener), 3);
    EXPECT_EQ(std::ranges::count(changedAsEdits(list), '\n'), 3);
    dir.write("main.lng", "a=Open\n");
    dir.write("trans.lng", "");
    loadPair(list, {.sMainFile = dir.inside("main.lng"), .sTransFile = dir.inside("trans.lng")},
             listener);
    EXPECT_EQ(changedAsEdits(list), "");
}

TEST_F(RescueEdits, NeverWritesOverAnotherFile) {
    list.m_sLastTransFile = dir.inside("dutch.v2.lng");
    const Text sFolder = dir.inside("deep") + u"\\state";
    EXPECT_EQ(rescueEdits(list, sFolder, u"T"), u"") << "nothing has changed";
    EXPECT_FALSE(std::filesystem::exists(dir.path() / "deep"));
    edit(5, u"Stop");
    EXPECT_EQ(rescueEdits(list, sFolder, u"T"), sFolder + u"\\dutch.v2-T.jsonl");
    edit(5, u"Halt");
    EXPECT_EQ(rescueEdits(list, sFolder, u"T"), sFolder + u"\\dutch.v2-T-2.jsonl");
    EXPECT_EQ(dir.read("deep/state/dutch.v2-T.jsonl"),
              "{\"section\":\"S\",\"key\":\"e\",\"translation\":\"Stop\"}\n");
}

TEST_F(RescueEdits, LeavesNoHalfFileBehind) {
    const platform::test::HookScope hooks;
    edit(5, u"Stop");
    const auto attempt = [&] { (void)rescueEdits(list, dir.inside("state"), u"T"); };
    platform::test::failNext(FileOp::Open);
    EXPECT_EQ(test::raised(attempt), ": Error writing file");
    platform::test::failWritesAfter(10);
    EXPECT_EQ(test::raised(attempt), ": Error writing file");
    EXPECT_TRUE(std::filesystem::is_empty(dir.path() / "state"));
    platform::test::clearFaults();
    EXPECT_EQ(test::raised([&] { (void)rescueEdits(list, u"", u"T"); }), ": Error writing file");
    EXPECT_EQ(test::raised(attempt), "nothing");
}

}  // namespace
