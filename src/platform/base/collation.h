// platform/base/collation.h: the order of texts for a person.
#pragma once
#include "platform/base/text.h"

namespace platform {

// Negative, 0 or positive: a before, equal to or after b by the user's locale, case ignored.
[[nodiscard]] int compareText(TextView a, TextView b);

// Sort keys: compareText(a, b) and the order of sortKey(a), sortKey(b) by bytes agree. Appends the
// key of s to `to`, for sorts that compare each text many times.
void appendSortKey(TextView s, Bytes& to);

}  // namespace platform
