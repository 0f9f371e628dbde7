#include "platform/base/casemap.h"

#include <algorithm>
#include <array>
#include <memory>
#include <unicode/uchar.h>

namespace platform {

const char16_t* internal::lowerCasePages[256];

const char16_t* internal::loadLowerCasePage(unsigned page) {
    static std::array<std::unique_ptr<char16_t[]>, 256> owned;
    auto units = std::make_unique_for_overwrite<char16_t[]>(256);
    for (unsigned i = 0; i < 256; ++i) {
        units[i] = static_cast<char16_t>(u_tolower(static_cast<UChar32>(page << 8 | i)));
    }
    owned[page] = std::move(units);
    return lowerCasePages[page] = owned[page].get();
}

void appendLowerCase(TextView s, Text& to) {
    const std::size_t start = to.size();
    to.append(s);
    std::transform(to.begin() + static_cast<std::ptrdiff_t>(start), to.end(),
                   to.begin() + static_cast<std::ptrdiff_t>(start), lowerUnit);
}

Text lowerCase(TextView s) {
    Text result;
    appendLowerCase(s, result);
    return result;
}

}  // namespace platform
