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
    // Creation is the file's birth, or its earliest mark where the file system keeps none.
    FILETIME ftCreationTime, ftLastAccessTime, ftLastWriteTime;
    std::uint32_t nFileSizeHigh = 0, nFileSizeLow = 0;  // 0 for a directory
    Text cFileName;                                     // without a path, in the inside form
};

using FindHandle = std::int32_t;  // above 0; INVALID_HANDLE_VALUE (files.h) stands for none

// The last element of the pattern may hold * and ? (matchesPattern tells the rules; case counts).
// The matches are found sorted by name (by UTF-16 units), "." and ".." first, when the pattern
// matches them; the others are listed only when the search goes on to them. A pattern without
// wildcards is one look-up of that name, whatever else the directory holds. INVALID_HANDLE_VALUE
// when nothing matches, the directory cannot be read, or the pattern ends in a backslash and so
// names nothing in it.
[[nodiscard]] FindHandle FindFirstFileW(TextView pattern, WIN32_FIND_DATAW& data);
bool FindNextFileW(FindHandle handle, WIN32_FIND_DATAW& data);  // false at the end
bool FindClose(FindHandle handle);

// Both are false, and change nothing, for a time with the top bit set; the first also where the
// local time would lie before 1601. The offset is the one in force in the user's zone at that time.
bool FileTimeToLocalFileTime(const FILETIME& utc, FILETIME& local);
bool FileTimeToSystemTime(const FILETIME& time, SYSTEMTIME& parts);

// Whether name matches a pattern of literal units, * and ?:
//   *    any units, none included; directly before a dot it does not run over the name's last dot
//   ?    one unit other than a dot; nothing before a dot and at the end, so a??.txt matches a.txt
//   .    a dot; also nothing at the end of the name, when a wildcard follows it or "*." ends the
//        pattern: *.* matches every name, *. those without a dot
// The cost is at most the product of the two lengths.
[[nodiscard]] bool matchesPattern(TextView name, TextView pattern);

}  // namespace platform
