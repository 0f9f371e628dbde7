// platform/base/paths.h: the boundary between the inside form of a path and the system's own names.
//
// Inside, directories are separated by backslashes: /home/me/a.lng is \home\me\a.lng, and a
// relative path stays relative. What the system allows in a name and the inside form gives a
// meaning of its own, or cannot hold, is escaped: the byte b becomes the private-use unit
// U+EF00 + b. Escaped are
//   - backslashes, double quotes (they frame names on a command line), * and ? (wildcards);
//   - bytes that are no UTF-8;
//   - the three bytes of each of the units U+EF00 to U+EFFF that a name really holds,
// and two slashes at the start, which would look like a server's share, are kept apart by the
// escape of a slash, as if they had a directory between them. So the way out gives back exactly the
// bytes that came in, a pattern never takes a name's own star for a wildcard, and a path is never
// silently another file.
#pragma once
#include "platform/base/text.h"

namespace platform {

[[nodiscard]] Text pathFromSystem(std::string_view systemPath);  // bytes as the system gives them

// The system's bytes for an inside path; the long-path prefix \\?\ is dropped. A lone surrogate
// becomes its own three bytes. Empty when no file of this system can have the path, so that every
// operation on it fails: the path is empty, holds a NUL or a slash, or names a server's share
// (two backslashes at the start).
[[nodiscard]] std::string pathToSystem(TextView path);

// What a person is shown: the system's own spelling as text, unusable bytes as U+FFFD. A path that
// no file of this system can have is shown as it is.
[[nodiscard]] Text pathForDisplay(TextView path);

}  // namespace platform
