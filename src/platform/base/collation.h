// platform/base/collation.h: the order of texts for a person. Both operations raise
// std::runtime_error when ICU was installed without its data, and nothing else.
#pragma once
#include "platform/base/text.h"

namespace platform {

// Negative, 0 or positive: a before, equal to or after b by the user's locale (the first of LC_ALL,
// LC_COLLATE and LANG that is set), case ignored. Control characters count for nothing.
[[nodiscard]] int compareText(TextView a, TextView b);

// Sort keys: compareText(a, b) and the order of sortKey(a), sortKey(b) by bytes agree. Appends the
// key of s to `to`, for sorts that compare each text many times. A key ends in a zero byte, its
// only one.
void appendSortKey(TextView s, Bytes& to);

}  // namespace platform
