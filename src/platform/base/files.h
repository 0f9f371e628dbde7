// platform/base/files.h: files and directories by the names under which the file layer calls them.
//
// Paths are the inside form: backslashes, optionally with the long-path prefix \\?\ (paths.h maps
// them to the system's own names, and tells which no file can have; those fail everywhere here).
// No operation raises; each says what it returns on failure. All of them, and the handles, belong
// to one thread. A handle that was closed is never mistaken for a newer one.
#pragma once
#include "platform/base/text.h"

namespace platform {

// A handle is above 0. One value stands for "no file".
using FileHandle = std::int32_t;
constexpr FileHandle INVALID_HANDLE_VALUE = -1;

enum : std::uint32_t {
    GENERIC_READ = 0x80000000,
    GENERIC_WRITE = 0x40000000,
    FILE_SHARE_READ = 1,
    FILE_SHARE_WRITE = 2,
    CREATE_NEW = 1,
    CREATE_ALWAYS = 2,
    OPEN_EXISTING = 3,
    OPEN_ALWAYS = 4,
    TRUNCATE_EXISTING = 5,
    FILE_ATTRIBUTE_READONLY = 0x01,
    FILE_ATTRIBUTE_HIDDEN = 0x02,
    FILE_ATTRIBUTE_SYSTEM = 0x04,
    FILE_ATTRIBUTE_DIRECTORY = 0x10,
    FILE_ATTRIBUTE_ARCHIVE = 0x20,
    FILE_ATTRIBUTE_NORMAL = 0x80,
    FILE_ATTRIBUTE_REPARSE_POINT = 0x400,
    FILE_ATTRIBUTE_COMPRESSED = 0x800,
    FILE_ATTRIBUTE_ENCRYPTED = 0x4000,
    INVALID_FILE_ATTRIBUTES = 0xFFFFFFFF,
    INVALID_FILE_SIZE = 0xFFFFFFFF,
    INVALID_SET_FILE_POINTER = 0xFFFFFFFF,
    FILE_BEGIN = 0,
    FILE_CURRENT = 1,
    FILE_END = 2,
    MOVEFILE_REPLACE_EXISTING = 1,
    MOVEFILE_COPY_ALLOWED = 2,
    MOVEFILE_WRITE_THROUGH = 8,
};

// Opens a regular file or a character device such as /dev/full. Directories, pipes, sockets and
// block devices fail, whatever the access asked for, and nothing ever waits for a partner. access
// is GENERIC_READ, GENERIC_WRITE or both; creation one of CREATE_NEW to TRUNCATE_EXISTING. Opening
// an existing file without any write permission for writing fails, for privileged users too. The
// two creations that empty an existing file need GENERIC_WRITE and do it in place: the file keeps
// its identity and permissions, and a link its target. share and flags are taken and not enforced:
// the systems underneath do not lock files that are open. Returns INVALID_HANDLE_VALUE on failure.
[[nodiscard]] FileHandle CreateFileW(TextView path, std::uint32_t access, std::uint32_t share,
                                     std::uint32_t creation, std::uint32_t flags);
bool CloseHandle(FileHandle file);

// One request each; a request cut short by the system is continued until the count is reached, the
// file ends or an error comes. transferred is the count really moved. False on an error; reading at
// the end of the file is no error and moves 0.
bool ReadFile(FileHandle file, void* to, std::uint32_t count, std::uint32_t& transferred);
bool WriteFile(FileHandle file, const void* from, std::uint32_t count, std::uint32_t& transferred);

// Moves the file position by the 64-bit distance (high, low) from FILE_BEGIN, FILE_CURRENT or
// FILE_END. Returns the low half of the new position and puts the high half into high;
// INVALID_SET_FILE_POINTER with high -1 on failure, the position then stays.
std::uint32_t SetFilePointer(FileHandle file, std::uint32_t low, std::int32_t& high,
                             std::uint32_t from);

// The low half of the size; the high half goes into high. INVALID_FILE_SIZE with high -1 (all bits
// set) on failure.
std::uint32_t GetFileSize(FileHandle file, std::uint32_t& high);

bool SetEndOfFile(FileHandle file);      // cuts or grows the file at its position
bool FlushFileBuffers(FileHandle file);  // waits until the data is on the disk

// Copies bytes and permissions of a regular file. With bFailIfExists an existing target makes it
// fail, and a read-only target always does. A target that could not be written whole is a failure;
// if it is new it is removed again. Copying a file onto itself fails and loses nothing.
[[nodiscard]] bool CopyFileW(TextView from, TextView to, bool bFailIfExists);
// Deletes a file, of a link the link alone. Nothing that GetFileAttributesW calls read-only or a
// directory is deleted.
[[nodiscard]] bool DeleteFileW(TextView path);
// Files and directories. MoveFileW fails when the target exists and moves files to other file
// systems by copying. MoveFileExW takes the MOVEFILE_ flags: MOVEFILE_REPLACE_EXISTING replaces a
// file that is neither a directory nor read-only; only with MOVEFILE_COPY_ALLOWED a file (never a
// directory) goes to another file system, by a copy that keeps its times and is then on the disk if
// MOVEFILE_WRITE_THROUGH says so. If the original cannot be deleted after that, both stay and the
// result is false.
[[nodiscard]] bool MoveFileW(TextView from, TextView to);
[[nodiscard]] bool MoveFileExW(TextView from, TextView to, std::uint32_t flags);
[[nodiscard]] bool CreateDirectoryW(TextView path);  // fails when it exists
// Only an empty one; of a link to a directory the link alone, whatever the directory holds.
[[nodiscard]] bool RemoveDirectoryW(TextView path);

// Read-only: no write permission for anyone; a link never is, whatever its target. Hidden: a
// leading dot. Directory: a directory, or a link to one. FILE_ATTRIBUTE_REPARSE_POINT: a link.
// FILE_ATTRIBUTE_NORMAL when no other bit applies. INVALID_FILE_ATTRIBUTES on failure.
[[nodiscard]] std::uint32_t GetFileAttributesW(TextView path);
// Only FILE_ATTRIBUTE_READONLY can be set (nobody may write any more) and cleared (the owner may
// again, if nobody could); other bits are taken without effect, and so is every bit for a link: its
// target stays as it is.
bool SetFileAttributesW(TextView path, std::uint32_t attributes);

// Both fill a buffer of `size` units, end it with a NUL and return the length without it; when the
// buffer is too small, the size needed including the NUL. 0 on failure. The temp path ends in a
// backslash.
std::uint32_t GetCurrentDirectoryW(std::uint32_t size, char16_t* buffer);
std::uint32_t GetTempPathW(std::uint32_t size, char16_t* buffer);
bool SetCurrentDirectoryW(TextView path);

}  // namespace platform
