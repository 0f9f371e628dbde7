// gfx/modCtlCommon_src_errors.h: the report of a failure, and the diagnostic log.
#pragma once
#include "platform/base/text.h"

// The report line for the failure being handled: where, number, description and line mark. To be
// called inside of a catch block; outside of one the number is 0 and the description is empty. A
// standard exception has kOwnError and its own text. Failures carry no line mark, so it is 0.
[[nodiscard]] Text ErrorText(TextView sWhere);

// Appends the time, "> " and sMsg as one line to debug.txt beside the program, in the system's ANSI
// code page. Whatever fails in here is ignored.
void LogDebug(TextView sMsg);

// The two diagnostic switches: what becomes of a failure that a control catches at its own
// boundary. Both are off unless the build says otherwise (QUILLMERE_DEBUG_BOX,
// QUILLMERE_DEBUG_LOG).
struct DiagnosticSwitches {
    bool box = false;  // a critical message box shows its report line
    bool log = false;  // its report line goes to LogDebug
};
[[nodiscard]] DiagnosticSwitches builtInSwitches();

// For the catch block at a control's boundary; sWhere names the operation. Does nothing with both
// switches off. Raises nothing.
void ReportCaughtFailure(TextView sWhere, DiagnosticSwitches switches = builtInSwitches());
