#include "file/FileBytes.h"
#include "file/ufu_files.h"
#include "file/ufu_text.h"
#include "langfile/clsFileIniEx.h"
#include "langfile/clsFileIniEx_entries.h"
#include "platform/base/failure.h"
#include "platform/base/memory.h"

bool clsFileIniEx::Save(TextView sFile, TextView sLineSep, bool bUpdate, bool bSaveEmptyKeyVal) {
    if (const TextView name = trimBlanks(sFile); !name.empty()) m_sFile = name;
    if (m_sFile.empty()) throw Failure(kOwnError, u"clsFileIniEx.Save", u"I need a file!");
    if (!ufu_FileExist(m_sFile)) return pvSave(sLineSep, bSaveEmptyKeyVal);

    const FileBytes before(m_sFile);
    bool saved = false;
    if (bUpdate) {
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

Text clsFileIniEx::toText(TextView sLineSep, bool bSaveEmptyKeyVal) const {
    const auto eachLine = [&](auto put) {
        forEachRow([&](const clsFileIniEx_Row& row) {
            if (bSaveEmptyKeyVal || row.sKey.empty() || !row.sValue.empty()) put(row.sLine);
        });
    };
    std::size_t length = 0;
    eachLine([&](TextView line) { length += line.size() + sLineSep.size(); });
    Text text;
    text.reserve(length);
    platform::adviseLargePages(text.data(), length * sizeof(char16_t));
    eachLine([&](TextView line) { text.append(line).append(sLineSep); });
    if (!sLineSep.empty() && text.ends_with(sLineSep)) text.resize(text.size() - sLineSep.size());
    return text;
}

bool clsFileIniEx::pvSave(TextView sLineSep, bool bSaveEmptyKeyVal) const {
    if (!m_bLoaded) return ufu_StringToTextFile(m_sFile, {}, ufeAnsi);
    const Text text = toText(sLineSep, bSaveEmptyKeyVal);
    return ufu_StringToTextFile(m_sFile, text, IsAnsiText(text) ? ufeAnsi : ufeUnicode);
}
