// workbench/logic/findRows.h: rows of the list by section and key.
#pragma once
#include "grid/store/GridData.h"

struct RowName {
    TextView section;  // empty, or of blanks and tabs alone: the keys before any section
    TextView key;
};

// For each name the first row whose Section and Key cells match it, or -1. Case and blanks and tabs
// at the ends do not count. One walk over the list for all names.
[[nodiscard]] std::vector<std::int32_t> findRows(const GridData& fxGrid,
                                                 std::span<const RowName> names);
