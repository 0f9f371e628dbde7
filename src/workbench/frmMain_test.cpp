#include "platform/base/folders.h"
#include "platform/window/settings.h"
#include "workbench/logic/settingsRules.h"
#include "workbench/modMain.h"
#include "workbench/workbenchWindow_test.h"

#include <filesystem>

namespace test {
namespace {

using platform::IDCANCEL;
using platform::IDNO;
using platform::IDOK;
using platform::IDYES;

constexpr const char* kLoaded = "Title=Programma Open=! Close=! Open2=! Quit=! OK=ok~";
const std::string kQuestion =
    "messagebox style=0x23 title=\"Attention\" text=\"Save the translated file?\"\n";

// How a box about a failure, and one with news, stand in the log.
std::string errorBox(const std::string& text) {
    return "messagebox style=0x10 title=\"Attention\" text=\"" + text + "\"\n";
}

class FrmMain : public WorkbenchTest {};

// ---- The command line

TEST_F(FrmMain, LoadsThePairOfTheCommandLine) {
    startWithPair();
    EXPECT_EQ(rows(), kLoaded);
    EXPECT_EQ(state(), "clean");
    EXPECT_EQ(window.shownMainFile(), display("main.lng"));
    EXPECT_EQ(window.shownTransFile(), display("trans.lng"));
    EXPECT_EQ(window.grid().ColWidth(4), kDefaultColWidth);
    EXPECT_TRUE(window.grid().HasFocus() || platform::GetFocus() == 0);
    EXPECT_EQ(dialogs.log(), "");
}

TEST_F(FrmMain, DropsNamesThatAreNoFiles) {
    const Text main = dir.inside("main.lng"), none = dir.inside("none.lng");
    const struct {
        Text commandLine, mainFile, transFile;
    } kCases[] = {
        {u"", u"", u""},
        {main, display("main.lng"), u""},
        {none, u"", u""},
        {main + u" " + none, display("main.lng"), u""},
        {none + u" " + main + u" " + main, u"", display("main.lng")},
    };
    for (const auto& c : kCases) {
        frmMain another;
        another.Start(c.commandLine);
        EXPECT_EQ(another.shownMainFile(), c.mainFile) << toUtf8(c.commandLine);
        EXPECT_EQ(another.shownTransFile(), c.transFile) << toUtf8(c.commandLine);
        EXPECT_EQ(another.grid().Cols(), 0) << "nothing was loaded";
    }
}

// ---- Files

TEST_F(FrmMain, LoadsOnceBothFilesAreChosenAndAgainWhenTheDialogIsCancelled) {
    start();
    dialogs.answerFile(dir.inside("main.lng"));
    pick(mnuOpenMainFile);
    EXPECT_EQ(window.grid().Cols(), 0);
    dialogs.answerFile(dir.inside("trans.lng"));
    pick(mnuOpenTranslatedFile);
    EXPECT_EQ(rows(), kLoaded);
    EXPECT_NE(dialogs.log().find("title=\"Open File\""), std::string::npos) << dialogs.log();

    dir.write("trans.lng", "[Menu]\r\nQuit=Einde\r\n");
    window.grid().ColWidth(5, 321);
    dialogs.answerFile({});
    (void)controlOf<ctlUniButtonXP>(window, u"btnFileOut").accessibleAction();
    platform::test::settle();
    EXPECT_EQ(rows(), "Title=! Open=! Close=! Open2=! Quit=Einde OK=!");
    EXPECT_EQ(window.grid().ColWidth(5), 321) << "a width set by hand stays";
}

TEST_F(FrmMain, TakesDroppedFilesAsTheButtonsWould) {
    start();
    const auto drop = [&](const std::vector<Text>& files) {
        platform::SendMessageW(window.hWnd(), platform::WM_DROPFILES, 0,
                               reinterpret_cast<platform::LPARAM>(&files));
    };
    drop({dir.inside("none.lng")});
    EXPECT_EQ(window.shownMainFile(), u"");
    drop({dir.inside("none.lng"), dir.inside("main.lng"), dir.inside("trans.lng"),
          dir.inside("main.lng")});
    EXPECT_EQ(rows(), kLoaded);
    edit(2, u"Openen");
    dialogs.answerMessageBox(IDCANCEL);
    drop({dir.inside("trans.lng")});
    EXPECT_EQ(window.shownMainFile(), display("main.lng")) << "cancelled at the question";
}

TEST_F(FrmMain, SaysWhatIsWrongWithAPairAndStaysUsable) {
    startWithPair();
    dialogs.answerFile(dir.inside("main.lng"));
    pick(mnuOpenTranslatedFile, {IDOK});
    EXPECT_NE(dialogs.log().find("Please choose two different files"), std::string::npos);
    EXPECT_EQ(rows(), kLoaded) << "the list stays as it was";
    EXPECT_EQ(window.shownTransFile(), display("main.lng")) << "the box keeps the new name";

    dir.write("gone.lng", "");
    dialogs.answerFile(dir.inside("gone.lng"));
    pick(mnuOpenTranslatedFile);
    std::filesystem::remove(dir.path() / "main.lng");
    pick(mnuShowOnlyUntranslated, {IDOK});
    EXPECT_NE(dialogs.log().find("Please load the file first!"), std::string::npos);
    EXPECT_EQ(window.grid().Cols(), 5);
    EXPECT_EQ(rows(), "");
    dir.write("main.lng", "A=Again\n");
    pick(mnuShowOnlyUntranslated);
    EXPECT_EQ(rows(), "A=!");
}

TEST_F(FrmMain, NeverSavesOverTheMainFile) {
    startWithPair();
    const std::string main = dir.read("main.lng");
    edit(2, u"Openen");
    dialogs.answerMessageBox(IDNO);
    dialogs.answerFile(dir.inside("main.lng"));
    pick(mnuOpenTranslatedFile, {IDOK});
    pick(mnuSave, {IDOK});
    EXPECT_EQ(state(), "dirty save");
    EXPECT_TRUE(dialogs.log().ends_with(errorBox("Please choose two different files")));
    pick(mnuExit, {IDYES, IDOK, IDOK});
    EXPECT_FALSE(window.Loaded());
    EXPECT_NE(dialogs.log().find("They have been kept"), std::string::npos) << dialogs.log();
    EXPECT_EQ(dir.read("main.lng"), main);
}

// ---- Editing

TEST_F(FrmMain, EditsByEnterFillsDuplicatesAndSaves) {
    startWithPair();
    edit(2, u"Openen");
    EXPECT_EQ(rows(), "Title=Programma Open=Openen! Close=! Open2=Openen! Quit=! OK=ok~");
    EXPECT_EQ(state(), "dirty save");
    pick(mnuSave);
    EXPECT_EQ(dir.read("trans.lng"), "Title=Programma\r\n[Menu]\r\nOK=ok\r\nExtra=kept\r\n\r\n"
                                     "Open=Openen\r\nOpen2=Openen");
    EXPECT_EQ(state(), "clean");
    EXPECT_EQ(rows(), "Title=Programma Open=Openen Close=! Open2=Openen Quit=! OK=ok~");
    EXPECT_EQ(window.grid().Row(), 2);
}

TEST_F(FrmMain, KeepsWhatWasTypedForAnEndWithoutAQuestion) {
    startWithPair();
    EXPECT_EQ(window.KeepEdits(), u"");
    std::vector<Text> kept;
    const auto keepWhileOpen = [&](std::int32_t iRow, TextView sTyped) {
        answers.next([&, sTyped](Form& form) {
            if (!sTyped.empty()) controlOf<ctlUniTextBoxXP>(form, u"txtText").Text(sTyped);
            kept.push_back(window.KeepEdits());
            form.Unload(kClosedByUser);
        });
        window.grid().Row(iRow);
        pressEnter();
    };
    keepWhileOpen(2, u"");  // it shows the default text, which nobody has typed
    edit(3, u"Sluiten");
    keepWhileOpen(5, u"Einde");
    ASSERT_EQ(kept.size(), 2);
    EXPECT_EQ(kept[0], u"");
    EXPECT_EQ(
        dir.read("state/quillmere/" + std::filesystem::path(toUtf8(kept[1])).filename().string()),
        "{\"section\":\"Menu\",\"key\":\"Close\",\"translation\":\"Sluiten\"}\n"
        "{\"section\":\"Menu\",\"key\":\"Quit\",\"translation\":\"Einde\"}\n");
    EXPECT_EQ(rows(), "Title=Programma Open=! Close=Sluiten! Open2=! Quit=! OK=ok~");
}

TEST_F(FrmMain, StartsFromTheDefaultTextWhereThereIsNoTranslation) {
    dir.write("trans.lng", "[Menu]\r\nQuit= x\r\nClose=Sluiten\r\n");
    startWithPair();
    const auto shown = [&](std::int32_t iRow) {
        std::string texts;
        answers.next([&](Form& form) {
            texts = toUtf8(controlOf<ctlUniTextBoxXP>(form, u"txtTextOrig").Text()) + "/" +
                    toUtf8(controlOf<ctlUniTextBoxXP>(form, u"txtText").Text());
            form.Unload(kClosedByUser);
        });
        window.grid().Row(iRow);
        pressEnter();
        return texts;
    };
    EXPECT_EQ(shown(2), "Open/Open");
    EXPECT_EQ(shown(3), "Close/Sluiten");
    EXPECT_EQ(state(), "clean") << "the close box cancels";
    window.grid().CellText(2, 5, u"  ");
    EXPECT_EQ(shown(2), "Open/Open") << "blanks count as nothing";
}

TEST_F(FrmMain, ConfirmsClearsOrLeavesATranslation) {
    dir.write("trans.lng", "[Menu]\r\nClose=Sluiten\r\nOpen2=Open dan\r\n");
    startWithPair();
    EXPECT_EQ(state(), "dirty save") << "the fill of a new pair is work to save";
    pick(mnuSave);
    edit(3, std::nullopt);
    EXPECT_EQ(state(), "clean") << "unchanged";
    answers.press(u"btnCancel");
    window.grid().Row(3);
    pressEnter();
    EXPECT_EQ(state(), "clean");
    edit(5, std::nullopt);
    EXPECT_EQ(state(), "dirty save") << "the default text was taken over";
    edit(3, u"");
    EXPECT_EQ(rows(), "Title=! Open=Open dan Close= Open2=Open dan Quit=Quit! OK=!");
    window.grid().Row(-1);
    pressEnter();  // no dialog comes
}

TEST_F(FrmMain, AnEditorThatGoesWithoutAnAnswerChangesNothing) {
    startWithPair();
    window.grid().Row(1);
    for (const bool gone : {false, true}) {
        answers.next([gone](Form& form) { gone ? (void)form.Unload() : form.Hide(); });
        pressEnter();
        EXPECT_EQ(rows(), kLoaded);
        EXPECT_EQ(state(), "clean");
    }
}

TEST_F(FrmMain, HasNothingToEditInAListWithoutRows) {
    start();
    for (const bool columns : {false, true}) {
        if (columns) window.grid().AddColumn({});
        for (const int key : {platform::VK_PRIOR, platform::VK_NEXT, platform::VK_DOWN}) {
            platform::test::pressKey(gridWindow(), key);
            pressEnter();
        }
        EXPECT_EQ(dialogs.log(), "");
    }
}

TEST_F(FrmMain, EnterThatIsHeldDownCountsOnce) {
    startWithPair();
    window.grid().Row(2);
    platform::test::holdKey(gridWindow(), platform::VK_RETURN, u"\r");  // no dialog comes
    answers.next([](Form& form) {
        const auto& txtText = controlOf<ctlUniTextBoxXP>(form, u"txtText");
        platform::test::holdKey(txtText.hWnd(), platform::VK_RETURN, u"\r");
        EXPECT_TRUE(platform::IsWindowVisible(form.hWnd()));
        platform::test::pressKey(txtText.hWnd(), platform::VK_ESCAPE);
    });
    pressEnter();
    EXPECT_EQ(rows(), kLoaded);
    EXPECT_EQ(state(), "clean");
}

TEST_F(FrmMain, AModifierKeyEndsTheFillOfANewPair) {
    dir.write("trans.lng", "[Menu]\r\nOpen=Openen\r\nQuit=Einde\r\n");
    dir.write("main.lng", "[Menu]\r\nQuit=Quit\r\nQuit2=Quit\r\nOpen=Open\r\nOpen2=Open\r\n");
    platform::test::setKeysDown(std::vector<std::int32_t>{platform::VK_MENU});
    startWithPair();
    EXPECT_EQ(rows(), "Quit=Einde Quit2=Einde! Open=Openen Open2=!");
    EXPECT_EQ(dialogs.log(), "");
}

// ---- Closing and settings

TEST_F(FrmMain, SettingsComeBackAtTheNextStart) {
    const auto stored = [](TextView sKey) {
        return toUtf8(platform::GetSetting(kSettingsApplication, kSettingsSection, sKey, u"-"));
    };
    start();
    EXPECT_TRUE(window.Unload());
    EXPECT_EQ(stored(kDefaultWidthKey) + stored(kTransWidthKey) + stored(kEmptyTransKey), "--0")
        << "no widths without columns";

    startWithPair();
    window.grid().ColWidth(4, 123);
    window.grid().ColWidth(5, 4);
    window.saveEmptyBox().Pressed(true);
    EXPECT_TRUE(window.Unload());
    EXPECT_EQ(stored(kDefaultWidthKey) + " " + stored(kTransWidthKey), "123 4");
    startWithPair();
    EXPECT_EQ(window.grid().ColWidth(4), 123);
    EXPECT_EQ(window.grid().ColWidth(5), 10);
    EXPECT_TRUE(window.saveEmptyBox().Pressed());
}

TEST_F(FrmMain, TheWordsBesideTheCheckBoxAreClickedAsTheBoxIs) {
    using platform::test::MouseAction;
    start();
    HWND words = 0;
    HostWindow::forEachHost([&](const HostWindow& host) {
        if (host.Name() == u"ctlUniLabel1" && host.form() == &window) words = host.hWnd();
    });
    const struct {
        platform::WPARAM button;
        MouseAction press;
        bool ticked;
    } kClicks[] = {{platform::MK_LBUTTON, MouseAction::Press, true},
                   {platform::MK_LBUTTON, MouseAction::DoubleClick, false},
                   {platform::MK_RBUTTON, MouseAction::Press, false},
                   {platform::MK_LBUTTON, MouseAction::Press, true},
                   {platform::MK_RBUTTON, MouseAction::Press, true}};
    for (const auto& click : kClicks) {
        platform::test::mouse(words, click.press, {5, 5}, click.button, click.button);
        platform::test::mouse(words, MouseAction::Release, {5, 5}, click.button);
        EXPECT_EQ(window.saveEmptyBox().Pressed(), click.ticked);
    }
}

TEST_F(FrmMain, KeepsWhatCannotBeSavedAsEdits) {
    startWithPair();
    edit(2, u"Openen");
    pick(mnuFindPhrase);
    std::filesystem::permissions(dir.path() / "trans.lng", std::filesystem::perms(0444));
    pick(mnuSave, {IDOK});
    EXPECT_EQ(state(), "dirty save") << "it can be tried again";
    EXPECT_NE(rows().find("Open=Openen!"), std::string::npos);
    EXPECT_TRUE(dialogs.log().ends_with(errorBox("Cannot Save File!"))) << dialogs.log();

    // Nowhere to put it: nothing goes on.
    dir.write("state", "a file, no folder");
    pick(mnuExit, {IDYES, IDOK, IDOK});
    EXPECT_TRUE(window.Loaded());
    EXPECT_FALSE(window.findDialog().Loaded()) << "the search dialog closes all the same";
    std::filesystem::remove(dir.path() / "state");

    pick(mnuExit, {IDYES, IDOK, IDOK});
    EXPECT_FALSE(window.Loaded());
    std::filesystem::path kept;
    for (const auto& entry :
         std::filesystem::directory_iterator(dir.path() / "state" / "quillmere")) {
        kept = entry.path();
    }
    EXPECT_NE(dialogs.log().find(kept.string()), std::string::npos) << dialogs.log();
    EXPECT_EQ(dir.read("state/quillmere/" + kept.filename().string()),
              "{\"section\":\"Menu\",\"key\":\"Open\",\"translation\":\"Openen\"}\n"
              "{\"section\":\"Menu\",\"key\":\"Open2\",\"translation\":\"Openen\"}\n");
}

TEST_F(FrmMain, ClosesAfterAFailureBehindTheSave) {
    startWithPair();
    edit(2, u"Openen");
    window.grid().SelectionChange = [&] {
        if (window.grid().Row() == 2) throw Failure(kOwnError, u"", u"no selection");
    };
    pick(mnuExit, {IDYES, IDOK});
    EXPECT_FALSE(window.Loaded());
    EXPECT_EQ(dialogs.log(), kQuestion + errorBox("no selection"));
    EXPECT_NE(dir.read("trans.lng").find("Open=Openen"), std::string::npos);
}

TEST_F(FrmMain, ClosesAfterTheLoadThatItWasAskedToCloseIn) {
    bool refused = false;
    startWithPair();
    window.grid().SelectionChange = [&] { refused = !window.Unload(kClosedByUser) || refused; };
    pick(mnuShowOnlyUntranslated);
    EXPECT_TRUE(refused);
    EXPECT_FALSE(window.Loaded());
}

// ---- New files

TEST_F(FrmMain, MakesNewTranslationsBothWays) {
    startWithPair();
    answers.type(u" elsewhere/new.txt ");
    pick(mnuCreateNewTranslationEmpty);
    EXPECT_EQ(window.shownTransFile(), display("new.lng"));
    EXPECT_EQ(dir.read("new.lng"), "");
    EXPECT_EQ(rows(), "Title=! Open=! Close=! Open2=! Quit=! OK=!");
    EXPECT_EQ(state(), "dirty save");
    answers.type(u"full");
    pick(mnuCreateNewTranslationFull, {IDNO, IDOK});
    EXPECT_EQ(dir.read("full.lng"), dir.read("main.lng"));
    EXPECT_EQ(rows(), "Title=Program~ Open=Open~ Close=Close~ Open2=Open~ Quit=Quit~ OK=OK~");
    EXPECT_EQ(state(), "clean");
    EXPECT_TRUE(dialogs.log().ends_with(
        "style=0x40 title=\"Attention\" text=\"The file has been created!\"\n"))
        << dialogs.log();
}

TEST_F(FrmMain, RefusesNewTranslationsWithTheirMessages) {
    start();
    const auto refused = [&](std::optional<Text> name) {
        const std::size_t before = dialogs.log().size();
        if (name) answers.type(std::move(name));
        pick(mnuCreateNewTranslationEmpty, {IDOK});
        return dialogs.log().substr(before);
    };
    EXPECT_EQ(refused(std::nullopt), errorBox("Please choose the main translation file"));
    dialogs.answerFile(dir.inside("main.lng"));
    pick(mnuOpenMainFile);
    EXPECT_EQ(refused(u"  "), errorBox("Please write the name of the new file"));
    EXPECT_EQ(refused(u"MAIN.ini"), errorBox("Please choose two different files"));
    std::filesystem::remove(dir.path() / "main.lng");
    EXPECT_EQ(refused(std::nullopt), errorBox("The main translation file doesn't exist"));
}

// ---- Moving through the list

TEST_F(FrmMain, SearchesInBothColumnsWithOneDialog) {
    dir.write("trans.lng", "[Menu]\r\nClose=Open dicht\r\n");
    startWithPair();
    pick(mnuFindPhrase);
    frmFindReplace& find = window.findDialog();
    const auto search = [&](std::optional<Text> text) {
        auto& txtText = controlOf<ctlUniTextBoxXP>(find, u"txtText");
        if (text) txtText.Text(*text);
        platform::test::pressKey(txtText.hWnd(), platform::VK_RETURN, u"\r");
        platform::test::settle();
        return window.grid().Row();
    };
    const auto label = [&] { return toUtf8(controlOf<ctlUniLabel>(find, u"lblFind").Caption()); };
    EXPECT_EQ(label(), "Find Phrase:");
    EXPECT_EQ(search(u"oPEN"), 2);
    EXPECT_EQ(search({}), 4) << "goes on from there";
    dialogs.answerMessageBox(IDOK);
    EXPECT_EQ(search({}), 4);
    EXPECT_TRUE(dialogs.log().ends_with(
        "style=0x42010 title=\"Attention\" text=\"Search text is not found\"\n"))
        << dialogs.log();
    const platform::HWND hWnd = find.hWnd();
    window.grid().Row(1);
    pick(mnuFindTransPhrase);
    EXPECT_EQ(find.hWnd(), hWnd) << "the open dialog serves for both";
    EXPECT_EQ(label(), "Find Translation:");
    EXPECT_EQ(search(u"open "), 3);
    EXPECT_EQ(g_sFindTranslation, u"open") << "stored without its blank";
    EXPECT_EQ(g_sFindPhrase, u"oPEN");
    (void)controlOf<ctlUniButtonXP>(find, u"btnCancel").accessibleAction();
    EXPECT_FALSE(find.Loaded());
    pick(mnuFindPhrase);
    auto& txtText = controlOf<ctlUniTextBoxXP>(find, u"txtText");
    EXPECT_EQ(txtText.SelText(), u"oPEN");
    txtText.Change = [] { throw Failure(kOwnError, u"", u"no text"); };
    pick(mnuFindTransPhrase, {IDOK});
    EXPECT_TRUE(
        dialogs.log().ends_with("style=0x0 title=\"Quillmere\" text=\"(80040001) - no text\"\n"))
        << dialogs.log();
}

TEST_F(FrmMain, TheFilterShowsWhatNeedsWorkAndSavesByName) {
    dir.write("trans.lng",
              "Title=Programma\r\n[Menu]\r\nOpen=Openen\r\nOpen2=Open nu\r\nOK=ok\r\n");
    startWithPair();
    pick(mnuShowOnlyUntranslated);
    EXPECT_TRUE(window.isChecked(mnuShowOnlyUntranslated));
    EXPECT_EQ(rows(), "Close=! Quit=! OK=ok~");
    EXPECT_EQ(window.grid().CellText(2, 1), u"5") << "the rows keep their numbers";
    edit(2, u"Einde");
    EXPECT_EQ(rows(), "Close=! Quit=Einde! OK=ok~");
    pick(mnuShowOnlyUntranslated, {IDCANCEL});
    EXPECT_FALSE(window.isChecked(mnuShowOnlyUntranslated)) << "the mark goes ahead of the list";
    EXPECT_EQ(rows(), "Close=! Quit=Einde! OK=ok~");
    pick(mnuSave);
    EXPECT_EQ(rows(), "Title=Programma Open=Openen Close=! Open2=Open nu Quit=Einde OK=ok~");
}

}  // namespace
}  // namespace test
