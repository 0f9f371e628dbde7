// file/ufu_paths.h: paths as text. Nothing here looks at a disk.
//
// Local paths are in the inside form (platform/base/paths.h), with backslashes; web paths have
// slashes. Where an operation refuses the other kind, it raises a Failure with kOwnError, its own
// name as source, and "Not a local path" or "Not a web path".
#pragma once
#include "platform/base/text.h"

// The directory part; empty when there is none, bFinalBackSlash or not. That of a file in the root
// ("\a") is "\.", since without its backslash the root would be no directory. Raises for a slash.
[[nodiscard]] Text ufu_FilePath(TextView sPathFileName, bool bFinalBackSlash);
// What stands behind the last backslash of the localized path (ufu_LocalizePath without raising).
[[nodiscard]] Text ufu_FileName(TextView sPathFileName);
// The extension of the localized path, without its dot; a dot in a directory's name starts none.
[[nodiscard]] Text ufu_FileExt(TextView sPathFileName);
[[nodiscard]] Text ufu_FileNameNoExt(TextView sPathFileName);

// s ending in exactly one backslash, and in none. What consists of backslashes alone, and the empty
// string, become empty in both. Raise for a slash.
[[nodiscard]] Text ufu_OneBackSlash(TextView s);
[[nodiscard]] Text ufu_NoBackSlash(TextView s);
// The same with slashes. Raise for a backslash.
[[nodiscard]] Text ufu_OneSlashWeb(TextView s);
[[nodiscard]] Text ufu_NoSlashWeb(TextView s);

[[nodiscard]] bool ufu_IsLocalPath(TextView s);  // holds a backslash
[[nodiscard]] bool ufu_IsWebPath(TextView s);    // holds a slash
[[nodiscard]] bool ufu_IsUNCPath(TextView s);    // begins with two backslashes

// The local form of a path or of a file link: "file:///C|/a%20b" gives "C:\a b". For a web link it
// raises "Cannot Localize Link!" with bRaiseError, and else treats it as a path.
[[nodiscard]] Text ufu_LocalizePath(TextView s, bool bRaiseError = false);

// The form for the platform: the long-path prefix \\?\ and s, unless s begins with two backslashes
// or the platform has no such prefix (version code below 7).
[[nodiscard]] Text ufu_ExtendedPath(TextView s);
