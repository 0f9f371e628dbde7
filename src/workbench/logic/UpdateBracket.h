// workbench/logic/UpdateBracket.h: one drawing of the grid for many changes.
#pragma once
#include "grid/store/GridData.h"

class UpdateBracket {
public:
    explicit UpdateBracket(GridData& fxGrid) : m_fxGrid(fxGrid) { m_fxGrid.BeginUpdate(); }
    ~UpdateBracket() { m_fxGrid.EndUpdate(); }
    UpdateBracket(const UpdateBracket&) = delete;
    UpdateBracket& operator=(const UpdateBracket&) = delete;

private:
    GridData& m_fxGrid;
};
