#include "file/clsSearchFiles.h"

#include "file/ufu_paths.h"
#include "platform/base/files.h"
#include "platform/base/find.h"

#include <exception>
#include <iterator>
#include <limits>

namespace {

void (*g_yield)() = nullptr;

class FindCloser {
public:
    explicit FindCloser(platform::FindHandle handle) : m_handle(handle) {}
    ~FindCloser() { platform::FindClose(m_handle); }
    FindCloser(const FindCloser&) = delete;
    FindCloser& operator=(const FindCloser&) = delete;

private:
    platform::FindHandle m_handle;
};

std::int64_t sizeOf(const platform::WIN32_FIND_DATAW& data) {
    constexpr auto kLargest = std::numeric_limits<std::int64_t>::max();
    if (data.nFileSizeHigh > 0x7FFFFFFF) return kLargest;
    return static_cast<std::int64_t>(std::uint64_t{data.nFileSizeHigh} << 32 | data.nFileSizeLow);
}

clsSearchFilesFInfo entryOf(const platform::WIN32_FIND_DATAW& data, const Text& directory) {
    clsSearchFilesFInfo entry;
    entry.sFileName = data.cFileName;
    entry.lAttributes = data.dwFileAttributes;
    entry.dFileSize = sizeOf(data);
    entry.dwLowDateTimeCreation = data.ftCreationTime.dwLowDateTime;
    entry.dwHighDateTimeCreation = data.ftCreationTime.dwHighDateTime;
    entry.dwLowDateTimeLastAccess = data.ftLastAccessTime.dwLowDateTime;
    entry.dwHighDateTimeLastAccess = data.ftLastAccessTime.dwHighDateTime;
    entry.dwLowDateTimeLastWrite = data.ftLastWriteTime.dwLowDateTime;
    entry.dwHighDateTimeLastWrite = data.ftLastWriteTime.dwHighDateTime;
    entry.sFilePath(directory);
    return entry;
}

bool isDirectory(const platform::WIN32_FIND_DATAW& data) {
    return (data.dwFileAttributes & platform::FILE_ATTRIBUTE_DIRECTORY) != 0;
}

bool isLink(const platform::WIN32_FIND_DATAW& data) {
    return (data.dwFileAttributes & platform::FILE_ATTRIBUTE_REPARSE_POINT) != 0;
}

bool isThisOrBaseDir(TextView name) { return name == u"." || name == u".."; }

bool isWanted(const platform::WIN32_FIND_DATAW& data, const SearchOptions& options) {
    if (options.iSearchWhat == swFiles && isDirectory(data)) return false;
    if (options.iSearchWhat == swDirs && !isDirectory(data)) return false;
    return options.bReturnThisAndBaseDirs || !isThisOrBaseDir(data.cFileName);
}

void cutToLimit(SearchResult& result, std::int32_t lMaxResults) {
    const auto limit = static_cast<std::size_t>(lMaxResults);
    if (lMaxResults > 0 && result.size() > limit) {
        result.erase(result.begin() + lMaxResults, result.end());
    }
}

}  // namespace

void clsSearchFiles::setYield(void (*yield)()) { g_yield = yield; }

// The frame of every public search: refuses a second one that comes in while the first yields, and
// keeps every failure from the caller.
template <typename Body> SearchResult clsSearchFiles::pvRun(Body body) {
    SearchResult result;
    if (m_bSearching) return result;
    m_bStop = false;
    m_bSearching = true;
    m_sCurrentDir.clear();
    m_lCount = 0;
    try {
        body(result);
    } catch (const std::exception&) {  // what was found so far is the result
    }
    m_bStop = false;
    m_bSearching = false;
    m_sCurrentDir.clear();
    return result;
}

SearchResult clsSearchFiles::SearchInPath(TextView sPath, const SearchOptions& options) {
    return pvRun([&](SearchResult& result) {
        Text directory = ufu_OneBackSlash(sPath);
        if (directory.empty()) {
            // Backslashes alone keep them, since nothing at all is the current directory; the root
            // goes by a name that survives the loss of its only one.
            directory = sPath == u"\\" ? TextView(u"\\.\\") : sPath;
        }
        pvSearch(directory + u"*.*", options, result);
    });
}

SearchResult clsSearchFiles::SearchPathPattern(TextView sPathPattern,
                                               const SearchOptions& options) {
    return pvRun([&](SearchResult& result) { pvSearch(sPathPattern, options, result); });
}

SearchResult clsSearchFiles::SearchFilePatternPathNoPattern(TextView sPathPattern,
                                                            const SearchOptions& options) {
    return pvRun([&](SearchResult& result) {
        SearchOptions oneLevel = options;
        oneLevel.bRecurseSubDirs = false;
        oneLevel.bHierarchicalCollection = false;
        if (!options.bRecurseSubDirs) {
            pvSearch(sPathPattern, oneLevel, result);
            return;
        }
        SearchResult directories;
        pvSearch(ufu_FilePath(sPathPattern, true) + u"*.*",
                 {.iSearchWhat = swDirs,
                  .bRecurseSubDirs = true,
                  .bAsync = options.bAsync,
                  .lMaxResults = options.lMaxResults},
                 directories);
        pvSearch(sPathPattern, oneLevel, result);
        const Text pattern = ufu_FileName(sPathPattern);
        for (const auto& directory : directories) {
            if (m_bStop) break;
            if (directory.isLink()) continue;
            SearchResult found;
            pvSearch(ufu_OneBackSlash(directory.sPathFileName()) + pattern, oneLevel, found);
            std::move(found.begin(), found.end(), std::back_inserter(result));
            cutToLimit(result, options.lMaxResults);
        }
    });
}

void clsSearchFiles::GetFileDate(TextView sPathFileName, std::int32_t iDateType, FileDate& date) {
    const SearchResult found = SearchPathPattern(sPathFileName);
    if (found.size() == 1) found.front().GetFileDate(iDateType, date);
}

void clsSearchFiles::pvSearch(TextView sPathPattern, const SearchOptions& options,
                              SearchResult& oResult) {
    try {
        pvSearchLevel(sPathPattern, options, oResult);
    } catch (const std::exception&) {
        m_bStop = true;  // what was found so far is the result
    }
}

void clsSearchFiles::pvSearchLevel(TextView sPathPattern, const SearchOptions& options,
                                   SearchResult& oResult) {
    const Text directory = m_sCurrentDir = ufu_FilePath(sPathPattern, true);
    if (options.bAsync && g_yield != nullptr) g_yield();
    if (m_bStop) return;

    platform::WIN32_FIND_DATAW data;
    const auto handle = platform::FindFirstFileW(ufu_ExtendedPath(sPathPattern), data);
    if (handle != platform::INVALID_HANDLE_VALUE) {
        const FindCloser closer(handle);
        const Text pattern = options.bRecurseSubDirs ? ufu_FileName(sPathPattern) : Text();
        do {
            const bool wanted = isWanted(data, options);
            if (wanted) {
                oResult.push_back(entryOf(data, directory));
                ++m_lCount;
                if (options.lMaxResults > 0 && m_lCount >= options.lMaxResults) {
                    m_bStop = true;
                    return;
                }
            }
            if (options.bRecurseSubDirs && isDirectory(data) && !isLink(data) &&
                !isThisOrBaseDir(data.cFileName)) {
                const bool asTree = options.bHierarchicalCollection && wanted;
                pvSearch(directory + data.cFileName + u'\\' + pattern, options,
                         asTree ? oResult.back().oCollSubFiles : oResult);
            }
        } while (platform::FindNextFileW(handle, data));
    }
    if (!options.bHierarchicalCollection) cutToLimit(oResult, options.lMaxResults);
}
