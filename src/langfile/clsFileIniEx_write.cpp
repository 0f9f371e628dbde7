#include "file/FileBytes.h"
#include "file/encodings.h"
#include "file/ufu_files.h"
#include "langfile/clsFileIniEx.h"
#include "langfile/clsFileIniEx_entries.h"
#include "platform/base/codepages.h"
#include "platform/base/failure.h"
#include "platform/base/memory.h"

bool clsFileIniEx::Save(TextView sFile, TextView sLineSep, bool bUpdate, bool bSaveEmptyKeyVal) {
    if (const TextView name = trimBlanks(sFile); !name.empty()) m_sFile = name;
    if (m_sFile.empty()) throw Failure(kOwnError, u"clsFileIniEx.Save", u"I need a file!");

    const FileBytes before(m_sFile);
    bool saved = false;
    if (bUpdate && ufu_FileExist(m_sFile)) {
        clsFileIniEx onDisk;
        onDisk.AllowTabs(m_bAllowTabs);
        onDisk.CommentChar(m_sCommentChar);
        onDisk.KeyValueSepChar(m_cSeparator);
        // Going on without the file's rows would replace them by nothing.
        if (!onDisk.Load(m_sFile)) return false;
        mergeInto(onDisk);
        saved = onDisk.pvSave(sLineSep, bSaveEmptyKeyVal);
    } else {
        saved = pvSave(sLineSep, bSaveEmptyKeyVal);
    }
    if (!saved) before.putBack();
    return saved;
}

// Calls put(text) for the lines that are written and for the separators between them, in order.
template <class Put>
void clsFileIniEx::forEachPart(TextView sLineSep, bool bSaveEmptyKeyVal, Put put) const {
    bool first = true;
    forEachRow([&](const clsFileIniEx_Row& row) {
        if (!bSaveEmptyKeyVal && !row.sKey.empty() && row.sValue.empty()) return;
        if (!first) put(sLineSep);
        first = false;
        put(row.sLine);
    });
}

std::size_t clsFileIniEx::textLength(TextView sLineSep, bool bSaveEmptyKeyVal) const {
    std::size_t length = 0;
    forEachPart(sLineSep, bSaveEmptyKeyVal, [&](TextView part) { length += part.size(); });
    return length;
}

Text clsFileIniEx::toText(TextView sLineSep, bool bSaveEmptyKeyVal) const {
    Text text;
    text.reserve(textLength(sLineSep, bSaveEmptyKeyVal));
    platform::adviseLargePages(text.data(), text.capacity() * sizeof(char16_t));
    forEachPart(sLineSep, bSaveEmptyKeyVal, [&](TextView part) { text.append(part); });
    return text;
}

std::optional<Bytes> clsFileIniEx::toAnsi(TextView sLineSep, bool bSaveEmptyKeyVal) const {
    constexpr std::size_t kPiece = 16384;  // units: they stay in the cache until they are bytes
    Bytes bytes;
    bytes.reserve(textLength(sLineSep, bSaveEmptyKeyVal));
    platform::adviseLargePages(bytes.data(), bytes.capacity());
    Text piece;
    bool ansi = true;
    const auto convertPiece = [&] {
        ansi = ansi && IsAnsiText(piece);
        if (!ansi) return;
        const Bytes converted = platform::textToBytes(piece, platform::GetACP());
        bytes.insert(bytes.end(), converted.begin(), converted.end());
        piece.clear();
    };
    forEachPart(sLineSep, bSaveEmptyKeyVal, [&](TextView part) {
        if (!ansi) return;
        piece.append(part);
        if (piece.size() >= kPiece) convertPiece();
    });
    convertPiece();
    return ansi ? std::optional(std::move(bytes)) : std::nullopt;
}

bool clsFileIniEx::pvSave(TextView sLineSep, bool bSaveEmptyKeyVal) const {
    if (!m_bLoaded) return writeOver(m_sFile, {});
    if (const auto bytes = toAnsi(sLineSep, bSaveEmptyKeyVal)) return writeOver(m_sFile, *bytes);
    const Text text = u'\uFEFF' + toText(sLineSep, bSaveEmptyKeyVal);
    return writeOver(m_sFile, {reinterpret_cast<const std::uint8_t*>(text.data()),
                               text.size() * sizeof(char16_t)});
}
