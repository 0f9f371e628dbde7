#include "workbench/logic/saveTranslation.h"

#include "langfile/clsFileIniEx.h"
#include "langfile/foldedText.h"
#include "workbench/logic/columns.h"

void saveTranslation(const GridData& fxGrid, TextView sTransFile, bool bSaveEmptyKeyVal,
                     JobListener& listener) {
    const FileFailure cannotSave(Failure(kOwnError, u"", u"Cannot Save File!"), sTransFile);
    // The document trims the name that it saves to, which would then be another file's.
    const TextView trimmed = trimBlanks(sTransFile);
    if (!trimmed.empty() && trimmed != sTransFile) throw cannotSave;

    const WaitWords wait(listener, u"Saving file...");
    clsFileIniEx document;
    const std::int32_t rows = fxGrid.Rows();
    document.Reserve(static_cast<std::size_t>(rows));
    for (std::int32_t i = 1; i <= rows; ++i) {
        document.AddString(fxGrid.CellText(i, kSectionColumn), fxGrid.CellText(i, kKeyColumn),
                           fxGrid.CellText(i, kTranslationColumn));
        listener.pvSetProgress(percentOf(i, std::int64_t{rows} + 1));
    }
    if (!document.Save(sTransFile, u"\r\n", true, bSaveEmptyKeyVal)) throw cannotSave;
    listener.pvSetProgress(0);
}
