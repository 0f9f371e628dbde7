#include "workbench/logic/saveTranslation.h"

#include "file/ufu_files.h"
#include "langfile/KeyTable.h"
#include "langfile/clsFileIniEx.h"
#include "langfile/foldedText.h"
#include "workbench/logic/columns.h"

namespace {

// Whether the rows of each section stand together, as those of a file do. A tab in the name of a
// section cuts its cell short, so that another one's rows may seem to go on further down.
bool sectionsStandTogether(const GridData& fxGrid) {
    KeyTable table;
    std::vector<TextView> sections;
    for (std::int32_t i = 1; i <= fxGrid.Rows(); ++i) {
        const TextView section = trimBlanksAndTabs(fxGrid.CellText(i, kSectionColumn));
        if (!sections.empty() && sameUnits(section, sections.back())) continue;
        const auto isSame = [&](std::uint32_t n) { return equalFolded(sections[n], section); };
        const auto number = static_cast<std::uint32_t>(sections.size());
        if (table.insert(hashFolded(section), number, isSame) != KeyTable::kNone) return false;
        sections.push_back(section);
    }
    return true;
}

}  // namespace

void saveTranslation(const GridData& fxGrid, TextView sTransFile, bool bSaveEmptyKeyVal,
                     JobListener& listener) {
    const FileFailure cannotSave(Failure(kOwnError, u"", u"Cannot Save File!"), sTransFile);
    // The document trims the name that it saves to, which would then be another file's.
    const TextView trimmed = trimBlanks(sTransFile);
    if (!trimmed.empty() && trimmed != sTransFile) throw cannotSave;

    const WaitWords wait(listener, u"Saving file...");
    // The rows go into the document of the file on disk. That is what a save of a document of their
    // own comes to, which is needed only where a key may come twice: the spelling of a new section
    // is then that of its first key's last row.
    const bool bIntoFile = ufu_FileExist(trimmed) && sectionsStandTogether(fxGrid);
    clsFileIniEx document;
    if (bIntoFile && !document.Load(trimmed)) throw cannotSave;
    const std::int32_t rows = fxGrid.Rows();
    for (std::int32_t i = 1; i <= rows; ++i) {
        const TextView key = fxGrid.CellText(i, kKeyColumn);
        const bool bMerged = !bIntoFile || !trimBlanksAndTabs(key).empty();
        if (bMerged) {
            document.AddString(fxGrid.CellText(i, kSectionColumn), key,
                               fxGrid.CellText(i, kTranslationColumn));
        }
        listener.pvSetProgress(percentOf(i, std::int64_t{rows} + 1));
    }
    if (!document.Save(sTransFile, u"\r\n", !bIntoFile, bSaveEmptyKeyVal)) throw cannotSave;
    listener.pvSetProgress(0);
}
