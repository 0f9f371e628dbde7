#include "workbench/logic/fillDuplicates.h"

#include "workbench/logic/UpdateBracket.h"
#include "workbench/logic/columns.h"

namespace {

PendingRows& pendingOf(PairList& list) {
    if (!list.pending) {
        PendingRows rows;
        rows.collect(list.fxGrid);  // without memory for all of them there are none
        list.pending = std::move(rows);
    }
    return *list.pending;
}

}  // namespace

std::int32_t pvFillPendingDuplicates(PairList& list, TextView sDefault, TextView sTrans,
                                     PendingRows& cPending) {
    const std::span<const std::int32_t> rows = cPending.fill(list.fxGrid, sDefault, sTrans);
    for (const std::int32_t row : rows) list.changed.add(row);
    return static_cast<std::int32_t>(rows.size());
}

std::int32_t pvFillDuplicates(PairList& list, TextView sDefault, TextView sTrans) {
    return pvFillPendingDuplicates(list, sDefault, sTrans, pendingOf(list));
}

std::int32_t pvFillAllDuplicates(PairList& list, JobListener& listener) {
    GridData& fxGrid = list.fxGrid;
    std::int32_t filled = 0;
    {
        const WaitWords wait(listener, u"Searching for untranslated duplicates...\r\n"
                                       u"Press SHIFT to cancel...");
        list.pending.reset();
        PendingRows& cPending = pendingOf(list);
        {
            const UpdateBracket update(fxGrid);
            const std::int32_t rows = fxGrid.Rows();
            for (std::int32_t i = 1; i <= rows; ++i) {
                listener.pvSetProgress(percentOf(i, std::int64_t{rows} + 1));
                if (const TextView sTrans = fxGrid.CellText(i, kTranslationColumn);
                    !sTrans.empty()) {
                    filled += pvFillPendingDuplicates(list, fxGrid.CellText(i, kDefaultColumn),
                                                      sTrans, cPending);
                    if (filled > 0) list.m_bDirty = true;  // also when what follows fails
                }
                if (listener.cancelled()) break;
            }
        }
        listener.pvSetProgress(0);
    }
    if (filled > 0) listener.enableSave(true);
    return filled;
}
