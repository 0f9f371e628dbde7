// platform/base/text.h: the two kinds of string in this program, and the way between text and
// UTF-8.
#pragma once
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

// Text in memory: UTF-16 units, without any awareness of surrogate pairs. Bytes carry encoded text.
using Text = std::u16string;
using TextView = std::u16string_view;
using Bytes = std::vector<std::uint8_t>;

// The same as ==, which compares unit by unit.
[[nodiscard]] inline bool sameUnits(TextView a, TextView b) {
    return a.size() == b.size() &&
           (a.empty() || std::memcmp(a.data(), b.data(), a.size() * sizeof(char16_t)) == 0);
}

// UTF-8 for messages and results. Surrogate pairs become four bytes, a lone surrogate becomes
// U+FFFD.
[[nodiscard]] std::string toUtf8(TextView s);
void appendUtf8(TextView s, std::string& to);

// Text from UTF-8. Malformed bytes become U+FFFD, one for each byte that cannot be used.
[[nodiscard]] Text fromUtf8(std::string_view s);
