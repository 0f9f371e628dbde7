// workbench/logic/editRow.h: the change of one translation.
#pragma once
#include "workbench/logic/PairList.h"
#include "workbench/logic/job.h"

// The text that the translator starts from: the default where there is no translation but blanks.
[[nodiscard]] TextView startingText(TextView sDefault, TextView sTrans);

// A line of a file can hold no line break, and a row of the list is cut at a tab: each run of CR
// and LF becomes one blank, and so does each tab.
[[nodiscard]] Text onOneLine(TextView s);

// The confirmed text becomes the translation of a row of the list, the line breaks and tabs of a
// new text made blanks; an empty text clears it. A text that differs makes the list dirty and,
// unless it is empty, goes to the duplicates that have none. Saving is enabled as far as the list
// is dirty.
void confirmEdit(PairList& list, std::int32_t iRow, TextView sResult, JobListener& listener);
