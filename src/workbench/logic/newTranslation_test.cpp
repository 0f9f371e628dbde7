#include "workbench/logic/newTranslation.h"

#include "support/TempDir.h"
#include "support/raised.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace {

TEST(newTranslationPath, LiesBesideTheMainFileWithItsExtension) {
    const struct {
        TextView sMainFile;
        TextView sName;
        const char* outcome;  // the path, or what is raised
    } kCases[] = {
        {u"\\a\\english.lng", u"dutch", "\\a\\dutch.lng"},
        {u"\\a\\english.lng", u"  dutch ", "\\a\\dutch.lng"},
        {u"\\a\\english.lng", u"\\b\\c\\dutch.txt", "\\a\\dutch.lng"},
        {u"\\a\\english.lng", u"b/dutch.txt", "\\a\\dutch.lng"},
        {u"\\a\\english.lng", u"pt.br.x", "\\a\\pt.br.lng"},
        {u"english.lng", u"dutch", "dutch.lng"},
        {u"\\a.b\\english", u"dutch", "\\a.b\\dutch."},
        {u"\\a\\english.lng", u"", ": Please write the name of the new file"},
        {u"\\a\\english.lng", u"   ", ": Please write the name of the new file"},
        {u"\\a\\english.lng", u"ENGLISH.txt", ": Please choose two different files"},
        {u"\\a\\english.lng", u"\\b\\english", ": Please choose two different files"},
    };
    for (const auto& c : kCases) {
        Text path;
        const std::string raised =
            test::raised([&] { path = newTranslationPath(c.sMainFile, c.sName); });
        EXPECT_EQ(raised == "nothing" ? toUtf8(path) : raised, c.outcome)
            << toUtf8(c.sMainFile) << " " << toUtf8(c.sName);
    }
}

TEST(newTranslationPath, IsNeverTheMainFileUnderAnotherName) {
    const test::TempDir dir;
    dir.write("english.lng", "k=1");
    std::filesystem::create_symlink("english.lng", dir.path() / "soft.lng");
    std::filesystem::create_hard_link(dir.path() / "english.lng", dir.path() / "hard.lng");
    for (const TextView sName : {u"soft", u"hard"}) {
        EXPECT_EQ(test::raised([&] { (void)newTranslationPath(dir.inside("english.lng"), sName); }),
                  ": Please choose two different files");
    }
}

TEST(requireMainFile, RefusesWhatIsNoFile) {
    const test::TempDir dir;
    dir.write("english.lng", "");
    EXPECT_EQ(test::raised([] { requireMainFile(u""); }),
              ": Please choose the main translation file");
    for (const char* const name : {"nosuch.lng", "."}) {
        EXPECT_EQ(test::raised([&] { requireMainFile(dir.inside(name)); }),
                  ": The main translation file doesn't exist");
    }
    EXPECT_EQ(test::raised([&] { requireMainFile(dir.inside("english.lng")); }), "nothing");
}

TEST(newTranslation, ReplacesAFileOfThatName) {
    const test::TempDir dir;
    const std::string bytes("\xEF\xBB\xBFk=\x80\0\r\n", 9);
    dir.write("english.lng", bytes);
    dir.write("dutch.lng", "a much longer file than the other one");
    createCopiedTranslation(dir.inside("english.lng"), dir.inside("dutch.lng"));
    EXPECT_EQ(dir.read("dutch.lng"), bytes);
    createEmptyTranslation(dir.inside("dutch.lng"));
    EXPECT_EQ(dir.read("dutch.lng"), "");
    EXPECT_EQ(dir.read("english.lng"), bytes);
}

TEST(newTranslation, RaisesWhatCannotBeWritten) {
    const test::TempDir dir;
    dir.write("english.lng", "k=1");
    std::filesystem::create_directory(dir.path() / "folder.lng");
    const Text folder = dir.inside("folder.lng");
    EXPECT_EQ(test::raised([&] { createEmptyTranslation(folder); }),
              "ufu_StringToTextFile: Error writing file");
    EXPECT_EQ(test::raised([&] { createCopiedTranslation(dir.inside("english.lng"), folder); }),
              ": Error writing file");
    EXPECT_EQ(test::raised([&] { createCopiedTranslation(dir.inside("gone.lng"), folder); }),
              ": Error writing file");
}

}  // namespace
