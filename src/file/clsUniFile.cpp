// Handle, caches and positions.
#include "file/clsUniFile.h"

#include "platform/base/failure.h"
#include "platform/base/files.h"

#include <algorithm>
#include <cstring>

namespace {

// The platform takes and gives positions in halves, of which the low one has no sign.
std::int64_t joinHalves(std::uint32_t low, std::uint32_t high) {
    return static_cast<std::int64_t>(std::uint64_t{high} << 32 | low);
}

constexpr std::size_t kMostAtOnce = std::size_t{1} << 30;  // counts of the platform have 32 bits

}  // namespace

void clsUniFile::UseCache(bool b) {
    if (b == m_bUseCache) return;
    if (IsFileOpen() && !b) SetFilePos(GetFilePos(), fpfStart);
    m_bUseCache = b;
    pvClearReadCache();
}

bool clsUniFile::OpenFileGeneric(TextView sPath, std::uint32_t iAccess, std::uint32_t iCreation,
                                 std::uint32_t iShare, std::uint32_t iFlags) {
    if (IsFileOpen()) throw Failure(kOwnError, u"clsUniFile.OpenFile", u"A file is already open!");
    pvClearReadCache();
    pvClearWriteCache();
    const auto file =
        platform::CreateFileW(ufu_ExtendedPath(sPath), iAccess, iShare, iCreation, iFlags);
    if (file == platform::INVALID_HANDLE_VALUE) return false;
    m_hFile = file;
    m_sFileName = sPath;
    return true;
}

bool clsUniFile::OpenFileRead(TextView sPath, bool bShared) {
    return OpenFileGeneric(sPath, platform::GENERIC_READ, platform::OPEN_EXISTING,
                           bShared ? platform::FILE_SHARE_READ : 0U,
                           platform::FILE_ATTRIBUTE_NORMAL);
}

bool clsUniFile::OpenFileWrite(TextView sPath, bool bShared) {
    return OpenFileGeneric(sPath, platform::GENERIC_WRITE, platform::CREATE_ALWAYS,
                           bShared ? platform::FILE_SHARE_WRITE : 0U,
                           platform::FILE_ATTRIBUTE_NORMAL);
}

bool clsUniFile::OpenFileAppend(TextView sPath) {
    if (!ufu_FileExist(sPath)) {
        return OpenFileGeneric(sPath, platform::GENERIC_WRITE, platform::CREATE_ALWAYS, 0,
                               platform::FILE_ATTRIBUTE_NORMAL);
    }
    const bool opened =
        OpenFileGeneric(sPath, platform::GENERIC_READ | platform::GENERIC_WRITE,
                        platform::OPEN_EXISTING, 0, platform::FILE_ATTRIBUTE_NORMAL);
    if (opened) SetFilePos(0, fpfEnd);
    return opened;
}

void clsUniFile::CloseFile() {
    if (!IsFileOpen()) return;
    pvFlushWriteCache();
    pvClearReadCache();
    platform::CloseHandle(m_hFile);
    m_hFile = 0;
}

bool clsUniFile::SetEndOfFileHere() {
    if (!IsFileOpen()) return false;
    const bool flushed = pvFlushWriteCache();
    return platform::SetEndOfFile(m_hFile) && flushed;
}

bool clsUniFile::Flush() {
    if (!IsFileOpen()) return false;
    const bool flushed = pvFlushWriteCache();
    return platform::FlushFileBuffers(m_hFile) && flushed;
}

std::int64_t clsUniFile::LOF() const {
    if (!IsFileOpen()) return 0;
    std::uint32_t high = 0;
    const std::uint32_t low = platform::GetFileSize(m_hFile, high);
    const std::int64_t length = joinHalves(low, high);
    return length >= 0 && m_bUseCache ? length + pending() : length;
}

void clsUniFile::SetFilePos(std::int64_t cPos, std::int32_t iFrom) {
    if (!IsFileOpen()) return;
    if (m_bUseCache) pvFlushWriteCache();
    auto high = static_cast<std::int32_t>(cPos >> 32);
    platform::SetFilePointer(m_hFile, static_cast<std::uint32_t>(cPos), high,
                             static_cast<std::uint32_t>(iFrom));
    if (m_bUseCache) pvClearReadCache();
}

std::int64_t clsUniFile::RealFilePos() const {
    if (!IsFileOpen()) return -1;
    std::int32_t high = 0;
    const std::uint32_t low = platform::SetFilePointer(m_hFile, 0, high, platform::FILE_CURRENT);
    return joinHalves(low, static_cast<std::uint32_t>(high));
}

std::int64_t clsUniFile::GetFilePos() const {
    const std::int64_t real = RealFilePos();
    return real >= 0 && m_bUseCache ? real - unread() + pending() : real;
}

bool clsUniFile::Eof() const { return !IsFileOpen() || GetFilePos() >= LOF(); }

void clsUniFile::pvClearReadCache() {
    m_lReadPos = 0;
    m_lReadEnd = -1;
}

bool clsUniFile::pvFlushWriteCache() {
    if (m_lWritePos < 0) return true;
    const bool written = pvRawWrite(m_abyWriteCache, pending());
    pvClearWriteCache();  // after a failure, too: nothing is written twice
    return written;
}

bool clsUniFile::pvFillReadCache() {
    if (!m_bUseCache) return false;
    if (unread() > 0) return true;
    const std::int64_t real = RealFilePos();
    const std::int64_t last = LOF() - 1;
    if (real < 0 || real > last) return false;
    const auto count =
        static_cast<std::int32_t>(std::min<std::int64_t>(last - real + 1, kCacheSize));
    m_lReadPos = 0;
    m_lReadEnd = count - 1;
    const bool filled = pvRawRead(m_abyReadCache, count);
    if (!filled) pvClearReadCache();
    return filled;
}

bool clsUniFile::pvRawRead(void* to, std::int32_t count) {
    if (count <= 0) return false;
    const auto wanted = static_cast<std::uint32_t>(count);
    std::uint32_t moved = 0;
    return platform::ReadFile(m_hFile, to, wanted, moved) && moved == wanted;
}

bool clsUniFile::pvRawWrite(const void* from, std::int32_t count) {
    if (count <= 0) return false;
    const auto wanted = static_cast<std::uint32_t>(count);
    std::uint32_t moved = 0;
    return platform::WriteFile(m_hFile, from, wanted, moved) && moved == wanted;
}

void clsUniFile::takeCached(void* to, std::int32_t count) {
    std::memcpy(to, m_abyReadCache + m_lReadPos, static_cast<std::size_t>(count));
    m_lReadPos += count;
}

void clsUniFile::putCached(const void* from, std::int32_t count) {
    std::memcpy(m_abyWriteCache + pending(), from, static_cast<std::size_t>(count));
    m_lWritePos += count;
}

bool clsUniFile::ReadAny(void* lPtrAny, std::int32_t lToRead) {
    if (!m_bUseCache) return pvRawRead(lPtrAny, lToRead);
    if (lToRead <= 0) return false;
    if (m_lWritePos >= 0) pvFlushWriteCache();
    const std::int32_t avail = unread();
    if (lToRead <= avail) {
        takeCached(lPtrAny, lToRead);
        return true;
    }
    takeCached(lPtrAny, avail);
    pvClearReadCache();
    auto* const rest = static_cast<std::uint8_t*>(lPtrAny) + avail;
    const std::int32_t wanted = lToRead - avail;
    if (lToRead > kCacheSize) return pvRawRead(rest, wanted);
    if (!pvFillReadCache() || unread() < wanted) return false;
    takeCached(rest, wanted);
    return true;
}

bool clsUniFile::WriteAny(const void* lPtrAny, std::int32_t lToWrite) {
    if (!m_bUseCache) return pvRawWrite(lPtrAny, lToWrite);
    if (lToWrite <= 0 || !IsFileOpen()) return false;
    const std::int32_t space = kCacheSize - pending();
    if (lToWrite > kCacheSize) {
        const bool flushed = pvFlushWriteCache();
        return pvRawWrite(lPtrAny, lToWrite) && flushed;
    }
    if (lToWrite <= space) {
        putCached(lPtrAny, lToWrite);
        return true;
    }
    putCached(lPtrAny, space);
    const bool flushed = pvFlushWriteCache();
    putCached(static_cast<const std::uint8_t*>(lPtrAny) + space, lToWrite - space);
    return flushed;
}

bool clsUniFile::readBlock(void* to, std::size_t count) {
    auto* next = static_cast<std::uint8_t*>(to);
    bool done = count != 0;
    while (done && count != 0) {
        const std::size_t part = std::min(count, kMostAtOnce);
        done = ReadAny(next, static_cast<std::int32_t>(part));
        next += part;
        count -= part;
    }
    return done;
}

bool clsUniFile::writeBlock(const void* from, std::size_t count) {
    const auto* next = static_cast<const std::uint8_t*>(from);
    bool done = count != 0;
    while (done && count != 0) {
        const std::size_t part = std::min(count, kMostAtOnce);
        done = WriteAny(next, static_cast<std::int32_t>(part));
        next += part;
        count -= part;
    }
    return done;
}
