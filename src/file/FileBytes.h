// file/FileBytes.h: what stands in a file, kept while it is written over.
#pragma once
#include "platform/base/text.h"

// Files are replaced in place, which keeps their links and permissions. A write that fails half-way
// has then destroyed what was there; this puts it back.
class FileBytes {
public:
    static constexpr std::int64_t kMost = 64 * 1024 * 1024;  // bytes that are worth the memory

    // Reads. A file that cannot be read, or is larger, is left alone later.
    explicit FileBytes(TextView sFile);

    // Makes the file what it was, unless it still is. Tells nothing: the write has failed already,
    // and that is what there is to tell.
    void putBack() const;

private:
    Text m_sFile;
    Bytes m_bytes;
    bool m_read = false;
};
