// controls/ctlUniToolTip.h: the one window that shows tips.
//
// It knows no controls: it follows a text and the position of the mouse, and hides by timers.
//
//   Idle     SetTip with a text: Waiting, by TimerActivate
//   Waiting  400 ms, the mouse at rest: Showing; moved: Idle
//   Showing  the mouse moved (looked at every 100 ms), 3000 ms over, or HideTip: Idle
//
// After its end (Unload) every call does nothing.
#pragma once
#include "controls/ctlUniLabel.h"
#include "host/Form.h"
#include "host/tipService.h"
#include "win/cUniTimer.h"
#include "win/clsScreens.h"

class ctlUniToolTip final : public Form, public TipWindow, private UniTimerOwner {
public:
    ctlUniToolTip();
    ~ctlUniToolTip() override;

    // A text of blanks hides the tip. The same text at the same position of the mouse changes
    // nothing, unless tips are persistent. lMaxWidth: pixels; below 1 the tip is not wrapped.
    void SetTip(const Text& sTip, std::int32_t lMaxWidth, const std::optional<Text>& sTag) override;
    // Changes the text in place; no timer is touched.
    void UpdateTip(const Text& sTip, std::int32_t lMaxWidth,
                   const std::optional<Text>& sTag) override;
    [[nodiscard]] Text GetTip() const override { return m_sTip; }
    [[nodiscard]] Text GetTipTag() const override { return m_sTag; }
    [[nodiscard]] bool TipIsVisible() const override { return platform::IsWindowVisible(hWnd()); }
    [[nodiscard]] const StdFont& GetFont() const { return lblTip.Font(); }
    void SetFont(const StdFont& oFont) { lblTip.Font(oFont); }
    void HideTip();

    ctlUniLabelNoFlick lblTip;

    // Opacity of a tip, 0 to 255.
    [[nodiscard]] static std::uint8_t alphaOf(std::int16_t iTransparency);

protected:
    void onLoad() override;
    void onUnload(bool& bCancel) override;
    void onDestroy() override { endTips(); }
    [[nodiscard]] Text accessibleText() const override { return m_sTip; }

private:
    void UniTimerFired(std::uint32_t elapsed, std::int32_t nID) override;
    void pvActivateFired();
    void pvHideFired();
    // Takes the tag; a tip of blanks hides the window and ends there: true.
    bool endsTip(const Text& sTip, const std::optional<Text>& sTag);
    void pvSetCaption(const Text& sTip);
    void pvMeasure();
    void pvPlace();
    void pvSetTransparency(std::int16_t iPercent);
    void endTips();

    bool m_bUnloading = false;
    POINT m_tCursor;  // where the mouse was when the present tip was set
    std::int32_t m_lMaxWidth = -1;
    Text m_sTip, m_sTag;
    std::int16_t m_iTransparency = 0;
    clsScreens m_oScreens;
    cUniTimer TimerActivate, TimerActiveMM, TimerHideTip;
};
