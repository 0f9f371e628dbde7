#include "workbench/logic/rescueEdits.h"

#include "file/clsUniFile.h"
#include "file/ufu_files.h"
#include "file/ufu_paths.h"
#include "platform/base/files.h"
#include "platform/base/json.h"
#include "workbench/logic/columns.h"
#include "workbench/logic/editRow.h"
#include "workbench/logic/job.h"

namespace {

constexpr int kMostNames = 1000;  // that are taken by other files of one second

void appendEdit(const GridData& fxGrid, std::int32_t iRow, TextView sTrans, std::string& edits) {
    edits += "{\"section\":";
    platform::appendJson(fxGrid.CellText(iRow, kSectionColumn), edits);
    edits += ",\"key\":";
    platform::appendJson(fxGrid.CellText(iRow, kKeyColumn), edits);
    edits += ",\"translation\":";
    // Edits refuse the lone CR or LF that a file's own translation may hold.
    platform::appendJson(onOneLine(sTrans), edits);
    edits += "}\n";
}

// A name that is free at the moment of asking is still not overwritten.
bool openNew(clsUniFile& file, TextView sStem, Text& sFile) {
    for (int n = 1; n <= kMostNames; ++n) {
        sFile = Text(sStem) + (n == 1 ? u"" : u"-" + fromUtf8(std::to_string(n))) + u".jsonl";
        if (file.OpenFileGeneric(sFile, platform::GENERIC_WRITE, platform::CREATE_NEW, 0, 0)) {
            return true;
        }
        if (!ufu_FileExist(sFile)) break;
    }
    return false;
}

}  // namespace

std::string changedAsEdits(const PairList& list, const std::optional<OpenEdit>& open) {
    std::string edits;
    std::string cleared;
    const auto append = [&](std::int32_t row, TextView sTrans) {
        appendEdit(list.fxGrid, row, sTrans, sTrans.empty() ? cleared : edits);
    };
    list.changed.forEach([&](std::int32_t row) {
        if (open && open->iRow == row) return;
        append(row, list.fxGrid.CellText(row, kTranslationColumn));
    });
    if (open) append(open->iRow, open->sText);
    return edits + cleared;
}

Text rescueEdits(const PairList& list, TextView sFolder, TextView sTime,
                 const std::optional<OpenEdit>& open) {
    const std::string edits = changedAsEdits(list, open);
    if (edits.empty()) return {};
    Text sFile(sFolder);
    const auto cannotWrite = [&] {
        return FileFailure(Failure(kOwnError, u"", u"Error writing file"), sFile);
    };
    if (sFolder.empty() || !ufu_MakePath(sFolder)) throw cannotWrite();
    const Text sStem =
        ufu_OneBackSlash(sFolder) + ufu_FileNameNoExt(list.m_sLastTransFile) + u"-" + Text(sTime);
    clsUniFile file;
    if (!openNew(file, sStem, sFile)) throw cannotWrite();
    const bool written = file.writeBlock(edits.data(), edits.size()) && file.Flush();
    file.CloseFile();
    if (!written) {
        (void)ufu_RmFile(sFile);  // half of the edits would look like all of them
        throw cannotWrite();
    }
    return sFile;
}
