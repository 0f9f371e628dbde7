// workbench/frmAbout.h: what the program is, and the way to the system's own information tool.
#pragma once
#include "controls/ctlUniButtonXP.h"
#include "host/Form.h"
#include "platform/window/registry.h"
#include "workbench/PlainLabel.h"

class frmAbout final : public Form {
public:
    frmAbout();

    void StartSysInfo();  // or a box that says that there is none

    // A value of the registry as text: a text as it is, a number of 32 bits as "&h" and its bytes
    // in hexadecimal, the highest first. False, and an empty KeyVal, when there is none.
    static bool GetKeyValue(platform::HKEY KeyRoot, TextView KeyName, TextView SubKeyRef,
                            Text& KeyVal);

protected:
    void onLoad() override;
    void onPaint() override;
    bool onFormKey(HWND hWnd, std::uint32_t uMsg, platform::WPARAM wParam,
                   platform::LPARAM lParam) override;

private:
    PlainLabel lblTitle, lblVersion, lblDescription, lblCopy, lblSite;
    ctlUniButtonXP cmdOK, cmdSysInfo;
};
