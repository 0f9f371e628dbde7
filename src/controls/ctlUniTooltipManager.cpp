#include "controls/ctlUniTooltipManager.h"

#include "controls/ctlUniToolTip.h"
#include "host/PropertyTable.h"

namespace {

const PropertyTable<ctlUniTooltipManager::Props>& properties() {
    using P = ctlUniTooltipManager::Props;
    static const PropertyTable<P> table{
        {u"PersistentTip", &P::PersistentTip},
        {u"ActivateTips", &P::ActivateTips},
        {u"TipBgColor", &P::TipBgColor},
        {u"TipFgColor", &P::TipFgColor},
        {u"Style", &P::Style},
        {u"Transparency", &P::Transparency},
    };
    return table;
}

}  // namespace

ctlUniTooltipManager::~ctlUniTooltipManager() {
    if (m_bUserMode) pvDeactivate();
}

void ctlUniTooltipManager::ReadProperties(const PropertyBag& oBag) {
    properties().read(oBag, m_props, {});
    m_oFont = oBag.ReadProperty(u"Font", StdFont());
    pvActivate();
}

void ctlUniTooltipManager::WriteProperties(PropertyBag& oBag) const {
    properties().write(oBag, m_props, {});
    oBag.WriteProperty(u"Font", m_oFont, StdFont());
}

// ---- On and off

// The tip window, made when it is not there; nullptr in a designer and while tips are off.
ctlUniToolTip* ctlUniTooltipManager::tipForm() const {
    TipService& service = tipService();
    if (!m_bUserMode || !service.m_bTipsActive) return nullptr;
    if (service.m_oTipForm == nullptr) service.m_oTipForm = service.makeTipForm();
    return dynamic_cast<ctlUniToolTip*>(service.m_oTipForm.get());
}

void ctlUniTooltipManager::pvActivate() {
    if (!m_bUserMode) return;
    TipService& service = tipService();
    service.makeTipForm = []() -> std::unique_ptr<TipWindow> {
        auto made = std::make_unique<ctlUniToolTip>();
        if (!made->Load()) return nullptr;
        return made;
    };
    service.m_bPersistentTip = m_props.PersistentTip;
    if (!m_props.ActivateTips) return;
    if (!service.m_bTipsActive) service.m_oTipForm.reset();  // one that was unloaded stays silent
    service.m_bTipsActive = true;
    if (!m_bCounted) ++service.m_lTipManagers;
    m_bCounted = true;
    TipBgColor(m_props.TipBgColor);
    TipFgColor(m_props.TipFgColor);
    TipFont(m_oFont);
    Style(m_props.Style);
    Transparency(m_props.Transparency);
}

void ctlUniTooltipManager::pvDeactivate() {
    if (!m_bCounted) return;
    m_bCounted = false;
    TipService& service = tipService();
    if (--service.m_lTipManagers > 0) return;
    service.m_bTipsActive = false;
    service.m_oTipForm.reset();
}

// ---- Properties

void ctlUniTooltipManager::PersistentTip(bool b) {
    m_props.PersistentTip = b;
    if (m_bUserMode) tipService().m_bPersistentTip = b;
}

void ctlUniTooltipManager::ActivateTips(bool b) {
    m_props.ActivateTips = b;
    if (!m_bUserMode) return;
    if (b) {
        pvActivate();
    } else {
        pvDeactivate();
    }
}

void ctlUniTooltipManager::TipFont(const StdFont& oFont) {
    m_oFont = oFont;
    if (ctlUniToolTip* form = tipForm()) {
        form->Font(m_oFont);
        form->SetFont(m_oFont);
    }
}

void ctlUniTooltipManager::TipBgColor(Color iColor) {
    m_props.TipBgColor = iColor;
    if (ctlUniToolTip* form = tipForm()) form->lblTip.BackColor(iColor);
}

void ctlUniTooltipManager::TipFgColor(Color iColor) {
    m_props.TipFgColor = iColor;
    if (ctlUniToolTip* form = tipForm()) form->lblTip.ForeColor(iColor);
}

void ctlUniTooltipManager::Style(std::int32_t iStyle) {
    m_props.Style = iStyle;
    if (ctlUniToolTip* form = tipForm()) form->lblTip.Style(iStyle);
}

void ctlUniTooltipManager::Transparency(std::int16_t iPercent) {
    m_props.Transparency = iPercent;
    if (m_bUserMode) tipService().m_iTipTransparency = iPercent;
}

// ---- Forwards

void ctlUniTooltipManager::SetTip(const Text& sTip, std::int32_t lMaxWidth,
                                  const std::optional<Text>& sTag) const {
    ShowTip(sTip, lMaxWidth, sTag);
}

void ctlUniTooltipManager::UpdateTip(const Text& sTip, std::int32_t lMaxWidth,
                                     const std::optional<Text>& sTag) const {
    ::UpdateTip(sTip, lMaxWidth, sTag);
}

void ctlUniTooltipManager::HideTip() const { ShowTip({}, kTipWidth); }
