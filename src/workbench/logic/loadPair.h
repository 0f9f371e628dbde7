// workbench/logic/loadPair.h: reads a pair of files into the list.
#pragma once
#include "workbench/logic/PairList.h"
#include "workbench/logic/job.h"

// Raises Refused "Please choose two different files" when the two names are the same text.
void requireTwoFiles(TextView sMainFile, TextView sTransFile);

struct PairToLoad {
    TextView sMainFile;
    TextView sTransFile;
    bool bOnlyUntranslated = false;
    // Whether a pair other than the last one gets the whole-list fill.
    bool bFillDuplicates = true;
};

// Rebuilds columns and rows from the two files and colours the Translation cells that need work;
// m_bDirty ends false, unless the fill set a row. Raises as requireTwoFiles, before any change, and
// FileFailure "Please load the file first!", with the columns made, no rows, and m_bDirty and the
// last names as they were.
void loadPair(PairList& list, const PairToLoad& pair, JobListener& listener);
