// file/FileBytes.h: files as bytes, written whole, and what stood in them before.
#pragma once
#include "platform/base/text.h"

#include <memory>
#include <span>

// Makes a file hold these bytes and nothing else, past the cache: the result is the disk's answer.
// False when the file could not be opened or not all of it be written.
[[nodiscard]] bool writeFile(TextView sFile, std::span<const std::uint8_t> bytes);

// The same over what stands in the file, which is cut behind the last byte only when all are there:
// until then the file keeps its room, and a write that fails leaves the rest as it was.
[[nodiscard]] bool writeOver(TextView sFile, std::span<const std::uint8_t> bytes);

// Files are replaced in place, which keeps their links and permissions. A write that fails half-way
// has then destroyed what was there; this puts it back. After writeOver that needs no room on the
// disk that somebody else may have taken.
class FileBytes {
public:
    static constexpr std::int64_t kMost = 64 * 1024 * 1024;  // bytes that are worth the memory

    // Reads. A file that cannot be read, or is larger, is left alone later.
    explicit FileBytes(TextView sFile);

    // Makes the file what it was, unless it still is; one that was not there goes. Tells nothing:
    // the write has failed already, and that is what there is to tell.
    void putBack() const;

private:
    [[nodiscard]] std::span<const std::uint8_t> bytes() const { return {m_bytes.get(), m_count}; }

    Text m_sFile;
    std::unique_ptr<std::uint8_t[]> m_bytes;
    std::size_t m_count = 0;
    bool m_there;
    bool m_read = false;
};
