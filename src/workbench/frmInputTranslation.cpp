#include "workbench/frmInputTranslation.h"

#include "gfx/modCtlCommon_ctl_text.h"
#include "workbench/modMain.h"
#include "workbench/storedValues.h"

frmInputTranslation::frmInputTranslation() {
    Caption(u"Translation");
    ClientSize(PixelsX(4335), PixelsY(3975));
}

void frmInputTranslation::onLoad() {
    const auto label = [](const Text& sCaption) {
        return StoredValues().text(u"Caption", sCaption).flag(u"AutoSize", true);
    };
    const auto box = [] {
        return StoredValues().flag(u"MultiLine", true).number(u"ScrollBars", 2);
    };
    const auto button = [](const Text& sCaption) {
        return StoredValues().text(u"Caption", sCaption);
    };
    placeControl(*this, ctlUniLabel1, u"ctlUniLabel1", PlaceOfTwips(90, 90, 510, 195),
                 label(u"Default"));
    placeControl(*this, txtTextOrig, u"txtTextOrig", PlaceOfTwips(60, 330, 4215, 1365),
                 box().flag(u"Locked", true));
    placeControl(*this, ctlUniLabel2, u"ctlUniLabel2", PlaceOfTwips(90, 1740, 780, 195),
                 label(u"Translation"));
    placeControl(*this, txtText, u"txtText", PlaceOfTwips(60, 1980, 4215, 1365), box());
    placeControl(*this, btnOk, u"btnOk", PlaceOfTwips(900, 3480, 1185, 375), button(u"Ok"));
    placeControl(*this, btnCancel, u"btnCancel", PlaceOfTwips(2280, 3480, 1185, 375),
                 button(u"Cancel"));
    txtTextOrig.AccessibleName(u"Default");
    txtText.AccessibleName(u"Translation");
    connectButtons();
    if (g_bHasUnicodeFont) ApplyUnicodeFont(*this);
    CenterOnScreen();
}

void frmInputTranslation::InitMap(TextView sDefaultText, TextView sTranslatedText) {
    txtTextOrig.Text(sDefaultText);
    txtText.Text(sTranslatedText);
    m_sStart = txtText.Text();
    start();
}

std::optional<Text> frmInputTranslation::Typed() const {
    Text s = txtText.Text();
    if (s == m_sStart) return {};
    return s;
}
