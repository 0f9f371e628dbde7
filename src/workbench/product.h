// workbench/product.h: what the program says of itself.
#pragma once
#include "platform/base/text.h"

constexpr TextView kProductName = u"Quillmere";

[[nodiscard]] Text productVersion();  // "0.1.0"
[[nodiscard]] Text siteAddress();
// The address of the build, or the page that is installed with the program, or, for a program that
// was not installed, the one of its source tree; in the inside form when it is a file. Empty when
// there is none.
[[nodiscard]] Text helpPage();
