// grid/store/pvGetCellText.h: what a cell shows as text.
#pragma once
#include "grid/store/clsCtlUniGrid_Column.h"

// Of a text column the value as text, of a number column its number in the column's format (see
// FormatNumber.h), of any other nothing. Raises nothing.
[[nodiscard]] Text pvGetCellText(const GridValue& vValue, const clsCtlUniGrid_Column& oCol);
