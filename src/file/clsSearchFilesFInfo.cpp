#include "file/clsSearchFilesFInfo.h"

#include "file/clsSearchFiles.h"
#include "file/ufu_paths.h"
#include "platform/base/find.h"

namespace {

using platform::FILETIME;

// False for a type that is none.
bool timeOf(const clsSearchFilesFInfo& info, std::int32_t iDateType, FILETIME& time) {
    switch (iDateType) {
    case fdtCreation:
        time = {info.dwLowDateTimeCreation, info.dwHighDateTimeCreation};
        return true;
    case fdtLastAccess:
        time = {info.dwLowDateTimeLastAccess, info.dwHighDateTimeLastAccess};
        return true;
    case fdtLastWrite:
        time = {info.dwLowDateTimeLastWrite, info.dwHighDateTimeLastWrite};
        return true;
    default:
        return false;
    }
}

void takeApart(const FILETIME& time, FileDate& date) {
    platform::SYSTEMTIME parts;
    if (!platform::FileTimeToSystemTime(time, parts)) return;
    date = {.iDay = parts.wDay,
            .iMonth = parts.wMonth,
            .iYear = parts.wYear,
            .iHour = parts.wHour,
            .iMinute = parts.wMinute,
            .iSecond = parts.wSecond,
            .iMilliSeconds = parts.wMilliseconds,
            .iDayOfWeek = parts.wDayOfWeek};
}

}  // namespace

clsSearchFilesFInfo& clsSearchFilesFInfo::Clone(clsSearchFilesFInfo& oToFill) const {
    clsSearchFilesFInfo copy = *this;  // first, since oToFill may be one of our own children
    oToFill = std::move(copy);
    return oToFill;
}

Text clsSearchFilesFInfo::sFilePathNoSlash() const { return ufu_NoBackSlash(m_sFilePath); }

Text clsSearchFilesFInfo::sFilePathSlash() const { return ufu_OneBackSlash(m_sFilePath); }

void clsSearchFilesFInfo::GetFileDate(std::int32_t iDateType, FileDate& date) const {
    FILETIME time, local;
    if (timeOf(*this, iDateType, time) && platform::FileTimeToLocalFileTime(time, local)) {
        takeApart(local, date);
    }
}

void clsSearchFilesFInfo::GetUTCFileDate(std::int32_t iDateType, FileDate& date) const {
    FILETIME time;
    if (timeOf(*this, iDateType, time)) takeApart(time, date);
}

bool clsSearchFilesFInfo::LoadFromFileOrDir(TextView sFile, bool bRecurseIfDirectory) {
    clsSearchFiles search;
    SearchResult found = search.SearchPathPattern(sFile);
    if (found.size() != 1) return false;
    clsSearchFilesFInfo& entry = found.front();
    if (bRecurseIfDirectory && entry.IsDirectory()) {
        entry.oCollSubFiles = search.SearchInPath(
            entry.sPathFileName(), {.bRecurseSubDirs = true, .bHierarchicalCollection = true});
    }
    *this = std::move(entry);
    return true;
}
