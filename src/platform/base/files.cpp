#include "platform/base/files.h"

#include "platform/base/internal.h"
#include "platform/base/paths.h"
#include "platform/base/testhooks.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {

using internal::Descriptor;
using internal::mustFail;
using internal::retried;
using test::FileOp;

namespace {

constexpr mode_t kAnyWrite = S_IWUSR | S_IWGRP | S_IWOTH;
constexpr mode_t kPermissions = S_IRWXU | S_IRWXG | S_IRWXO;

internal::HandleTable<Descriptor>& openFiles() {
    static internal::HandleTable<Descriptor> table;
    return table;
}

// The descriptor of a handle, -1 for one that is not open: system calls on it fail.
int descriptorOf(FileHandle file) {
    const Descriptor* descriptor = openFiles().find(file);
    return descriptor != nullptr ? descriptor->get() : -1;
}

// Opens a regular file or a character device; anything else is refused, and so is writing to a file
// without write permission, which a privileged user could. Nothing waits, even on a pipe without a
// partner.
Descriptor openFile(const std::string& systemPath, int flags, mode_t mode, struct stat& info) {
    constexpr int kAlways = O_CLOEXEC | O_NOCTTY | O_NONBLOCK;
    Descriptor file(
        retried([&] { return ::open(systemPath.c_str(), flags | kAlways, mode & kPermissions); }));
    if (file && file.get() <= STDERR_FILENO) {
        // Standard input, output or error was closed: their numbers are not for files.
        file = Descriptor(::fcntl(file.get(), F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
    }
    if (!file || ::fstat(file.get(), &info) != 0) return {};
    if (S_ISREG(info.st_mode)) {
        const bool writes = (flags & O_ACCMODE) != O_RDONLY;
        return writes && (info.st_mode & kAnyWrite) == 0 ? Descriptor() : std::move(file);
    }
    const bool usable = S_ISCHR(info.st_mode) && ::fcntl(file.get(), F_SETFL, 0) == 0;
    return usable ? std::move(file) : Descriptor();
}

// How much of a request a test lets through; the whole of it without one.
std::size_t allowed(std::optional<std::uint64_t>& budget, std::size_t count) {
    if (!budget) return count;
    const std::size_t part = static_cast<std::size_t>(std::min<std::uint64_t>(*budget, count));
    *budget -= part;
    return part;
}

// Both move count bytes and continue requests that were cut short. Return the count moved; less
// than asked for means an error, or for reading also the end of the file (then error is false).
std::size_t readFully(int fd, void* to, std::size_t count, bool& error) {
    const std::size_t wanted = allowed(internal::hooks.bytesToRead, count);
    std::size_t done = 0;
    error = wanted < count;
    while (done < wanted) {
        const ssize_t got =
            retried([&] { return ::read(fd, static_cast<char*>(to) + done, wanted - done); });
        if (got < 0) error = true;
        if (got <= 0) break;
        done += static_cast<std::size_t>(got);
    }
    return done;
}

std::size_t writeFully(int fd, const void* from, std::size_t count) {
    const std::size_t wanted = allowed(internal::hooks.bytesToWrite, count);
    std::size_t done = 0;
    while (done < wanted) {
        const ssize_t put = retried(
            [&] { return ::write(fd, static_cast<const char*>(from) + done, wanted - done); });
        if (put <= 0) break;
        done += static_cast<std::size_t>(put);
    }
    return done;
}

// Copies what is left of one file into another. Inside the system as far as that goes, which
// shares the blocks where the file system can; the rest through a buffer, whose empty read is also
// what proves the end.
bool copyBytes(int from, int to) {
    if (!internal::hooks.faultsArmed) {
        constexpr std::size_t kMost = std::size_t{1} << 30;
        while (::copy_file_range(from, nullptr, to, nullptr, kMost, 0) > 0) {
        }
    }
    constexpr std::size_t kBuffer = std::size_t{256} << 10;
    const auto buffer = std::make_unique_for_overwrite<char[]>(kBuffer);
    while (true) {
        bool error = false;
        const std::size_t got = readFully(from, buffer.get(), kBuffer, error);
        if (error || writeFully(to, buffer.get(), got) != got) return false;
        if (got == 0) return true;
    }
}

struct CopyHow {
    bool failIfExists;
    bool keepTimes;
    bool flush;
};

bool copyFile(const std::string& from, const std::string& to, CopyHow how) {
    struct stat source {};
    struct stat target {};
    const Descriptor in = openFile(from, O_RDONLY, 0, source);
    if (!in || !S_ISREG(source.st_mode)) return false;

    Descriptor out = openFile(to, O_WRONLY | O_CREAT | O_EXCL, source.st_mode | S_IWUSR, target);
    const bool created = static_cast<bool>(out);
    if (!created && !how.failIfExists) out = openFile(to, O_WRONLY | O_CREAT, 0666, target);
    if (!out) return false;
    if (source.st_dev == target.st_dev && source.st_ino == target.st_ino) return false;

    const bool regular = S_ISREG(target.st_mode);
    bool copied = (!regular || ::ftruncate(out.get(), 0) == 0) && copyBytes(in.get(), out.get());
    if (copied && regular) {
        // A file system without permissions or times keeps its own.
        (void)::fchmod(out.get(), source.st_mode & kPermissions);
        if (how.keepTimes) {
            const struct timespec times[] = {source.st_atim, source.st_mtim};
            (void)::futimens(out.get(), times);
        }
        if (how.flush) copied = ::fsync(out.get()) == 0;
    }
    if (!copied && created) (void)::unlink(to.c_str());
    return copied;
}

// Renames; an existing target makes it fail.
bool renameToNew(const std::string& from, const std::string& to) {
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) {
        return true;
    }
    if (errno != EINVAL && errno != ENOSYS) return false;
    // The file system cannot refuse by itself.
    struct stat target {};
    if (::lstat(to.c_str(), &target) == 0) {
        errno = EEXIST;
        return false;
    }
    return ::rename(from.c_str(), to.c_str()) == 0;
}

std::string_view lastElement(std::string_view systemPath) {
    while (systemPath.size() > 1 && systemPath.ends_with('/')) systemPath.remove_suffix(1);
    return systemPath.substr(systemPath.rfind('/') + 1);
}

std::uint32_t attributesOfPath(const std::string& systemPath) {
    internal::FileFacts facts{};
    if (!internal::queryFile(systemPath, facts)) return INVALID_FILE_ATTRIBUTES;
    return internal::attributesOf(facts, lastElement(systemPath));
}

// Puts a path into a caller's buffer by the rules of the two operations that have one.
std::uint32_t giveOut(const Text& path, std::uint32_t size, char16_t* buffer) {
    const auto length = static_cast<std::uint32_t>(path.size());
    if (length >= size) return length + 1;
    std::copy(path.begin(), path.end(), buffer);
    buffer[length] = u'\0';
    return length;
}

}  // namespace

namespace internal {

bool queryFile(const std::string& systemPath, FileFacts& facts) {
    constexpr unsigned kWanted = STATX_BASIC_STATS | STATX_BTIME;
    const char* const path = systemPath.c_str();
    if (::statx(AT_FDCWD, path, AT_SYMLINK_NOFOLLOW, kWanted, &facts.info) != 0) return false;
    facts.isLink = S_ISLNK(facts.info.stx_mode);
    struct statx target {};
    if (facts.isLink && ::statx(AT_FDCWD, path, 0, kWanted, &target) == 0) facts.info = target;
    return true;
}

std::uint32_t attributesOf(const FileFacts& facts, std::string_view name) {
    std::uint32_t attributes = 0;
    const bool writable = facts.isLink || (facts.info.stx_mode & kAnyWrite) != 0;
    if (!writable) attributes |= FILE_ATTRIBUTE_READONLY;
    if (name.starts_with('.') && name != "." && name != "..") attributes |= FILE_ATTRIBUTE_HIDDEN;
    if (S_ISDIR(facts.info.stx_mode)) attributes |= FILE_ATTRIBUTE_DIRECTORY;
    if (facts.isLink) attributes |= FILE_ATTRIBUTE_REPARSE_POINT;
    return attributes != 0 ? attributes : std::uint32_t{FILE_ATTRIBUTE_NORMAL};
}

}  // namespace internal

FileHandle CreateFileW(TextView path, std::uint32_t access, std::uint32_t /*share*/,
                       std::uint32_t creation, std::uint32_t /*flags*/) {
    int how = 0;
    switch (access) {
    case GENERIC_READ:
        how = O_RDONLY;
        break;
    case GENERIC_WRITE:
        how = O_WRONLY;
        break;
    case GENERIC_READ | GENERIC_WRITE:
        how = O_RDWR;
        break;
    default:
        return INVALID_HANDLE_VALUE;
    }
    bool cut = false;
    switch (creation) {
    case CREATE_NEW:
        how |= O_CREAT | O_EXCL;
        break;
    case CREATE_ALWAYS:
        how |= O_CREAT, cut = true;
        break;
    case OPEN_EXISTING:
        break;
    case OPEN_ALWAYS:
        how |= O_CREAT;
        break;
    case TRUNCATE_EXISTING:
        cut = true;
        break;
    default:
        return INVALID_HANDLE_VALUE;
    }
    if (cut && (access & GENERIC_WRITE) == 0) return INVALID_HANDLE_VALUE;

    const std::string systemPath = pathToSystem(path);
    if (systemPath.empty() || mustFail(FileOp::Open)) return INVALID_HANDLE_VALUE;
    struct stat info {};
    Descriptor file = openFile(systemPath, how, 0666, info);
    if (!file) return INVALID_HANDLE_VALUE;
    // Cut only now: opening has shown that it is a file, and one that may be written.
    if (cut && info.st_size > 0 && ::ftruncate(file.get(), 0) != 0) return INVALID_HANDLE_VALUE;

    const FileHandle handle = openFiles().add(std::move(file));
    return handle != 0 ? handle : INVALID_HANDLE_VALUE;
}

bool CloseHandle(FileHandle file) { return openFiles().remove(file); }

bool ReadFile(FileHandle file, void* to, std::uint32_t count, std::uint32_t& transferred) {
    transferred = 0;
    const int fd = descriptorOf(file);
    if (fd < 0 || mustFail(FileOp::Read)) return false;
    bool error = false;
    transferred = static_cast<std::uint32_t>(readFully(fd, to, count, error));
    return !error;
}

bool WriteFile(FileHandle file, const void* from, std::uint32_t count, std::uint32_t& transferred) {
    transferred = 0;
    const int fd = descriptorOf(file);
    if (fd < 0 || mustFail(FileOp::Write)) return false;
    transferred = static_cast<std::uint32_t>(writeFully(fd, from, count));
    return transferred == count;
}

std::uint32_t SetFilePointer(FileHandle file, std::uint32_t low, std::int32_t& high,
                             std::uint32_t from) {
    static_assert(FILE_BEGIN == SEEK_SET && FILE_CURRENT == SEEK_CUR && FILE_END == SEEK_END);
    const int fd = descriptorOf(file);
    off_t position = -1;
    if (fd >= 0 && from <= FILE_END && !mustFail(FileOp::Seek)) {
        const auto distance = (std::uint64_t{static_cast<std::uint32_t>(high)} << 32) | low;
        position = ::lseek(fd, static_cast<off_t>(distance), static_cast<int>(from));
    }
    high = static_cast<std::int32_t>(position >> 32);
    return static_cast<std::uint32_t>(position);
}

std::uint32_t GetFileSize(FileHandle file, std::uint32_t& high) {
    const int fd = descriptorOf(file);
    struct stat info {};
    const bool known = fd >= 0 && !mustFail(FileOp::Size) && ::fstat(fd, &info) == 0;
    const off_t size = known ? info.st_size : -1;
    high = static_cast<std::uint32_t>(size >> 32);
    return static_cast<std::uint32_t>(size);
}

bool SetEndOfFile(FileHandle file) {
    const int fd = descriptorOf(file);
    if (fd < 0 || mustFail(FileOp::Resize)) return false;
    const off_t position = ::lseek(fd, 0, SEEK_CUR);
    return position >= 0 && retried([&] { return ::ftruncate(fd, position); }) == 0;
}

bool FlushFileBuffers(FileHandle file) {
    const int fd = descriptorOf(file);
    if (fd < 0 || mustFail(FileOp::Flush)) return false;
    // EINVAL: a device that holds nothing back.
    return retried([&] { return ::fsync(fd); }) == 0 || errno == EINVAL;
}

bool CopyFileW(TextView from, TextView to, bool bFailIfExists) {
    const std::string source = pathToSystem(from);
    const std::string target = pathToSystem(to);
    if (source.empty() || target.empty() || mustFail(FileOp::Copy)) return false;
    return copyFile(source, target,
                    {.failIfExists = bFailIfExists, .keepTimes = false, .flush = false});
}

bool DeleteFileW(TextView path) {
    const std::string systemPath = pathToSystem(path);
    if (systemPath.empty() || mustFail(FileOp::Delete)) return false;
    const std::uint32_t attributes = attributesOfPath(systemPath);  // all bits set on failure
    constexpr std::uint32_t kNever = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY;
    return (attributes & kNever) == 0 && ::unlink(systemPath.c_str()) == 0;
}

bool MoveFileW(TextView from, TextView to) { return MoveFileExW(from, to, MOVEFILE_COPY_ALLOWED); }

bool MoveFileExW(TextView from, TextView to, std::uint32_t flags) {
    const std::string source = pathToSystem(from);
    const std::string target = pathToSystem(to);
    if (source.empty() || target.empty() || mustFail(FileOp::Move)) return false;

    const bool replace = (flags & MOVEFILE_REPLACE_EXISTING) != 0;
    if (replace) {
        const std::uint32_t existing = attributesOfPath(target);
        constexpr std::uint32_t kNever = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY;
        if (existing != INVALID_FILE_ATTRIBUTES && (existing & kNever) != 0) return false;
        if (::rename(source.c_str(), target.c_str()) == 0) return true;
    } else if (renameToNew(source, target)) {
        return true;
    }
    if (errno != EXDEV || (flags & MOVEFILE_COPY_ALLOWED) == 0) return false;
    return copyFile(source, target,
                    {.failIfExists = !replace,
                     .keepTimes = true,
                     .flush = (flags & MOVEFILE_WRITE_THROUGH) != 0}) &&
           ::unlink(source.c_str()) == 0;
}

bool CreateDirectoryW(TextView path) {
    const std::string systemPath = pathToSystem(path);
    if (systemPath.empty() || mustFail(FileOp::CreateDirectory)) return false;
    return ::mkdir(systemPath.c_str(), 0777) == 0;
}

bool RemoveDirectoryW(TextView path) {
    std::string systemPath = pathToSystem(path);
    if (systemPath.empty() || mustFail(FileOp::RemoveDirectory)) return false;
    if (::rmdir(systemPath.c_str()) == 0) return true;
    if (errno != ENOTDIR) return false;
    // A link to a directory goes by itself; what it leads to stays.
    while (systemPath.size() > 1 && systemPath.ends_with('/')) systemPath.pop_back();
    const std::uint32_t attributes = attributesOfPath(systemPath);
    constexpr std::uint32_t kBoth = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT;
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & kBoth) == kBoth &&
           ::unlink(systemPath.c_str()) == 0;
}

std::uint32_t GetFileAttributesW(TextView path) {
    const std::string systemPath = pathToSystem(path);
    if (systemPath.empty() || mustFail(FileOp::GetAttributes)) return INVALID_FILE_ATTRIBUTES;
    return attributesOfPath(systemPath);
}

bool SetFileAttributesW(TextView path, std::uint32_t attributes) {
    const std::string systemPath = pathToSystem(path);
    if (systemPath.empty() || mustFail(FileOp::SetAttributes)) return false;
    struct stat info {};
    if (::lstat(systemPath.c_str(), &info) != 0) return false;
    if (S_ISLNK(info.st_mode)) return true;
    const bool readOnly = (attributes & FILE_ATTRIBUTE_READONLY) != 0;
    if (readOnly == ((info.st_mode & kAnyWrite) == 0)) return true;
    const mode_t mode = readOnly ? info.st_mode & ~kAnyWrite : info.st_mode | S_IWUSR;
    return ::chmod(systemPath.c_str(), mode & 07777) == 0;
}

std::uint32_t GetCurrentDirectoryW(std::uint32_t size, char16_t* buffer) {
    const std::unique_ptr<char, decltype(&std::free)> path(::getcwd(nullptr, 0), &std::free);
    return path != nullptr ? giveOut(pathFromSystem(path.get()), size, buffer) : 0;
}

std::uint32_t GetTempPathW(std::uint32_t size, char16_t* buffer) {
    const char* const set = std::getenv("TMPDIR");
    std::string path = set != nullptr && set[0] == '/' ? set : "/tmp";
    if (!path.ends_with('/')) path += '/';
    return giveOut(pathFromSystem(path), size, buffer);
}

bool SetCurrentDirectoryW(TextView path) {
    const std::string systemPath = pathToSystem(path);
    return !systemPath.empty() && ::chdir(systemPath.c_str()) == 0;
}

std::size_t test::openFileHandles() { return openFiles().count(); }

}  // namespace platform
