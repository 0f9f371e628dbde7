// menu/captions.h: what the caption of a menu item says.
//
// A caption is, from left to right: an optional "[SEP]", letter case aside, which makes it a text
// separator; the text; an optional "|" and an image number, the last "|" counts; an optional tab
// and the name of a key, the last tab counts. Nothing here fails or raises.
#pragma once
#include "platform/base/text.h"

[[nodiscard]] bool isTextSeparator(TextView sCaption);

[[nodiscard]] TextView pvCaptionWithoutShortcut(TextView sCaption);
// The text to show: without prefix, image number and key.
[[nodiscard]] TextView pvCleanCaption(TextView sCaption);
// -1 without one; 0 for one that is no number.
[[nodiscard]] std::int32_t pvImageIndex(TextView sCaption);
[[nodiscard]] TextView pvShortcutText(TextView sCaption);

// How the text of captions is encoded. Any other value is as smPlain.
enum StringModes : std::int32_t {
    smPlain = 0,
    smPackedUTF8 = 1,  // each byte of the UTF-8 form is a character of code page 1252
    smEncoded = 2,     // the encoded form, see below; text that is not in it stays as it is
};
[[nodiscard]] Text pvDecodedCaption(TextView sText, std::int32_t lStringMode);

// The encoded form keeps any text in plain ASCII: "0X", the base-64 text of its UTF-16 units, and
// two hexadecimal digits to check that by.
[[nodiscard]] bool isEncodedText(TextView s);
[[nodiscard]] Text encodedText(TextView s);
