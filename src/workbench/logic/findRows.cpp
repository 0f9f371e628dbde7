#include "workbench/logic/findRows.h"

#include "langfile/KeyTable.h"
#include "langfile/foldedText.h"
#include "workbench/logic/columns.h"

namespace {

RowName trimmed(const RowName& name) {
    return {trimBlanksAndTabs(name.section), trimBlanksAndTabs(name.key)};
}

bool sameName(const RowName& a, const RowName& b) {
    return equalFolded(a.key, b.key) && equalFolded(a.section, b.section);
}

std::uint64_t hashName(std::uint64_t sectionHash, TextView key) {
    return hashInSection(sectionHash, upperHalf(hashFolded(key)));
}

}  // namespace

std::vector<std::int32_t> findRows(const GridData& fxGrid, std::span<const RowName> names) {
    // The table holds the names, so that it stays small beside a long list.
    KeyTable table;
    table.reserve(names.size());
    std::vector<std::uint32_t> firstOfName(names.size());  // names that mean the same row
    const auto isName = [&](const RowName& name) {
        return [&names, name](std::uint32_t n) { return sameName(trimmed(names[n]), name); };
    };
    for (std::uint32_t n = 0; n < names.size(); ++n) {
        const RowName name = trimmed(names[n]);
        const std::uint32_t there =
            table.insert(hashName(hashFolded(name.section), name.key), n, isName(name));
        firstOfName[n] = there == KeyTable::kNone ? n : there;
    }

    std::vector<std::int32_t> found(names.size(), -1);
    TextView section;
    std::uint64_t sectionHash = hashFolded(section);
    for (std::int32_t i = 1; i <= fxGrid.Rows(); ++i) {
        if (const TextView cell = fxGrid.CellText(i, kSectionColumn); cell != section) {
            section = cell;
            sectionHash = hashFolded(trimBlanksAndTabs(section));
        }
        const RowName name = trimmed({section, fxGrid.CellText(i, kKeyColumn)});
        const std::uint32_t n = table.find(hashName(sectionHash, name.key), isName(name));
        if (n != KeyTable::kNone && found[n] < 0) found[n] = i;
    }
    for (std::size_t n = 0; n < names.size(); ++n) found[n] = found[firstOfName[n]];
    return found;
}
