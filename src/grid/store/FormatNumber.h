// grid/store/FormatNumber.h: the text of a number cell.
#pragma once
#include "platform/base/text.h"

struct NumberFormat {
    Text sDecSep = {};         // decimal separator
    Text sValSep = {};         // thousands separator; empty: none, unless it is derived
    std::int32_t fixInt = -1;  // integer digits to fill up to with zeros, without sValSep
    std::int32_t fixDec = -1;  // decimal digits to fill up or cut to, never rounded; -1: as it is
    bool bSgn = false;         // "+" in front of a number without a sign
    bool bAutoDecSep = true;   // an empty sDecSep means the user's locale's
    bool bAutoValSep = true;   // an empty sValSep means "," beside ".", "." beside any other
};

// The digits of sNumber in that format. Of sNumber count the digits, the last sign, and sDecSep
// when it is one unit; every other unit is left out, so a number written with another decimal
// separator becomes a whole number. An empty text gives an empty text. Raises nothing.
[[nodiscard]] Text FormatNumber(TextView sNumber, const NumberFormat& format = {});
