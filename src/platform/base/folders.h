// platform/base/folders.h: where programs of a user keep what is theirs.
#pragma once
#include "platform/base/text.h"

#include <initializer_list>

namespace platform {

// The folder for what a program of that name leaves behind for later, such as work that could not
// be saved: $XDG_STATE_HOME/NAME, by default ~/.local/state/NAME. In the inside form, without a
// final backslash; it need not be there yet. Empty when the user has no home.
[[nodiscard]] Text userStateFolder(std::string_view name);

// The time of the user's clock as YYYYMMDD-HHMMSS, for names of files.
[[nodiscard]] Text timeForFileName();

// The first of the programs that can be started by its name alone, as a path in the inside form;
// empty when none can.
[[nodiscard]] Text findProgram(std::initializer_list<std::string_view> names);

}  // namespace platform
