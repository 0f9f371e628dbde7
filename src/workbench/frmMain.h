// workbench/frmMain.h: the main window: the pair's list, its menu, and the commands on them.
//
// The commands themselves are functions of workbench/logic; here is what they show and ask. Each
// command that a person starts runs to its end before the next one begins, the boxes it shows
// included; what cannot be done says so in a box and changes nothing else.
#pragma once
#include "controls/ctlProgressXP.h"
#include "controls/ctlUniButtonXP.h"
#include "controls/ctlUniCheckXP.h"
#include "controls/ctlUniFrameXP.h"
#include "controls/ctlUniLabel.h"
#include "controls/ctlUniTextBoxXP.h"
#include "controls/ctlUniTooltipManager.h"
#include "grid/ctlUniGrid.h"
#include "host/Form.h"
#include "menu/ctlUTF8Menu.h"
#include "workbench/InputForm.h"
#include "workbench/PlainLabel.h"
#include "workbench/frmAbout.h"
#include "workbench/frmFindReplace.h"
#include "workbench/frmWait.h"
#include "workbench/logic/PairList.h"
#include "workbench/logic/job.h"
#include "workbench/menuEntries.h"
#include "workbench/menuPictures.h"

class frmMain final : public Form, private JobListener {
public:
    frmMain();
    ~frmMain() override;

    // Loads and shows the window. sCommandLine: that of the process, or none, as the names of the
    // main and of the translated file; with both the pair is loaded. Raises what the start of the
    // window system or of a control raises, and 6 for a command line that is too long.
    void Start(TextView sCommandLine);
    Event<> Closed;  // the window has ended, and with it the program is to end

    void ShowError(TextView sError);
    void ShowInfo(TextView sInfo);
    bool ShowYesNo(TextView sQuestion, TextView sTitle = {});  // true for Yes

    // For a process that ends without having asked: writes what is not saved, the text of an open
    // editor included, into the file that a failed save leaves behind. Gives its path in the
    // system's spelling; empty when there is nothing to keep. Raises as rescueEdits.
    [[nodiscard]] Text KeepEdits() const;

    // What is shown, for those who test it.
    [[nodiscard]] ctlUniGrid& grid() { return fxGrid; }
    [[nodiscard]] const PairList& list() const { return m_list; }
    [[nodiscard]] frmFindReplace& findDialog() { return m_frmFindReplace; }
    [[nodiscard]] ctlUniCheckXP& saveEmptyBox() { return chkSaveEmptyVal; }
    [[nodiscard]] Text shownMainFile() const { return txtFileIn.Text(); }
    [[nodiscard]] Text shownTransFile() const { return txtFileOut.Text(); }
    void command(MenuEntry entry);  // as a pick in the menu; nothing for a disabled entry
    [[nodiscard]] bool isEnabled(MenuEntry entry) const;
    [[nodiscard]] bool isChecked(MenuEntry entry) const;

protected:
    void onLoad() override;
    void onResize() override;
    void onQueryUnload(bool& bCancel, UnloadReason reason) override;
    void onUnload(bool& bCancel) override;
    void onDestroy() override;
    bool onMessage(std::uint32_t uMsg, platform::WPARAM wParam, platform::LPARAM lParam,
                   platform::LRESULT& result) override;
    bool onFormKey(HWND hWnd, std::uint32_t uMsg, platform::WPARAM wParam,
                   platform::LPARAM lParam) override;

private:
    // JobListener: a job shows itself by the wait window and the progress bar, and looks at the
    // keys while it runs.
    void pvSetProgress(int iPercent) override;
    [[nodiscard]] bool cancelled() override;
    void showWait(TextView sInfo) override;
    void closeWait() override;
    void enableSave(bool bEnabled) override;
    void focusList() override;

    // The start.
    void placeControls();
    void connectEvents();
    void readSettings();
    void attachMenu();
    void takeCommandLine(TextView sCommandLine);

    // Commands.
    void runCommand(const std::function<void()>& f);
    void pick(MenuEntry entry);
    void chooseFile(bool bMain);
    void takeDroppedFiles(const std::vector<Text>& files);
    void setFile(bool bMain, const Text& sFile);
    void pvLoadFiles();
    void pvLoadIfBoth();
    bool pvSaveFiles();  // false: nothing was written, and the person knows
    void pvAskSaveChanges(bool& bCancel);
    void pvRescueEdits(bool& bCancel);
    void createNewTranslation(bool bFull);
    void findNextUntranslated();
    void gotoLine();
    void toggleFilter();
    void showHelp();
    void editCurrentRow();
    void popupTools();
    void showAbout();
    void showFailure(TextView sMessage);

    [[nodiscard]] Text rowInWords(std::int32_t iRow) const;
    void setMenuState(MenuEntry entry, std::uint32_t bit, bool bOn);
    [[nodiscard]] bool menuState(MenuEntry entry, std::uint32_t bit) const;

    ctlUniFrameXP ctlUniFrameXP1, ctlUniFrameXP2;
    ctlUniLabel lblIstro, ctlUniLabel1;
    PlainLabel Label1, Label2;
    ctlUniTextBoxXP txtFileIn, txtFileOut;
    ctlUniButtonXP btnFileIn, btnFileOut;
    ctlUniCheckXP chkSaveEmptyVal;
    ctlUniGrid fxGrid;
    ctlProgressXP ctlProgress;
    ctlUTF8Menu ctlUTF8Menu1;
    ctlUniTooltipManager ctlUniTooltipManager1;
    EntryPictures m_pictures;

    frmWait m_frmWait;
    frmFindReplace m_frmFindReplace{fxGrid};

    PairList m_list{fxGrid};
    Text m_sFileIn, m_sFileOut;  // paths in the inside form; the boxes show the system's spelling
    bool m_bRunning = false;     // a command runs
    bool m_bCloseLater = false;  // the window was asked to close meanwhile
    bool m_bWordsArmed = false;  // a coming click on the words beside the check box may toggle it
};
