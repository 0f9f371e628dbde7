// workbench/logic/columns.h: the columns of the translator's list, and the colours of its last one.
#pragma once
#include <cstdint>

constexpr std::int32_t kRowColumn = 1;
constexpr std::int32_t kSectionColumn = 2;
constexpr std::int32_t kKeyColumn = 3;
constexpr std::int32_t kDefaultColumn = 4;
constexpr std::int32_t kTranslationColumn = 5;

// Red in the low byte.
constexpr std::int32_t kEmptyColor = 0x00FFFF;          // pure yellow
constexpr std::int32_t kSameAsDefaultColor = 0xDDFFFF;  // pale yellow
