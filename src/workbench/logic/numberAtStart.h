// workbench/logic/numberAtStart.h: the number that a typed or stored text begins with.
#pragma once
#include "platform/base/text.h"

// Blanks in front are skipped; then a sign, digits, a decimal point and more digits, as far as they
// go. Rounded to the nearest integer, halves to even, and held to 32 bits. 0 when there is none.
[[nodiscard]] std::int32_t numberAtStart(TextView s);
