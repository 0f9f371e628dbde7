// workbench/frmFindReplace.h: the search dialog, which stays open beside the main window.
#pragma once
#include "controls/ctlUniButtonXP.h"
#include "controls/ctlUniLabel.h"
#include "controls/ctlUniTextBoxXP.h"
#include "host/Form.h"
#include "workbench/logic/searchRows.h"

class frmFindReplace final : public Form {
public:
    explicit frmFindReplace(GridData& fxGrid);  // the list, whose row follows what is found

    // Of a loaded form.
    void InitMap(FindMode iMode, TextView sText);

protected:
    void onLoad() override;
    bool onFormKey(HWND hWnd, std::uint32_t uMsg, platform::WPARAM wParam,
                   platform::LPARAM lParam) override;

private:
    void btnFindNext_Click();

    GridData& m_fxGrid;
    ctlUniLabel lblFind;
    ctlUniTextBoxXP txtText;
    ctlUniButtonXP btnFindNext, btnCancel;
    FindMode m_iFindMode = kFindDefault;
};
