// workbench/frmInputTranslation.h: the dialog in which one translation is edited.
#pragma once
#include "controls/ctlUniLabel.h"
#include "workbench/InputForm.h"

class frmInputTranslation final : public InputForm {
public:
    frmInputTranslation();

    // Of a loaded form: the default text above, the translation to start from below.
    void InitMap(TextView sDefaultText, TextView sTranslatedText);
    // What stands in the lower box, unless it still is what it started from.
    [[nodiscard]] std::optional<Text> Typed() const;

protected:
    void onLoad() override;

private:
    ctlUniLabel ctlUniLabel1, ctlUniLabel2;
    ctlUniTextBoxXP txtTextOrig;
    Text m_sStart;
};
