#include "workbench/logic/comparePair.h"

#include "langfile/clsFileIniEx.h"
#include "langfile/foldedText.h"
#include "langfile/scanText.h"

#include <algorithm>

namespace {

// The decimal digits of a number above 0, at the end of `room`.
TextView decimal(std::int32_t number, std::array<char16_t, 10>& room) {
    std::size_t first = room.size();
    for (; number > 0; number /= 10) room[--first] = static_cast<char16_t>(u'0' + number % 10);
    return TextView(room.data(), room.size()).substr(first);
}

RowState stateOf(TextView sDefault, TextView sTranslation) {
    // Lower case neither makes nor takes away a blank, so the texts can be trimmed first.
    const TextView trimmed = trimBlanks(sTranslation);
    if (trimmed.empty()) return RowState::Empty;
    return equalFolded(trimBlanks(sDefault), trimmed) ? RowState::SameAsDefault
                                                      : RowState::Translated;
}

// What `ask` gives; a failure of it is one of that document's file.
template <class Ask> auto asked(const clsFileIniEx& document, Ask ask) {
    try {
        return ask();
    } catch (const Failure& failure) {
        throw FileFailure(failure, document.IniFile());
    }
}

}  // namespace

Text PairRow::rowText() const {
    std::array<char16_t, 10> room;
    Text text;
    text.reserve(room.size() + section.size() + key.size() + defaultText.size() +
                 translation.size() + 4);
    text += decimal(number, room);
    for (const TextView value : {section, key, defaultText, translation}) {
        text += u'\t';
        text += value;
    }
    return text;
}

RowCells::RowCells(const PairRow& row)
    : m_cells{decimal(row.number, m_number), row.section, row.key, row.defaultText,
              row.translation} {
    const auto mayHoldTab = [](TextView cell) { return mayHold(cell, '\t'); };
    if (std::any_of(m_cells.begin() + 1, m_cells.end(), mayHoldTab)) splitAtTabs();
}

void RowCells::splitAtTabs() {
    const std::array<TextView, 5> values = m_cells;
    std::size_t cell = 0;
    for (TextView value : values) {
        for (bool more = true; more;) {
            if (cell == m_cells.size()) return;
            const std::size_t tab = value.find(u'\t');
            m_cells[cell++] = value.substr(0, tab);
            more = tab != TextView::npos;
            if (more) value.remove_prefix(tab + 1);
        }
    }
}

PairFiles pvComparePair(TextView sMainFile, TextView sTransFile, bool bOnlyUntranslated,
                        PairSink& sink, JobListener& listener) {
    clsFileIniEx oMain;
    clsFileIniEx oTrans;
    (void)oMain.Load(sMainFile);    // a failed load shows when the section names are asked for
    (void)oTrans.Load(sTransFile);  // and here with the first key
    sink.filesRead(oMain.fileText(), oTrans.fileText());

    std::vector<TextView> sections;
    std::vector<TextView> rows;
    asked(oMain, [&] { oMain.GetSectionNames(sections); });
    clsFileIniEx::InOrder translations(oTrans);
    PairRow row;
    for (std::size_t i = 0; i < sections.size(); ++i) {
        oMain.GetSectionRows(sections[i], rows);
        listener.pvSetProgress(
            percentOf(static_cast<std::int64_t>(i), static_cast<std::int64_t>(sections.size())));
        row.section = sections[i];
        translations.section(sections[i]);
        for (std::size_t j = 0; j < rows.size(); ++j) {
            row.key = oMain.GetSectionRowKey(rows, j);
            if (trimBlanks(row.key).empty()) continue;
            row.defaultText = oMain.GetSectionRowValue(rows, j);
            row.translation = asked(oTrans, [&] { return translations.GetString(row.key); });
            row.state = stateOf(row.defaultText, row.translation);
            ++row.number;
            if (!bOnlyUntranslated || row.state != RowState::Translated) sink.row(row);
        }
    }
    return {oMain.IniFile(), oTrans.IniFile()};
}
