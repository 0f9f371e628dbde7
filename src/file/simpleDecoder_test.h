// file/simpleDecoder_test.h: the decoders and the encoder once more, as short as can be, for the
// tests to compare with.
#pragma once
#include "platform/base/text.h"

namespace test {

inline Text simpleDecoded(const Bytes& bytes, bool second) {
    Text s;
    for (std::size_t i = 0; i < bytes.size();) {
        const unsigned lead = bytes[i];
        std::size_t length = lead < 194 ? 1 : lead < 224 ? 2 : 3;
        if (second && lead >= 240) length = lead < 245 ? 4 : 1;
        if (length > bytes.size() - i) break;
        constexpr unsigned kLeadBits[] = {255, 255, 31, 15, 7};
        char32_t value = lead & kLeadBits[length];
        for (std::size_t k = 1; k < length; ++k) value = value * 64 + bytes[i + k] % 64;
        i += length;
        if (value > 0x10FFFF) value = 0xFFFD;
        if (value < 0x10000) {
            s += static_cast<char16_t>(value);
        } else {
            s += static_cast<char16_t>(0xD800 + (value - 0x10000) / 0x400);
            s += static_cast<char16_t>(0xDC00 + value % 0x400);
        }
    }
    return s;
}

inline Bytes simpleEncoded(TextView s) {
    Bytes bytes;
    const auto put = [&](unsigned byte) { bytes.push_back(static_cast<std::uint8_t>(byte)); };
    for (const unsigned unit : s) {
        if (unit < 128) {
            put(unit);
        } else if (unit < 2048) {
            put(192 + unit / 64), put(128 + unit % 64);
        } else {
            put(224 + unit / 4096), put(128 + unit / 64 % 64), put(128 + unit % 64);
        }
    }
    return bytes;
}

}  // namespace test
