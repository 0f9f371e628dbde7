#include "workbench/frmMain.h"

#include "controls/ctlUniTooltipManager.h"
#include "file/ufu_files.h"
#include "file/ufu_paths.h"
#include "platform/base/paths.h"
#include "platform/window/application.h"
#include "platform/window/dialogs.h"
#include "platform/window/input.h"
#include "platform/window/wait.h"
#include "workbench/logic/clsCommandArgs.h"
#include "workbench/logic/columns.h"
#include "workbench/logic/settingsRules.h"
#include "workbench/modMain.h"
#include "workbench/product.h"

namespace {

constexpr int kWidth = 9015, kHeight = 5055;  // twips, at the first showing

// A name of the command line that is no file may be one beside the program.
Text existingFile(const Text& sName) {
    if (ufu_FileExist(sName)) return sName;
    Text sBeside = ufu_OneBackSlash(ufu_UniAppPath()) + ufu_FileName(sName);
    return ufu_FileExist(sBeside) ? sBeside : Text();
}

}  // namespace

frmMain::frmMain() : Form(platform::WindowKind::Main) {
    Caption(Text(kProductName));
    ClientSize(PixelsX(kWidth), PixelsY(kHeight));
}

frmMain::~frmMain() = default;

void frmMain::Start(TextView sCommandLine) {
    if (!Load()) throw Failure(kOwnError, u"frmMain.Start", u"The window could not be made");
    takeCommandLine(sCommandLine);
    Show();
    (void)MoveFocus(true);
    if (m_sFileIn.empty() || m_sFileOut.empty()) return;
    platform::pumpMessages();
    if (Loaded()) (void)platform::showPainted(hWnd());  // ahead of the wait window
    if (Loaded()) runCommand([this] { pvLoadFiles(); });
}

void frmMain::takeCommandLine(TextView sCommandLine) {
    clsCommandArgs args;
    args.ParseCommand(sCommandLine);
    if (!args.Args().empty()) setFile(true, existingFile(args.Args()[0]));
    if (args.Args().size() > 1) setFile(false, existingFile(args.Args()[1]));
}

void frmMain::setFile(bool bMain, const Text& sFile) {
    (bMain ? m_sFileIn : m_sFileOut) = sFile;
    ctlUniTextBoxXP& txtFile = bMain ? txtFileIn : txtFileOut;
    const Text shown = platform::pathForDisplay(sFile);
    txtFile.Text(shown);
    txtFile.SelStart(static_cast<std::int32_t>(shown.size()));  // the name, not the way to it
    txtFile.Tip(shown);
}

// ---- Its end

void frmMain::onQueryUnload(bool& bCancel, UnloadReason) {
    if (!m_bRunning) return;
    bCancel = true;
    m_bCloseLater = true;
}

void frmMain::onUnload(bool& bCancel) {
    // Whatever fails here, the window can be asked to close again.
    struct Running {
        frmMain& frm;
        ~Running() { frm.m_bRunning = frm.m_bCloseLater = false; }
    } const running{*this};
    m_bRunning = true;
    pvAskSaveChanges(bCancel);
    if (!bCancel) ctlUTF8Menu1.Detach();
    if (fxGrid.ColExists(kDefaultColumn)) {
        SaveIntSetting(kDefaultWidthKey, fxGrid.ColWidth(kDefaultColumn));
        SaveIntSetting(kTransWidthKey, fxGrid.ColWidth(kTranslationColumn));
    }
    SaveIntSetting(kEmptyTransKey, chkSaveEmptyVal.Value());
    (void)m_frmFindReplace.Unload();
}

void frmMain::onDestroy() { Closed(); }

// ---- Messages

void frmMain::ShowError(TextView sError) {
    (void)platform::MessageBoxW(hWnd(), sError, u"Attention",
                                platform::MB_OK | platform::MB_ICONSTOP);
}

void frmMain::ShowInfo(TextView sInfo) {
    (void)platform::MessageBoxW(hWnd(), sInfo, u"Attention",
                                platform::MB_OK | platform::MB_ICONINFORMATION);
}

bool frmMain::ShowYesNo(TextView sQuestion, TextView sTitle) {
    const bool noTitle = sTitle.find_first_not_of(u' ') == TextView::npos;
    return platform::MessageBoxW(hWnd(), sQuestion, noTitle ? TextView(u"Attention") : sTitle,
                                 platform::MB_YESNO | platform::MB_ICONQUESTION) == platform::IDYES;
}

// ---- What jobs show

void frmMain::pvSetProgress(int iPercent) {
    ctlProgress.Value(static_cast<std::int16_t>(iPercent));
}

bool frmMain::cancelled() {
    return platform::GetAsyncKeyState(platform::VK_SHIFT) < 0 ||
           platform::GetAsyncKeyState(platform::VK_CONTROL) < 0 ||
           platform::GetAsyncKeyState(platform::VK_MENU) < 0;
}

void frmMain::showWait(TextView sInfo) {
    if (!m_frmWait.Load(hWnd())) return;
    m_frmWait.sInfo(Text(sInfo));
    m_frmWait.showNow();
}

void frmMain::closeWait() { (void)m_frmWait.Unload(); }

void frmMain::enableSave(bool bEnabled) {
    setMenuState(mnuSave, platform::MFS_DISABLED, !bEnabled);
}

void frmMain::focusList() {
    try {
        fxGrid.SetFocus();
    } catch (const std::exception&) {  // the job that ends with it is done all the same
    }
}
