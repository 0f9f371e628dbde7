#include "workbench/logic/loadPair.h"

#include "workbench/logic/UpdateBracket.h"
#include "workbench/logic/columns.h"
#include "workbench/logic/comparePair.h"
#include "workbench/logic/fillDuplicates.h"

namespace {

// Puts the rows into the grid, inside one update bracket.
class GridRows : public PairSink {
public:
    // A few rows of a list are not worth keeping the files' texts for.
    GridRows(GridData& fxGrid, bool keepTexts) : m_fxGrid(fxGrid), m_keepTexts(keepTexts) {}

    void filesRead(const std::shared_ptr<const Text>& mainText,
                   const std::shared_ptr<const Text>& transText) override {
        m_update.emplace(m_fxGrid);
        if (!m_keepTexts) return;
        m_fxGrid.lendText(mainText);
        m_fxGrid.lendText(transText);
    }
    void row(const PairRow& row) override {
        const RowCells cells(row);
        m_fxGrid.AddRow(cells.cells());
        if (row.state == RowState::Translated) return;
        m_fxGrid.CellBackColor(m_fxGrid.Rows(), m_fxGrid.Cols(),
                               row.state == RowState::Empty ? kEmptyColor : kSameAsDefaultColor);
    }
    void endUpdate() { m_update.reset(); }

private:
    GridData& m_fxGrid;
    bool m_keepTexts;
    std::optional<UpdateBracket> m_update;
};

void addColumns(const PairList& list) {
    list.fxGrid.AddColumn({.sText = u"Row"});
    list.fxGrid.AddColumn({.sText = u"Section"});
    list.fxGrid.AddColumn({.sText = u"Key"});
    list.fxGrid.AddColumn({.sText = u"Default", .iWidth = list.m_lColDefaultWidth});
    list.fxGrid.AddColumn({.sText = u"Translation", .iWidth = list.m_lColTransWidth});
}

PairFiles fillGrid(GridData& fxGrid, const PairToLoad& pair, JobListener& listener) {
    GridRows rows(fxGrid, !pair.bOnlyUntranslated);
    const WaitWords wait(listener, u"Loading file...");
    PairFiles files =
        pvComparePair(pair.sMainFile, pair.sTransFile, pair.bOnlyUntranslated, rows, listener);
    listener.pvSetProgress(0);
    rows.endUpdate();
    return files;
}

}  // namespace

void requireTwoFiles(TextView sMainFile, TextView sTransFile) {
    if (sTransFile == sMainFile) throw Refused(u"Please choose two different files");
}

void loadPair(PairList& list, const PairToLoad& pair, JobListener& listener) {
    requireTwoFiles(pair.sMainFile, pair.sTransFile);
    GridData& fxGrid = list.fxGrid;
    if (fxGrid.Rows() > 0) {  // widths set by hand survive
        list.m_lColDefaultWidth = fxGrid.ColWidth(kDefaultColumn);
        list.m_lColTransWidth = fxGrid.ColWidth(kTranslationColumn);
    }
    list.pending.reset();
    list.changed.clear();
    fxGrid.Clear();
    addColumns(list);
    PairFiles files = fillGrid(fxGrid, pair, listener);

    list.m_bDirty = false;
    listener.enableSave(false);
    const bool changed =
        files.sMainFile != list.m_sLastMainFile || files.sTransFile != list.m_sLastTransFile;
    if (changed) {
        list.m_sLastMainFile = std::move(files.sMainFile);
        list.m_sLastTransFile = std::move(files.sTransFile);
        if (pair.bFillDuplicates) (void)pvFillAllDuplicates(list, listener);
    }
    listener.focusList();
}
