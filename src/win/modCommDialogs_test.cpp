#include "win/modCommDialogs.h"

#include "platform/base/testhooks.h"
#include "platform/window/testhooks.h"
#include "support/PlatformVersion.h"
#include "support/raised.h"
#include "win/clsCommDialogs.h"

#include <cmath>
#include <gtest/gtest.h>

using namespace platform;
using platform::test::DialogScript;

namespace {

const Text kFilter(u"Language Files\0*.lng; *.ini\0", 27);

class CommDialogs : public testing::Test {
public:
    ~CommDialogs() override {
        InitDialogs();
        EXPECT_EQ(platform::test::openFolderItems(), 0);
    }
    void setOldPlatform() { version.set(OSVERSIONINFOA{4, 0, VER_PLATFORM_WIN32_NT}); }  // code 7
    platform::test::HookScope baseHooks;
    ::test::PlatformVersion version;
    platform::test::WindowHookScope hooks;
};

Text repeated(TextView piece, int count) {
    Text s;
    for (int i = 0; i < count; ++i) s += piece;
    return s;
}
Text zeros(int count) { return repeated(u"0*", count); }

}  // namespace

TEST_F(CommDialogs, GiveTheChosenPathAndTheFlagsOfTheDialog) {
    DialogScript script;
    script.answerFile(u"\\home\\me\\a b.lng");
    std::int32_t flags = 0x1800;
    EXPECT_EQ(ShowOpen(0, kFilter, u"Open File", flags, u"\\home", u"lng", u" x.lng"),
              u"\\home\\me\\a b.lng");
    EXPECT_EQ(flags & 0x81800, 0x81800) << "what the dialog gives back, with its own look added";
    script.answerFile({});
    flags = 530432;
    EXPECT_EQ(ShowOpen(0, kFilter, u"Open File", flags, u""), u"") << "cancelled";
    EXPECT_EQ(flags, 530432);
    EXPECT_EQ(script.log(),
              "open title=\"Open File\" filter=Language Files (*.lng *.ini) index=0 flags=0x81800 "
              "dir=\"\\home\" name=\"x.lng\" ext=\"lng\"\n"
              "open title=\"Open File\" filter=Language Files (*.lng *.ini) index=0 flags=0x81800 "
              "dir=\"\" name=\"\" ext=\"\"\n");

    script.answerFile(u"\\a.lng", 2);
    std::int32_t index = 1;
    const clsCommDialogs dialogs;
    flags = 0;
    EXPECT_EQ(dialogs.ShowSave(0, kFilter, u"Save", flags, u"", u"", index), u"\\a.lng");
    EXPECT_EQ(index, 2) << "the filter that was used";
    flags = 0;
    EXPECT_EQ(dialogs.ShowSave(0, kFilter, u"Save", flags, u"", u"", index), u"") << "cancelled";
    EXPECT_EQ(index, 2);
}

TEST_F(CommDialogs, RefuseFlagsThatOnlyComeBack) {
    DialogScript script;
    for (std::int32_t flags : {0x400, 0x8000, 0x8400 | 0x80000}) {
        std::int32_t index = 1;
        const std::string message =
            ": Flags OFN_EXTENSIONDIFFERENT and OFN_NOREADONLYRETURN \r\nare used only in OUTPUT, "
            "you can test them after the \r\ndialog box closes by checking the lFlags value";
        EXPECT_EQ(::test::raised([&] { (void)ShowOpen(0, {}, {}, flags, {}); }),
                  "ShowOpen" + message);
        EXPECT_EQ(::test::raised([&] { (void)ShowSave(0, {}, {}, flags, {}, {}, index); }),
                  "ShowSave" + message);
    }
    EXPECT_EQ(script.log(), "") << "before any dialog is shown";
}

TEST_F(CommDialogs, HoldAsLongANameAsThePlatformTakes) {
    for (const auto& [old, room] : {std::pair(false, 2047U), std::pair(true, 259U)}) {
        if (old) setOldPlatform();
        DialogScript script;
        const Text longest = u'\\' + Text(room - 1, u'x');
        script.answerFile(longest);
        script.answerFile(longest + u'y');
        script.answerFile(u"\\s");
        std::int32_t flags = 0;
        EXPECT_EQ(ShowOpen(0, {}, {}, flags, {}, {}, Text(3000, u'd')), longest);
        flags = 0;
        EXPECT_EQ(ShowOpen(0, {}, {}, flags, {}), u"") << "longer than the dialog may give";
        EXPECT_EQ(ShowOpen(0, {}, {}, flags, {}, {}, u"longer than the path"), u"\\s");
        EXPECT_NE(script.log().find("name=\"" + std::string(room, 'd') + "\""), std::string::npos)
            << "cut to the buffer";
    }
}

TEST_F(CommDialogs, KeepTheCustomColours) {
    DialogScript script;
    script.answerColor(rgb(1, 2, 3));
    script.answerColor(rgb(4, 5, 6));
    EXPECT_EQ(ShowColor(0, rgb(192, 227, 255)), rgb(1, 2, 3));
    EXPECT_EQ(ShowColor(0), rgb(4, 5, 6));
    EXPECT_EQ(ShowColor(0), -1) << "cancelled";
    EXPECT_EQ(script.log(), "color flags=0x3 start=0xFFE3C0\ncolor flags=0x0\n"
                            "UNANSWERED color flags=0x0\n");

    const struct {
        Text set, expected;
    } kTexts[] = {
        {u"", zeros(64)},
        {u"12", zeros(64)},  // without a star there is one piece, the last
        {u"A*b*FF*1F0*", u"A*B*FF*" + zeros(61)},
        {u"*x*0A*-1*07*end", u"A*B*A*0*7*" + zeros(59)},
        {u"1*2*3", u"1*2*A*0*7*" + zeros(59)},
        {zeros(64) + u"FF*FF*", zeros(64)},
        {repeated(u"10*", 70), repeated(u"10*", 64)},
    };
    for (const auto& t : kTexts) {
        SetCustomColorsString(t.set);
        EXPECT_EQ(GetCustomColorsString(), t.expected) << toUtf8(t.set);
    }
    script.answerColor(0);
    (void)ShowColor(0);
    EXPECT_EQ(GetCustomColorsString(), kTexts[6].expected) << "through the dialog and back";
    InitDialogs();
    EXPECT_EQ(GetCustomColorsString(), zeros(64));
}

TEST_F(CommDialogs, LetAFontBeChosen) {
    DialogScript script;
    Text name = u"Arial";
    COLORREF color = rgb(1, 2, 3);
    bool bold = true, italic = false, underline = false, strikeout = true;
    std::int32_t size = 12;
    EXPECT_FALSE(ShowFont(name, color, bold, italic, underline, strikeout, size));
    EXPECT_TRUE(name == u"Arial" && bold && strikeout && size == 12) << "cancelled";
    LOGFONTA chosen;
    EXPECT_TRUE(setFaceName(chosen, u"Tahoma"));
    chosen.lfItalic = chosen.lfUnderline = 1;
    script.answerFont(chosen, 9, rgb(7, 8, 9));
    EXPECT_TRUE(ShowFont(name, color, bold, italic, underline, strikeout, size));
    EXPECT_EQ(name, u"Tahoma");
    EXPECT_EQ(color, rgb(7, 8, 9));
    EXPECT_TRUE(!bold && italic && underline && !strikeout);
    EXPECT_EQ(size, 9);

    name = u"  ";
    size = 0;
    EXPECT_FALSE(ShowFont(name, color, bold, italic, underline, strikeout, size));
    EXPECT_EQ(script.log(),
              "UNANSWERED font flags=0x141 name=\"Arial\" height=-16 weight=700 color=0x30201\n"
              "font flags=0x141 name=\"Arial\" height=-16 weight=700 color=0x30201\n"
              "UNANSWERED font flags=0x141 name=\"MS Sans Serif\" height=-11 weight=400 "
              "color=0x90807\n")
        << "a blank name and no size are those of a new font";
}

TEST_F(CommDialogs, PassTheFontOptionsOn) {
    DialogScript script;
    ChosenFont font{u"Tahoma", 8.25F, 600, false, false, false};
    FontDialogOptions options;
    EXPECT_FALSE(ShowFontEx(font, options));
    options.PrinterDC = 5;
    options.MinSize = 6;
    options.Color = 0;
    LOGFONTA chosen;
    chosen.lfWeight = 900;
    EXPECT_TRUE(setFaceName(chosen, u"Tahoma"));
    script.answerFont(chosen, 10, rgb(1, 1, 1));
    EXPECT_TRUE(ShowFontEx(font, options));
    EXPECT_EQ(font.Size, 10);
    EXPECT_TRUE(font.Bold());
    EXPECT_EQ(options.Color, rgb(1, 1, 1));
    EXPECT_EQ(script.log(),
              "UNANSWERED font flags=0x41 name=\"Tahoma\" height=-11 weight=600 color=0x0\n"
              "font flags=0x2142 name=\"Tahoma\" height=-11 weight=600 color=0x0\n");
}

TEST_F(CommDialogs, LeaveOfAFontWhatWasNotChosen) {
    platform::test::setLocale("C");
    const auto confirmed = [](const ChosenFont& given, const LOGFONTA& answer, int points) {
        DialogScript script;
        script.answerFont(answer, points);
        ChosenFont font = given;
        FontDialogOptions options;
        EXPECT_TRUE(ShowFontEx(font, options));
        return toUtf8(font.Name) + ' ' + std::to_string(std::lround(font.Size * 100));
    };
    const Text longName(40, u'x');
    LOGFONTA none, tahoma;
    EXPECT_TRUE(setFaceName(tahoma, u"Tahoma"));
    EXPECT_EQ(confirmed({longName, 12}, none, 12), std::string(40, 'x') + " 1200")
        << "the record could not hold the name, and no other was chosen";
    EXPECT_EQ(confirmed({u"\u4E2D", 12}, none, 12), "\xE4\xB8\xAD 1200");
    EXPECT_EQ(confirmed({longName, 12}, tahoma, 12), "Tahoma 1200");
    EXPECT_EQ(confirmed({u"Tahoma", 8.25F}, tahoma, 8), "Tahoma 800")
        << "another size of as many pixels";
    EXPECT_EQ(confirmed({u"Tahoma", 12.1F}, tahoma, 12), "Tahoma 1210") << "16 pixels";
}

TEST_F(CommDialogs, LetAFolderBeChosen) {
    platform::test::setLocale("C");
    for (const bool old : {false, true}) {
        if (old) setOldPlatform();
        DialogScript script;
        script.answerFolder(u"\\home\\me");
        script.answerFolder(u"\\home\\\u00E9");
        script.answerFolder(u"\\home\\\u0416");
        EXPECT_EQ(ShowDir(0, u"\\home\\\u00E9", u"Pick\u00E9"), u"\\home\\me");
        EXPECT_EQ(ShowDir(0), u"\\home\\\u00E9");
        EXPECT_EQ(ShowDir(0), old ? u"" : u"\\home\\\u0416") << "what the code page can name";
        EXPECT_EQ(ShowDir(0), u"") << "cancelled";
        EXPECT_EQ(script.log(), "folder title=\"Pick\u00E9\" start=\"\\home\\\u00E9\"\n"
                                "folder title=\"\" start=\"\"\nfolder title=\"\" start=\"\"\n"
                                "UNANSWERED folder title=\"\" start=\"\"\n");
    }
}
