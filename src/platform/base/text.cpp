#include "platform/base/text.h"

#include "platform/base/ascii.h"
#include "platform/base/utf8.h"

using namespace platform::internal;

void appendUtf8(TextView s, std::string& to) {
    std::size_t atMost = s.size();
    for (const char16_t unit : s) atMost += std::size_t{unit >= 0x80} + std::size_t{unit >= 0x800};

    const std::size_t start = to.size();
    to.resize(start + atMost);
    auto* const first = reinterpret_cast<std::uint8_t*>(to.data());
    std::uint8_t* out = first + start;
    for (std::size_t i = 0; i < s.size();) {
        const std::size_t run = narrowAscii(s.data() + i, s.size() - i, out);
        i += run;
        out += run;
        // One by one until ASCII comes in pairs: in a text of another script, blanks stand alone.
        for (; i < s.size(); ++i) {
            char32_t c = s[i];
            if (c < 0x80) {
                if (i + 1 < s.size() && s[i + 1] < 0x80) break;
                *out++ = static_cast<std::uint8_t>(c);
                continue;
            }
            if (isHighSurrogate(s[i]) && i + 1 < s.size() && isLowSurrogate(s[i + 1])) {
                c = joinSurrogates(s[i], s[i + 1]);
                ++i;
            } else if (isHighSurrogate(s[i]) || isLowSurrogate(s[i])) {
                c = 0xFFFD;
            }
            out = encodeUtf8(c, out);
        }
    }
    to.resize(static_cast<std::size_t>(out - first));
}

std::string toUtf8(TextView s) {
    std::string result;
    appendUtf8(s, result);
    return result;
}

Text fromUtf8(std::string_view s) {
    const auto* p = reinterpret_cast<const std::uint8_t*>(s.data());
    const std::uint8_t* const end = p + s.size();
    Text result(s.size(), u'\0');
    char16_t* out = result.data();
    while (p != end) {
        const std::size_t run = widenAscii(p, static_cast<std::size_t>(end - p), out);
        p += run;
        out += run;
        while (p != end) {  // one by one, as above
            if (*p < 0x80) {
                if (p + 1 != end && p[1] < 0x80) break;
                *out++ = *p++;
                continue;
            }
            char32_t c = 0;
            const std::size_t length = decodeUtf8(p, end, c);
            if (length == 0) {
                *out++ = 0xFFFD;
                ++p;
                continue;
            }
            p += length;
            if (c >= 0x10000) {
                *out++ = highSurrogate(c);
                *out++ = lowSurrogate(c);
            } else {
                *out++ = static_cast<char16_t>(c);
            }
        }
    }
    result.resize(static_cast<std::size_t>(out - result.data()));
    return result;
}
