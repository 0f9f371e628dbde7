#include "workbench/logic/rescueEdits.h"

#include "file/ufu_files.h"
#include "file/ufu_paths.h"
#include "platform/base/files.h"
#include "platform/base/json.h"
#include "workbench/logic/columns.h"
#include "workbench/logic/editRow.h"
#include "workbench/logic/job.h"

namespace {

constexpr int kMostNames = 1000;  // that are taken by other files of one second

void appendEdit(const GridData& fxGrid, std::int32_t iRow, std::string& edits) {
    edits += "{\"section\":";
    platform::appendJson(fxGrid.CellText(iRow, kSectionColumn), edits);
    edits += ",\"key\":";
    platform::appendJson(fxGrid.CellText(iRow, kKeyColumn), edits);
    edits += ",\"translation\":";
    // Edits refuse the lone CR or LF that a file's own translation may hold.
    platform::appendJson(onOneLine(fxGrid.CellText(iRow, kTranslationColumn)), edits);
    edits += "}\n";
}

// A name that is free at the moment of asking is still not overwritten.
platform::FileHandle createNew(TextView sStem, Text& sFile) {
    for (int n = 1; n <= kMostNames; ++n) {
        sFile = Text(sStem) + (n == 1 ? u"" : u"-" + fromUtf8(std::to_string(n))) + u".jsonl";
        const platform::FileHandle file =
            platform::CreateFileW(sFile, platform::GENERIC_WRITE, 0, platform::CREATE_NEW, 0);
        if (file != platform::INVALID_HANDLE_VALUE) return file;
        if (!ufu_FileExist(sFile)) break;
    }
    return platform::INVALID_HANDLE_VALUE;
}

bool writeAll(platform::FileHandle file, std::string_view bytes) {
    constexpr std::size_t kRequest = std::size_t{1} << 30;
    while (!bytes.empty()) {
        const auto count = static_cast<std::uint32_t>(std::min(bytes.size(), kRequest));
        std::uint32_t done = 0;
        if (!platform::WriteFile(file, bytes.data(), count, done) || done != count) return false;
        bytes.remove_prefix(count);
    }
    return platform::FlushFileBuffers(file);
}

}  // namespace

std::string changedAsEdits(const PairList& list) {
    std::string edits;
    std::string cleared;
    list.changed.forEach([&](std::int32_t row) {
        const bool empty = list.fxGrid.CellText(row, kTranslationColumn).empty();
        appendEdit(list.fxGrid, row, empty ? cleared : edits);
    });
    return edits + cleared;
}

Text rescueEdits(const PairList& list, TextView sFolder, TextView sTime) {
    const std::string edits = changedAsEdits(list);
    if (edits.empty()) return {};
    Text sFile(sFolder);
    const auto cannotWrite = [&] {
        return FileFailure(Failure(kOwnError, u"", u"Error writing file"), sFile);
    };
    if (sFolder.empty() || !ufu_MakePath(sFolder)) throw cannotWrite();
    const Text sStem =
        ufu_OneBackSlash(sFolder) + ufu_FileNameNoExt(list.m_sLastTransFile) + u"-" + Text(sTime);
    const platform::FileHandle file = createNew(sStem, sFile);
    if (file == platform::INVALID_HANDLE_VALUE) throw cannotWrite();
    const bool written = writeAll(file, edits);
    if (!platform::CloseHandle(file) || !written) {
        (void)ufu_RmFile(sFile);  // half of the edits would look like all of them
        throw cannotWrite();
    }
    return sFile;
}
