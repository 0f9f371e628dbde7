// platform/base/json.h: text on its way out, as UTF-8, plain or as the strings of JSON.
#pragma once
#include "platform/base/text.h"

#include <span>

namespace platform {

// Room that always lets these two get on, in bytes.
constexpr std::size_t kRoomForUnits = 64;

// Both encode units from the front of s for as long as the room is sure to hold the next ones, and
// take them off s. They return the count of bytes. A surrogate pair becomes four bytes. A lone
// surrogate becomes U+FFFD, in JSON an escape, \ud800 to \udfff; there quotes, backslashes and
// control units are escaped, too.
[[nodiscard]] std::size_t putUtf8Units(TextView& s, std::span<char> room);
[[nodiscard]] std::size_t putJsonUnits(TextView& s, std::span<char> room);

// The whole text as a string of JSON, in double quotes.
void appendJson(TextView s, std::string& to);

}  // namespace platform
