// workbench/InputForm.h: what the two dialogs that take a text have in common.
#pragma once
#include "controls/ctlUniButtonXP.h"
#include "controls/ctlUniTextBoxXP.h"
#include "host/Form.h"
#include "win/cUniTimer.h"

// The field gets the focus and shows its text selected a moment after the dialog came up. The
// buttons hide the dialog, which ends a modal Show; the close box and Escape are btnCancel.
class InputForm : public Form, private UniTimerOwner {
public:
    Text sResult;            // on leaving; empty when cancelled
    bool bCancelled = true;  // left without confirming

    // Whether either button has ended it. A window that went in another way, as when its owner
    // ends, has asked and got no answer.
    [[nodiscard]] bool Answered() const { return m_bAnswered; }

protected:
    InputForm() : Form(platform::WindowKind::Dialog) {}

    void start();  // for InitMap
    void confirm();
    void cancel();
    void connectButtons();  // and Enter in the text

    void onQueryUnload(bool& bCancel, UnloadReason reason) override;
    // A key that is held down answers one dialog, not the next one, too.
    bool onFormKey(HWND hWnd, std::uint32_t uMsg, platform::WPARAM wParam,
                   platform::LPARAM lParam) override;

    ctlUniTextBoxXP txtText;
    ctlUniButtonXP btnOk, btnCancel;

private:
    void UniTimerFired(std::uint32_t elapsed, std::int32_t nID) override;

    cUniTimer Timer1;
    bool m_bAnswered = false;
};

// Enter going down once more because it is held down.
[[nodiscard]] bool isRepeatedEnter(std::uint32_t uMsg, platform::WPARAM wParam,
                                   platform::LPARAM lParam);
