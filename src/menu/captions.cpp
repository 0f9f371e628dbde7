#include "menu/captions.h"

#include "file/encodings.h"
#include "menu/clsBase64.h"
#include "platform/base/casemap.h"
#include "platform/base/numbers.h"

namespace {

constexpr TextView kSeparatorPrefix = u"[sep]";
constexpr TextView kEncodedPrefix = u"0X";
constexpr std::size_t kCheckLength = 2;

TextView upToLast(TextView s, char16_t unit) { return s.substr(0, s.rfind(unit)); }

// All bytes of the text as UTF-16, one over the other by XOR, as two upper-case digits.
Text checkOf(TextView s) {
    unsigned check = 0;
    for (const char16_t unit : s) check ^= (unit & 0xFFU) ^ static_cast<unsigned>(unit >> 8);
    constexpr TextView kDigits = u"0123456789ABCDEF";
    return {kDigits[check >> 4], kDigits[check & 15]};
}

TextView middleOf(TextView encoded) {
    encoded.remove_prefix(kEncodedPrefix.size());
    encoded.remove_suffix(kCheckLength);
    return encoded;
}

}  // namespace

bool isTextSeparator(TextView sCaption) {
    return platform::lowerCase(sCaption.substr(0, kSeparatorPrefix.size())) == kSeparatorPrefix;
}

TextView pvCaptionWithoutShortcut(TextView sCaption) { return upToLast(sCaption, u'\t'); }

TextView pvCleanCaption(TextView sCaption) {
    if (isTextSeparator(sCaption)) sCaption.remove_prefix(kSeparatorPrefix.size());
    return upToLast(upToLast(sCaption, u'\t'), u'|');
}

std::int32_t pvImageIndex(TextView sCaption) {
    const TextView text = pvCaptionWithoutShortcut(sCaption);
    const std::size_t bar = text.rfind(u'|');
    return bar == TextView::npos ? -1 : platform::leadingNumber(text.substr(bar + 1));
}

TextView pvShortcutText(TextView sCaption) {
    const std::size_t tab = sCaption.rfind(u'\t');
    return tab == TextView::npos ? TextView() : sCaption.substr(tab + 1);
}

Text pvDecodedCaption(TextView sText, std::int32_t lStringMode) {
    if (lStringMode == smPackedUTF8) return UnpackUTF8(sText);
    if (lStringMode == smEncoded && isEncodedText(sText)) {
        return clsBase64::GetDecodedB64String(middleOf(sText), true);
    }
    return Text(sText);
}

bool isEncodedText(TextView s) {
    return s.size() >= kEncodedPrefix.size() + kCheckLength && s.starts_with(kEncodedPrefix) &&
           s.ends_with(checkOf(middleOf(s)));
}

Text encodedText(TextView s) {
    const Text middle = clsBase64::GetEncodedB64String(s, true);
    return Text(kEncodedPrefix) + middle + checkOf(middle);
}
