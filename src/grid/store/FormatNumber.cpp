#include "grid/store/FormatNumber.h"

#include "platform/base/numbers.h"

#include <algorithm>

namespace {

constexpr std::size_t kMostZeros = 30;  // that can be put in front of a number

// Integer digits in groups of three from the right.
Text grouped(TextView digits, TextView separator) {
    Text s;
    s.reserve(digits.size() + digits.size() / 3 * separator.size());
    for (std::size_t k = 0; k < digits.size(); ++k) {
        if (k > 0 && (digits.size() - k) % 3 == 0) s += separator;
        s += digits[k];
    }
    return s;
}

}  // namespace

Text FormatNumber(TextView sNumber, const NumberFormat& format) {
    if (sNumber.empty()) return {};

    Text sDecSep = format.sDecSep;
    if (sDecSep.empty() && format.bAutoDecSep) sDecSep = platform::decimalSeparator();
    Text sValSep = format.sValSep;
    if (sValSep.empty() && format.bAutoValSep) sValSep = sDecSep == u"." ? u"," : u".";

    Text sign;
    Text whole;
    Text decimals;
    bool inDecimals = false;
    for (const char16_t unit : sNumber) {
        if (unit >= u'0' && unit <= u'9') {
            (inDecimals ? decimals : whole) += unit;
        } else if (unit == u'-' || unit == u'+') {
            sign = unit;
        } else if (sDecSep == TextView(&unit, 1)) {
            inDecimals = true;
        }
    }

    if (sValSep.empty()) {
        // A number that is longer than fixInt already gets no zeros.
        const std::size_t wanted = format.fixInt < 1 ? 0 : static_cast<std::size_t>(format.fixInt);
        if (wanted > whole.size()) {
            whole.insert(0, std::min(wanted - whole.size(), kMostZeros), u'0');
        }
    } else {
        whole = grouped(whole, sValSep);
    }
    if (sign.empty() && format.bSgn) sign = u'+';
    if (format.fixDec >= 0) decimals.resize(static_cast<std::size_t>(format.fixDec), u'0');

    Text text = sign + whole;
    if (!decimals.empty()) text += sDecSep + decimals;
    return text;
}
