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
