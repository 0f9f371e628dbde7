#include "file/ufu_paths.h"

#include "file/pvWindowsVersion.h"
#include "platform/base/testhooks.h"
#include "support/PlatformVersion.h"
#include "support/raised.h"

#include <gtest/gtest.h>

using platform::OSVERSIONINFOA;
using test::PlatformVersion;
using test::raised;

TEST(ufu_paths, PathsFallIntoDirectoryNameAndExtension) {
    const struct {
        Text path, directory, withSlash, name, ext, noExt;
    } cases[] = {
        {u"", u"", u"", u"", u"", u""},
        {u"a", u"", u"", u"a", u"", u"a"},
        {u"C:\\x\\a.lng", u"C:\\x", u"C:\\x\\", u"a.lng", u"lng", u"a"},
        {u"C:\\x\\", u"C:\\x", u"C:\\x\\", u"", u"", u""},
        {u"C:\\x\\\\\\a", u"C:\\x", u"C:\\x\\", u"a", u"", u"a"},
        {u"\\\\s\\h\\a.b", u"\\\\s\\h", u"\\\\s\\h\\", u"a.b", u"b", u"a"},
        {u"\\\\s", u"", u"", u"s", u"", u"s"},
        {u"\\a", u"\\.", u"\\.\\", u"a", u"", u"a"},
        {u"C:\\a.b\\c", u"C:\\a.b", u"C:\\a.b\\", u"c", u"", u"c"},
        {u"c.tar.gz", u"", u"", u"c.tar.gz", u"gz", u"c.tar"},
        {u"a.", u"", u"", u"a.", u"", u"a"},
        {u".hidden", u"", u"", u".hidden", u"hidden", u""},
        {u"C:\\a#b\\c?.lng", u"C:\\a#b", u"C:\\a#b\\", u"c?.lng", u"lng", u"c?"},
    };
    for (const auto& c : cases) {
        const std::string shown = toUtf8(c.path);
        EXPECT_EQ(ufu_FilePath(c.path, false), c.directory) << shown;
        EXPECT_EQ(ufu_FilePath(c.path, true), c.withSlash) << shown;
        EXPECT_EQ(ufu_FileName(c.path), c.name) << shown;
        EXPECT_EQ(ufu_FileExt(c.path), c.ext) << shown;
        EXPECT_EQ(ufu_FileNameNoExt(c.path), c.noExt) << shown;
    }
    EXPECT_EQ(ufu_FileName(u"file:///C:/x/y%20z.lng"), u"y z.lng");
    EXPECT_EQ(ufu_FileExt(u"http://site/a.b/c"), u"");
}

TEST(ufu_paths, FinalSlashesAreOneOrNone) {
    const struct {
        Text path, one, none;
    } cases[] = {
        {u"", u"", u""},           {u"a", u"a\\", u"a"},
        {u"C:\\", u"C:\\", u"C:"}, {u"a\\\\\\", u"a\\", u"a"},
        {u"\\\\\\", u"", u""},     {u"\\\\s\\", u"\\\\s\\", u"\\\\s"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(ufu_OneBackSlash(c.path), c.one) << toUtf8(c.path);
        EXPECT_EQ(ufu_NoBackSlash(c.path), c.none) << toUtf8(c.path);
        const auto web = [](Text s) {
            for (char16_t& unit : s) unit = unit == u'\\' ? u'/' : unit;
            return s;
        };
        EXPECT_EQ(ufu_OneSlashWeb(web(c.path)), web(c.one)) << toUtf8(c.path);
        EXPECT_EQ(ufu_NoSlashWeb(web(c.path)), web(c.none)) << toUtf8(c.path);
    }
}

TEST(ufu_paths, LocalAndWebPathsAreKeptApart) {
    EXPECT_EQ(raised([] { (void)ufu_FilePath(u"a/b", true); }), "ufu_FilePath: Not a local path");
    EXPECT_EQ(raised([] { (void)ufu_OneBackSlash(u"/"); }), "ufu_OneBackSlash: Not a local path");
    EXPECT_EQ(raised([] { (void)ufu_NoBackSlash(u"a/"); }), "ufu_NoBackSlash: Not a local path");
    EXPECT_EQ(raised([] { (void)ufu_OneSlashWeb(u"a\\"); }), "ufu_OneSlashWeb: Not a web path");
    EXPECT_EQ(raised([] { (void)ufu_NoSlashWeb(u"\\"); }), "ufu_NoSlashWeb: Not a web path");

    const struct {
        Text s;
        bool local, web, unc;
    } cases[] = {{u"name", false, false, false}, {u"a\\b", true, false, false},
                 {u"a/b", false, true, false},   {u"\\/", true, true, false},
                 {u"\\\\s", true, false, true},  {u"//s", false, true, false}};
    for (const auto& c : cases) {
        EXPECT_EQ(ufu_IsLocalPath(c.s), c.local) << toUtf8(c.s);
        EXPECT_EQ(ufu_IsWebPath(c.s), c.web) << toUtf8(c.s);
        EXPECT_EQ(ufu_IsUNCPath(c.s), c.unc) << toUtf8(c.s);
    }
}

TEST(ufu_paths, LinksBecomeLocalPaths) {
    const struct {
        Text link, local;
    } cases[] = {
        {u"", u""},
        {u"FILE://C|/a", u"C:\\a"},
        {u"File:///C:/a%20b&amp;c", u"C:\\a b&c"},
        {u"file://host/a:///b", u"b"},  // the longer mark is looked for first, anywhere
        {u"file:/a", u"file:\\a"},
        {u"a?b#c", u"a?b#c"},
        {u"%2520&amp;amp;", u"%2520&amp;"},
        {u"C:\\x|y", u"C:\\x:y"},
        {u"xhttp://a", u"xhttp:\\\\a"},
    };
    for (const auto& c : cases) EXPECT_EQ(ufu_LocalizePath(c.link, true), c.local);

    for (const TextView scheme : {u"http://", u"HTTPS://", u"ftp://", u"Gopher://", u"mailto:",
                                  u"news:", u"telnet:", u"javascript:", u"project://"}) {
        const Text link = Text(scheme) + u"a/b";
        EXPECT_EQ(raised([&] { (void)ufu_LocalizePath(link, true); }),
                  "ufu_LocalizePath: Cannot Localize Link!")
            << toUtf8(link);
        EXPECT_TRUE(ufu_LocalizePath(link, false).ends_with(u"a\\b")) << toUtf8(link);
    }
}

TEST(ufu_paths, TheLongPathPrefixGoesBeforePathsWithoutAServer) {
    const PlatformVersion current({10, 0, platform::VER_PLATFORM_WIN32_NT});
    EXPECT_EQ(ufu_ExtendedPath(u"C:\\a"), u"\\\\?\\C:\\a");
    EXPECT_EQ(ufu_ExtendedPath(u"\\a"), u"\\\\?\\\\a");
    EXPECT_EQ(ufu_ExtendedPath(u"\\\\?\\C:\\a"), u"\\\\?\\C:\\a");
    EXPECT_EQ(ufu_ExtendedPath(u"\\\\s\\a"), u"\\\\s\\a");

    const PlatformVersion old({3, 51, platform::VER_PLATFORM_WIN32_NT});
    EXPECT_EQ(ufu_ExtendedPath(u"C:\\a"), u"C:\\a");
}

TEST(pvWindowsVersion, TellsFamiliesApart) {
    const struct {
        OSVERSIONINFOA version;
        int code;
    } cases[] = {
        {{3, 10, 0}, 1}, {{4, 20, 3}, 2}, {{4, 0, 1}, 3},   {{4, 10, 1}, 4},
        {{4, 90, 1}, 5}, {{4, 5, 1}, 0},  {{2, 0, 2}, 0},   {{3, 51, 2}, 6},
        {{4, 0, 2}, 7},  {{5, 0, 2}, 8},  {{5, 1, 2}, 9},   {{5, 2, 2}, 10},
        {{5, 3, 2}, 0},  {{6, 0, 2}, 11}, {{10, 0, 2}, 11}, {{6, 0, 9}, 0},
    };
    for (const auto& c : cases) {
        const PlatformVersion scope(c.version);
        EXPECT_EQ(pvWindowsVersion(), c.code)
            << c.version.dwPlatformId << ' ' << c.version.dwMajorVersion;
    }
    EXPECT_EQ(pvWindowsVersion(), 11) << "the platform is a current one";
    const PlatformVersion scope({10, 0, 2});
    platform::test::failVersionQuery(true);
    EXPECT_EQ(pvWindowsVersion(), 0);
    platform::test::failVersionQuery(false);
    EXPECT_EQ(pvWindowsVersion(), 0) << "kept for the rest of the run";
}
