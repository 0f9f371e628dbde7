#include "platform/base/find.h"

#include "platform/base/files.h"
#include "platform/base/internal.h"
#include "platform/base/paths.h"
#include "platform/base/testhooks.h"

#include <algorithm>
#include <ctime>
#include <dirent.h>
#include <memory>

namespace platform {

using internal::mustFail;

namespace {

constexpr std::int64_t kTicksPerSecond = 10'000'000;
constexpr std::int64_t kSecondsTo1970 = 11'644'473'600;  // from 1601
constexpr std::int64_t kSecondsPerDay = 86'400;

struct Search {
    std::string directory;  // with its final slash; empty for the current one
    Text pattern;           // of the names in it
    bool listed = false;    // whether names holds all of them, or only what stands before the rest
    std::vector<Text> names;  // inside form, in order
    std::size_t next = 0;
};

internal::HandleTable<std::unique_ptr<Search>>& openSearches() {
    static internal::HandleTable<std::unique_ptr<Search>> table;
    return table;
}

FILETIME fileTime(std::uint64_t ticks) {
    return {static_cast<std::uint32_t>(ticks), static_cast<std::uint32_t>(ticks >> 32)};
}

std::uint64_t ticksOf(const FILETIME& time) {
    return (std::uint64_t{time.dwHighDateTime} << 32) | time.dwLowDateTime;
}

// Moments before 1601 become its first one.
FILETIME fileTime(const struct statx_timestamp& time) {
    const std::int64_t seconds = time.tv_sec + kSecondsTo1970;
    if (seconds < 0) return {};
    return fileTime(static_cast<std::uint64_t>(seconds * kTicksPerSecond + time.tv_nsec / 100));
}

bool before(const struct statx_timestamp& a, const struct statx_timestamp& b) {
    return a.tv_sec != b.tv_sec ? a.tv_sec < b.tv_sec : a.tv_nsec < b.tv_nsec;
}

// False when the file is gone.
bool describe(const std::string& directory, const std::string& name, WIN32_FIND_DATAW& data) {
    internal::FileFacts facts{};
    if (!internal::queryFile(directory + name, facts)) return false;
    const struct statx& info = facts.info;

    data.dwFileAttributes = internal::attributesOf(facts, name);
    if ((info.stx_mask & STATX_BTIME) != 0) {
        data.ftCreationTime = fileTime(info.stx_btime);
    } else {
        // Nothing tells the birth; the file is at least as old as its earliest mark.
        data.ftCreationTime =
            fileTime(before(info.stx_mtime, info.stx_ctime) ? info.stx_mtime : info.stx_ctime);
    }
    data.ftLastAccessTime = fileTime(info.stx_atime);
    data.ftLastWriteTime = fileTime(info.stx_mtime);
    const std::uint64_t size = S_ISDIR(info.stx_mode) ? 0 : info.stx_size;
    data.nFileSizeHigh = static_cast<std::uint32_t>(size >> 32);
    data.nFileSizeLow = static_cast<std::uint32_t>(size);
    data.cFileName = pathFromSystem(name);
    return true;
}

bool isDots(TextView name) { return name == u"." || name == u".."; }

using Directory = std::unique_ptr<DIR, int (*)(DIR*)>;

Directory openDirectory(const Search& search) {
    const bool current = search.directory.empty();
    return Directory(::opendir(current ? "." : search.directory.c_str()), &::closedir);
}

// Puts the matching names but "." and ".." in place of the names there are.
void list(Search& search) {
    search.listed = true;
    search.next = 0;
    search.names.clear();
    const Directory stream = openDirectory(search);
    if (stream == nullptr) return;
    while (const dirent* entry = ::readdir(stream.get())) {
        Text name = pathFromSystem(entry->d_name);
        if (!isDots(name) && matchesPattern(name, search.pattern)) {
            search.names.push_back(std::move(name));
        }
    }
    std::sort(search.names.begin(), search.names.end());
}

// The next entry that still exists.
bool advance(Search& search, WIN32_FIND_DATAW& data) {
    while (true) {
        while (search.next < search.names.size()) {
            const std::string name = pathToSystem(search.names[search.next++]);
            if (!name.empty() && describe(search.directory, name, data)) return true;
        }
        if (search.listed) return false;
        list(search);
    }
}

}  // namespace

FindHandle FindFirstFileW(TextView pattern, WIN32_FIND_DATAW& data) {
    pattern = internal::withoutLongPathPrefix(pattern);
    const std::size_t nameStart = pattern.rfind(u'\\') + 1;  // npos + 1 is 0
    const TextView directory = pattern.substr(0, nameStart);
    const TextView name = pattern.substr(nameStart);
    auto search = std::make_unique<Search>();
    search->directory = pathToSystem(directory);
    const bool nowhere = !directory.empty() && search->directory.empty();
    if (nowhere || name.empty() || mustFail(test::FileOp::Find)) return INVALID_HANDLE_VALUE;

    if (name.find_first_of(u"*?") == TextView::npos) {
        search->names.emplace_back(name);
        search->listed = true;
    } else {
        // The rest is listed when it is asked for: whether a directory is there shows without.
        if (openDirectory(*search) == nullptr) return INVALID_HANDLE_VALUE;
        search->pattern = name;
        for (const TextView dots : {u".", u".."}) {
            if (matchesPattern(dots, name)) search->names.emplace_back(dots);
        }
    }
    if (!advance(*search, data)) return INVALID_HANDLE_VALUE;
    const FindHandle handle = openSearches().add(std::move(search));
    return handle != 0 ? handle : INVALID_HANDLE_VALUE;
}

bool FindNextFileW(FindHandle handle, WIN32_FIND_DATAW& data) {
    const std::unique_ptr<Search>* search = openSearches().find(handle);
    return search != nullptr && advance(**search, data);
}

bool FindClose(FindHandle handle) { return openSearches().remove(handle); }

bool FileTimeToLocalFileTime(const FILETIME& utc, FILETIME& local) {
    const auto ticks = static_cast<std::int64_t>(ticksOf(utc));
    if (ticks < 0) return false;
    const time_t seconds = ticks / kTicksPerSecond - kSecondsTo1970;
    struct tm parts {};
    ::tzset();
    if (::localtime_r(&seconds, &parts) == nullptr) return false;
    std::int64_t result = 0;
    if (__builtin_add_overflow(ticks, parts.tm_gmtoff * kTicksPerSecond, &result) || result < 0) {
        return false;
    }
    local = fileTime(static_cast<std::uint64_t>(result));
    return true;
}

bool FileTimeToSystemTime(const FILETIME& time, SYSTEMTIME& parts) {
    const auto ticks = static_cast<std::int64_t>(ticksOf(time));
    if (ticks < 0) return false;
    const std::int64_t seconds = ticks / kTicksPerSecond;
    const std::int64_t days = seconds / kSecondsPerDay;
    const std::int64_t second = seconds % kSecondsPerDay;

    // Years from March on, in blocks of 400 years of 146097 days; day 0 of the first block is
    // 1 March 1600, 306 days before 1 January 1601.
    const std::int64_t shifted = days + 306;
    const std::int64_t block = shifted / 146'097;
    const std::int64_t dayOfBlock = shifted % 146'097;
    const std::int64_t yearOfBlock =
        (dayOfBlock - dayOfBlock / 1'460 + dayOfBlock / 36'524 - dayOfBlock / 146'096) / 365;
    const std::int64_t dayOfYear =
        dayOfBlock - (365 * yearOfBlock + yearOfBlock / 4 - yearOfBlock / 100);
    const std::int64_t monthFromMarch = (5 * dayOfYear + 2) / 153;
    const std::int64_t month = monthFromMarch < 10 ? monthFromMarch + 3 : monthFromMarch - 9;

    const auto small = [](std::int64_t value) { return static_cast<std::uint16_t>(value); };
    parts.wYear = small(1600 + 400 * block + yearOfBlock + (month <= 2 ? 1 : 0));
    parts.wMonth = small(month);
    parts.wDay = small(dayOfYear - (153 * monthFromMarch + 2) / 5 + 1);
    parts.wDayOfWeek = small((days + 1) % 7);  // 1 January 1601 was a Monday
    parts.wHour = small(second / 3'600);
    parts.wMinute = small(second / 60 % 60);
    parts.wSecond = small(second % 60);
    parts.wMilliseconds = small(ticks % kTicksPerSecond / 10'000);
    return true;
}

bool matchesPattern(TextView name, TextView pattern) {
    if (pattern == u"*" || pattern == u"*.*") return true;
    const std::size_t lastDot = name.rfind(u'.');

    // All places in the pattern that the name so far can have reached, as a set: the cost is at
    // most the product of the lengths, whatever the pattern.
    std::vector<bool> at(pattern.size() + 1);
    std::vector<bool> after(pattern.size() + 1);
    // Enters a place, and those behind it that need nothing more of the name at position i.
    const auto enter = [&](std::vector<bool>& places, std::size_t place, std::size_t i) {
        for (;; ++place) {
            if (places[place]) return;
            places[place] = true;
            if (place == pattern.size()) return;
            const bool end = i == name.size();
            const char16_t unit = pattern[place];
            const char16_t next = place + 1 < pattern.size() ? pattern[place + 1] : u'\0';
            const bool lastAfterStar =
                place + 1 == pattern.size() && place > 0 && pattern[place - 1] == u'*';
            const bool emptyDot = next == u'*' || next == u'?' || lastAfterStar;
            const bool skips = unit == u'*' || (unit == u'?' && (end || name[i] == u'.')) ||
                               (unit == u'.' && end && emptyDot);
            if (!skips) return;
        }
    };
    enter(at, 0, 0);
    for (std::size_t i = 0; i < name.size(); ++i) {
        std::fill(after.begin(), after.end(), false);
        for (std::size_t place = 0; place < pattern.size(); ++place) {
            if (!at[place]) continue;
            const char16_t unit = pattern[place];
            if (unit == u'*') {
                // A star before a dot leaves the name's last dot to that dot.
                const bool beforeDot = place + 1 < pattern.size() && pattern[place + 1] == u'.';
                if (!(beforeDot && i == lastDot)) enter(after, place, i + 1);
            } else if (unit == u'?' ? name[i] != u'.' : name[i] == unit) {
                enter(after, place + 1, i + 1);
            }
        }
        at.swap(after);
    }
    return at[pattern.size()];
}

std::size_t test::openFindHandles() { return openSearches().count(); }

}  // namespace platform
