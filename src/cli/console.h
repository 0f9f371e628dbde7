// cli/console.h: what goes to standard error, and how a program ends.
#pragma once
#include "workbench/logic/job.h"

namespace cli {

enum ExitCode : int {
    kDone = 0,
    kCheckFailed = 1,  // the check or the edits failed
    kWrongUsage = 2,
    kFileFailed = 3,  // a file could not be read or written
};

// "quillmere-cli: " and the message on a line of its own.
void say(TextView sMessage);
// With a file behind it in round brackets, in the system's spelling.
void say(TextView sMessage, TextView sFile);

// Raised by a command that ends early with something to say about a file.
struct Stop {
    ExitCode exitCode;
    Text sMessage;
    Text sFile;
};

// Draws a bar on standard error when that is a terminal and a piece of work goes on for longer than
// a person likes to wait; it is wiped away at the end.
class ProgressBar : public JobListener {
public:
    ProgressBar();
    ~ProgressBar() override { wipe(); }
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    void pvSetProgress(int iPercent) override {
        if (m_isTerminal && iPercent != m_percent) advance(iPercent);
    }
    void showWait(TextView sInfo) override;
    void closeWait() override { wipe(); }

private:
    void advance(int percent);
    void wipe();

    bool m_isTerminal;
    bool m_shown = false;
    int m_percent = 0;
    std::uint32_t m_start;  // of the piece of work, GetTickCount
};

}  // namespace cli
