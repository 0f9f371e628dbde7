// platform/base/testhooks.h: what a test sets in place of the system's answers. For tests only.
#pragma once
#include "platform/base/version.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace platform::test {

// Undoes every hook, the code page override included, when it is made and when it goes. The first
// line of a test that sets any.
class HookScope {
public:
    HookScope();
    ~HookScope();
    HookScope(const HookScope&) = delete;
    HookScope& operator=(const HookScope&) = delete;
};

// GetVersionExA: another version; a query that fails.
void setVersion(std::optional<OSVERSIONINFOA> version);
void failVersionQuery(bool fails);

// GetTickCount stands at this value.
void setTickCount(std::optional<std::uint32_t> milliseconds);

// The user's locale, for instance "ru_RU.UTF-8", in place of the environment: it chooses the
// system's code page (unless QUILLMERE_CODE_PAGE or setAnsiCodePage does), the collation and the
// decimal separator.
void setLocale(std::optional<std::string> locale);

enum class FileOp : std::uint8_t {
    Open,             // CreateFileW; nothing is created or cut
    Read,             // ReadFile; nothing is read
    Write,            // WriteFile; nothing is written
    Seek,             // SetFilePointer
    Size,             // GetFileSize
    Resize,           // SetEndOfFile
    Flush,            // FlushFileBuffers
    Copy,             // CopyFileW; the target stays as it is
    Move,             // MoveFileW, MoveFileExW
    Delete,           // DeleteFileW
    CreateDirectory,  // CreateDirectoryW
    RemoveDirectory,  // RemoveDirectoryW
    GetAttributes,    // GetFileAttributesW
    SetAttributes,    // SetFileAttributesW
    Find,             // FindFirstFileW
};
constexpr std::size_t kFileOpCount = 15;

// After `skip` more operations of this kind, the `times` next ones fail.
void failNext(FileOp op, int times = 1, int skip = 0);

// From now on, as many bytes can be read or written in all, by WriteFile and CopyFileW over all
// files; the request that goes beyond moves what is left and fails, as on a full disk.
void failReadsAfter(std::uint64_t bytes);
void failWritesAfter(std::uint64_t bytes);

void clearFaults();  // undoes failNext, failReadsAfter and failWritesAfter

// Handles that are open now: a test compares before and after.
[[nodiscard]] std::size_t openFileHandles();
[[nodiscard]] std::size_t openFindHandles();

}  // namespace platform::test
