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
        TextView path;
    } kCases[] = {
        {u"\\a\\english.lng", u"  dutch ", u"\\a\\dutch.lng"},
        {u"\\a\\english.lng", u"\\b\\c\\dutch.txt", u"\\a\\dutch.lng"},
        {u"\\a\\english.lng", u"b/dutch.txt", u"\\a\\dutch.lng"},
        {u"english.lng", u"dutch", u"dutch.lng"},
        {u"\\a.b\\english", u"dutch", u"\\a.b\\dutch."},
    };
    for (const auto& c : kCases) {
        EXPECT_EQ(newTranslationPath(c.sMainFile, c.sName), c.path) << toUtf8(c.sName);
    }
}

TEST(newTranslationPath, IsNeverTheMainFileUnderAnotherName) {
    const test::TempDir dir;
    dir.write("english.lng", "k=1");
    std::filesystem::create_symlink("english.lng", dir.path() / "soft.lng");
    std::filesystem::create_hard_link(dir.path() / "english.lng", dir.path() / "hard.lng");
    for (const TextView sName : {u"soft", u"hard", u"ENGLISH.txt", u"\\b\\english"}) {
        EXPECT_EQ(test::raised([&] { (void)newTranslationPath(dir.inside("english.lng"), sName); }),
                  ": Please choose two different files");
    }
}

}  // namespace
