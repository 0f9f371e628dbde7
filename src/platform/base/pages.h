// platform/base/pages.h: a hint about fresh memory.
#pragma once
#include <cstddef>

namespace platform {

// Every byte from memory on is about to be written for the first time: its pages are asked for in
// one request, which costs about half of taking them one by one at their first touch. Contents stay
// as they are. Nothing happens where the system knows no such request.
void aboutToWrite(void* memory, std::size_t bytes);

}  // namespace platform
