#include "workbench/modMain.h"

#include "controls/ctlUniLabel.h"
#include "grid/ctlUniGrid.h"
#include "platform/base/failure.h"
#include "platform/base/numbers.h"
#include "platform/window/dialogs.h"
#include "platform/window/settings.h"
#include "workbench/frmFindReplace.h"
#include "workbench/frmInputBox.h"
#include "workbench/frmInputTranslation.h"
#include "workbench/logic/settingsRules.h"
#include "workbench/product.h"

#include <array>
#include <cstdio>

Text g_sFindPhrase;
Text g_sFindTranslation;

std::int32_t GetIntSetting(TextView sKey, std::int32_t lDefault) {
    return platform::leadingNumber(platform::GetSetting(kSettingsApplication, kSettingsSection,
                                                        sKey, fromUtf8(std::to_string(lDefault))));
}

void SaveIntSetting(TextView sKey, std::int32_t lValue) {
    (void)platform::SaveSetting(kSettingsApplication, kSettingsSection, sKey,
                                fromUtf8(std::to_string(lValue)));
}

int UniMsgBox(TextView sText, std::uint32_t iStyle, TextView sTitle) {
    return platform::MessageBoxW(0, sText, sTitle,
                                 iStyle | platform::MB_TASKMODAL | platform::MB_TOPMOST);
}

void ShowFindError(TextView sText) {
    (void)UniMsgBox(sText, platform::MB_OK | platform::MB_ICONSTOP, u"Attention");
}

Text messageOf(const std::exception_ptr& failure) {
    try {
        std::rethrow_exception(failure);
    } catch (const Failure& known) {
        return known.message;
    } catch (const std::bad_alloc&) {
        return u"Out of memory";
    } catch (const std::exception& known) {
        return fromUtf8(known.what());
    }
}

namespace {

// Loads the dialog, fills it, and gives what it was left with.
template <class Dialog, class Fill>
Text answerOf(Dialog& frm, HWND owner, Fill fill, bool& bCancel) {
    if (frm.Load(owner)) {
        fill();
        frm.Show(true, owner);
    }
    bCancel = frm.bCancelled || !frm.Answered();
    return frm.sResult;
}

}  // namespace

Text InputTranslation(HWND owner, TextView sDefaultText, TextView sTranslatedText, bool& bCancel) {
    frmInputTranslation frm;
    return answerOf(
        frm, owner, [&] { frm.InitMap(sDefaultText, sTranslatedText); }, bCancel);
}

Text UniInputBox(HWND owner, TextView Prompt, TextView Title, TextView Default, bool& bCancel) {
    frmInputBox frm;
    return answerOf(
        frm, owner, [&] { frm.InitMap(Prompt, Title, Default); }, bCancel);
}

void ShowFindDialog(frmFindReplace& frmFind, HWND owner, FindMode iMode, TextView sLast) {
    try {
        if (!frmFind.Load(owner)) return;
        frmFind.InitMap(iMode, sLast);
        if (!platform::IsWindowVisible(frmFind.hWnd())) frmFind.Show(false, owner);
    } catch (const Failure& failure) {
        std::array<char, 16> number;
        (void)std::snprintf(number.data(), number.size(), "(%X) - ",
                            static_cast<unsigned>(failure.number));
        (void)platform::MessageBoxW(owner, fromUtf8(number.data()) + failure.message, kProductName,
                                    platform::MB_OK);
    }
}

namespace {

// A font that is given is also taken up. The surface of a grid follows its grid.
void applyTo(HostWindow& host) {
    if (dynamic_cast<LabelControl*>(&host) != nullptr) return;
    if (dynamic_cast<ctlUniGrid*>(HostWindow::find(platform::GetParent(host.hWnd()))) != nullptr) {
        return;
    }
    auto* const fxGrid = dynamic_cast<ctlUniGrid*>(&host);
    StdFont font = fxGrid != nullptr ? fxGrid->Font() : host.Font();
    font.Name = kUnicodeFont;
    if (fxGrid != nullptr) {
        fxGrid->Font(font);
    } else {
        host.Font(font);
    }
}

}  // namespace

void ApplyUnicodeFont(Form& frm) {
    const auto guarded = [](HostWindow& host) {
        try {
            applyTo(host);
        } catch (const std::exception&) {  // not all of them have a font
            return;
        }
    };
    guarded(frm);
    for (HostWindow* const host : frm.Controls()) guarded(*host);
}
