#include "platform/window/settings.h"

#include "platform/window/testhooks.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace platform;

namespace {

class Settings : public testing::Test {
public:
    Settings() { platform::test::setSettingsFolder(dir.path().string()); }
    platform::test::WindowHookScope hooks;
    ::test::TempDir dir;
};

}  // namespace

TEST_F(Settings, KeepWhatWasSavedApartByApplicationSectionAndKey) {
    EXPECT_EQ(GetSetting(u"Quillmere", u"Settings", u"ColDefaultWidth", u"200"), u"200");
    EXPECT_TRUE(SaveSetting(u"Quillmere", u"Settings", u"ColDefaultWidth", u"310"));
    EXPECT_TRUE(SaveSetting(u"Quillmere", u"Settings", u"EmptyTrans", u""));
    EXPECT_TRUE(SaveSetting(u"Quillmere", u"Other", u"ColDefaultWidth", u"7"));
    EXPECT_TRUE(SaveSetting(u"Another", u"Settings", u"ColDefaultWidth", u"8"));
    EXPECT_EQ(GetSetting(u"Quillmere", u"Settings", u"ColDefaultWidth", u"200"), u"310");
    EXPECT_EQ(GetSetting(u"Quillmere", u"Settings", u"EmptyTrans", u"1"), u"") << "stored as empty";
    EXPECT_EQ(GetSetting(u"Quillmere", u"Other", u"ColDefaultWidth"), u"7");
    EXPECT_EQ(GetSetting(u"Another", u"Settings", u"ColDefaultWidth"), u"8");
    EXPECT_TRUE(SaveSetting(u"Quillmere", u"Settings", u"ColDefaultWidth", u"4"));
    EXPECT_EQ(GetSetting(u"Quillmere", u"Settings", u"ColDefaultWidth"), u"4");
}

TEST_F(Settings, HoldAnyText) {
    const Text kTexts[] = {
        u"a, b; \"c\" = [d] \\ % %0041",
        u"  blanks  ",
        u"line\r\nend\t",
        u"\u0416\u4E2D",
        u"\xD83D\xDE00",
        u"\xD800 alone",
        Text(u"nul\0l", 5),
        u"@Variant(x)",
        Text(5000, u'x'),
    };
    for (const Text& text : kTexts) {
        EXPECT_TRUE(SaveSetting(u"App", u"S", u"K", text));
        EXPECT_EQ(GetSetting(u"App", u"S", u"K"), text) << toUtf8(text);
        const Text name = text.substr(0, 50);
        EXPECT_TRUE(SaveSetting(u"App", name, name, u"found"));
        EXPECT_EQ(GetSetting(u"App", name, name), u"found") << toUtf8(name);
    }
    EXPECT_TRUE(SaveSetting(u"App", u"a/b", u"c", u"1"));
    EXPECT_EQ(GetSetting(u"App", u"a", u"b/c", u"none"), u"none");
    EXPECT_TRUE(SaveSetting(u"../x", u"", u"", u"inside"));
    EXPECT_EQ(GetSetting(u"../x", u"", u""), u"inside");
    EXPECT_FALSE(std::filesystem::exists(dir.path().parent_path() / "x"));
}

TEST_F(Settings, SurviveADamagedFile) {
    EXPECT_TRUE(SaveSetting(u"App", u"S", u"K", u"kept"));
    const std::string good = dir.read("App/settings.ini");
    const std::string kDamages[] = {"no setting\n" + good, good + "[open\nx\x80\xFF\n",
                                    std::string("\0\0\n", 3) + good};
    for (const std::string& damaged : kDamages) {
        dir.write("App/settings.ini", damaged);
        EXPECT_EQ(GetSetting(u"App", u"S", u"K"), u"kept") << damaged;
        dir.write("App/settings.ini", damaged + "\n");  // as if it were new
        EXPECT_TRUE(SaveSetting(u"App", u"S", u"New", u"1")) << damaged;
        EXPECT_EQ(GetSetting(u"App", u"S", u"K"), u"kept") << damaged;
        EXPECT_EQ(GetSetting(u"App", u"S", u"New"), u"1") << damaged;
    }
    dir.write("App/settings.ini", "\x1F\x8B");
    EXPECT_EQ(GetSetting(u"App", u"S", u"K", u"default"), u"default");
}

TEST_F(Settings, SayWhenTheyCannotBeWritten) {
    dir.write("folder", "a file where a folder is needed");
    platform::test::setSettingsFolder((dir.path() / "folder").string());
    EXPECT_FALSE(SaveSetting(u"App", u"S", u"K", u"1"));
    EXPECT_EQ(GetSetting(u"App", u"S", u"K", u"default"), u"default");

    // What can be read, is no settings, and takes no writing.
    platform::test::setSettingsFolder(dir.path().string());
    std::filesystem::create_directory(dir.path() / "Link");
    std::filesystem::create_symlink("/proc/version", dir.path() / "Link" / "settings.ini");
    EXPECT_FALSE(SaveSetting(u"Link", u"S", u"K", u"1"));
}
