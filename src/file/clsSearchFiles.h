// file/clsSearchFiles.h: searches through directories.
//
// The order of a result is depth first: a directory stands before its contents, and within a
// directory the platform's order holds. A directory that is a link is found, but not entered, so
// that a search ends and stays below its path. No member raises: a path that cannot be searched
// gives an empty result, and an error on the way ends the search with what was found so far.
#pragma once
#include "file/clsSearchFilesFInfo.h"

enum SearchWhat : std::int32_t { swFilesAndDirs = 0, swFiles = 1, swDirs = 2 };

struct SearchOptions {
    std::int32_t iSearchWhat = swFilesAndDirs;  // any other value acts as swFilesAndDirs
    bool bRecurseSubDirs = false;
    bool bAsync = false;                  // runs the message loop once for each directory
    bool bReturnThisAndBaseDirs = false;  // "." and "..", too
    // 0 or less: no limit. The level that reaches it leaves at once; of the levels above it, each
    // leaves with the next entry that it wants, which it still adds.
    std::int32_t lMaxResults = -1;
    // A tree: the hits in a directory that is a hit itself go into its oCollSubFiles.
    bool bHierarchicalCollection = false;
};

class clsSearchFiles {
public:
    clsSearchFiles() = default;
    clsSearchFiles(const clsSearchFiles&) = delete;
    clsSearchFiles& operator=(const clsSearchFiles&) = delete;

    // Everything in a directory.
    SearchResult SearchInPath(TextView sPath, const SearchOptions& options = {});
    // What matches a path whose last element may hold * and ?. Sub-directories are entered only
    // when they match, too.
    SearchResult SearchPathPattern(TextView sPathPattern, const SearchOptions& options = {});
    // The same, with the pattern applied in every directory below the path. Its results are flat
    // (bHierarchicalCollection has no effect), and the directories that it looks through count
    // for lMaxResults.
    SearchResult SearchFilePatternPathNoPattern(TextView sPathPattern,
                                                const SearchOptions& options = {});

    [[nodiscard]] bool IsSearching() const { return m_bSearching; }
    // The directory being read, with a final backslash; empty between searches.
    [[nodiscard]] const Text& CurrentDir() const { return m_sCurrentDir; }
    // Ends the running search before the next directory.
    void StopSearch() { m_bStop = true; }

    // As clsSearchFilesFInfo::GetFileDate for what the path names. date stays when that is not
    // exactly one file or directory.
    void GetFileDate(TextView sPathFileName, std::int32_t iDateType, FileDate& date);

    // What runs the message loop once, for bAsync; null (as at the start): nothing does. A search
    // that is begun from there on the same object is refused with an empty result.
    static void setYield(void (*yield)());

private:
    template <typename Body> SearchResult pvRun(Body body);
    void pvSearch(TextView sPathPattern, const SearchOptions& options, SearchResult& oResult);
    void pvSearchLevel(TextView sPathPattern, const SearchOptions& options, SearchResult& oResult);

    bool m_bStop = false;  // asked for, or the limit was reached
    bool m_bSearching = false;
    Text m_sCurrentDir;
    std::int32_t m_lCount = 0;  // hits of this search, at all levels
};
