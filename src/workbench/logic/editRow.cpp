#include "workbench/logic/editRow.h"

#include "langfile/foldedText.h"
#include "workbench/logic/UpdateBracket.h"
#include "workbench/logic/columns.h"
#include "workbench/logic/fillDuplicates.h"

TextView startingText(TextView sDefault, TextView sTrans) {
    return trimBlanks(sTrans).empty() ? sDefault : sTrans;
}

Text onOneLine(TextView s) {
    Text text;
    text.reserve(s.size());
    bool inBreak = false;
    for (const char16_t unit : s) {
        const bool isBreak = unit == u'\r' || unit == u'\n';
        if (!isBreak) {
            text += unit == u'\t' ? u' ' : unit;
        } else if (!inBreak) {
            text += u' ';
        }
        inBreak = isBreak;
    }
    return text;
}

void confirmEdit(PairList& list, std::int32_t iRow, TextView sResult, JobListener& listener) {
    GridData& fxGrid = list.fxGrid;
    const TextView sTrans = fxGrid.CellText(iRow, kTranslationColumn);
    // What the file held already, a lone CR or LF in its line included, may stay.
    const Text s = sResult == sTrans ? Text(sResult) : onOneLine(sResult);
    const bool changed = s != sTrans;
    if (changed) {
        list.m_bDirty = true;
        list.changed.add(iRow);
    }
    {
        const UpdateBracket update(fxGrid);
        fxGrid.CellText(iRow, kTranslationColumn, s);
        listener.enableSave(list.m_bDirty);
        if (changed && s.empty()) {
            if (list.pending) list.pending->add(fxGrid, iRow);
        } else if (changed) {
            (void)pvFillDuplicates(list, fxGrid.CellText(iRow, kDefaultColumn), s);
        }
    }
}
