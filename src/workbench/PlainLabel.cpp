#include "workbench/PlainLabel.h"

#include "gfx/modCtlCommon_ctl_shapes.h"
#include "gfx/modCtlCommon_ctl_text.h"
#include "platform/window/input.h"
#include "platform/window/textout.h"

void PlainLabel::Caption(Text sCaption) {
    m_sCaption = std::move(sCaption);
    fit();
    tellAccessible(platform::AccessibleChange::Name);
}

void PlainLabel::fit() {
    if (m_bAutoSize && hDC() != 0) {
        const SIZE text = TextSize(hDC(), m_sCaption, platform::DT_NOPREFIX);
        move(Left(), Top(), text.cx, text.cy);
    }
    Invalidate();
}

void PlainLabel::onPaint() {
    const RECT all{0, 0, ScaleWidth(), ScaleHeight()};
    DrawRect(hDC(), all, BackColor(), true);
    TextDrawColor(hDC(), m_sCaption, all, ForeColor(),
                  platform::DT_WORDBREAK | platform::DT_NOPREFIX);
}

bool PlainLabel::onMessage(std::uint32_t uMsg, platform::WPARAM, platform::LPARAM,
                           platform::LRESULT& result) {
    if (uMsg != platform::WM_SETCURSOR || !m_bHandPointer) return false;
    (void)platform::SetCursor(platform::LoadCursorA(0, platform::IDC_HAND));
    result = 1;
    return true;
}
