// workbench/logic/saveTranslation.h: the list's translations go into the translated file.
#pragma once
#include "grid/store/GridData.h"
#include "workbench/logic/job.h"

// Merges section, key and translation of each row into the file on disk; without bSaveEmptyKeyVal
// every key without a value leaves the file. The caller then loads the pair again. Raises
// FileFailure "Cannot Save File!" when the file cannot be written, is there and cannot be read,
// or has a name with blanks at its ends; Failure "I need a file!" when the name is blank. The list
// keeps its rows in any case.
void saveTranslation(const GridData& fxGrid, TextView sTransFile, bool bSaveEmptyKeyVal,
                     JobListener& listener);
