// workbench/PlainLabel.h: the host's own label: text on the background of the window around it.
#pragma once
#include "host/HostWindow.h"

class PlainLabel final : public HostWindow {
public:
    PlainLabel() { CanGetFocus(false); }

    [[nodiscard]] const Text& Caption() const { return m_sCaption; }
    void Caption(Text sCaption);
    // The label is as large as its text, which stands in one line.
    void AutoSize(bool b) { m_bAutoSize = b; }
    void HandPointer(bool b) { m_bHandPointer = b; }  // the desktop's pointer for links

    Event<> Click;

    [[nodiscard]] platform::AccessibleRole accessibleRole() const override {
        return platform::AccessibleRole::Label;
    }

protected:
    void onPaint() override;
    void onClick() override { Click(); }
    void onFontChanged() override { fit(); }
    bool onMessage(std::uint32_t uMsg, platform::WPARAM wParam, platform::LPARAM lParam,
                   platform::LRESULT& result) override;
    [[nodiscard]] Text accessibleText() const override { return m_sCaption; }

private:
    void fit();

    Text m_sCaption;
    bool m_bAutoSize = false, m_bHandPointer = false;
};
