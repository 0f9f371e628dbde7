// menu/clsBase64.h: text of any characters as base-64 text of ASCII, and back.
#pragma once
#include "platform/base/text.h"

class clsBase64 {
public:
    // The standard alphabet over the units of s, with bUnicode as their two bytes, the low one
    // first; else as one byte each, their low one. Ends with "=" where needed.
    [[nodiscard]] static Text GetEncodedB64String(TextView s, bool bUnicode);
    // CR, LF, blanks and tabs inside are passed over; "=" and any unit outside of the alphabet end
    // it. What is left of a byte or unit that is cut short is dropped.
    [[nodiscard]] static Text GetDecodedB64String(TextView s, bool bUnicode);
};
