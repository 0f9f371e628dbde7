// platform/window/drops_internal.h: what the sources of this folder share about dropped data.
// Nothing above the folder includes this.
#pragma once
#include "platform/window/messages.h"

#include <vector>

class QMimeData;

namespace platform {

// The files in it, byte for byte: the list of addresses keeps bytes that are no text.
[[nodiscard]] std::vector<Text> filesOf(const QMimeData& data);
// MK_... of what is down; both arguments as numbers of the library.
[[nodiscard]] WPARAM buttonsDown(int qtButtons, int qtModifiers);

}  // namespace platform
