#include "file/encodings.h"

#include "file/filledText.h"
#include "file/pvWindowsVersion.h"
#include "platform/base/codepages.h"
#include "platform/base/memory.h"

#include <algorithm>
#include <bit>
#include <cstring>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace {

// Blocks: the fast road through runs of one-byte and of two-byte sequences.

constexpr int kBlock = 16;

// A block may write more units than count in the end. With this much input left, one block of each
// kind stays inside the input and the room, and what it writes too much stays clear of unread input
// that shares the memory (see decodeUTF8).
constexpr std::size_t kBlockSlack = 2 * kBlock;

#if defined(__SSE2__)

// Widens 16 bytes. Returns how many of them, from the first, are ASCII.
unsigned widenAscii(const std::uint8_t* in, char16_t* out) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in));
    const __m128i zero = _mm_setzero_si128();
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out), _mm_unpacklo_epi8(bytes, zero));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out + 8), _mm_unpackhi_epi8(bytes, zero));
    const unsigned high = static_cast<unsigned>(_mm_movemask_epi8(bytes));
    return static_cast<unsigned>(std::countr_zero(high | 1U << kBlock));
}

// Decodes 16 bytes as 8 two-byte sequences. Returns how many of them, from the first, are such.
unsigned decodePairs(const std::uint8_t* in, char16_t* out) {
    const __m128i pairs = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in));
    const __m128i lead = _mm_and_si128(pairs, _mm_set1_epi16(0xFF));
    const __m128i units = _mm_or_si128(_mm_slli_epi16(_mm_and_si128(lead, _mm_set1_epi16(31)), 6),
                                       _mm_and_si128(_mm_srli_epi16(pairs, 8), _mm_set1_epi16(63)));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out), units);
    const __m128i other = _mm_or_si128(_mm_cmplt_epi16(lead, _mm_set1_epi16(0xC2)),
                                       _mm_cmpgt_epi16(lead, _mm_set1_epi16(0xDF)));
    const unsigned stop = static_cast<unsigned>(_mm_movemask_epi8(other));
    return static_cast<unsigned>(std::countr_zero(stop | 1U << kBlock)) / 2;
}

// Narrows 16 units when all are ASCII; false and nothing written otherwise.
bool narrowAscii(const char16_t* in, std::uint8_t* out) {
    const __m128i low = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in));
    const __m128i high = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in + 8));
    const __m128i above = _mm_and_si128(_mm_or_si128(low, high), _mm_set1_epi16(~0x7F));
    if (_mm_movemask_epi8(_mm_cmpeq_epi16(above, _mm_setzero_si128())) != 0xFFFF) return false;
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out), _mm_packus_epi16(low, high));
    return true;
}

#else

unsigned widenAscii(const std::uint8_t* in, char16_t* out) {
    std::uint8_t bytes[kBlock];
    std::memcpy(bytes, in, kBlock);
    std::copy(bytes, bytes + kBlock, out);
    return static_cast<unsigned>(
        std::find_if(bytes, bytes + kBlock, [](std::uint8_t b) { return b > 0x7F; }) - bytes);
}

unsigned decodePairs(const std::uint8_t* in, char16_t* out) {
    std::uint8_t bytes[kBlock];
    std::memcpy(bytes, in, kBlock);
    for (unsigned i = 0; i < kBlock; i += 2) {
        if (bytes[i] < 0xC2 || bytes[i] > 0xDF) return i / 2;
        out[i / 2] = static_cast<char16_t>((bytes[i] & 31) << 6 | (bytes[i + 1] & 63));
    }
    return kBlock / 2;
}

bool narrowAscii(const char16_t* in, std::uint8_t* out) {
    unsigned all = 0;
    for (unsigned i = 0; i < kBlock; ++i) all |= in[i];
    if (all > 0x7F) return false;
    for (unsigned i = 0; i < kBlock; ++i) out[i] = static_cast<std::uint8_t>(in[i]);
    return true;
}

#endif

// The two decoders agree but for the lead bytes from 240 on.
enum class Decoder { file, second };

// Always o <= i, because a sequence gives at most as many units as it has bytes. So when `in` is
// the second half of out's room, writing never overtakes reading, which starts half a room ahead.
template <Decoder decoder>
std::size_t decode(const std::uint8_t* in, std::size_t count, char16_t* out) {
    const auto follow = [in](std::size_t at) { return in[at] & 63U; };
    std::size_t i = 0, o = 0;
    while (i < count) {
        if (count - i >= kBlockSlack) {
            const unsigned ascii = widenAscii(in + i, out + o);
            if (ascii == kBlock) {  // foreseen, so that the next block need not wait for the count
                i += kBlock;
                o += kBlock;
                continue;
            }
            i += ascii;
            o += ascii;
            const unsigned pairs = decodePairs(in + i, out + o);
            i += std::size_t{2} * pairs;
            o += pairs;
            if (pairs != 0) continue;
        }
        do {
            const unsigned lead = in[i];
            const std::size_t left = count - i;
            if (lead < 0xC2) {
                out[o++] = static_cast<char16_t>(lead);
                i += 1;
            } else if (lead < 0xE0) {
                if (left < 2) return o;
                out[o++] = static_cast<char16_t>((lead & 31) << 6 | follow(i + 1));
                i += 2;
            } else if (decoder == Decoder::file || lead < 0xF0) {
                if (left < 3) return o;
                out[o++] =
                    static_cast<char16_t>((lead & 15) << 12 | follow(i + 1) << 6 | follow(i + 2));
                i += 3;
            } else if (lead < 0xF5) {
                if (left < 4) return o;
                const unsigned value =
                    (lead & 7) << 18 | follow(i + 1) << 12 | follow(i + 2) << 6 | follow(i + 3);
                i += 4;
                if (value < 0x10000 || value > 0x10FFFF) {
                    out[o++] = static_cast<char16_t>(value < 0x10000 ? value : 0xFFFD);
                } else {
                    out[o++] = static_cast<char16_t>(0xD800 + ((value - 0x10000) >> 10));
                    out[o++] = static_cast<char16_t>(0xDC00 + (value & 0x3FF));
                }
            } else {
                out[o++] = static_cast<char16_t>(lead);
                i += 1;
            }
        } while (i < count && in[i] >= 0xE0);  // longer sequences come in runs and gain no block
    }
    return o;
}

template <Decoder decoder> Text decoded(const Bytes& bytes) {
    return filledText(bytes.size(), [&](char16_t* room) {
        return decode<decoder>(bytes.data(), bytes.size(), room);
    });
}

std::size_t utf8Length(TextView s) {
    std::size_t length = s.size();
    constexpr std::size_t kRun = 4096;  // counted in 16 bits, as wide as the units
    for (; !s.empty(); s.remove_prefix(std::min(kRun, s.size()))) {
        std::uint16_t more = 0;
        for (const char16_t unit : s.substr(0, kRun)) {
            const std::uint16_t two = unit >= 0x80 ? 1 : 0;
            const std::uint16_t three = unit >= 0x800 ? 1 : 0;
            more = static_cast<std::uint16_t>(more + two + three);
        }
        length += more;
    }
    return length;
}

std::uint8_t* encodeUnit(unsigned unit, std::uint8_t* out) {
    if (unit < 0x80) {
        *out++ = static_cast<std::uint8_t>(unit);
    } else if (unit < 0x800) {
        *out++ = static_cast<std::uint8_t>(192 + (unit >> 6));
        *out++ = static_cast<std::uint8_t>(128 + (unit & 63));
    } else {
        *out++ = static_cast<std::uint8_t>(224 + (unit >> 12));
        *out++ = static_cast<std::uint8_t>(128 + ((unit >> 6) & 63));
        *out++ = static_cast<std::uint8_t>(128 + (unit & 63));
    }
    return out;
}

// The same where there is room for three bytes, whatever the unit. Words and blanks alternate in
// ways that no processor foresees, so one byte or two is settled without a jump.
std::uint8_t* encodeUnitWithRoom(unsigned unit, std::uint8_t* out) {
    if (unit >= 0x800) return encodeUnit(unit, out);
    const bool one = unit < 0x80;
    out[0] = static_cast<std::uint8_t>(one ? unit : 192 + (unit >> 6));
    out[1] = static_cast<std::uint8_t>(128 + (unit & 63));
    return out + (one ? 1 : 2);
}

constexpr std::uint32_t kPackingPage = 1252;

}  // namespace

Bytes ufu_StringToUTF8(TextView s) {
    const std::size_t length = utf8Length(s);
    Bytes bytes;
    bytes.reserve(length);
    platform::adviseLargePages(bytes.data(), length);
    bytes.resize(length);
    std::uint8_t* out = bytes.data();
    std::uint8_t* const outEnd = out + length;
    const char16_t* unit = s.data();
    const char16_t* const end = unit + s.size();
    while (end - unit >= kBlock && outEnd - out >= 3 * kBlock) {
        if (narrowAscii(unit, out)) {
            unit += kBlock;
            out += kBlock;
        } else {
            for (unsigned i = 0; i < kBlock; ++i) out = encodeUnitWithRoom(*unit++, out);
        }
    }
    while (unit != end) out = encodeUnit(*unit++, out);
    return bytes;
}

Bytes ufu_CharToUTF8(char16_t unit) {
    std::uint8_t bytes[3];
    return Bytes(bytes, encodeUnit(unit, bytes));
}

Text ufu_UTF8ToString(const Bytes& bytes) { return decoded<Decoder::file>(bytes); }

std::size_t decodeUTF8(const std::uint8_t* bytes, std::size_t count, char16_t* out) {
    return decode<Decoder::file>(bytes, count, out);
}

Text UTF8ToStringEx(const Bytes& bytes) { return decoded<Decoder::second>(bytes); }

Text PackUTF8(TextView s) {
    const Bytes bytes = ufu_StringToUTF8(s);
    return platform::bytesToText(bytes.data(), bytes.size(), kPackingPage);
}

Text UnpackUTF8(TextView p) { return UTF8ToStringEx(platform::textToBytes(p, kPackingPage)); }

bool IsAnsiText(TextView s) {
    if (pvWindowsVersion() < 8) return true;
    if (platform::GetACP() != 1252) return false;
    constexpr std::size_t kRun =
        4096;  // looked at as a whole, which the compiler does in wide steps
    for (; !s.empty(); s.remove_prefix(std::min(kRun, s.size()))) {
        char16_t all = 0;
        for (const char16_t unit : s.substr(0, kRun)) all |= unit;
        if (all > 0xFF) return false;
    }
    return true;
}
