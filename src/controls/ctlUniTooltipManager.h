// controls/ctlUniTooltipManager.h: switches the program's tips on and says how they look.
//
// A form holds one as a member. Tips work from the first manager that is active to the end of the
// last one. Nothing here fails.
#pragma once
#include "gfx/types.h"
#include "host/PropertyBag.h"
#include "host/tipService.h"

class ctlUniToolTip;

class ctlUniTooltipManager {
public:
    ctlUniTooltipManager() = default;
    ~ctlUniTooltipManager();
    ctlUniTooltipManager(const ctlUniTooltipManager&) = delete;
    ctlUniTooltipManager& operator=(const ctlUniTooltipManager&) = delete;

    // False in a designer, where nothing is switched on; set it ahead of the properties.
    [[nodiscard]] bool UserMode() const { return m_bUserMode; }
    void UserMode(bool b) { m_bUserMode = b; }

    // Reads the properties, then activates. A fresh manager reads an empty bag.
    void InitProperties() { ReadProperties({}); }
    void ReadProperties(const PropertyBag& oBag);
    void WriteProperties(PropertyBag& oBag) const;

    // In a running program the setters reach the tips at once.
    [[nodiscard]] bool PersistentTip() const { return m_props.PersistentTip; }
    void PersistentTip(bool b);
    [[nodiscard]] bool ActivateTips() const { return m_props.ActivateTips; }
    void ActivateTips(bool b);
    [[nodiscard]] const StdFont& TipFont() const { return m_oFont; }
    void TipFont(const StdFont& oFont);
    [[nodiscard]] Color TipBgColor() const { return m_props.TipBgColor; }
    void TipBgColor(Color iColor);
    [[nodiscard]] Color TipFgColor() const { return m_props.TipFgColor; }
    void TipFgColor(Color iColor);
    [[nodiscard]] std::int32_t Style() const { return m_props.Style; }
    void Style(std::int32_t iStyle);
    [[nodiscard]] std::int16_t Transparency() const { return m_props.Transparency; }
    void Transparency(std::int16_t iPercent);  // 0 to 100

    void SetTip(const Text& sTip, std::int32_t lMaxWidth = -1,
                const std::optional<Text>& sTag = {}) const;
    void UpdateTip(const Text& sTip, std::int32_t lMaxWidth = -1,
                   const std::optional<Text>& sTag = {}) const;
    [[nodiscard]] Text GetTip() const { return ::GetTip(); }
    [[nodiscard]] Text GetTipTag() const { return ::GetTipTag(); }
    [[nodiscard]] bool TipIsVisible() const { return ::TipIsVisible(); }
    void HideTip() const;

    struct Props {  // stored under these names, the font as "Font"
        bool PersistentTip = false, ActivateTips = true;
        Color TipBgColor = sysColor(24), TipFgColor = sysColor(23);
        std::int32_t Style = -1;
        std::int16_t Transparency = 0;
    };

private:
    void pvActivate();
    void pvDeactivate();
    [[nodiscard]] ctlUniToolTip* tipForm() const;

    Props m_props;
    StdFont m_oFont;
    bool m_bUserMode = true;
    bool m_bCounted = false;  // among m_lTipManagers
};
