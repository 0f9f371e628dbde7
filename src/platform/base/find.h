// platform/base/find.h: search handles over one directory, and file times.
#pragma once
#include "platform/base/text.h"

namespace platform {

// 100-nanosecond steps since 1601-01-01 00:00 UTC, in two halves.
struct FILETIME {
    std::uint32_t dwLowDateTime = 0;
    std::uint32_t dwHighDateTime = 0;
};

struct SYSTEMTIME {
    std::uint16_t wYear = 0, wMonth = 0, wDayOfWeek = 0, wDay = 0;  // Sunday is day 0
    std::uint16_t wHour = 0, wMinute = 0, wSecond = 0, wMilliseconds = 0;
};

struct WIN32_FIND_DATAW {
    std::uint32_t dwFileAttributes = 0;  // as GetFileAttributesW
    FILETIME ftCreationTime, ftLastAccessTime, ftLastWriteTime;
    std::uint32_t nFileSizeHigh = 0, nFileSizeLow = 0;
    Text cFileName;  // without a path, in the inside form
};

using FindHandle = std::int32_t;  // above 0; INVALID_HANDLE_VALUE (files.h) stands for none

// The last element of the pattern may hold * and ?; *.* matches every name. Exact case. The matches
// are found sorted by name (by UTF-16 units), "." and ".." first, when the pattern matches them.
// INVALID_HANDLE_VALUE when nothing matches or the directory cannot be read.
[[nodiscard]] FindHandle FindFirstFileW(TextView pattern, WIN32_FIND_DATAW& data);
bool FindNextFileW(FindHandle handle, WIN32_FIND_DATAW& data);  // false at the end
bool FindClose(FindHandle handle);

bool FileTimeToLocalFileTime(const FILETIME& utc,
                             FILETIME& local);  // by the rules in force at that time
bool FileTimeToSystemTime(const FILETIME& time, SYSTEMTIME& parts);

// Whether name matches a pattern of literal units, * and ?.
[[nodiscard]] bool matchesPattern(TextView name, TextView pattern);

}  // namespace platform
