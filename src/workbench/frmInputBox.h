// workbench/frmInputBox.h: the dialog that asks for a line of text.
#pragma once
#include "controls/ctlUniLabel.h"
#include "workbench/InputForm.h"

class frmInputBox final : public InputForm {
public:
    frmInputBox();

    // Of a loaded form. An empty title is the program's name.
    void InitMap(TextView Prompt, TextView Title = {}, TextView Default = {},
                 TextView PasswordChar = {});

protected:
    void onLoad() override;
    bool onFormKey(HWND hWnd, std::uint32_t uMsg, platform::WPARAM wParam,
                   platform::LPARAM lParam) override;

private:
    ctlUniLabel lblText;
};
