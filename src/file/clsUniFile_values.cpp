// Typed values.
#include "file/clsUniFile.h"

#include "platform/base/codepages.h"

#include <bit>
#include <cstring>

static_assert(std::endian::native == std::endian::little,
              "values and UTF-16 units go to the disk as they stand in memory");

namespace {

Text textOf(const Bytes& bytes, std::int32_t iFileEnc) {
    switch (iFileEnc) {
    case ufeAnsi:
        return platform::bytesToText(bytes.data(), bytes.size(), platform::GetACP());
    case ufeUTF8:
        return UTF8ToStringEx(bytes);
    default: {
        Text units(bytes.size() / 2, u'\0');  // an odd byte at the end forms no unit
        std::memcpy(units.data(), bytes.data(), units.size() * 2);
        return units;
    }
    }
}

constexpr bool isKnown(std::int32_t iFileEnc) {
    return iFileEnc == ufeAnsi || iFileEnc == ufeUnicode || iFileEnc == ufeUTF8;
}

}  // namespace

bool clsUniFile::WriteByte(std::uint8_t b) { return WriteAny(&b, 1); }

bool clsUniFile::ReadLong(std::int32_t& lOut) { return ReadAny(&lOut, sizeof lOut); }

bool clsUniFile::WriteLong(std::int32_t lIn) { return WriteAny(&lIn, sizeof lIn); }

bool clsUniFile::ReadInt(std::int16_t& iOut) { return ReadAny(&iOut, sizeof iOut); }

bool clsUniFile::WriteInt(std::int16_t iIn) { return WriteAny(&iIn, sizeof iIn); }

bool clsUniFile::ReadDouble(double& dOut) { return ReadAny(&dOut, sizeof dOut); }

bool clsUniFile::WriteDouble(double d) { return WriteAny(&d, sizeof d); }

bool clsUniFile::ReadBool(bool& b) {
    std::uint8_t byte = 0;
    if (!ReadByte(byte)) return false;
    b = byte == 1;
    return true;
}

bool clsUniFile::WriteBool(bool b) { return WriteByte(b ? 1 : 0); }

bool clsUniFile::WriteNumCharsAndString(TextView s, std::int32_t iFileEnc) {
    if (!isKnown(iFileEnc)) return false;
    Bytes converted;
    if (iFileEnc == ufeAnsi) converted = platform::textToBytes(s, platform::GetACP());
    if (iFileEnc == ufeUTF8) converted = ufu_StringToUTF8(s);
    const void* const bytes =
        iFileEnc == ufeUnicode ? static_cast<const void*>(s.data()) : converted.data();
    const std::size_t count = iFileEnc == ufeUnicode ? s.size() * 2 : converted.size();
    if (count > INT32_MAX) return false;
    return WriteLong(static_cast<std::int32_t>(count)) && writeBlock(bytes, count);
}

bool clsUniFile::ReadNumCharsAndString(Text& sRet, std::int32_t iFileEnc) {
    sRet.clear();
    std::int32_t count = 0;
    if (!ReadLong(count) || count < 1 || !isKnown(iFileEnc)) return false;
    if (const std::int64_t left = LOF() - GetFilePos(); count > kCacheSize && count > left) {
        // A count from a damaged file costs no memory; the position ends up as after the read.
        if (left > 0) SetFilePos(0, fpfEnd);
        return false;
    }
    Bytes bytes(static_cast<std::size_t>(count));
    if (!ReadBytes(bytes)) return false;
    sRet = textOf(bytes, iFileEnc);
    return true;
}
