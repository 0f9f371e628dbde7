// workbench/logic/searchRows.h: where the searches of the workbench lead. They go from the row
// below the current one to the end of the list and never start again at the top.
//
// Each returns the row, or -1 when there is none. Nothing moves: the caller sets the row.
#pragma once
#include "grid/store/GridData.h"

// Which texts a search looks at.
enum FindMode : std::int32_t { kFindDefault = 0, kFindTranslation = 1 };

// The next row whose translation is empty or of blanks.
[[nodiscard]] std::int32_t nextUntranslated(const GridData& fxGrid);
// The next row that holds the text, case aside. Not trimmed; a text of blanks finds nothing.
[[nodiscard]] std::int32_t nextWithText(const GridData& fxGrid, FindMode mode, TextView s);
// The first row, from the top, whose Row cell is the number at the start of the text.
[[nodiscard]] std::int32_t rowOfNumber(const GridData& fxGrid, TextView sEntered);
