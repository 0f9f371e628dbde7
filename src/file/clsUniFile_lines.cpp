// Lines and marks.
#include "file/clsUniFile.h"

#include "platform/base/codepages.h"

#include <array>
#include <cstring>

namespace {

// The units that the single bytes of a page give, each converted alone.
struct LoneBytes {
    std::uint32_t page;
    std::array<char16_t, 256> units;

    explicit LoneBytes(std::uint32_t page_) : page(page_) {
        for (unsigned i = 0; i < units.size(); ++i) {
            const auto byte = static_cast<std::uint8_t>(i);
            const Text unit = platform::bytesToText(&byte, 1, page);
            units[i] = unit.empty() ? u'\xFFFD' : unit.front();
        }
    }
};

const char16_t* loneByteTable() {
    const std::uint32_t page = platform::GetACP();
    if (const char16_t* table = platform::singleByteTable(page)) return table;
    static LoneBytes table(page);
    if (table.page != page) table = LoneBytes(page);
    return table.units.data();
}

// Takes the line ending off elements that end in LF.
template <typename Elements> void dropLineEnd(Elements& line) {
    line.pop_back();
    if (!line.empty() && line.back() == '\r') line.pop_back();
}

}  // namespace

// The readers take what stands in the cache up to the line ending at once, and the byte that the
// cache lacks, or every byte when it is off, through ReadByte. Pending writes make ReadByte begin.

bool clsUniFile::ReadAnsiLine(Text& sRet) {
    const char16_t* const table = loneByteTable();
    Text line;
    bool ended = false;
    for (std::uint8_t byte = 0; !ended;) {
        if (const auto run = cachedLinePart(); !run.empty()) {
            const std::size_t before = line.size();
            line.resize(before + run.size());
            platform::widenBytes(run.data(), run.size(), table, line.data() + before);
            ended = run.back() == '\n';
        } else if (ReadByte(byte)) {
            line += table[byte];
            ended = byte == '\n';
        } else {
            break;
        }
    }
    if (ended) dropLineEnd(line);
    sRet = std::move(line);
    return ended;
}

bool clsUniFile::ReadUTF8Line(Text& sRet) {
    Bytes line;
    bool ended = false;
    for (std::uint8_t byte = 0; !ended;) {
        if (const auto run = cachedLinePart(); !run.empty()) {
            line.insert(line.end(), run.begin(), run.end());
            ended = run.back() == '\n';
        } else if (ReadByte(byte)) {
            line.push_back(byte);
            ended = byte == '\n';
        } else {
            break;
        }
    }
    if (ended) dropLineEnd(line);
    sRet = ufu_UTF8ToString(line);
    return ended;
}

bool clsUniFile::ReadUnicodeLine(Text& sRet) {
    Text line;
    bool ended = false;
    for (std::uint8_t low = 0, high = 0; !ended && ReadByte(low) && ReadByte(high);) {
        line += static_cast<char16_t>(low | high << 8);
        ended = line.back() == u'\n';
    }
    if (ended) dropLineEnd(line);
    sRet = std::move(line);
    return ended;
}

bool clsUniFile::ReadLine(Text& sRet, std::int32_t iFileEnc) {
    switch (iFileEnc) {
    case ufeUnicode:
        return ReadUnicodeLine(sRet);
    case ufeUTF8:
        return ReadUTF8Line(sRet);
    default:
        return ReadAnsiLine(sRet);
    }
}

bool clsUniFile::WriteAnsiLine(TextView s) {
    return WriteBytes(platform::textToBytes(Text(s) + u"\r\n", platform::GetACP()));
}

bool clsUniFile::WriteUTF8Line(TextView s) {
    return WriteBytes(ufu_StringToUTF8(Text(s) + u"\r\n"));
}

bool clsUniFile::WriteUnicodeLine(TextView s) {
    const bool written = s.empty() || writeBlock(s.data(), s.size() * 2);
    constexpr TextView kLineEnd = u"\r\n";
    return writeBlock(kLineEnd.data(), kLineEnd.size() * 2) && written;
}

bool clsUniFile::WriteLine(TextView s, std::int32_t iFileEnc) {
    switch (iFileEnc) {
    case ufeUnicode:
        return WriteUnicodeLine(s);
    case ufeUTF8:
        return WriteUTF8Line(s);
    default:
        return WriteAnsiLine(s);
    }
}

bool clsUniFile::WriteBOM(std::int32_t iFileEnc) {
    switch (iFileEnc) {
    case ufeAnsi:
        return true;
    case ufeUnicode:
        return WriteBytes({0xFF, 0xFE});
    case ufeUTF8:
        return WriteBytes({0xEF, 0xBB, 0xBF});
    default:
        return false;
    }
}

ufeEncoding clsUniFile::ReadBOM() {
    std::uint8_t first = 0, rest = 0;
    if (!ReadByte(first)) return ufeAnsi;
    switch (first) {
    case 0xFF:
        ReadByte(rest);
        return ufeUnicode;
    case 0xEF:
        ReadByte(rest);
        ReadByte(rest);
        return ufeUTF8;
    default:
        SetFilePos(0, fpfStart);
        return ufeAnsi;
    }
}

std::span<const std::uint8_t> clsUniFile::cachedLinePart() {
    if (m_lWritePos >= 0 || unread() <= 0) return {};
    const std::uint8_t* const first = m_abyReadCache + m_lReadPos;
    const auto most = static_cast<std::size_t>(unread());
    const auto* const lineEnd = static_cast<const std::uint8_t*>(std::memchr(first, '\n', most));
    const std::size_t count =
        lineEnd == nullptr ? most : static_cast<std::size_t>(lineEnd - first) + 1;
    m_lReadPos += static_cast<std::int32_t>(count);
    return {first, count};
}
