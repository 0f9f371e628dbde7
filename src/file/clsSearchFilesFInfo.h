// file/clsSearchFilesFInfo.h: one hit of a file search.
#pragma once
#include "file/FileDate.h"
#include "platform/base/text.h"

class clsSearchFilesFInfo;
using SearchResult = std::vector<clsSearchFilesFInfo>;

class clsSearchFilesFInfo {
public:
    Text sFileName;                 // without a path
    std::uint32_t lAttributes = 0;  // FILE_ATTRIBUTE_ bits (platform/base/files.h)
    std::int64_t dFileSize = 0;  // bytes; a size of 2 to the 63 or more shows as the largest value
    // File times: 100-nanosecond steps since 1601-01-01 UTC, in halves.
    std::uint32_t dwLowDateTimeCreation = 0, dwHighDateTimeCreation = 0;
    std::uint32_t dwLowDateTimeLastAccess = 0, dwHighDateTimeLastAccess = 0;
    std::uint32_t dwLowDateTimeLastWrite = 0, dwHighDateTimeLastWrite = 0;
    SearchResult oCollSubFiles;  // a tree search: what is in the directory

    [[nodiscard]] bool IsReadOnly() const { return hasBit(0); }
    [[nodiscard]] bool IsHidden() const { return hasBit(1); }
    [[nodiscard]] bool IsSystem() const { return hasBit(2); }
    [[nodiscard]] bool IsDirectory() const { return hasBit(4); }
    [[nodiscard]] bool IsCompressed() const { return hasBit(11); }
    [[nodiscard]] bool IsEncrypted() const { return hasBit(14); }
    [[nodiscard]] bool IsFile() const { return !IsDirectory(); }
    [[nodiscard]] bool isLink() const { return hasBit(10); }

    // Copies everything, the tree below included, into oToFill or into a new object.
    clsSearchFilesFInfo& Clone(clsSearchFilesFInfo& oToFill) const;
    [[nodiscard]] clsSearchFilesFInfo Clone() const { return *this; }

    // The directory, and the whole path. They raise "Not a local path" for a directory with a
    // slash.
    [[nodiscard]] Text sPathFileName() const { return sFilePathSlash() + sFileName; }
    [[nodiscard]] Text sFilePathNoSlash() const;
    [[nodiscard]] Text sFilePathSlash() const;
    void sFilePath(Text s) { m_sFilePath = std::move(s); }

    // iDateType as in FileDateType. For another value, or a time that no calendar date goes with,
    // date stays.
    void GetFileDate(std::int32_t iDateType, FileDate& date) const;  // local time
    void GetUTCFileDate(std::int32_t iDateType, FileDate& date) const;

    // Becomes what sFile names. False, and nothing changes, unless exactly one entry matches. A
    // directory gets the tree of all that is in it with bRecurseIfDirectory.
    bool LoadFromFileOrDir(TextView sFile, bool bRecurseIfDirectory);

private:
    [[nodiscard]] bool hasBit(unsigned bit) const { return (lAttributes >> bit & 1) != 0; }

    Text m_sFilePath;
};
