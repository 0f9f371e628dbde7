// file/FileDate.h: the date of a file, in parts.
#pragma once
#include <cstdint>

enum FileDateType : std::int32_t { fdtCreation = 0, fdtLastAccess = 1, fdtLastWrite = 2 };

struct FileDate {
    std::int32_t iDay = 0, iMonth = 0, iYear = 0;
    std::int32_t iHour = 0, iMinute = 0, iSecond = 0, iMilliSeconds = 0;
    std::int32_t iDayOfWeek = 0;  // Sunday is 0
    bool operator==(const FileDate&) const = default;
};
