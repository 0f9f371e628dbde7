#include "workbench/frmInputBox.h"

#include "gfx/modCtlCommon_ctl_text.h"
#include "platform/base/casemap.h"
#include "workbench/modMain.h"
#include "workbench/product.h"
#include "workbench/storedValues.h"

frmInputBox::frmInputBox() { ClientSize(PixelsX(4395), PixelsY(1785)); }

void frmInputBox::onLoad() {
    placeControl(*this, lblText, u"lblText", PlaceOfTwips(120, 120, 2925, 1215));
    placeControl(*this, txtText, u"txtText", PlaceOfTwips(90, 1410, 4215, 315));
    placeControl(*this, btnOk, u"btnOk", PlaceOfTwips(3120, 120, 1185, 375),
                 StoredValues().text(u"Caption", u"&OK"));
    placeControl(*this, btnCancel, u"btnCancel", PlaceOfTwips(3120, 570, 1185, 375),
                 StoredValues().text(u"Caption", u"&Cancel"));
    connectButtons();
    btnOk.Default(true);
    if (g_bHasUnicodeFont) ApplyUnicodeFont(*this);
    CenterOnScreen();
}

void frmInputBox::InitMap(TextView Prompt, TextView Title, TextView Default,
                          TextView PasswordChar) {
    lblText.Caption(Text(Prompt));
    txtText.AccessibleName(Text(Prompt));
    Caption(Text(Title.empty() ? kProductName : Title));
    txtText.PasswordChar(Text(PasswordChar));
    txtText.Text(Default);
    start();
}

// A button takes no letter itself, but these two show one.
bool frmInputBox::onFormKey(HWND hWnd, std::uint32_t uMsg, platform::WPARAM wParam,
                            platform::LPARAM lParam) {
    if (uMsg == platform::WM_SYSCHAR) {
        switch (platform::lowerUnit(static_cast<char16_t>(wParam))) {
        case u'o':
            confirm();
            return true;
        case u'c':
            cancel();
            return true;
        default:
            break;
        }
    }
    return InputForm::onFormKey(hWnd, uMsg, wParam, lParam);
}
