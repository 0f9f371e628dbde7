// host/tipService.h: the one tip of the program, as controls reach it.
//
// Controls hand their tip here on every move of the mouse. The service works while a manager has
// switched it on (controls/ctlUniTooltipManager.h); until then every call does nothing and reads ""
// or false. Nothing here fails.
#pragma once
#include "platform/base/text.h"

#include <functional>
#include <memory>
#include <optional>

// The window that shows tips, as the service sees it. Widths are pixels; below 1: no limit.
class TipWindow {
public:
    virtual ~TipWindow() = default;
    virtual void SetTip(const Text& sTip, std::int32_t lMaxWidth,
                        const std::optional<Text>& sTag) = 0;
    virtual void UpdateTip(const Text& sTip, std::int32_t lMaxWidth,
                           const std::optional<Text>& sTag) = 0;
    [[nodiscard]] virtual Text GetTip() const = 0;
    [[nodiscard]] virtual Text GetTipTag() const = 0;
    [[nodiscard]] virtual bool TipIsVisible() const = 0;
};

struct TipService {
    bool m_bTipsActive = false;
    bool m_bPersistentTip = false;
    std::int16_t m_iTipTransparency = 0;  // per cent
    std::int32_t m_lTipManagers = 0;
    std::unique_ptr<TipWindow> m_oTipForm;  // made on first use
    std::function<std::unique_ptr<TipWindow>()> makeTipForm;
};
[[nodiscard]] TipService& tipService();  // for the tip window and its managers

// Nothing happens when sTip and the present tip are both empty and no tag is given.
void ShowTip(const Text& sTip, std::int32_t lMaxWidth, const std::optional<Text>& sTag = {});
// Changes the text of the tip in place, without a new wait.
void UpdateTip(const Text& sTip, std::int32_t lMaxWidth, const std::optional<Text>& sTag = {});
[[nodiscard]] Text GetTip();
[[nodiscard]] Text GetTipTag();
[[nodiscard]] bool TipIsVisible();

constexpr std::int32_t kTipWidth = 300;  // of the tips of all controls
