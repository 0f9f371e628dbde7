#include "platform/base/paths.h"

#include "platform/base/internal.h"
#include "platform/base/utf8.h"

namespace platform {
namespace {

constexpr char16_t kEscape = 0xEF00;  // plus the byte
constexpr char16_t kBetweenSlashes = kEscape + u'/';
constexpr TextView kLongPathPrefix = u"\\\\?\\";

constexpr char16_t escaped(std::uint8_t byte) { return static_cast<char16_t>(kEscape + byte); }
constexpr bool inEscapeRange(char32_t c) { return (c & ~char32_t{0xFF}) == kEscape; }

// ASCII characters that a name of the system may hold and the inside form may not.
constexpr bool hasMeaningInside(char32_t c) {
    return c == U'\\' || c == U'"' || c == U'*' || c == U'?';
}

}  // namespace

namespace internal {

TextView withoutLongPathPrefix(TextView path) {
    if (path.starts_with(kLongPathPrefix)) path.remove_prefix(kLongPathPrefix.size());
    return path;
}

}  // namespace internal

Text pathFromSystem(std::string_view systemPath) {
    const auto* const first = reinterpret_cast<const std::uint8_t*>(systemPath.data());
    const std::uint8_t* const end = first + systemPath.size();
    Text result;
    result.reserve(systemPath.size());
    for (const std::uint8_t* p = first; p != end;) {
        char32_t c = 0;
        const std::size_t length = internal::decodeUtf8(p, end, c);
        if (length == 0 || hasMeaningInside(c)) {
            result += escaped(*p++);
            continue;
        }
        if (inEscapeRange(c)) {
            for (std::size_t i = 0; i < length; ++i) result += escaped(p[i]);
        } else if (c == U'/') {
            const bool secondOfTwo = p == first + 1 && *first == '/';
            if (secondOfTwo) result += kBetweenSlashes;
            result += u'\\';
        } else if (c >= 0x10000) {
            result += internal::highSurrogate(c);
            result += internal::lowSurrogate(c);
        } else {
            result += static_cast<char16_t>(c);
        }
        p += length;
    }
    return result;
}

std::string pathToSystem(TextView path) {
    path = internal::withoutLongPathPrefix(path);
    if (path.starts_with(u"\\\\")) return {};

    std::string result(path.size() * 3, '\0');  // a unit gives at most three bytes
    auto* const first = reinterpret_cast<std::uint8_t*>(result.data());
    std::uint8_t* out = first;
    for (std::size_t i = 0; i < path.size(); ++i) {
        const char16_t unit = path[i];
        if (unit == 0 || unit == u'/') return {};
        if (unit == u'\\') {
            *out++ = '/';
            continue;
        }
        if (inEscapeRange(unit)) {
            // Only what pathFromSystem escapes stands for a byte; any other unit is itself.
            const auto byte = static_cast<std::uint8_t>(unit & 0xFF);
            const bool alone = i + 1 == path.size() || path[i + 1] == u'\\';
            if (unit == kBetweenSlashes && i == 1 && path[0] == u'\\' && alone) continue;
            if (byte >= 0x80 || hasMeaningInside(byte)) {
                *out++ = byte;
                continue;
            }
        }
        char32_t c = unit;
        if (internal::isHighSurrogate(unit) && i + 1 < path.size() &&
            internal::isLowSurrogate(path[i + 1])) {
            c = internal::joinSurrogates(unit, path[++i]);
        }
        out = internal::encodeUtf8(c, out);
    }
    result.resize(static_cast<std::size_t>(out - first));
    return result;
}

Text pathForDisplay(TextView path) {
    const std::string systemPath = pathToSystem(path);
    return systemPath.empty() ? Text(path) : fromUtf8(systemPath);
}

}  // namespace platform
