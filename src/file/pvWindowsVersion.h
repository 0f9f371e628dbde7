// file/pvWindowsVersion.h: the code of the platform's version.
#pragma once
#include <cstdint>

// Asked once and kept for the rest of the run:
//    0 unknown       3, 4, 5  the 9x family by minor version: 0, 10, above 10
//    1 Win32s        6, 7     NT 3, NT 4
//    2 Windows CE    8, 9, 10 NT 5.0, 5.1, 5.2       11 NT above 5
// From 7 on there are long paths and MoveFileExW, from 8 on Unicode throughout.
[[nodiscard]] std::int32_t pvWindowsVersion();

// Forgets the kept code, so that the next call asks again. For tests.
void forgetWindowsVersion();
