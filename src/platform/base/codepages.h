// platform/base/codepages.h: conversions between code pages and text, by table.
#pragma once
#include "platform/base/text.h"

#include <optional>

namespace platform {

// The environment variable that names the page, in place of the user's language.
constexpr const char* kCodePageVariable = "QUILLMERE_CODE_PAGE";

// The system ANSI code page: the override if there is one (setAnsiCodePage, else kCodePageVariable
// when it holds the number of a known page), else the page that goes with the user's language (the
// first of LC_ALL, LC_CTYPE and LANG that is set), 1252 for any language without one.
[[nodiscard]] std::uint32_t GetACP();
// What kCodePageVariable holds, when that is neither nothing nor the number of a known page. GetACP
// passes over it, which would garble what is read and saved: a program refuses to go on.
[[nodiscard]] std::string unusableCodePageVariable();
// False, and nothing changes, for a page that codePageKnown does not know.
bool setAnsiCodePage(std::optional<std::uint32_t> page);
// Known are 874, 932, 936, 949, 950, 1250 to 1258 and the older 437, 737, 775, 850, 852, 855, 857,
// 858, 860 to 863, 865, 866 and 869. UTF-8 (65001) is none: no file without a mark is UTF-8.
[[nodiscard]] bool codePageKnown(std::uint32_t page);
// The known page whose number the text is, in decimal digits; nothing for any other text.
[[nodiscard]] std::optional<std::uint32_t> codePageNumbered(std::string_view digits);
// The page that goes with a locale name such as "ru_RU.UTF-8"; 1252 for "C" and everything unknown.
[[nodiscard]] std::uint32_t codePageOfLocale(std::string_view locale);

// Bytes to text and back. Nothing fails: a byte that the page lacks becomes U+FFFD, a unit that the
// page lacks '?'. Page 1252 maps its five undefined bytes to the control units of the same number
// and back. Double-byte pages (932, 936, 949, 950) join lead and trail bytes; a lead byte without a
// right trail byte, or a pair that the page lacks, becomes one U+FFFD. ASCII is ASCII in every
// page. An unknown page acts as 1252.
[[nodiscard]] Text bytesToText(const std::uint8_t* bytes, std::size_t count, std::uint32_t page);
[[nodiscard]] Bytes textToBytes(TextView s, std::uint32_t page);

// For a page of single bytes: the unit of each of the 256 bytes, the first 128 their own. Null for
// a double-byte page.
[[nodiscard]] const char16_t* singleByteTable(std::uint32_t page);

// out[i] = table[bytes[i]] for count bytes, with a table of singleByteTable; runs of ASCII are
// widened 16 at a time.
void widenBytes(const std::uint8_t* bytes, std::size_t count, const char16_t* table, char16_t* out);

}  // namespace platform
