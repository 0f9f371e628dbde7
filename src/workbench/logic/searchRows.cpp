#include "workbench/logic/searchRows.h"

#include "langfile/foldedText.h"
#include "platform/base/casemap.h"
#include "platform/base/numbers.h"
#include "workbench/logic/columns.h"

#include <algorithm>

namespace {

std::int32_t firstBelow(const GridData& fxGrid) { return std::max(fxGrid.Row(), 0) + 1; }

// Whether the lower-cased text holds the other one, which is lower case already. Nothing is built:
// the lists are long, and most cells end at their first units.
bool holdsFolded(TextView s, TextView sLower) {
    if (s.size() < sLower.size()) return false;
    const std::size_t last = s.size() - sLower.size();
    for (std::size_t i = 0; i <= last; ++i) {
        std::size_t n = 0;
        while (n < sLower.size() && platform::lowerUnit(s[i + n]) == sLower[n]) ++n;
        if (n == sLower.size()) return true;
    }
    return false;
}

}  // namespace

std::int32_t nextUntranslated(const GridData& fxGrid) {
    for (std::int32_t i = firstBelow(fxGrid); i <= fxGrid.Rows(); ++i) {
        if (trimBlanks(fxGrid.CellText(i, kTranslationColumn)).empty()) return i;
    }
    return -1;
}

std::int32_t nextWithText(const GridData& fxGrid, FindMode mode, TextView s) {
    if (trimBlanks(s).empty()) return -1;
    const std::int32_t column = mode == kFindTranslation ? kTranslationColumn : kDefaultColumn;
    const Text sLower = platform::lowerCase(s);
    for (std::int32_t i = firstBelow(fxGrid); i <= fxGrid.Rows(); ++i) {
        if (holdsFolded(fxGrid.CellText(i, column), sLower)) return i;
    }
    return -1;
}

std::int32_t rowOfNumber(const GridData& fxGrid, TextView sEntered) {
    if (trimBlanks(sEntered).empty()) return -1;
    const std::int32_t target = platform::leadingNumber(sEntered);
    for (std::int32_t i = 1; i <= fxGrid.Rows(); ++i) {
        if (platform::leadingNumber(fxGrid.CellText(i, kRowColumn)) == target) return i;
    }
    return -1;
}
