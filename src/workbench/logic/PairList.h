// workbench/logic/PairList.h: the loaded pair of files as the translator's list.
#pragma once
#include "workbench/logic/ChangedRows.h"
#include "workbench/logic/PendingRows.h"

// The rows live in the grid alone. loadPair makes them; from then on the Translation cells change
// through confirmEdit and the duplicate fill only, which keep `pending` and `changed` true to them.
struct PairList {
    explicit PairList(GridData& grid) : fxGrid(grid) {}

    GridData& fxGrid;
    bool m_bDirty = false;  // the grid holds changes that are not in the file
    // The paths of the last load that reached its end.
    Text m_sLastMainFile;
    Text m_sLastTransFile;
    // Pixels; -1: the column sizes itself. Read from the grid at each reload.
    std::int32_t m_lColDefaultWidth = -1;
    std::int32_t m_lColTransWidth = -1;

    // The rows that a duplicate fill may set: collected when one is due, none while the list loads.
    std::optional<PendingRows> pending;
    ChangedRows changed;
};
