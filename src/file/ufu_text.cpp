#include "file/ufu_text.h"

#include "file/FileBytes.h"
#include "file/clsUniFile.h"
#include "file/filledText.h"
#include "platform/base/codepages.h"
#include "platform/base/failure.h"

#include <algorithm>
#include <memory>
#include <new>
#include <stdexcept>

namespace {

// The readers.

// Makes sRet a text of at most count units out of the next count bytes of the file. The bytes are
// read into the second half of the text's own memory, and convert(bytes, room) makes units of them
// from the front, which needs no other memory: a byte gives at most one unit, so that writing never
// overtakes reading.
template <typename Convert>
bool readConverted(clsUniFile& file, std::size_t count, Text& sRet, Convert convert) {
    bool read = false;
    sRet = filledText(count, [&](char16_t* room) {
        std::uint8_t* const bytes = reinterpret_cast<std::uint8_t*>(room) + count;
        read = file.readBlock(bytes, count);
        return read ? convert(bytes, room) : 0;
    });
    return read;
}

bool ufu_AnsiFileToString(TextView sPath, Text& sRet) {
    clsUniFile file;
    if (!file.OpenFileRead(sPath, true)) return false;
    const std::int64_t length = file.LOF();
    if (length <= 0) return length == 0;
    const auto count = static_cast<std::size_t>(length);
    const std::uint32_t page = platform::GetACP();
    if (const char16_t* table = platform::singleByteTable(page)) {
        return readConverted(file, count, sRet, [&](std::uint8_t* bytes, char16_t* room) {
            // Widening goes by blocks and may look at a block again after writing it, so the last
            // bytes, which such a write would reach, are moved out of its way.
            std::uint8_t last[64];
            const std::size_t lastCount = std::min(sizeof last, count);
            const std::size_t before = count - lastCount;
            std::copy_n(bytes + before, lastCount, last);
            platform::widenBytes(bytes, before, table, room);
            platform::widenBytes(last, lastCount, table, room + before);
            return count;
        });
    }
    const auto bytes = std::make_unique_for_overwrite<std::uint8_t[]>(count);
    if (!file.readBlock(bytes.get(), count)) return false;
    sRet = platform::bytesToText(bytes.get(), count, page);
    return true;
}

// Reads a mark of so many bytes, whatever they are, and tells the count of bytes behind it. The
// result is that of the read; a file whose length is not to be had counts as a failed one.
bool skipMark(clsUniFile& file, std::int64_t markLength, std::size_t& count) {
    Bytes mark(static_cast<std::size_t>(markLength));
    const bool read = file.ReadBytes(mark);
    const std::int64_t length = file.LOF();
    count = static_cast<std::size_t>(std::max<std::int64_t>(length - markLength, 0));
    return read && length >= 0;
}

bool ufu_UnicodeFileToString(TextView sPath, Text& sRet) {
    clsUniFile file;
    if (!file.OpenFileRead(sPath, true)) return false;
    std::size_t count = 0;
    bool read = skipMark(file, 2, count);
    if (count == 0) return read;
    sRet = filledText(count / 2 + count % 2, [&](char16_t* room) {
        read = file.readBlock(room, count);
        return read ? count / 2 : 0;  // an odd byte at the end forms no unit
    });
    return read;
}

bool ufu_UTF8FileToString(TextView sPath, Text& sRet) {
    clsUniFile file;
    if (!file.OpenFileRead(sPath, true)) return false;
    std::size_t count = 0;
    const bool read = skipMark(file, 3, count);
    if (count == 0) return read;
    return readConverted(file, count, sRet, [count](std::uint8_t* bytes, char16_t* room) {
        return decodeUTF8(bytes, count, room);
    });
}

bool readTextFile(TextView sPath, Text& sRet) {
    switch (ufu_GetFileEncoding(sPath)) {
    case ufeUnicode:
        return ufu_UnicodeFileToString(sPath, sRet);
    case ufeUTF8:
        return ufu_UTF8FileToString(sPath, sRet);
    default:
        return ufu_AnsiFileToString(sPath, sRet);
    }
}

// The writers work without the cache, so that the result of each write is the disk's answer.

bool ufu_StringToAnsiFile(TextView sPath, TextView sText) {
    return writeFile(sPath, platform::textToBytes(sText, platform::GetACP()));
}

bool ufu_StringToUnicodeFile(TextView sPath, TextView sText) {
    clsUniFile file;
    file.UseCache(false);
    if (!file.OpenFileWrite(sPath, true)) return false;
    (void)file.WriteBOM(ufeUnicode);  // a disk that refuses it refuses the text, too
    return sText.empty() || file.writeBlock(sText.data(), sText.size() * 2);
}

bool ufu_StringToUTF8File(TextView sPath, TextView sText) {
    const Bytes bytes = ufu_StringToUTF8(sText);
    clsUniFile file;
    file.UseCache(false);
    if (!file.OpenFileWrite(sPath, true)) return false;
    (void)file.WriteBOM(ufeUTF8);
    return sText.empty() || file.WriteBytes(bytes);
}

bool writeTextFile(TextView sPath, TextView sText, std::int32_t iEncoding) {
    switch (iEncoding) {
    case ufeAnsi:
        return ufu_StringToAnsiFile(sPath, sText);
    case ufeUnicode:
        return ufu_StringToUnicodeFile(sPath, sText);
    case ufeUTF8:
        return ufu_StringToUTF8File(sPath, sText);
    default:
        return false;
    }
}

// A file can be longer than the memory is large; that is a failure as any other.
template <typename Work> bool withinMemory(Work work) {
    try {
        return work();
    } catch (const std::bad_alloc&) {
        return false;
    } catch (const std::length_error&) {
        return false;
    }
}

}  // namespace

ufeEncoding ufu_GetFileEncoding(TextView sFile) {
    clsUniFile file;
    file.UseCache(false);  // one byte is all that is wanted
    std::uint8_t first = 0;
    if (!file.OpenFileRead(sFile, true) || !file.ReadByte(first)) return ufeAnsi;
    if (first == 0xFF) return ufeUnicode;
    return first == 0xEF ? ufeUTF8 : ufeAnsi;
}

std::int64_t ufu_FileLen(TextView sFile) {
    clsUniFile file;
    return file.OpenFileRead(sFile, true) ? std::max<std::int64_t>(file.LOF(), 0) : 0;
}

bool ufu_TextFileToString(TextView sNomeFile, Text& sRetFile, bool bRaiseError) {
    Text text;  // apart, since sNomeFile may view sRetFile, and a failure must leave nothing behind
    const bool read = withinMemory([&] { return readTextFile(sNomeFile, text); });
    if (read) {
        sRetFile = std::move(text);
    } else {
        sRetFile.clear();
        if (bRaiseError) {
            throw Failure(kOwnError, u"ufu_TextFileToString", u"Error reading file");
        }
    }
    return read;
}

bool ufu_StringToTextFile(TextView vsPathFile, TextView vsText, std::int32_t iEncoding,
                          bool bRaiseError) {
    const bool written = withinMemory([&] { return writeTextFile(vsPathFile, vsText, iEncoding); });
    if (!written && bRaiseError) {
        throw Failure(kOwnError, u"ufu_StringToTextFile", u"Error writing file");
    }
    return written;
}
