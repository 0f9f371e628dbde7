// file/ufu_files.h: files and directories, whole.
//
// Booleans report success. Unless it says so, nothing here raises, and no reason for a failure is
// kept. Paths are in the inside form (platform/base/paths.h).
#pragma once
#include "file/FileDate.h"
#include "platform/base/text.h"

bool ufu_MkDir(TextView sPath);
bool ufu_RmDir(TextView sPath);  // an empty directory
// A directory with all that is in it, read-only files included. A link in it goes, what the link
// leads to stays. It does as much as it can; true only if all went.
bool ufu_RmDirRic(TextView sPath);
// Makes a directory and all the directories above it that are missing; true when the directory
// exists afterwards. An empty element in the path ends the walk. Raises "Not a local path" for a
// slash.
bool ufu_MakePath(TextView sAbsPath);

bool ufu_RmFile(TextView sPath);          // a read-only one, too
bool ufu_RmFiles(TextView sPathPattern);  // all files that match; true only if every one went

bool ufu_CopyFile(TextView sFrom, TextView sTo, bool bFailIfExists = false);
// iFlags are the MOVEFILE_ flags (platform/base/files.h). On a platform of version code below 7
// they are ignored and an existing target is deleted first.
bool ufu_MoveFile(TextView sFrom, TextView sTo, std::uint32_t iFlags = 0);

// All that is in one directory, at all depths, into another one, overwriting. A directory that is a
// link is not entered. Moving needs both directories and leaves the source's directories behind,
// emptied; copying makes the destination if it is missing. Copying puts what an entry's path has
// behind sSourcePath directly behind sDestPath, so a source with a final backslash wants a
// destination with one. True only if every file arrived.
bool ufu_MoveFolderContent(TextView sSourcePath, TextView sDestPath);
bool ufu_CopyFolderContent(TextView sSourcePath, TextView sDestPath);

// Whether there is exactly one file, not a directory, that sFileName names or, as a pattern with *
// and ?, matches.
[[nodiscard]] bool ufu_FileExist(TextView sFileName);
[[nodiscard]] bool ufu_DirExist(TextView sPath);

// The FILE_ATTRIBUTE_ bits; INVALID_FILE_ATTRIBUTES when there is no such file.
[[nodiscard]] std::uint32_t ufu_GetFileAttr(TextView sPath);
bool ufu_SetFileAttr(TextView sPath, std::uint32_t iAttrs);
// Whether attributes AND iAttr is above 0 as a signed value. The invalid value has every bit, so a
// missing file "has" every attribute: ask for existence apart.
[[nodiscard]] bool ufu_FileHasAttribute(TextView sPath, std::uint32_t iAttr);

// Local time of a file or directory; iDateType as in FileDateType. On failure date stays.
bool ufu_GetFileDate(TextView sPathFileName, std::int32_t iDateType, FileDate& date);

[[nodiscard]] Text ufu_GetCurDir();    // empty on failure
[[nodiscard]] Text ufu_GetTempPath();  // ends in a backslash; empty on failure
bool ufu_SetCurDir(TextView sPath);

// The program's directory, without a final backslash; the current directory when the system does
// not tell the program's file.
[[nodiscard]] Text ufu_UniAppPath();
// The arguments of the process as one text, as platform::GetCommandLineW frames them.
[[nodiscard]] Text ufu_UniCommandLine();
