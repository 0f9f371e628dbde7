#include "workbench/logic/saveTranslation.h"

#include "langfile/simpleDocument_test.h"
#include "platform/base/codepages.h"
#include "support/TempDir.h"
#include "support/raised.h"
#include "workbench/logic/columns.h"
#include "workbench/logic/loadPair.h"
#include "workbench/logic/recording_test.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace {

void save(const GridData& grid, const test::TempDir& dir, bool bKeepEmpty = false) {
    JobListener silent;
    saveTranslation(grid, dir.inside("trans.lng"), bKeepEmpty, silent);
}

TEST(saveTranslation, TellsItsStepsInOrder) {
    const test::TempDir dir;
    ListGrid grid{u"1\tS\ta\tOpen\tOpenen", u"2\t\tb\tClose\t", u"3\tS\tc\tCut\tKnippen"};
    RecordingListener listener;
    saveTranslation(grid, dir.inside("trans.lng"), true, listener);
    EXPECT_EQ(listener.heard, "wait[Saving file...] 25 50 75 0 close");
    EXPECT_EQ(dir.read("trans.lng"), "b=\r\n[S]\r\na=Openen\r\nc=Knippen");

    listener.heard.clear();
    const test::TempDir folder;
    EXPECT_EQ(test::raised([&] {
                  saveTranslation(grid, folder.inside("no such directory/x"), true, listener);
              }),
              ": Cannot Save File!");
    EXPECT_EQ(listener.heard, "wait[Saving file...] 25 50 75 close");
}

TEST(saveTranslation, NamesTheFileThatCannotBeSavedAndLeavesIt) {
    const test::TempDir dir;
    std::filesystem::create_directory(dir.path() / "folder");
    const std::pair<std::string, std::string> kFiles[] = {
        {"half a mark", "\xFF"},
        {"too long", std::string(5 * 1024 * 1024 + 1, 'x')},
        {"trailing ", "a=1"},  // the document would take the blank off and write another file
        {"trailing", "a=other"},
    };
    for (const auto& [name, bytes] : kFiles) dir.write(name, bytes);
    const ListGrid grid{u"1\t\ta\tOpen\tOpenen"};
    const auto raisedBy = [&](const Text& sFile) {
        JobListener silent;
        return test::raised([&] { saveTranslation(grid, sFile, false, silent); });
    };
    for (const char* const name : {"folder", "half a mark", "too long", "trailing "}) {
        EXPECT_EQ(raisedBy(dir.inside(name)), ": Cannot Save File!") << name;
    }
    EXPECT_EQ(raisedBy(u" "), "clsFileIniEx.Save: I need a file!");
    for (const auto& [name, bytes] : kFiles) EXPECT_TRUE(dir.read(name) == bytes) << name;
}

Text anyFile(std::mt19937& random) {
    Text text;
    for (std::size_t lines = random() % 30; lines > 0; --lines) {
        switch (random() % 4) {
        case 0:
            // Tabs in a name cut its rows' cells: without a key, or with that of another section.
            text += anyOf(random, {u"[A]", u"[ a ]", u"[B] tail", u"[C]", u"[B\t]", u"[a\tk]"});
            break;
        case 1:
            text += anyOf(random, {u"", u"; note", u"=x", u"[", u"  "});
            break;
        default:
            text += Text(anyOf(random, {u"k", u" K ", u"l", u"m\tn", u"n"})) + u'=' +
                    Text(anyOf(random, {u"", u" ", u"x", u" Y", u"default"}));
        }
        text += u"\r\n";
    }
    return text;
}

TEST(saveTranslation, AgreesWithAPlainMergeAndComesToRest) {
    std::mt19937 random(4);
    const test::TempDir dir;
    for (int round = 0; round < 300; ++round) {
        const Text mainText = anyFile(random);
        const Text transText = anyFile(random);
        const bool keepEmpty = round % 2 == 1;
        dir.write("main.lng", toUtf8(mainText));
        dir.write("trans.lng", toUtf8(transText));
        ListGrid grid;
        PairList list(grid);
        JobListener silent;
        loadPair(list, {dir.inside("main.lng"), dir.inside("trans.lng"), round % 5 == 0}, silent);

        simple::Document onDisk;
        onDisk.parse(transText);
        simple::Document rows;
        for (std::int32_t i = 1; i <= grid.Rows(); ++i) {
            rows.addString(Text(grid.CellText(i, kSectionColumn)),
                           Text(grid.CellText(i, kKeyColumn)),
                           Text(grid.CellText(i, kTranslationColumn)));
        }
        rows.mergeInto(onDisk);
        save(grid, dir, keepEmpty);
        const std::string saved = dir.read("trans.lng");
        ASSERT_EQ(saved, toUtf8(onDisk.written(u"\r\n", keepEmpty))) << toUtf8(transText);

        loadPair(list, {dir.inside("main.lng"), dir.inside("trans.lng"), false, false}, silent);
        save(grid, dir, keepEmpty);
        const std::string again = dir.read("trans.lng");
        save(grid, dir, keepEmpty);
        ASSERT_EQ(dir.read("trans.lng"), again) << toUtf8(transText);
    }
}

}  // namespace
