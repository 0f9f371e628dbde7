#include "workbench/frmFindReplace.h"

#include "gfx/modCtlCommon_ctl_text.h"
#include "langfile/foldedText.h"
#include "workbench/InputForm.h"
#include "workbench/modMain.h"
#include "workbench/storedValues.h"

frmFindReplace::frmFindReplace(GridData& fxGrid)
    : Form(platform::WindowKind::Dialog), m_fxGrid(fxGrid) {
    Caption(u"Find");
    ClientSize(PixelsX(4815), PixelsY(1410));
}

void frmFindReplace::onLoad() {
    placeControl(*this, lblFind, u"lblFind", PlaceOfTwips(210, 150, 735, 195),
                 StoredValues().text(u"Caption", u"").flag(u"AutoSize", true));
    placeControl(*this, txtText, u"txtText", PlaceOfTwips(210, 390, 2985, 345));
    placeControl(*this, btnFindNext, u"btnFindNext", PlaceOfTwips(3270, 390, 1365, 345),
                 StoredValues().text(u"Caption", u"Find Next"));
    placeControl(*this, btnCancel, u"btnCancel", PlaceOfTwips(3270, 900, 1365, 345),
                 StoredValues().text(u"Caption", u"Cancel"));
    btnFindNext.Click = [this] { btnFindNext_Click(); };
    btnCancel.Click = [this] { (void)Unload(); };
    btnFindNext.Default(true);
    btnCancel.Cancel(true);
    if (g_bHasUnicodeFont) ApplyUnicodeFont(*this);
    CenterOnScreen();
}

void frmFindReplace::InitMap(FindMode iMode, TextView sText) {
    m_iFindMode = iMode;
    txtText.Text(sText);
    txtText.SelStart(0);
    txtText.SelLength(static_cast<std::int32_t>(sText.size()));
    lblFind.Caption(iMode == kFindTranslation ? u"Find Translation:" : u"Find Phrase:");
    txtText.AccessibleName(lblFind.Caption());
    txtText.SetFocus();
}

void frmFindReplace::btnFindNext_Click() {
    const Text s = txtText.Text();
    if (const TextView trimmed = trimBlanks(s); !trimmed.empty()) {
        (m_iFindMode == kFindTranslation ? g_sFindTranslation : g_sFindPhrase) = trimmed;
    }
    const std::int32_t row = nextWithText(m_fxGrid, m_iFindMode, s);
    if (row < 0) {
        ShowFindError(u"Search text is not found");
        return;
    }
    m_fxGrid.Row(row);
}

bool frmFindReplace::onFormKey(HWND, std::uint32_t uMsg, platform::WPARAM wParam,
                               platform::LPARAM lParam) {
    return isRepeatedEnter(uMsg, wParam, lParam);
}
