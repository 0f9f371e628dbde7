// What the commands of the main window do.
#include "file/ufu_files.h"
#include "host/tipService.h"
#include "langfile/foldedText.h"
#include "platform/base/folders.h"
#include "platform/base/paths.h"
#include "platform/window/dialogs.h"
#include "platform/window/input.h"
#include "platform/window/shell.h"
#include "win/modCommDialogs.h"
#include "workbench/frmInputTranslation.h"
#include "workbench/frmMain.h"
#include "workbench/logic/columns.h"
#include "workbench/logic/editRow.h"
#include "workbench/logic/loadPair.h"
#include "workbench/logic/newTranslation.h"
#include "workbench/logic/rescueEdits.h"
#include "workbench/logic/saveTranslation.h"
#include "workbench/logic/searchRows.h"
#include "workbench/modMain.h"
#include "workbench/product.h"

using platform::LPARAM;
using platform::LRESULT;
using platform::WPARAM;

namespace {

constexpr char16_t kFilterUnits[] = u"Language Files\0*.lng; *.ini\0All Files (*.*)\0*.*\0";
constexpr TextView kFilter(kFilterUnits, std::size(kFilterUnits) - 1);
constexpr std::int32_t kOpenFlags =
    platform::OFN_EXPLORER | platform::OFN_PATHMUSTEXIST | platform::OFN_FILEMUSTEXIST;

// Runs f; a failure closes the wait window and is shown. Whether there was none.
template <class F, class Show> bool guarded(F f, Show show) {
    try {
        f();
        return true;
    } catch (const std::exception&) {
        show(messageOf(std::current_exception()));
        return false;
    }
}

// What is not saved goes into the user's folder for it. Raises as rescueEdits.
Text keptEdits(const PairList& list, const std::optional<OpenEdit>& open = {}) {
    return rescueEdits(list, platform::userStateFolder("quillmere"), platform::timeForFileName(),
                       open);
}

}  // namespace

// ---- How a command runs

void frmMain::runCommand(const std::function<void()>& f) {
    if (m_bRunning) return;
    m_bRunning = true;
    (void)guarded(f, [this](const Text& sMessage) { showFailure(sMessage); });
    m_bRunning = false;
    if (std::exchange(m_bCloseLater, false)) {
        (void)platform::PostMessageW(hWnd(), platform::WM_CLOSE, 0, 0);
    }
}

void frmMain::showFailure(TextView sMessage) {
    closeWait();
    pvSetProgress(0);
    ShowError(sMessage);
}

void frmMain::command(MenuEntry entry) {
    if (isEnabled(entry)) pick(entry);
}

void frmMain::pick(MenuEntry entry) {
    if (entry == mnuExit) {
        (void)Unload();
        return;
    }
    runCommand([this, entry] {
        switch (entry) {
        case mnuOpenMainFile:
            return chooseFile(true);
        case mnuOpenTranslatedFile:
            return chooseFile(false);
        case mnuCreateNewTranslationEmpty:
            return createNewTranslation(false);
        case mnuCreateNewTranslationFull:
            return createNewTranslation(true);
        case mnuSave:
            (void)pvSaveFiles();
            return;
        case mnuFindNextUntranslated:
            return findNextUntranslated();
        case mnuFindPhrase:
            return ShowFindDialog(m_frmFindReplace, hWnd(), kFindDefault, g_sFindPhrase);
        case mnuFindTransPhrase:
            return ShowFindDialog(m_frmFindReplace, hWnd(), kFindTranslation, g_sFindTranslation);
        case mnuShowOnlyUntranslated:
            return toggleFilter();
        case mnuGotoLine:
            return gotoLine();
        case mnuShowHelp:
            return showHelp();
        case mnuAbout:
            return showAbout();
        default:
            return;
        }
    });
}

bool frmMain::onMessage(std::uint32_t uMsg, WPARAM wParam, LPARAM lParam, LRESULT& result) {
    switch (uMsg) {
    case platform::WM_COMMAND:
        if (lParam == 0) command(static_cast<MenuEntry>(wParam));
        break;
    case platform::WM_DROPFILES:
        runCommand([&] { takeDroppedFiles(*reinterpret_cast<const std::vector<Text>*>(lParam)); });
        return true;
    default:
        break;
    }
    return Form::onMessage(uMsg, wParam, lParam, result);
}

// Enter that is held down would confirm what it has just opened.
bool frmMain::onFormKey(HWND, std::uint32_t uMsg, WPARAM wParam, LPARAM lParam) {
    return isRepeatedEnter(uMsg, wParam, lParam);
}

// ---- Files

void frmMain::chooseFile(bool bMain) {
    bool bCancel = false;
    pvAskSaveChanges(bCancel);
    if (bCancel) return;
    std::int32_t lFlags = kOpenFlags;
    const Text sFile = ShowOpen(hWnd(), kFilter, u"Open File", lFlags, {}, {}, {});
    if (!sFile.empty()) setFile(bMain, sFile);
    pvLoadIfBoth();
}

void frmMain::takeDroppedFiles(const std::vector<Text>& files) {
    std::vector<Text> existing;
    std::ranges::copy_if(files, std::back_inserter(existing), ufu_FileExist);
    if (existing.empty()) return;
    bool bCancel = false;
    pvAskSaveChanges(bCancel);
    if (bCancel) return;
    setFile(true, existing[0]);
    if (existing.size() > 1) setFile(false, existing[1]);
    pvLoadIfBoth();
}

void frmMain::pvLoadIfBoth() {
    if (!m_sFileIn.empty() && !m_sFileOut.empty()) pvLoadFiles();
}

void frmMain::pvLoadFiles() {
    (void)guarded(
        [this] {
            loadPair(m_list,
                     {.sMainFile = m_sFileIn,
                      .sTransFile = m_sFileOut,
                      .bOnlyUntranslated = isChecked(mnuShowOnlyUntranslated)},
                     *this);
        },
        [this](const Text& sMessage) { showFailure(sMessage); });
}

bool frmMain::pvSaveFiles() {
    const std::int32_t lRow = fxGrid.Row();
    const auto show = [this](const Text& sMessage) { showFailure(sMessage); };
    const bool saved = guarded(
        [this] {
            // The box keeps a name that was refused for the pair: it may be that of the main file.
            requireTwoFiles(m_sFileIn, m_sFileOut);
            saveTranslation(fxGrid, m_sFileOut, chkSaveEmptyVal.Pressed(), *this);
        },
        show);
    if (!saved) return false;
    pvLoadFiles();
    (void)guarded([&] { fxGrid.Row(lRow); }, show);
    return true;
}

void frmMain::pvAskSaveChanges(bool& bCancel) {
    bCancel = false;
    if (!m_list.m_bDirty) return;
    switch (platform::MessageBoxW(hWnd(), u"Save the translated file?", u"Attention",
                                  platform::MB_YESNOCANCEL | platform::MB_ICONQUESTION)) {
    case platform::IDYES:
        if (!pvSaveFiles()) pvRescueEdits(bCancel);
        break;
    case platform::IDCANCEL:
        bCancel = true;
        break;
    default:
        break;
    }
}

// What is about to go on would lose what was typed. If even that cannot be kept, nothing goes on.
void frmMain::pvRescueEdits(bool& bCancel) {
    Text sFile;
    const bool kept = guarded(
        [&] { sFile = keptEdits(m_list); },
        [this](const Text& sMessage) {
            ShowError(sMessage + u"\r\n\r\nYour changes could not be kept anywhere else either. "
                                 u"Nothing has been closed.");
        });
    bCancel = !kept;
    if (sFile.empty()) return;
    ShowInfo(u"Your changes could not be saved. They have been kept in this file:\r\n\r\n" +
             platform::pathForDisplay(sFile) +
             u"\r\n\r\n\"quillmere-cli apply MAIN TRANSLATED\" and the name of this file put them "
             u"into the translated file.");
}

Text frmMain::KeepEdits() const {
    std::optional<OpenEdit> open;
    HostWindow::forEachHost([&](HostWindow& host) {
        const auto* const editor = dynamic_cast<frmInputTranslation*>(&host);
        if (editor == nullptr) return;
        if (std::optional<Text> sText = editor->Typed()) open = {fxGrid.Row(), *std::move(sText)};
    });
    return platform::pathForDisplay(keptEdits(m_list, open));
}

void frmMain::createNewTranslation(bool bFull) {
    bool bCancel = false;
    pvAskSaveChanges(bCancel);
    if (bCancel) return;
    requireMainFile(m_sFileIn);
    const Text sName = UniInputBox(hWnd(), u"Name of the new file", {}, {}, bCancel);
    // What is typed is the system's spelling.
    const Text sNewFile = newTranslationPath(m_sFileIn, platform::pathFromSystem(toUtf8(sName)));
    if (bFull) {
        setFile(false, sNewFile);
        createCopiedTranslation(m_sFileIn, sNewFile);
    } else {
        createEmptyTranslation(sNewFile);
        setFile(false, sNewFile);
    }
    pvLoadFiles();
    m_list.m_bDirty = !bFull;
    enableSave(!bFull);
    if (bFull) ShowInfo(u"The file has been created!");
}

// ---- Rows

void frmMain::findNextUntranslated() {
    const std::int32_t row = nextUntranslated(fxGrid);
    if (row < 0) return;
    fxGrid.Row(row);
    focusList();
}

void frmMain::gotoLine() {
    bool bCancel = false;
    const std::int32_t row = rowOfNumber(fxGrid, UniInputBox(hWnd(), u"Line:", {}, {}, bCancel));
    if (row < 0) return;
    fxGrid.Row(row);
    focusList();
}

void frmMain::toggleFilter() {
    setMenuState(mnuShowOnlyUntranslated, platform::MFS_CHECKED,
                 !isChecked(mnuShowOnlyUntranslated));
    if (m_sFileIn.empty() || m_sFileOut.empty()) return;
    bool bCancel = false;
    pvAskSaveChanges(bCancel);
    if (!bCancel) pvLoadFiles();
}

void frmMain::editCurrentRow() {
    const std::int32_t row = fxGrid.Row();
    // The number may be left over: keys move it in a list without rows, too.
    if (row < 1 || row > fxGrid.Rows()) return;
    const Text sDefault(fxGrid.CellText(row, kDefaultColumn));
    const Text sTrans(fxGrid.CellText(row, kTranslationColumn));
    bool bCancel = false;
    const Text s = InputTranslation(hWnd(), sDefault, startingText(sDefault, sTrans), bCancel);
    if (!bCancel) confirmEdit(m_list, row, s, *this);
}

void frmMain::popupTools() {
    platform::POINT at;
    if (!platform::GetCursorPos(at)) return;
    (void)platform::TrackPopupMenu(submenuOf(platform::GetMenu(hWnd()), mnuTools),
                                   platform::TPM_LEFTALIGN, at.x, at.y, hWnd());
}

Text frmMain::rowInWords(std::int32_t iRow) const {
    const auto cell = [&](std::int32_t column) { return Text(fxGrid.CellText(iRow, column)); };
    const bool untranslated = trimBlanks(fxGrid.CellText(iRow, kTranslationColumn)).empty();
    return u"row " + cell(kRowColumn) + u", " + cell(kSectionColumn) + u", " + cell(kKeyColumn) +
           u", " + cell(kDefaultColumn) + u", " +
           (untranslated ? Text(u"untranslated") : cell(kTranslationColumn));
}

// ---- Help

void frmMain::showHelp() {
    constexpr int kNormalWindow = 1;
    ctlUniTooltipManager1.HideTip();
    const Text page = helpPage();
    const bool opened =
        !page.empty() && platform::ShellExecuteW(hWnd(), u"open", page, {}, {}, kNormalWindow) >=
                             platform::SE_ERR_SUCCESS;
    if (!opened) ShowError(u"The help page cannot be opened");
}

void frmMain::showAbout() {
    frmAbout about;
    about.Show(true, hWnd());
}

// ---- State of the menu

bool frmMain::isEnabled(MenuEntry entry) const { return !menuState(entry, platform::MFS_DISABLED); }

bool frmMain::isChecked(MenuEntry entry) const { return menuState(entry, platform::MFS_CHECKED); }

bool frmMain::menuState(MenuEntry entry, std::uint32_t bit) const {
    platform::MENUITEMINFOW item;
    item.fMask = platform::MIIM_STATE;
    return platform::GetMenuItemInfoW(platform::GetMenu(hWnd()), entry, false, item) &&
           (item.fState & bit) != 0;
}

void frmMain::setMenuState(MenuEntry entry, std::uint32_t bit, bool bOn) {
    platform::MENUITEMINFOW item;
    item.fMask = platform::MIIM_STATE;
    const platform::HMENU bar = platform::GetMenu(hWnd());
    if (!platform::GetMenuItemInfoW(bar, entry, false, item)) return;
    item.fState = bOn ? item.fState | bit : item.fState & ~bit;
    (void)platform::SetMenuItemInfoW(bar, entry, false, item);
}
