// The small windows, the menu's table and pictures, and how texts fit where they stand.
#include "gfx/modCtlCommon_ctl_text.h"
#include "platform/window/registry.h"
#include "platform/window/resources.h"
#include "platform/window/screen.h"
#include "workbench/frmInputBox.h"
#include "workbench/menuPictures.h"
#include "workbench/modMain.h"
#include "workbench/product.h"
#include "workbench/storedValues.h"
#include "workbench/workbenchWindow_test.h"

namespace test {
namespace {

class Dialogs : public WorkbenchTest {};

TEST_F(Dialogs, TheInputBoxHasItsTitleAndItsText) {
    answers.next([](Form& form) {
        EXPECT_EQ(form.Caption(), u"Other");
        (void)controlOf<ctlUniButtonXP>(form, u"btnOk").accessibleAction();
    });
    bool bCancel = true;
    EXPECT_EQ(UniInputBox(0, u"Line:", u"Other", u"start", bCancel), u"start");
    EXPECT_FALSE(bCancel);
    answers.next([](Form& form) {
        EXPECT_EQ(form.Caption(), kProductName) << "without a title of its own";
        controlOf<ctlUniTextBoxXP>(form, u"txtText").Text(u"typed");
        (void)controlOf<ctlUniButtonXP>(form, u"btnCancel").accessibleAction();
    });
    EXPECT_EQ(UniInputBox(0, u"Line:", {}, u"start", bCancel), u"");
    EXPECT_TRUE(bCancel);
}

TEST_F(Dialogs, EnterConfirmsWithShiftTooAndNoKeyTypesALineBreak) {
    const auto answer = [&](auto press) {
        answers.next([press](Form& form) {
            auto& txtText = controlOf<ctlUniTextBoxXP>(form, u"txtText");
            txtText.SetFocus();
            txtText.Text(u"typed");
            press(txtText.hWnd());
            if (platform::IsWindowVisible(form.hWnd())) form.Unload(kClosedByUser);
        });
        bool bCancel = false;
        const Text s = InputTranslation(0, u"default", {}, bCancel);
        return bCancel ? Text(u"cancelled") : s;
    };
    using platform::test::pressKey;
    for (const auto modifier : {platform::MK_SHIFT, platform::MK_CONTROL}) {
        EXPECT_EQ(answer([&](platform::HWND hWnd) {
                      pressKey(hWnd, platform::VK_RETURN, u"\r", modifier);
                  }),
                  u"typed");
    }
    for (const char16_t unit : {u'\n', u'\r'}) {
        EXPECT_EQ(answer([&](platform::HWND hWnd) {
                      (void)platform::SendMessageW(hWnd, platform::WM_CHAR, unit, 0);
                      pressKey(hWnd, platform::VK_RETURN, u"\r");
                  }),
                  u"typed");
    }
}

TEST_F(Dialogs, AboutTellsTheVersionAndOpensSiteAndHelp) {
    std::vector<std::string> opened;
    platform::test::setShell([&](const platform::ShellRequest& request) {
        opened.push_back(toUtf8(request.verb) + " " + toUtf8(request.file));
        return platform::SE_ERR_SUCCESS;
    });
    start();
    answers.next([&](Form& form) {
        EXPECT_EQ(form.Caption(), u"About Quillmere");
        platform::test::holdKey(form.hWnd(), platform::VK_RETURN, u"\r");
        EXPECT_TRUE(platform::IsWindowVisible(form.hWnd())) << "Enter held since the menu";
        controlOf<PlainLabel>(form, u"lblSite").Click();
        EXPECT_EQ(controlOf<PlainLabel>(form, u"lblVersion").Caption(),
                  u"Version " + productVersion());
        (void)controlOf<ctlUniButtonXP>(form, u"cmdOK").accessibleAction();
    });
    pick(mnuAbout);
    pick(mnuShowHelp);
    ASSERT_EQ(opened.size(), 2U);
    EXPECT_EQ(opened[0], "open " + toUtf8(siteAddress()));
    EXPECT_TRUE(opened[1].ends_with("\\help\\index.html")) << opened[1];
    platform::test::setShell(
        [](const platform::ShellRequest&) { return platform::SE_ERR_NOASSOC; });
    pick(mnuShowHelp, {platform::IDOK});
    EXPECT_NE(dialogs.log().find("The help page cannot be opened"), std::string::npos);
}

TEST_F(Dialogs, SystemInfoStartsTheToolOrSaysThatThereIsNone) {
    constexpr const char* kMsInfo = "SOFTWARE\\Microsoft\\Shared Tools\\MSINFO";
    constexpr const char* kLocation = "SOFTWARE\\Microsoft\\Shared Tools Location";
    dir.write("MSINFO32.EXE", "");
    const std::string folder = toUtf8(dir.inside("")).substr(0, toUtf8(dir.inside("")).size() - 1);
    std::string started;
    std::intptr_t result = platform::SE_ERR_SUCCESS;
    platform::test::setShell([&](const platform::ShellRequest& request) {
        started = toUtf8(request.file);
        return result;
    });
    frmAbout about;
    ASSERT_TRUE(about.Load());
    const auto info = [&](std::vector<platform::test::RegistryValue> values) {
        platform::test::setRegistry(std::move(values));
        started.clear();
        const std::size_t before = dialogs.log().size();
        dialogs.answerMessageBox(platform::IDOK);
        about.StartSysInfo();
        const bool box = dialogs.log().size() > before;
        if (!box) (void)dialogs.next("messagebox", "");  // the answer that was not needed
        return started + (box ? " box" : "");
    };
    EXPECT_EQ(info({}), " box");
    EXPECT_NE(dialogs.log().find("System Information Is Unavailable At This Time"),
              std::string::npos);
    EXPECT_EQ(info({{kMsInfo, "PATH", platform::REG_SZ, std::string("\\tool\0", 6)}}), "\\tool");
    EXPECT_EQ(info({{kLocation, "MSINFO", platform::REG_SZ, folder + '\0'}}),
              folder + "\\MSINFO32.EXE");
    EXPECT_EQ(info({{kLocation, "MSINFO", platform::REG_SZ, "\\none"}}), " box");
    result = platform::SE_ERR_FNF;
    EXPECT_EQ(info({{kMsInfo, "PATH", platform::REG_SZ, "\\tool"}}), "\\tool box");
}

TEST_F(Dialogs, RegistryValuesComeAsText) {
    platform::test::setRegistry({{{"A\\B", "text", platform::REG_SZ, std::string("caf\xE9\0", 5)},
                                  {"A\\B", "number", platform::REG_DWORD, {"\x12\x03\0\0", 4}},
                                  {"A\\B", "long", platform::REG_SZ, std::string(1025, 'x')}}});
    const auto value = [](TextView sKey, TextView sName) {
        Text s = u"old";
        const bool found = frmAbout::GetKeyValue(platform::HKEY_LOCAL_MACHINE, sKey, sName, s);
        return (found ? "" : "no ") + toUtf8(s);
    };
    EXPECT_EQ(value(u"A\\B", u"text"), "caf\xC3\xA9");
    EXPECT_EQ(value(u"a\\b", u"NUMBER"), "&h00000312");
    EXPECT_EQ(value(u"A\\B", u"none"), "no ");
    EXPECT_EQ(value(u"A", u"text"), "no ");
    EXPECT_EQ(value(u"A\\B", u"long"), "no ");
}

TEST_F(Dialogs, PlainQuestionsHaveATitleInAnyCase) {
    start();
    dialogs.answerMessageBox(platform::IDYES);
    EXPECT_TRUE(window.ShowYesNo(u"Sure?"));
    dialogs.answerMessageBox(platform::IDNO);
    EXPECT_FALSE(window.ShowYesNo(u"Sure?", u"  "));
    dialogs.answerMessageBox(platform::IDYES);
    EXPECT_TRUE(window.ShowYesNo(u"Sure?", u"Title"));
    const auto box = [](const std::string& title) {
        return "messagebox style=0x24 title=\"" + title + "\" text=\"Sure?\"\n";
    };
    EXPECT_EQ(dialogs.log(), box("Attention") + box("Attention") + box("Title"));
}

TEST_F(Dialogs, TheWideFontGoesToAllButDrawnLabels) {
    start();
    ApplyUnicodeFont(window);
    EXPECT_EQ(window.HostWindow::Font().Name, kUnicodeFont);
    EXPECT_EQ(window.grid().Font().Name, kUnicodeFont);
    EXPECT_EQ(controlOf<ctlUniTextBoxXP>(window, u"txtFileIn").Font().Name, kUnicodeFont);
    EXPECT_EQ(controlOf<PlainLabel>(window, u"Label1").Font().Name, kUnicodeFont);
    EXPECT_EQ(controlOf<ctlUniLabel>(window, u"lblIstro").Font().Name, StdFont().Name);
    EXPECT_EQ(window.grid().Font().Size, StdFont().Size);
}

// ---- The menu

TEST_F(Dialogs, PicturesOfTheMenuFitTheScreen) {
    const struct {
        int dpi, cell, picture;
    } kScreens[] = {{96, 16, 16}, {120, 20, 16}, {144, 24, 24}, {192, 32, 32}, {288, 48, 32}};
    for (const auto& c : kScreens) {
        platform::test::setScreens({{{0, 0, 2000, 1000}, {0, 0, 2000, 1000}, true, 32, c.dpi}});
        EntryPictures pictures;
        EXPECT_EQ(EntryPictures::cellSize(), c.cell);
        for (const TextView caption : {u"&File", u"Open the file to translate", u"Exit", u"&About",
                                       u"Help", u"&Help", u"&Tools"}) {
            const Picture picture = pictures.of(caption, 0xFFFFFF);
            ASSERT_NE(picture, nullptr) << toUtf8(caption);
            EXPECT_EQ(picture->Width(), c.picture);
            EXPECT_EQ(pictures.of(caption, 0xFFFFFF), picture) << "read once";
        }
        EXPECT_EQ(pictures.of(u"Save Translation", 0), nullptr);
    }
}

TEST_F(Dialogs, APictureLeavesOutWhatDoesNotCoverAndBlendsTheRest) {
    using namespace platform;
    const Picture onWhite = loadPicture(u"menu/exit-16", 0xFFFFFF);
    const Picture onBlack = loadPicture(u"menu/exit-16", 0);
    ASSERT_NE(onWhite, nullptr);
    const HDC hDC = CreateCompatibleDC(0);
    const auto pixels = [&](const Picture& picture) {
        const HGDIOBJ old = SelectObject(hDC, picture->Handle());
        std::vector<COLORREF> all;
        for (int i = 0; i < 256; ++i) all.push_back(GetPixel(hDC, i % 16, i / 16));
        SelectObject(hDC, old);
        return all;
    };
    const auto white = pixels(onWhite), black = pixels(onBlack);
    DeleteDC(hDC);
    int same = 0, blended = 0, left = 0;
    for (std::size_t i = 0; i < white.size(); ++i) {
        const bool out = white[i] == white[0];
        EXPECT_EQ(out, black[i] == black[0]) << i;
        ++(out ? left : white[i] == black[i] ? same : blended);
    }
    EXPECT_GT(left, 50);
    EXPECT_GT(same, 30);
    EXPECT_GT(blended, 5);
    EXPECT_EQ(loadPicture(u"menu/none", 0), nullptr);
}

// ---- Texts in their places

TEST_F(Dialogs, EveryTextFitsItsPlaceAtEachResolution) {
    for (const int dpi : {96, 108, 120, 132, 144, 168, 192, 288}) {
        platform::test::setScreens({{{0, 0, 4000, 3000}, {0, 0, 4000, 3000}, true, 32, dpi}});
        frmMain main;
        frmAbout about;
        ASSERT_TRUE(main.Load());
        ASSERT_TRUE(about.Load());
        for (Form* const form : std::initializer_list<Form*>{&main, &about}) {
            for (HostWindow* const host : form->Controls()) {
                Text caption;
                if (const auto* label = dynamic_cast<LabelControl*>(host)) {
                    caption = label->Caption();
                } else if (const auto* plain = dynamic_cast<PlainLabel*>(host)) {
                    caption = plain->Caption();
                } else if (const auto* button = dynamic_cast<ctlUniButtonXP*>(host)) {
                    caption = button->Caption();
                }
                SIZE text{host->ScaleWidth(), 0};
                TextSizeWrapped(host->hDC(), caption, 0, true, false, text);
                EXPECT_LE(text.cx, host->ScaleWidth()) << dpi << " " << toUtf8(caption);
                EXPECT_LE(text.cy, host->ScaleHeight()) << dpi << " " << toUtf8(caption);
                RECT around;
                platform::GetClientRect(platform::GetParent(host->HostWindow::hWnd()), around);
                EXPECT_LE(host->Left() + host->ScaleWidth(), around.right) << toUtf8(caption);
                EXPECT_LE(host->Top() + host->ScaleHeight(), around.bottom) << toUtf8(caption);
            }
        }
        EXPECT_EQ(controlOf<PlainLabel>(main, u"Label1").Left(),
                  controlOf<PlainLabel>(main, u"Label2").Left())
            << dpi;
    }
}

TEST_F(Dialogs, ListAndProgressFollowTheWindow) {
    start();
    const auto& progress = controlOf<ctlProgressXP>(window, u"ctlProgress");
    const auto places = [&] {
        const auto& grid = static_cast<const HostWindow&>(window.grid());
        return std::to_string(grid.Top()) + "+" + std::to_string(grid.ScaleHeight()) + "=" +
               std::to_string(progress.Top()) + "+" + std::to_string(progress.ScaleHeight()) + " " +
               std::to_string(grid.ScaleWidth()) + " " + std::to_string(progress.ScaleWidth());
    };
    EXPECT_EQ(places(), "136+186=322+15 601 601");
    window.ClientSize(800, 600);
    EXPECT_EQ(places(), "136+449=585+15 800 800");
    window.ClientSize(100, 20);
    EXPECT_EQ(window.grid().ScaleHeight(), 0);
}

}  // namespace
}  // namespace test
