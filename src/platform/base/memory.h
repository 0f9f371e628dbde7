// platform/base/memory.h: how the system gives out memory.
#pragma once
#include <cstddef>

namespace platform {

// Tells the system, before a large buffer is first touched, that all of it will be used: where it
// can, it then gives whole large pages (2 MiB) at once, which costs a fraction of the time of many
// small ones. Changes no contents; does nothing for small buffers and where there is no such thing.
void adviseLargePages(void* buffer, std::size_t bytes);

// Asks for the pages of a small buffer that is about to be written for the first time in one
// request, which costs about half of taking them one by one at their first touch. Changes no
// contents; does nothing where there is no such request.
void aboutToWrite(void* buffer, std::size_t bytes);

}  // namespace platform
