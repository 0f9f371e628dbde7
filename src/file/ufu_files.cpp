#include "file/ufu_files.h"

#include "file/clsSearchFiles.h"
#include "file/pvWindowsVersion.h"
#include "file/ufu_paths.h"
#include "platform/base/failure.h"
#include "platform/base/files.h"
#include "platform/base/process.h"

#include <algorithm>

namespace {

constexpr std::uint32_t kBufferUnits = 2048;  // enough for nearly every path; it grows if need be

// A text of the system: query fills a buffer of so many units and returns the length, or the size
// that it needs.
template <typename Query> Text queriedText(Query query) {
    Text buffer(kBufferUnits, u'\0');
    std::uint32_t length = query(kBufferUnits, buffer.data());
    if (length >= kBufferUnits) {
        buffer.resize(length);
        length = std::min(query(length, buffer.data()), length);
    }
    buffer.resize(length);
    return buffer;
}

// Removes what is in a directory, and the directory itself if so told.
bool removeTree(TextView sPath, bool itself) {
    bool allGone = true;
    SearchResult entries = clsSearchFiles().SearchInPath(sPath);
    const auto removedFile = [&](const clsSearchFilesFInfo& entry) {
        if (entry.IsDirectory()) {
            if (!entry.isLink() && !removeTree(entry.sPathFileName(), false)) allGone = false;
            return false;
        }
        const bool gone = ufu_RmFile(entry.sPathFileName());
        if (!gone) allGone = false;
        return gone;
    };
    entries.erase(std::remove_if(entries.begin(), entries.end(), removedFile), entries.end());
    for (const auto& left : entries) {
        if (!ufu_RmDir(left.sPathFileName())) allGone = false;
    }
    if (itself && !ufu_RmDir(sPath)) allGone = false;
    return allGone;
}

// Puts the content of one directory behind the text `target`: directories are made, files go
// through transfer.
template <typename Transfer>
bool transferContent(TextView sSourcePath, TextView target, Transfer transfer) {
    // More than one final backslash would cut letters off the names below.
    const std::size_t last = sSourcePath.find_last_not_of(u'\\');
    const TextView source = sSourcePath.substr(0, last == TextView::npos ? 1 : last + 2);
    bool allDone = true;
    for (const auto& entry : clsSearchFiles().SearchInPath(source, {.bRecurseSubDirs = true})) {
        const Text from = entry.sPathFileName();
        const Text to = Text(target).append(from, std::min(source.size(), from.size()));
        if (entry.IsDirectory()) {
            ufu_MkDir(to);  // one that is there already is as good
        } else if (!transfer(from, to)) {
            allDone = false;
        }
    }
    return allDone;
}

}  // namespace

bool ufu_MkDir(TextView sPath) {
    return !sPath.empty() && platform::CreateDirectoryW(ufu_ExtendedPath(sPath));
}

bool ufu_RmDir(TextView sPath) {
    return !sPath.empty() && platform::RemoveDirectoryW(ufu_ExtendedPath(sPath));
}

bool ufu_RmDirRic(TextView sPath) {
    if (sPath.empty()) return false;
    const std::uint32_t attributes = ufu_GetFileAttr(sPath);
    const bool isLink = attributes != platform::INVALID_FILE_ATTRIBUTES &&
                        (attributes & platform::FILE_ATTRIBUTE_REPARSE_POINT) != 0;
    return isLink ? ufu_RmDir(sPath) : removeTree(sPath, true);
}

bool ufu_MakePath(TextView sAbsPath) {
    if (ufu_IsWebPath(sAbsPath)) {
        throw Failure(kOwnError, u"ufu_MakePath", u"Not a local path");
    }
    // The walk starts behind the server's name, and behind the root: on a system without drive
    // letters a path begins with a backslash, behind the long-path prefix, too.
    std::size_t start = 0;
    if (ufu_IsUNCPath(sAbsPath)) {
        const std::size_t slash = sAbsPath.find(u'\\', 2);
        start = slash == TextView::npos ? 2 : slash + 1;
    }
    const bool onServer = start != 0 && !sAbsPath.starts_with(u"\\\\?\\");
    if (!onServer && sAbsPath.substr(start).starts_with(u'\\')) ++start;

    while (start < sAbsPath.size()) {
        const std::size_t end = std::min(sAbsPath.find(u'\\', start), sAbsPath.size());
        if (end == start) break;
        const TextView path = sAbsPath.substr(0, end);
        if (!ufu_DirExist(path)) ufu_MkDir(path);  // whether it worked shows at the end
        start = end + 1;
    }
    return ufu_DirExist(sAbsPath);
}

bool ufu_RmFile(TextView sPath) {
    ufu_SetFileAttr(sPath, 0);  // so that a read-only file can go
    return platform::DeleteFileW(ufu_ExtendedPath(sPath));
}

bool ufu_RmFiles(TextView sPathPattern) {
    bool allGone = true;
    for (const auto& file :
         clsSearchFiles().SearchPathPattern(sPathPattern, {.iSearchWhat = swFiles})) {
        if (!ufu_RmFile(file.sPathFileName())) allGone = false;
    }
    return allGone;
}

bool ufu_CopyFile(TextView sFrom, TextView sTo, bool bFailIfExists) {
    return platform::CopyFileW(ufu_ExtendedPath(sFrom), ufu_ExtendedPath(sTo), bFailIfExists);
}

bool ufu_MoveFile(TextView sFrom, TextView sTo, std::uint32_t iFlags) {
    const Text from = ufu_ExtendedPath(sFrom), to = ufu_ExtendedPath(sTo);
    if (pvWindowsVersion() >= 7) return platform::MoveFileExW(from, to, iFlags);
    ufu_RmFile(sTo);
    return platform::MoveFileW(from, to);
}

bool ufu_MoveFolderContent(TextView sSourcePath, TextView sDestPath) {
    if (!ufu_DirExist(sSourcePath) || !ufu_DirExist(sDestPath)) return false;
    constexpr auto kFlags = platform::MOVEFILE_REPLACE_EXISTING | platform::MOVEFILE_COPY_ALLOWED |
                            platform::MOVEFILE_WRITE_THROUGH;
    return transferContent(
        sSourcePath, ufu_OneBackSlash(sDestPath),
        [](const Text& from, const Text& to) { return ufu_MoveFile(from, to, kFlags); });
}

bool ufu_CopyFolderContent(TextView sSourcePath, TextView sDestPath) {
    if (!ufu_DirExist(sSourcePath)) return false;
    if (!ufu_DirExist(sDestPath) && (ufu_IsWebPath(sDestPath) || !ufu_MakePath(sDestPath))) {
        return false;
    }
    return transferContent(sSourcePath, sDestPath, [](const Text& from, const Text& to) {
        return ufu_CopyFile(from, to, false);
    });
}

bool ufu_FileExist(TextView sFileName) {
    if (sFileName.empty()) return false;
    return clsSearchFiles().SearchPathPattern(sFileName, {.iSearchWhat = swFiles}).size() == 1;
}

bool ufu_DirExist(TextView sPath) {
    if (sPath.empty()) return false;
    const SearchOptions any{.bReturnThisAndBaseDirs = true, .lMaxResults = 1};
    return !clsSearchFiles().SearchInPath(sPath, any).empty();
}

std::uint32_t ufu_GetFileAttr(TextView sPath) {
    return platform::GetFileAttributesW(ufu_ExtendedPath(sPath));
}

bool ufu_SetFileAttr(TextView sPath, std::uint32_t iAttrs) {
    return platform::SetFileAttributesW(ufu_ExtendedPath(sPath), iAttrs);
}

bool ufu_FileHasAttribute(TextView sPath, std::uint32_t iAttr) {
    return static_cast<std::int32_t>(ufu_GetFileAttr(sPath) & iAttr) > 0;
}

bool ufu_GetFileDate(TextView sPathFileName, std::int32_t iDateType, FileDate& date) {
    clsSearchFilesFInfo info;
    if (!info.LoadFromFileOrDir(sPathFileName, false)) return false;
    info.GetFileDate(iDateType, date);
    return true;
}

Text ufu_GetCurDir() { return queriedText(platform::GetCurrentDirectoryW); }

Text ufu_GetTempPath() { return queriedText(platform::GetTempPathW); }

bool ufu_SetCurDir(TextView sPath) {
    return platform::SetCurrentDirectoryW(ufu_ExtendedPath(sPath));
}

Text ufu_UniAppPath() {
    Text name(kBufferUnits, u'\0');
    for (;;) {
        const auto size = static_cast<std::uint32_t>(name.size());
        const std::uint32_t length = platform::GetModuleFileNameW(size, name.data());
        if (length + 1 < size) {
            name.resize(length);
            break;
        }
        name.resize(name.size() * 2);  // the name may have been cut
    }
    Text directory = ufu_FilePath(name, false);
    return directory.empty() ? ufu_GetCurDir() : directory;
}

Text ufu_UniCommandLine() {
    // The same on every version: the platform's command line is Unicode throughout.
    const Text line = platform::GetCommandLineW();
    const bool quoted = line.starts_with(u'"');
    const std::size_t nameEnd = quoted ? line.find(u'"', 1) : line.find(u' ');
    if (nameEnd == Text::npos) return {};
    const std::size_t first = line.find_first_not_of(u' ', nameEnd + 1);
    return first == Text::npos ? Text() : line.substr(first);
}
