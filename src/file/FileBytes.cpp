#include "file/FileBytes.h"

#include "file/clsUniFile.h"
#include "file/ufu_files.h"
#include "platform/base/files.h"
#include "platform/base/memory.h"

#include <algorithm>

bool writeFile(TextView sFile, std::span<const std::uint8_t> bytes) {
    clsUniFile file;
    file.UseCache(false);
    return file.OpenFileWrite(sFile, true) &&
           (bytes.empty() || file.writeBlock(bytes.data(), bytes.size()));
}

bool writeOver(TextView sFile, std::span<const std::uint8_t> bytes) {
    clsUniFile file;
    file.UseCache(false);
    if (!file.OpenFileGeneric(sFile, platform::GENERIC_WRITE, platform::OPEN_ALWAYS,
                              platform::FILE_SHARE_WRITE, platform::FILE_ATTRIBUTE_NORMAL)) {
        return false;
    }
    if (!bytes.empty() && !file.writeBlock(bytes.data(), bytes.size())) return false;
    const std::int64_t length = file.LOF();  // -1 when it is not to be had: then it may be longer
    const bool longer = length < 0 || length > static_cast<std::int64_t>(bytes.size());
    return !longer || file.SetEndOfFileHere();
}

FileBytes::FileBytes(TextView sFile) : m_sFile(sFile), m_there(ufu_FileExist(sFile)) {
    clsUniFile file;
    if (!file.OpenFileRead(sFile, true)) return;
    const std::int64_t length = file.LOF();  // -1 when it is not to be had
    if (length < 0 || length > kMost) return;
    m_count = static_cast<std::size_t>(length);
    m_bytes = std::make_unique_for_overwrite<std::uint8_t[]>(m_count);
    platform::adviseLargePages(m_bytes.get(), m_count);
    m_read = m_count == 0 || file.readBlock(m_bytes.get(), m_count);
}

void FileBytes::putBack() const {
    if (!m_there && ufu_FileExist(m_sFile)) (void)ufu_RmFile(m_sFile);
    if (!m_read) return;
    if (const FileBytes now(m_sFile); now.m_read && std::ranges::equal(now.bytes(), bytes()))
        return;
    (void)writeOver(m_sFile, bytes());
}
