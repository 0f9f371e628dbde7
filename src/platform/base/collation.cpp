#include "platform/base/collation.h"

#include "platform/base/internal.h"

#include <memory>
#include <stdexcept>
#include <unicode/ucol.h>
#include <unicode/uloc.h>

namespace platform {
namespace {

using Collator = std::unique_ptr<UCollator, decltype(&ucol_close)>;

Collator openCollator(const char* locale) {
    UErrorCode status = U_ZERO_ERROR;
    Collator collator(ucol_open(locale, &status), &ucol_close);
    if (U_SUCCESS(status)) ucol_setStrength(collator.get(), UCOL_SECONDARY);
    return collator;
}

// A name that ICU cannot read stands for no language.
Collator openUsersCollator() {
    Collator collator = openCollator(internal::icuLocale("LC_COLLATE").c_str());
    if (collator == nullptr) collator = openCollator("root");
    if (collator == nullptr) throw std::runtime_error("ICU has no collation data");
    return collator;
}

Collator& slot() {
    static Collator collator(nullptr, &ucol_close);
    return collator;
}

const UCollator* collator() {
    if (slot() == nullptr) slot() = openUsersCollator();
    return slot().get();
}

}  // namespace

std::string internal::icuLocale(const char* category) {
    const std::string locale = userLocale(category);
    // The locale of programs stands for no language.
    if (locale == "C" || locale == "POSIX" || locale.starts_with("C.")) return "root";
    char name[ULOC_FULLNAME_CAPACITY];
    UErrorCode status = U_ZERO_ERROR;
    const std::int32_t length = uloc_canonicalize(locale.c_str(), name, sizeof name, &status);
    return U_SUCCESS(status) ? std::string(name, static_cast<std::size_t>(length)) : "root";
}

void internal::forgetCollator() { slot().reset(); }

int compareText(TextView a, TextView b) {
    return ucol_strcoll(collator(), a.data(), static_cast<std::int32_t>(a.size()), b.data(),
                        static_cast<std::int32_t>(b.size()));
}

void appendSortKey(TextView s, Bytes& to) {
    const auto length = static_cast<std::int32_t>(s.size());
    const std::size_t start = to.size();
    to.resize(start + s.size() * 3 + 8);  // enough for most texts
    const auto room = static_cast<std::int32_t>(to.size() - start);
    const std::int32_t needed =
        ucol_getSortKey(collator(), s.data(), length, to.data() + start, room);
    to.resize(start + static_cast<std::size_t>(needed));
    if (needed > room) ucol_getSortKey(collator(), s.data(), length, to.data() + start, needed);
}

}  // namespace platform
