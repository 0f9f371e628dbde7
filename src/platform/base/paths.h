// platform/base/paths.h: the boundary between the inside form of a path and the system's own names.
//
// Inside, directories are separated by backslashes: /home/me/a.lng is \home\me\a.lng. Names that
// hold a backslash, and bytes that are no UTF-8, are escaped into private-use units, so that the
// way out gives back exactly the bytes that came in: a path is never silently another file.
#pragma once
#include "platform/base/text.h"

namespace platform {

[[nodiscard]] Text pathFromSystem(std::string_view systemPath);  // bytes as the system gives them
// The system's bytes for an inside path; the long-path prefix is dropped.
[[nodiscard]] std::string pathToSystem(TextView path);
// What a person is shown: the system's own spelling as text, unusable bytes as U+FFFD.
[[nodiscard]] Text pathForDisplay(TextView path);

}  // namespace platform
