// workbench/logic/hashText.h: hash of a text as it stands, case and all.
#pragma once
#include "platform/base/text.h"

// Seeded for each process, so that no file can hold texts that all meet in one place of a table.
[[nodiscard]] std::uint64_t hashText(TextView s);

// Hash of the length and the four units at either end: quick, for a first guess. Many texts may
// have the same.
[[nodiscard]] std::uint64_t hashEnds(TextView s);
