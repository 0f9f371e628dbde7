#include "gfx/clsFontHDC.h"

#include "gfx/modCtlCommon_ctl_colors.h"
#include "gfx/rounding.h"
#include "platform/base/failure.h"
#include "platform/window/fonts.h"
#include "platform/window/surface.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

void clsFontHDC::SetFontToDC(HDC lHdc, const FontRequest& font) {
    if (lHdc == 0) throw Failure(kOwnError, u"clsFontHDC.SetFontToDC", u"Cannot use this DC!");

    const bool otherContext = lHdc != m_hDC;
    if (otherContext || font.bForce96DPI != m_bForce96DPI) {
        m_bForce96DPI = font.bForce96DPI;
        m_iResolution = m_bForce96DPI ? 96 : platform::GetDeviceCaps(lHdc, platform::LOGPIXELSY);
    }
    if (otherContext || font.iFontSize != m_iFontSize) {
        m_iFontSize = font.iFontSize;
        m_iHeight = platform::MulDiv(m_iFontSize, -m_iResolution, 72);
    }

    Destroy();
    select(lHdc, font, 0);
    if (font.iCharWeightInc == 0) return;
    platform::TEXTMETRICA metrics;
    platform::GetTextMetricsA(lHdc, metrics);
    const std::int64_t width = std::int64_t{metrics.tmAveCharWidth} + font.iCharWeightInc;
    Destroy();
    select(lHdc, font,
           static_cast<int>(
               std::clamp<std::int64_t>(width, 1, std::numeric_limits<std::int32_t>::max())));
}

void clsFontHDC::select(HDC lHdc, const FontRequest& font, int iWidth) {
    m_hFont = platform::CreateFontW(
        m_iHeight, iWidth, 0, 0, font.bFontBold ? platform::FW_BOLD : platform::FW_NORMAL,
        font.bFontItalic ? 1 : 0, font.bFontUnderline ? 1 : 0, font.bFontStrikeout ? 1 : 0,
        platform::DEFAULT_CHARSET, 0, 0, static_cast<std::uint32_t>(font.iQualityType), 0,
        font.sFontName);
    if (m_hFont == 0) return;
    m_hOldFont = platform::SelectObject(lHdc, m_hFont);
    m_hDC = lHdc;
    if (font.lForeColor != kAutoColor) {
        platform::SetTextColor(lHdc, TranslateColor(font.lForeColor));
    }
}

void clsFontHDC::SetFontToDCStdFont(HDC lHdc, const StdFont& oFont, const Extras& extras) {
    const double points = std::fmin(std::fmax(oFont.Size, 0.0), 32767.0);  // 0 for no number
    SetFontToDC(lHdc, {.sFontName = oFont.Name,
                       .iFontSize = gfx::roundHalfEven(points),
                       .lForeColor = extras.lForeColor,
                       .bFontBold = oFont.Bold,
                       .bFontItalic = oFont.Italic,
                       .bFontUnderline = oFont.Underline,
                       .bFontStrikeout = oFont.Strikethrough,
                       .iQualityType = extras.iQualityType,
                       .iCharWeightInc = extras.iCharWeightInc,
                       .bForce96DPI = extras.bForce96DPI});
}

void clsFontHDC::Destroy() {
    if (m_hDC != 0) {
        const HDC hDC = std::exchange(m_hDC, 0);
        const bool back = platform::SelectObject(hDC, std::exchange(m_hOldFont, 0)) != 0;
        // Where fonts go out of turn the old one may be gone; ours must come out all the same.
        if (!back && platform::GetCurrentObject(hDC, platform::OBJ_FONT) == m_hFont) {
            platform::SelectObject(hDC, platform::GetStockObject(platform::SYSTEM_FONT));
        }
    }
    if (m_hFont != 0) platform::DeleteObject(std::exchange(m_hFont, 0));
}
