#include "workbench/InputForm.h"

namespace {

constexpr std::uint32_t kDelay = 50;  // milliseconds
constexpr platform::LPARAM kWasDown = 0x40000000;

}  // namespace

bool isRepeatedEnter(std::uint32_t uMsg, platform::WPARAM wParam, platform::LPARAM lParam) {
    return uMsg == platform::WM_KEYDOWN && wParam == platform::VK_RETURN &&
           (lParam & kWasDown) != 0;
}

void InputForm::start() {
    (void)Timer1.TmrStart(*this, kDelay);
    bCancelled = false;
    m_bAnswered = false;
}

void InputForm::UniTimerFired(std::uint32_t, std::int32_t) {
    (void)Timer1.TmrStop();
    txtText.SetFocus();
    txtText.SelStart(0);
    txtText.SelLength(static_cast<std::int32_t>(txtText.Text().size()));
}

void InputForm::connectButtons() {
    btnOk.Click = [this] { confirm(); };
    btnCancel.Click = [this] { cancel(); };
    btnCancel.Cancel(true);
    txtText.KeyDown = [this](std::int16_t& KeyCode, std::int16_t&) {
        if (KeyCode != platform::VK_RETURN) return;
        KeyCode = 0;
        confirm();
    };
    // Ctrl with J or M would type a line break, too.
    txtText.KeyPress = [](std::int16_t& KeyAscii, std::int16_t&) {
        if (KeyAscii == u'\n' || KeyAscii == u'\r') KeyAscii = 0;
    };
}

void InputForm::confirm() {
    sResult = txtText.Text();
    bCancelled = false;
    m_bAnswered = true;
    Hide();
}

void InputForm::cancel() {
    sResult.clear();
    bCancelled = true;
    m_bAnswered = true;
    Hide();
}

void InputForm::onQueryUnload(bool& bCancel, UnloadReason reason) {
    if (reason != kClosedByUser) return;
    bCancel = true;
    cancel();
}

bool InputForm::onFormKey(HWND, std::uint32_t uMsg, platform::WPARAM wParam,
                          platform::LPARAM lParam) {
    return isRepeatedEnter(uMsg, wParam, lParam);
}
