// workbench/frmWait.h: the window that stands over a long job.
#pragma once
#include "controls/ctlUniLabel.h"
#include "host/Form.h"

// No frame, no entry in the task bar. Load, sInfo, showNow, the job, Unload.
class frmWait final : public Form {
public:
    frmWait();

    void sInfo(Text s) { lblTip.Caption(std::move(s)); }
    void showNow();  // returns when it is painted; reads no input

protected:
    void onLoad() override;
    void onResize() override;

private:
    ctlUniLabel lblTip;
};
