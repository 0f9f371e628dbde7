#include "platform/base/find.h"

#include "platform/base/files.h"
#include "platform/base/paths.h"
#include "platform/base/testhooks.h"
#include "support/TempDir.h"

#include <cstdlib>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

namespace fs = std::filesystem;

namespace platform {
namespace {

// The names found, joined by blanks; "-" when the search does not start.
std::string found(const Text& pattern) {
    WIN32_FIND_DATAW data;
    const FindHandle handle = FindFirstFileW(pattern, data);
    if (handle == INVALID_HANDLE_VALUE) return "-";
    std::string names;
    do {
        if (!names.empty()) names += ' ';
        appendUtf8(data.cFileName, names);
    } while (FindNextFileW(handle, data));
    EXPECT_EQ(test::openFindHandles(), 1u);
    EXPECT_TRUE(FindClose(handle));
    EXPECT_FALSE(FindClose(handle));
    EXPECT_FALSE(FindNextFileW(handle, data));
    EXPECT_EQ(test::openFindHandles(), 0u);
    return names;
}

TEST(find, EntriesComeSortedByUnitsWithTheTwoDotsFirst) {
    const ::test::TempDir dir;
    for (const char* const name :
         {"b.lng", "B.lng", "a", ".x", "!", "\xEF\xBD\x81", "\xF0\x9F\x98\x80"}) {
        dir.write(name, "");
    }
    // U+1F600 is D83D DE00 in units and so before U+FF41.
    EXPECT_EQ(found(dir.inside("*.*")), ". .. ! .x B.lng a b.lng \U0001F600 \uFF41");
    EXPECT_EQ(found(dir.inside("*")), found(dir.inside("*.*")));
    EXPECT_EQ(found(dir.inside("*.lng")), "B.lng b.lng");
    EXPECT_EQ(found(u"\\\\?\\" + dir.inside("b*")), "b.lng");
    EXPECT_EQ(found(dir.inside("*.txt")), "-");
}

TEST(find, OneNameIsLookedUpExactly) {
    const ::test::TempDir dir;
    dir.write("a.lng", "");
    dir.write("a*.lng", "");
    dir.write("a\\b", "");
    dir.write("\xE9", "");
    fs::create_directory(dir.path() / "sub");
    const Text inside = dir.inside("");
    EXPECT_EQ(found(inside + u"a.lng"), "a.lng");
    EXPECT_EQ(found(inside + u"A.lng"), "-");
    EXPECT_EQ(found(inside + u"sub"), "sub");
    EXPECT_EQ(found(inside + u"."), ".");
    EXPECT_EQ(found(inside + u".."), "..");
    // A star that belongs to a name is no wildcard, a wildcard matches it.
    EXPECT_EQ(found(inside + pathFromSystem("a*.lng")), "a\uEF2A.lng");
    EXPECT_EQ(found(inside + u"a*.lng"), "a.lng a\uEF2A.lng");
    EXPECT_EQ(found(inside + pathFromSystem("a\\b")), "a\uEF5Cb");
    EXPECT_EQ(found(inside + pathFromSystem("\xE9")), "\uEFE9");
    for (const Text& nothing :
         {inside, inside + u"sub\\", inside + u"missing", inside + u"missing\\*",
          inside + u"a.lng\\*.*", inside + Text(u"a.lng\0x", 7), Text(), Text(u"\\"),
          Text(u"\\\\server\\*"), Text(u"\\\\server\\share"), inside + u"sub/*",
          inside + u"./a.lng", inside + Text(256, u'x')}) {
        EXPECT_EQ(found(nothing), "-") << toUtf8(nothing);
    }
    EXPECT_TRUE(found(u"\\*").starts_with(". .. "));
    EXPECT_EQ(found(u"."), ".");
    EXPECT_EQ(found(pathFromSystem(std::string("/") + dir.path().c_str()) + u"\\s*"), "sub");
    EXPECT_EQ(found(pathFromSystem("//dev")), "dev");
    const fs::path before = fs::current_path();
    fs::current_path(dir.path());
    EXPECT_EQ(found(u"a.lng"), "a.lng");
    EXPECT_EQ(found(u"\\\\?\\s*"), "sub");
    fs::current_path(before);
}

std::uint64_t ticks(const FILETIME& time) {
    return (std::uint64_t{time.dwHighDateTime} << 32) | time.dwLowDateTime;
}

TEST(find, RecordsTellSizeTimesAndAttributes) {
    const ::test::TempDir dir;
    dir.write("a.big", "");
    fs::resize_file(dir.path() / "a.big", 5'000'000'000);
    const struct timespec times[] = {{1'600'000'000, 123'456'789}, {-1, 999'999'900}};
    ASSERT_EQ(::utimensat(AT_FDCWD, (dir.path() / "a.big").c_str(), times, 0), 0);
    fs::create_directory(dir.path() / "b.dir");
    fs::create_directory_symlink("b.dir", dir.path() / "c.link");
    fs::create_symlink("nowhere", dir.path() / "d.broken");
    dir.write(".e", "12");
    fs::create_symlink("a.big", dir.path() / "f.link");
    const struct {
        TextView name;
        std::uint32_t attributes;
        std::uint64_t size;
    } kRecords[] = {
        {u".e", FILE_ATTRIBUTE_HIDDEN, 2},
        {u"a.big", FILE_ATTRIBUTE_NORMAL, 5'000'000'000},
        {u"b.dir", FILE_ATTRIBUTE_DIRECTORY, 0},
        {u"c.link", FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT, 0},
        {u"d.broken", FILE_ATTRIBUTE_REPARSE_POINT, 7},
        {u"f.link", FILE_ATTRIBUTE_REPARSE_POINT, 5'000'000'000},
    };
    WIN32_FIND_DATAW data;
    const FindHandle handle = FindFirstFileW(dir.inside("*.?*"), data);
    ASSERT_NE(handle, INVALID_HANDLE_VALUE);
    for (const auto& c : kRecords) {
        while (data.cFileName == u"." || data.cFileName == u"..")
            ASSERT_TRUE(FindNextFileW(handle, data));
        EXPECT_EQ(toUtf8(data.cFileName), toUtf8(c.name));
        EXPECT_EQ(data.dwFileAttributes, c.attributes) << toUtf8(c.name);
        EXPECT_EQ((std::uint64_t{data.nFileSizeHigh} << 32) | data.nFileSizeLow, c.size)
            << toUtf8(c.name);
        if (c.size == 5'000'000'000) {
            EXPECT_EQ(ticks(data.ftLastAccessTime), 132'444'736'001'234'567u);
            EXPECT_EQ(ticks(data.ftLastWriteTime), 116'444'735'999'999'999u);
            EXPECT_GE(ticks(data.ftCreationTime), ticks(data.ftLastWriteTime));
        }
        (void)FindNextFileW(handle, data);
    }
    EXPECT_TRUE(FindClose(handle));
}

TEST(find, AnEntryThatGoesDuringTheSearchIsLeftOut) {
    const ::test::TempDir dir;
    for (const char* const name : {"a", "b", "c"}) dir.write(name, "");
    WIN32_FIND_DATAW data;
    const FindHandle handle = FindFirstFileW(dir.inside("?"), data);
    EXPECT_EQ(data.cFileName, u"a");
    fs::remove(dir.path() / "b");
    EXPECT_TRUE(FindNextFileW(handle, data));
    EXPECT_EQ(data.cFileName, u"c");
    EXPECT_FALSE(FindNextFileW(handle, data));
    EXPECT_TRUE(FindClose(handle));
}

const struct {
    TextView pattern;
    std::vector<TextView> matches, others;
} kPatterns[] = {
    {u"*.*", {u"a", u"a.b", u".", u"..", u""}, {}},
    {u"*.lng", {u"a.lng", u".lng", u"a.b.lng"}, {u"a.lngx", u"a.LNG", u"lng", u"a.lng.bak"}},
    {u"a*", {u"a", u"ab", u"a.b"}, {u"ba", u""}},
    {u"*a*b*", {u"ab", u"xaxbx", u"aab"}, {u"ba", u"a", u"b"}},
    {u"a?.lng", {u"ab.lng", u"a.lng"}, {u"abc.lng", u"a..lng", u"b.lng"}},
    {u"a??", {u"a", u"ab", u"abc"}, {u"abcd", u"a.b"}},
    {u"?a", {u"xa", u"?a"}, {u"a", u"xxa"}},
    {u"*.", {u"a", u"ab"}, {u"a.b"}},
    {u"a.*", {u"a", u"a.", u"a.b", u"a.b.c"}, {u"ab", u"ab.c"}},
    {u"*.b*", {u"a.b", u"a.b.c", u".bc"}, {u"a.c", u"b"}},
    {u"a.b", {u"a.b"}, {u"axb", u"a.bc", u"A.b"}},
    {u"", {u""}, {u"a"}},
};

TEST(find, PatternsMatchByTheirRules) {
    for (const auto& c : kPatterns) {
        for (const TextView name : c.matches) {
            EXPECT_TRUE(matchesPattern(name, c.pattern))
                << toUtf8(c.pattern) << " " << toUtf8(name);
        }
        for (const TextView name : c.others) {
            EXPECT_FALSE(matchesPattern(name, c.pattern))
                << toUtf8(c.pattern) << " " << toUtf8(name);
        }
    }
}

TEST(find, PatternsOfManyStarsCostNoMoreThanTheirLength) {
    Text pattern;
    for (int i = 0; i < 2'000; ++i) pattern += u"*a";
    EXPECT_FALSE(
        matchesPattern(Text(1'999, u'a'), pattern));  // by trying all ways it would not end
    EXPECT_TRUE(matchesPattern(Text(2'000, u'a'), pattern));
}

std::string dump(std::uint64_t time) {
    SYSTEMTIME s;
    if (!FileTimeToSystemTime(
            {static_cast<std::uint32_t>(time), static_cast<std::uint32_t>(time >> 32)}, s)) {
        return "-";
    }
    char text[80];
    std::snprintf(text, sizeof text, "%d-%02d-%02d (%d) %02d:%02d:%02d.%03d", s.wYear, s.wMonth,
                  s.wDay, s.wDayOfWeek, s.wHour, s.wMinute, s.wSecond, s.wMilliseconds);
    return text;
}

TEST(find, TimesBecomeDates) {
    EXPECT_EQ(dump(0), "1601-01-01 (1) 00:00:00.000");
    EXPECT_EQ(dump(116'444'735'999'999'999), "1969-12-31 (3) 23:59:59.999");
    EXPECT_EQ(dump(132'444'736'001'234'567), "2020-09-13 (0) 12:26:40.123");
    EXPECT_EQ(dump(125'962'560'000'000'000), "2000-02-29 (2) 00:00:00.000");
    EXPECT_EQ(dump(94'354'848'000'000'000), "1900-01-01 (1) 00:00:00.000");
    EXPECT_EQ(dump(0x7FFF'FFFF'FFFF'FFFF), "30828-09-14 (4) 02:48:05.477");
    EXPECT_EQ(dump(0x8000'0000'0000'0000), "-");

    // Every day of 800 years, against the C library.
    for (std::int64_t day = 0; day < 800 * 365; ++day) {
        const time_t seconds = day * 86'400 - 11'644'473'600;
        struct tm parts {};
        ASSERT_NE(::gmtime_r(&seconds, &parts), nullptr);
        char text[80];
        std::snprintf(text, sizeof text, "%d-%02d-%02d (%d) 00:00:00.000", parts.tm_year + 1900,
                      parts.tm_mon + 1, parts.tm_mday, parts.tm_wday);
        ASSERT_EQ(dump(static_cast<std::uint64_t>(day) * 864'000'000'000), text);
    }
}

TEST(find, LocalTimesFollowTheRulesOfTheirSeason) {
    const char* const zone = std::getenv("TZ");
    const std::string kept = zone != nullptr ? zone : "";
    ::setenv("TZ", "CET-1CEST,M3.5.0,M10.5.0/3", 1);
    const auto local = [](std::uint64_t time) {
        FILETIME result;
        const FILETIME utc{static_cast<std::uint32_t>(time),
                           static_cast<std::uint32_t>(time >> 32)};
        return FileTimeToLocalFileTime(utc, result) ? dump(ticks(result)) : "-";
    };
    EXPECT_EQ(local(132'444'736'001'234'567), "2020-09-13 (0) 14:26:40.123");
    EXPECT_EQ(local(125'962'560'000'000'000), "2000-02-29 (2) 01:00:00.000");
    ::setenv("TZ", "EST5", 1);
    EXPECT_EQ(local(0), "-");
    EXPECT_EQ(local(0x8000'0000'0000'0000), "-");
    zone != nullptr ? ::setenv("TZ", kept.c_str(), 1) : ::unsetenv("TZ");
    ::tzset();
}

}  // namespace
}  // namespace platform
