// gfx/modCtlCommon_src_helpers.h: words, keys, characters, cursors, and opening files.
#pragma once
#include "gfx/types.h"

// ---- Words

// The low and the high 16 bits. Where a message packs a signed number into them, the caller makes
// an std::int16_t of it.
[[nodiscard]] constexpr std::uint16_t LoWord(std::int32_t i) {
    return static_cast<std::uint16_t>(i);
}
[[nodiscard]] constexpr std::uint16_t HiWord(std::int32_t i) {
    return static_cast<std::uint16_t>(static_cast<std::uint32_t>(i) >> 16);
}
[[nodiscard]] constexpr std::uint16_t MakeWord(std::uint8_t iLo, std::uint8_t iHi) {
    return static_cast<std::uint16_t>(iLo | iHi << 8);
}
[[nodiscard]] constexpr std::int32_t MakeDWord(std::uint16_t iLo, std::uint16_t iHi) {
    return static_cast<std::int32_t>(iLo | static_cast<std::uint32_t>(iHi) << 16);
}

// ---- Keys, as they are at this moment

[[nodiscard]] bool IsKeyDown(std::int32_t iKey);  // a key code
[[nodiscard]] std::int32_t GetShiftState();       // the sum of 1 Shift, 2 Ctrl, 4 Alt

// ---- Characters

// The first unit of s as 0 to 65535; 0 when s is empty.
[[nodiscard]] constexpr std::int32_t AscWide(TextView s) { return s.empty() ? 0 : s.front(); }
// The text of one unit; of n only the low 16 bits count, so a negative 16-bit value is that value
// plus 65536.
[[nodiscard]] inline Text ChrWide(std::int32_t n) { return Text(1, static_cast<char16_t>(n)); }

// ---- The platform

// The platform's cursor id for the pointer codes 0 to 15 of controls; 0 for any other code.
[[nodiscard]] std::int32_t CursorResource(std::int32_t iPointer);

[[nodiscard]] bool IsNT5OrLater();

// What ShellOpen does with the file; any other number is "open".
enum ShellVerb : std::int32_t {
    svEdit = 0,
    svExplore = 1,
    svFind = 2,
    svPrint = 4,
    svProperties = 5,
    svRunAs = 6,
    svOpen = 7,
};
// The result of platform::ShellExecuteW: above 32 when the desktop took the file over.
std::intptr_t ShellOpen(HWND hWnd, TextView sFile, std::int32_t iVerb = svOpen,
                        TextView sParameters = {}, TextView sDirectory = {}, int iShow = 1);
