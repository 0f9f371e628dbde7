// workbench/logic/fillDuplicates.h: a translation goes to the rows of the same default text that
// have none.
//
// Texts are compared exactly. A row takes part while its Translation cell is the empty string; a
// cell of blanks counts as filled. Colours stay as they are.
#pragma once
#include "workbench/logic/PairList.h"
#include "workbench/logic/job.h"

// Both return how many rows were set.
std::int32_t pvFillPendingDuplicates(PairList& list, TextView sDefault, TextView sTrans,
                                     PendingRows& cPending);
std::int32_t pvFillDuplicates(PairList& list, TextView sDefault, TextView sTrans);

// The first translation of each default text, in list order, goes to all its rows without one.
// Costs no more than a look at each row. Returns how many rows were set; with any, m_bDirty becomes
// true and saving is enabled.
std::int32_t pvFillAllDuplicates(PairList& list, JobListener& listener);
