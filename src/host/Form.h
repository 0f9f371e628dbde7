// host/Form.h: a window of the desktop that holds controls.
//
// A class derives from this, has its controls as members and creates them in onLoad. Tab and Shift
// and Tab go through the controls; Enter gives the notification 13 to the default button, unless a
// button has the focus, Escape gives 27 to the cancel button, and Alt with a letter calls the
// control with that access key. Enter with Ctrl is the control's own: it breaks a line of a text. A
// window inside, such as a text box, may use up a key ahead of this (platform::setKeyFilter).
#pragma once
#include "host/HostWindow.h"

#include <vector>

// Why a form is asked to go.
enum UnloadReason : std::int16_t { kClosedByUser = 0, kClosedByProgram = 1 };

class Form : public HostWindow {
public:
    explicit Form(platform::WindowKind kind) : m_kind(kind) { CanGetFocus(false); }
    ~Form() override;

    // Makes the window, hidden, then onLoad; true also when it is there already. The size is that
    // of the client area, in pixels, as move has set it. owner: a window to stay in front of, or 0.
    bool Load(HWND owner = 0);
    // Loads if necessary, and shows. With bModal it returns when the form is hidden or gone; other
    // windows of the program take no input meanwhile.
    void Show(bool bModal = false, HWND owner = 0);
    void Hide();
    // onQueryUnload, onUnload, and unless one of them cancels, the end of the window. False when
    // it was cancelled. The object stays and can be loaded again.
    bool Unload(UnloadReason reason = kClosedByProgram);
    [[nodiscard]] bool Loaded() const { return hWnd() != 0; }

    [[nodiscard]] const Text& Caption() const { return m_caption; }
    void Caption(Text sCaption);
    // An icon; any other picture, and none, is the desktop's own.
    [[nodiscard]] const Picture& Icon() const { return m_icon; }
    void Icon(Picture oIcon);
    void ClientSize(int width, int height);  // pixels
    void CenterOnScreen();                   // on the work area of the screen it is on
    [[nodiscard]] bool Minimised() const;

    // Pixels from twips by the resolution of the screen, halves to even.
    [[nodiscard]] static int PixelsX(double twips);
    [[nodiscard]] static int PixelsY(double twips);
    // A place given in twips by left, top, width and height, in pixels.
    [[nodiscard]] static RECT PlaceOfTwips(int left, int top, int width, int height);

    // All hosts inside that have a window, at any depth, in the order of Tab.
    [[nodiscard]] std::vector<HostWindow*> Controls() const;
    // Moves the focus to the next or the previous control that Tab stops at. False without one.
    bool MoveFocus(bool bForward);

    [[nodiscard]] platform::AccessibleRole accessibleRole() const override;

protected:
    virtual void onLoad() {}
    virtual void onQueryUnload(bool& /*bCancel*/, UnloadReason) {}
    virtual void onUnload(bool& /*bCancel*/) {}
    // Sees each key message for the form and all in it (see platform::setKeyFilter) ahead of the
    // form's own keys; true uses it up.
    virtual bool onFormKey(HWND, std::uint32_t, platform::WPARAM, platform::LPARAM) {
        return false;
    }

    // An override hands on what it does not take itself.
    bool onMessage(std::uint32_t uMsg, platform::WPARAM wParam, platform::LPARAM lParam,
                   platform::LRESULT& result) override;
    [[nodiscard]] Text accessibleText() const override { return m_caption; }

private:
    void applyIcon() const;
    bool keyMessage(HWND hWnd, std::uint32_t uMsg, platform::WPARAM wParam);
    bool callAccessKey(char16_t unit);
    bool pressButton(bool HostWindow::*flag, std::int16_t code);
    // Shown, and neither disabled itself nor inside of something that is.
    [[nodiscard]] static bool takesInput(const HostWindow& host);
    [[nodiscard]] static bool reachable(const HostWindow& host);  // can have the focus now

    platform::WindowKind m_kind;
    Text m_caption;
    Picture m_icon;
};
