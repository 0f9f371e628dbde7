#include "platform/base/files.h"

#include "platform/base/paths.h"
#include "platform/base/testhooks.h"
#include "support/TempDir.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace platform {
namespace {

// Each test has its own directory and must leave no handle open.
class files : public ::testing::Test {
protected:
    ~files() override { EXPECT_EQ(test::openFileHandles(), m_openBefore); }

    static FileHandle open(const Text& path, std::uint32_t access, std::uint32_t creation) {
        return CreateFileW(path, access, FILE_SHARE_READ, creation, FILE_ATTRIBUTE_NORMAL);
    }
    static bool opens(const Text& path, std::uint32_t access, std::uint32_t creation) {
        const FileHandle file = open(path, access, creation);
        return file != INVALID_HANDLE_VALUE && CloseHandle(file);
    }
    static std::uint32_t write(FileHandle file, std::string_view bytes) {
        std::uint32_t written = 0;
        const bool all =
            WriteFile(file, bytes.data(), static_cast<std::uint32_t>(bytes.size()), written);
        EXPECT_EQ(all, written == bytes.size());
        return written;
    }
    [[nodiscard]] bool copies(const char* from, const char* to, bool bFailIfExists) const {
        return CopyFileW(dir.inside(from), dir.inside(to), bFailIfExists);
    }
    // With flags MoveFileExW, else MoveFileW.
    [[nodiscard]] bool moves(const char* from, const char* to,
                             std::optional<std::uint32_t> flags = {}) const {
        return flags ? MoveFileExW(dir.inside(from), dir.inside(to), *flags)
                     : MoveFileW(dir.inside(from), dir.inside(to));
    }
    [[nodiscard]] mode_t mode(const char* name) const {
        struct stat info {};
        EXPECT_EQ(::stat((dir.path() / name).c_str(), &info), 0) << name;
        return info.st_mode & 07777;
    }
    void chmod(const char* name, mode_t permissions) const {
        EXPECT_EQ(::chmod((dir.path() / name).c_str(), permissions), 0);
    }
    [[nodiscard]] bool exists(const char* name) const {
        return fs::exists(fs::symlink_status(dir.path() / name));
    }

    const test::HookScope hooks;
    const ::test::TempDir dir;

private:
    const std::size_t m_openBefore = test::openFileHandles();
};

const std::uint32_t kReadWrite = GENERIC_READ | GENERIC_WRITE;

const struct {
    std::uint32_t access, creation;
    bool onExisting, onMissing;
    const char* contentAfter;  // of the existing file, which holds "old"
} kCreations[] = {
    {GENERIC_READ, OPEN_EXISTING, true, false, "old"},
    {GENERIC_WRITE, OPEN_EXISTING, true, false, "old"},
    {kReadWrite, OPEN_ALWAYS, true, true, "old"},
    {GENERIC_WRITE, CREATE_ALWAYS, true, true, ""},
    {GENERIC_WRITE, CREATE_NEW, false, true, "old"},
    {kReadWrite, TRUNCATE_EXISTING, true, false, ""},
    {GENERIC_READ, CREATE_ALWAYS, false, false, "old"},
    {GENERIC_READ, TRUNCATE_EXISTING, false, false, "old"},
    {0, OPEN_EXISTING, false, false, "old"},
    {GENERIC_READ, 0, false, false, "old"},
    {GENERIC_READ, 6, false, false, "old"},
};

TEST_F(files, OpenOrRefuseByTheCreationAskedFor) {
    for (const auto& c : kCreations) {
        dir.write("existing", "old");
        EXPECT_EQ(opens(dir.inside("existing"), c.access, c.creation), c.onExisting) << c.creation;
        EXPECT_EQ(dir.read("existing"), c.contentAfter) << c.creation;
        EXPECT_EQ(opens(dir.inside("missing"), c.access, c.creation), c.onMissing) << c.creation;
        EXPECT_EQ(exists("missing"), c.onMissing) << c.creation;
        fs::remove(dir.path() / "missing");
    }
}

TEST_F(files, AreEmptiedInPlace) {
    dir.write("target", "old");
    chmod("target", 0640);
    fs::create_symlink("target", dir.path() / "link");
    fs::create_hard_link(dir.path() / "target", dir.path() / "twin");
    const FileHandle file = open(dir.inside("link"), GENERIC_WRITE, CREATE_ALWAYS);
    EXPECT_EQ(write(file, "new"), 3u);
    EXPECT_TRUE(CloseHandle(file));
    EXPECT_EQ(dir.read("twin"), "new");
    EXPECT_EQ(mode("target"), 0640u);
    EXPECT_TRUE(fs::is_symlink(dir.path() / "link"));
}

TEST_F(files, WhatIsNoFileIsNotOpened) {
    fs::create_directory(dir.path() / "dir");
    fs::create_directory_symlink("dir", dir.path() / "dirlink");
    fs::create_symlink("nowhere", dir.path() / "broken");
    ASSERT_EQ(::mkfifo((dir.path() / "pipe").c_str(), 0600), 0);
    dir.write("file", "old");
    const Text inside = dir.inside("");
    for (const Text& path :
         {dir.inside("dir"), dir.inside("dir/"), dir.inside("dirlink"), dir.inside("pipe"),
          dir.inside("file/"), dir.inside("file/x"), dir.inside("missing/x"), Text(), Text(u"\\"),
          Text(u"\\\\?\\"), u"\\" + inside + u"file", inside + Text(u"file\0.lng", 9),
          inside + u"../x", inside + Text(256, u'x'), inside + Text(5000, u'x')}) {
        for (const std::uint32_t access :
             {std::uint32_t{GENERIC_READ}, std::uint32_t{GENERIC_WRITE}, kReadWrite}) {
            EXPECT_FALSE(opens(path, access, OPEN_EXISTING)) << toUtf8(path);
            EXPECT_FALSE(opens(path, access | GENERIC_WRITE, CREATE_ALWAYS)) << toUtf8(path);
        }
    }
    EXPECT_EQ(dir.read("file"), "old");
    EXPECT_FALSE(opens(dir.inside("broken"), GENERIC_READ, OPEN_EXISTING));
    EXPECT_TRUE(opens(dir.inside("broken"), GENERIC_WRITE, CREATE_ALWAYS));
    EXPECT_TRUE(exists("nowhere"));
}

TEST_F(files, ReadOnlyMeansThatNobodyMayWriteEvenForThePrivileged) {
    dir.write("file", "old");
    chmod("file", 0444);
    EXPECT_EQ(GetFileAttributesW(dir.inside("file")), FILE_ATTRIBUTE_READONLY);
    EXPECT_TRUE(opens(dir.inside("file"), GENERIC_READ, OPEN_EXISTING));
    EXPECT_FALSE(opens(dir.inside("file"), GENERIC_WRITE, CREATE_ALWAYS));
    EXPECT_FALSE(opens(dir.inside("file"), kReadWrite, OPEN_EXISTING));
    EXPECT_FALSE(DeleteFileW(dir.inside("file")));
    dir.write("other", "new");
    EXPECT_FALSE(CopyFileW(dir.inside("other"), dir.inside("file"), false));
    EXPECT_FALSE(MoveFileExW(dir.inside("other"), dir.inside("file"), MOVEFILE_REPLACE_EXISTING));
    EXPECT_EQ(dir.read("file"), "old");

    EXPECT_TRUE(SetFileAttributesW(dir.inside("file"), 0));
    EXPECT_EQ(mode("file"), 0644u);
    EXPECT_TRUE(DeleteFileW(dir.inside("file")));
    EXPECT_FALSE(exists("file"));
}

TEST_F(files, HandlesAreAboveTheStandardOnesAndClosedOnesStayClosed) {
    dir.write("a", "a");
    const int standardInput = ::dup(STDIN_FILENO);
    ::close(STDIN_FILENO);
    const FileHandle first = open(dir.inside("a"), GENERIC_READ, OPEN_EXISTING);
    EXPECT_EQ(::fcntl(STDIN_FILENO, F_GETFD), -1);  // still free: the file took another number
    ::dup2(standardInput, STDIN_FILENO);
    ::close(standardInput);
    EXPECT_GT(first, 0);
    EXPECT_EQ(test::openFileHandles(), 1u);
    EXPECT_TRUE(CloseHandle(first));

    const FileHandle second = open(dir.inside("a"), GENERIC_READ, OPEN_EXISTING);
    EXPECT_NE(first, second);
    char byte = 0;
    std::uint32_t transferred = 7;
    std::int32_t high = 0;
    std::uint32_t sizeHigh = 0;
    for (const FileHandle stale : {first, 0, INVALID_HANDLE_VALUE, 1 << 16, 0x7FFFFFFF}) {
        EXPECT_FALSE(CloseHandle(stale));
        EXPECT_FALSE(ReadFile(stale, &byte, 1, transferred));
        EXPECT_FALSE(WriteFile(stale, &byte, 1, transferred));
        EXPECT_EQ(SetFilePointer(stale, 0, high = 0, FILE_BEGIN), INVALID_SET_FILE_POINTER);
        EXPECT_EQ(GetFileSize(stale, sizeHigh), INVALID_FILE_SIZE);
        EXPECT_FALSE(SetEndOfFile(stale));
        EXPECT_FALSE(FlushFileBuffers(stale));
    }
    EXPECT_TRUE(ReadFile(second, &byte, 1, transferred));
    EXPECT_TRUE(CloseHandle(second));
}

TEST_F(files, PositionsAndSizesGoBeyond32Bits) {
    const FileHandle file = open(dir.inside("big"), kReadWrite, CREATE_ALWAYS);
    std::int32_t high = 1;
    EXPECT_EQ(SetFilePointer(file, 0x4000'0000, high, FILE_BEGIN), 0x4000'0000u);
    EXPECT_EQ(high, 1);
    EXPECT_TRUE(SetEndOfFile(file));
    std::uint32_t sizeHigh = 0;
    EXPECT_EQ(GetFileSize(file, sizeHigh), 0x4000'0000u);
    EXPECT_EQ(sizeHigh, 1u);
    EXPECT_EQ(SetFilePointer(file, static_cast<std::uint32_t>(-1), high = -1, FILE_END),
              0x3FFF'FFFFu);
    EXPECT_EQ(high, 1);
    EXPECT_EQ(SetFilePointer(file, 1, high = 0, FILE_CURRENT), 0x4000'0000u);

    std::uint32_t transferred = 7;
    char byte = 0;
    EXPECT_TRUE(ReadFile(file, &byte, 1, transferred));  // at the end: no error, and nothing
    EXPECT_EQ(transferred, 0u);
    EXPECT_EQ(SetFilePointer(file, 0, high = -1, FILE_BEGIN), INVALID_SET_FILE_POINTER);
    EXPECT_EQ(high, -1);
    EXPECT_EQ(SetFilePointer(file, 0, high = 0, 3), INVALID_SET_FILE_POINTER);
    EXPECT_EQ(SetFilePointer(file, 0, high = 0, FILE_CURRENT), 0x4000'0000u);  // it stayed
    EXPECT_TRUE(FlushFileBuffers(file));
    EXPECT_TRUE(CloseHandle(file));
}

TEST_F(files, AFullDeviceIsAFailedWrite) {
    const FileHandle full = open(pathFromSystem("/dev/full"), GENERIC_WRITE, CREATE_ALWAYS);
    ASSERT_NE(full, INVALID_HANDLE_VALUE);
    EXPECT_EQ(write(full, "lost"), 0u);
    EXPECT_TRUE(CloseHandle(full));
    dir.write("file", "content");
    EXPECT_FALSE(CopyFileW(dir.inside("file"), pathFromSystem("/dev/full"), false));
    EXPECT_TRUE(CopyFileW(dir.inside("file"), pathFromSystem("/dev/null"), false));
}

TEST_F(files, CopiesHaveTheBytesAndPermissionsOfTheOriginal) {
    const std::string content(700'001, 'x');  // several buffers
    for (const bool inSystem : {true, false}) {
        if (!inSystem) test::failNext(test::FileOp::Flush);  // any armed fault takes the other road
        dir.write("from", content);
        chmod("from", 0451);
        EXPECT_TRUE(copies("from", "to", true));
        EXPECT_EQ(dir.read("to"), content);
        EXPECT_EQ(mode("to"), 0451u);
        EXPECT_FALSE(copies("from", "to", true));

        dir.write("short", "short");
        EXPECT_FALSE(copies("short", "to", false));  // 0451: read-only
        chmod("to", 0600);
        EXPECT_TRUE(copies("short", "to", false));
        EXPECT_EQ(dir.read("to"), "short");
        fs::remove(dir.path() / "to");
        chmod("from", 0644);
    }
    // Files whose size the system does not tell are copied to their end all the same.
    EXPECT_TRUE(CopyFileW(pathFromSystem("/proc/self/status"), dir.inside("status"), true));
    EXPECT_GT(fs::file_size(dir.path() / "status"), 100u);
}

TEST_F(files, ACopyOntoItselfFailsAndLosesNothing) {
    dir.write("file", "content");
    fs::create_symlink("file", dir.path() / "link");
    fs::create_hard_link(dir.path() / "file", dir.path() / "twin");
    fs::create_directory(dir.path() / "dir");
    for (const char* const other : {"file", "link", "twin", "./file", "dir", "missing/new"}) {
        EXPECT_FALSE(copies("file", other, false)) << other;
        EXPECT_FALSE(copies(other, "file", false)) << other;
    }
    EXPECT_FALSE(copies("dir", "new", false) || copies("missing", "new", false));
    EXPECT_EQ(dir.tree(), "dir/ file=content link=content twin=content");
}

TEST_F(files, ARequestIsCutShortWhereSpaceEndsAndACopyLeavesNoNewFile) {
    test::failWritesAfter(5);
    const FileHandle file = open(dir.inside("file"), GENERIC_WRITE, CREATE_ALWAYS);
    EXPECT_EQ(write(file, "abc"), 3u);
    EXPECT_EQ(write(file, "defg"), 2u);
    EXPECT_EQ(write(file, "h"), 0u);
    EXPECT_TRUE(CloseHandle(file));
    EXPECT_EQ(dir.read("file"), "abcde");

    dir.write("from", std::string(300'000, 'x'));
    test::failWritesAfter(290'000);
    EXPECT_FALSE(copies("from", "to", false));
    EXPECT_FALSE(exists("to"));
    test::failReadsAfter(10);
    EXPECT_FALSE(copies("from", "to", false));
    EXPECT_FALSE(exists("to"));
}

TEST_F(files, MovesReplaceOnlyWhenTold) {
    dir.write("from", "new");
    dir.write("to", "old");
    fs::create_directory(dir.path() / "dir");
    EXPECT_FALSE(moves("from", "to"));
    EXPECT_FALSE(moves("from", "to", MOVEFILE_COPY_ALLOWED));
    EXPECT_FALSE(moves("from", "dir", MOVEFILE_REPLACE_EXISTING));
    EXPECT_FALSE(moves("dir", "to", MOVEFILE_REPLACE_EXISTING));
    EXPECT_FALSE(moves("dir", "dir/below") || moves("missing", "x"));
    EXPECT_EQ(dir.tree(), "dir/ from=new to=old");
    EXPECT_TRUE(moves("from", "to", MOVEFILE_REPLACE_EXISTING));
    EXPECT_TRUE(moves("dir", "other"));
    EXPECT_TRUE(moves("to", "other/to"));
    EXPECT_EQ(dir.tree(), "other/ other/to=new");
}

TEST_F(files, MovesToAnotherFileSystemCopyWhenTold) {
    struct stat here {};
    struct stat there {};
    if (::stat(dir.path().c_str(), &here) != 0 || ::stat("/dev/shm", &there) != 0 ||
        here.st_dev == there.st_dev || ::access("/dev/shm", W_OK) != 0) {
        GTEST_SKIP() << "no second file system";
    }
    const std::string target = "/dev/shm/quillmere-move-" + std::to_string(::getpid());
    const Text inside = pathFromSystem(target);
    dir.write("from", "content");
    chmod("from", 0440);
    const auto time = fs::last_write_time(dir.path() / "from") - std::chrono::hours(5);
    fs::last_write_time(dir.path() / "from", time);
    EXPECT_FALSE(MoveFileExW(dir.inside("from"), inside, MOVEFILE_REPLACE_EXISTING));
    EXPECT_TRUE(
        MoveFileExW(dir.inside("from"), inside,
                    MOVEFILE_REPLACE_EXISTING | MOVEFILE_COPY_ALLOWED | MOVEFILE_WRITE_THROUGH));
    EXPECT_FALSE(exists("from"));
    EXPECT_EQ(fs::file_size(target), 7u);
    EXPECT_EQ(fs::last_write_time(target), time);
    EXPECT_EQ(GetFileAttributesW(inside), FILE_ATTRIBUTE_READONLY);

    dir.write("from", "other");
    EXPECT_FALSE(MoveFileW(dir.inside("from"), inside));
    EXPECT_TRUE(MoveFileW(inside, dir.inside("back")));
    EXPECT_EQ(dir.read("back"), "content");
    EXPECT_FALSE(fs::exists(target));
}

TEST_F(files, DeletingTakesFilesAndLinksNeverWhatALinkLeadsTo) {
    fs::create_directory(dir.path() / "dir");
    dir.write("dir/file", "x");
    fs::create_symlink("dir/file", dir.path() / "filelink");
    fs::create_directory_symlink("dir", dir.path() / "dirlink");
    fs::create_symlink("nowhere", dir.path() / "broken");
    chmod("dir/file", 0444);
    const auto deletes = [&](const char* name) { return DeleteFileW(dir.inside(name)); };
    const auto removes = [&](const char* name) { return RemoveDirectoryW(dir.inside(name)); };
    const auto creates = [&](const char* name) { return CreateDirectoryW(dir.inside(name)); };
    EXPECT_FALSE(deletes("dir") || deletes("dirlink") || deletes("missing"));
    EXPECT_TRUE(deletes("filelink"));  // although its target is read-only
    EXPECT_EQ(mode("dir/file"), 0444u);
    chmod("dir/file", 0644);
    EXPECT_TRUE(deletes("broken"));
    EXPECT_FALSE(removes("dir") || removes("dir/file"));  // not empty; no directory
    EXPECT_TRUE(removes("dirlink/"));
    EXPECT_EQ(dir.tree(), "dir/ dir/file=x");
    EXPECT_TRUE(deletes("dir/file"));
    EXPECT_TRUE(removes("dir"));
    EXPECT_TRUE(creates("dir"));
    EXPECT_FALSE(creates("dir") || creates("missing/dir"));
    EXPECT_EQ(dir.tree(), "dir/");
}

TEST_F(files, AttributesTellOfDirectoriesBehindLinksAndOfLinks) {
    dir.write("file", "");
    dir.write(".hidden", "");
    fs::create_directories(dir.path() / ".dir");
    fs::create_directory_symlink(".dir", dir.path() / "dirlink");
    fs::create_symlink("nowhere", dir.path() / "broken");
    fs::create_symlink(".hidden", dir.path() / "toReadOnly");
    chmod("file", 0644);
    chmod(".hidden", 0555);
    const struct {
        const char* name;
        std::uint32_t attributes;
    } kAttributes[] = {
        {"file", FILE_ATTRIBUTE_NORMAL},
        {".hidden", FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_READONLY},
        {".dir", FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_DIRECTORY},
        {".dir/", FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_DIRECTORY},
        {".dir/.", FILE_ATTRIBUTE_DIRECTORY},
        {".dir/..", FILE_ATTRIBUTE_DIRECTORY},
        {"dirlink", FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT},
        {"broken", FILE_ATTRIBUTE_REPARSE_POINT},
        {"toReadOnly", FILE_ATTRIBUTE_REPARSE_POINT},
        {"missing", INVALID_FILE_ATTRIBUTES},
        {"file/", INVALID_FILE_ATTRIBUTES},
    };
    for (const auto& c : kAttributes) {
        EXPECT_EQ(GetFileAttributesW(dir.inside(c.name)), c.attributes) << c.name;
    }
    EXPECT_EQ(GetFileAttributesW(u"\\"), FILE_ATTRIBUTE_DIRECTORY);

    EXPECT_TRUE(
        SetFileAttributesW(dir.inside("file"), FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN));
    EXPECT_EQ(mode("file"), 0444u);
    EXPECT_TRUE(SetFileAttributesW(dir.inside("broken"), FILE_ATTRIBUTE_READONLY));
    EXPECT_TRUE(SetFileAttributesW(dir.inside("toReadOnly"), 0));
    EXPECT_EQ(mode(".hidden"), 0555u);
    EXPECT_FALSE(SetFileAttributesW(dir.inside("missing"), 0));
    chmod("file", 0464);  // somebody may write: nothing to clear
    EXPECT_TRUE(SetFileAttributesW(dir.inside("file"), FILE_ATTRIBUTE_NORMAL));
    EXPECT_EQ(mode("file"), 0464u);
}

TEST_F(files, DirectoriesGoIntoBuffersThatAreLargeEnough) {
    const fs::path before = fs::current_path();
    ASSERT_TRUE(SetCurrentDirectoryW(dir.inside("")));
    EXPECT_FALSE(SetCurrentDirectoryW(u"missing"));
    EXPECT_FALSE(SetCurrentDirectoryW(u""));
    const Text here = pathFromSystem(fs::current_path().string());
    Text buffer(2048, u'#');
    const auto length = static_cast<std::uint32_t>(here.size());
    EXPECT_EQ(GetCurrentDirectoryW(2048, buffer.data()), length);
    EXPECT_EQ(Text(buffer.c_str()), here);
    EXPECT_EQ(GetCurrentDirectoryW(length, buffer.data()), length + 1);
    EXPECT_EQ(GetCurrentDirectoryW(0, nullptr), length + 1);
    EXPECT_TRUE(opens(u"relative", GENERIC_WRITE, CREATE_NEW));
    EXPECT_TRUE(exists("relative"));
    fs::remove(dir.path() / "relative");
    fs::current_path(before);

    const char* const temp = std::getenv("TMPDIR");
    const std::string kept = temp != nullptr ? temp : "";
    for (const char* const set : {"/some/where", "/some/where/"}) {
        ::setenv("TMPDIR", set, 1);
        EXPECT_EQ(GetTempPathW(2048, buffer.data()), 12u);
        EXPECT_EQ(Text(buffer.c_str()), u"\\some\\where\\");
    }
    temp != nullptr ? ::setenv("TMPDIR", kept.c_str(), 1) : ::unsetenv("TMPDIR");
}

}  // namespace
}  // namespace platform
