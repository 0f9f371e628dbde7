// file/encodings.h: the encodings of text on disk, and the conversions that are ours.
//
// Every conversion here works unit by unit: surrogates are never paired, malformed input is never
// an error, and nothing raises.
#pragma once
#include "platform/base/text.h"

// An encoding is carried as a 32-bit integer; these are the values with a meaning.
enum ufeEncoding : std::int32_t {
    ufeAnsi = 0,     // the system ANSI code page, no mark
    ufeUnicode = 1,  // UTF-16 little-endian, mark FF FE
    ufeUTF8 = 2      // UTF-8, mark EF BB BF
};

// One to three bytes for each unit; each half of a surrogate pair becomes three bytes of its own.
[[nodiscard]] Bytes ufu_StringToUTF8(TextView s);
[[nodiscard]] Bytes ufu_CharToUTF8(char16_t unit);

// The file decoder. By lead byte: 0 to 193 is the unit of that value, 194 to 223 leads two bytes,
// 224 to 255 leads three. Continuation bytes are masked, not checked. A sequence that is cut short
// by the end yields nothing and ends the text.
[[nodiscard]] Text ufu_UTF8ToString(const Bytes& bytes);

// The same on plain memory: out has room for `count` units, and the number used comes back. `bytes`
// may be the second half of that very room, since writing never overtakes reading.
std::size_t decodeUTF8(const std::uint8_t* bytes, std::size_t count, char16_t* out);

// The second decoder. It differs from 224 on: 224 to 239 leads three bytes; 240 to 244 leads four,
// which give a surrogate pair (the unit itself for a value below 0x10000, U+FFFD for one above
// 0x10FFFF); 245 to 255 is the unit of that value.
[[nodiscard]] Text UTF8ToStringEx(const Bytes& bytes);

// The packed form: each byte of the UTF-8 form as one character of code page 1252.
[[nodiscard]] Text PackUTF8(TextView s);
[[nodiscard]] Text UnpackUTF8(TextView p);

// Whether a text can be stored as ufeAnsi: the system code page is 1252 and every unit is below
// 256. Always true on a platform of version code below 8.
[[nodiscard]] bool IsAnsiText(TextView s);
