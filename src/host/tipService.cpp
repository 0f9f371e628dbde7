#include "host/tipService.h"

TipService& tipService() {
    static TipService service;
    return service;
}

namespace {

// The tip window, made when it is not there yet; nullptr when it cannot be.
TipWindow* tipForm() {
    TipService& service = tipService();
    if (service.m_oTipForm == nullptr && service.makeTipForm) {
        service.m_oTipForm = service.makeTipForm();
    }
    return service.m_oTipForm.get();
}

}  // namespace

void ShowTip(const Text& sTip, std::int32_t lMaxWidth, const std::optional<Text>& sTag) {
    if (!tipService().m_bTipsActive) return;
    if (sTip.empty() && !sTag && GetTip().empty()) return;
    if (TipWindow* form = tipForm()) form->SetTip(sTip, lMaxWidth, sTag);
}

void UpdateTip(const Text& sTip, std::int32_t lMaxWidth, const std::optional<Text>& sTag) {
    if (!tipService().m_bTipsActive) return;
    if (TipWindow* form = tipForm()) form->UpdateTip(sTip, lMaxWidth, sTag);
}

// A tip window that nobody needed yet has no text: it is not made to be asked.
Text GetTip() {
    const TipService& service = tipService();
    return service.m_bTipsActive && service.m_oTipForm ? service.m_oTipForm->GetTip() : Text();
}

Text GetTipTag() {
    const TipService& service = tipService();
    return service.m_bTipsActive && service.m_oTipForm ? service.m_oTipForm->GetTipTag() : Text();
}

bool TipIsVisible() {
    const TipService& service = tipService();
    return service.m_bTipsActive && service.m_oTipForm && service.m_oTipForm->TipIsVisible();
}
