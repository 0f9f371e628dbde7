// workbench/logic/comparePair.h: two language files in, the rows of the translator's list out.
#pragma once
#include "workbench/logic/job.h"

#include <array>
#include <memory>

enum class RowState : std::uint8_t {
    Empty,          // no translation, or only blanks
    SameAsDefault,  // case and blanks at the ends do not count
    Translated,
};

// One row of the list. The views hold until the call that was given the row returns.
struct PairRow {
    std::int32_t number = 0;  // counts the keys of the main file from 1
    TextView section;         // as the main file spells it; empty before the first section
    TextView key;
    TextView defaultText;
    TextView translation;
    RowState state = RowState::Empty;

    [[nodiscard]] Text rowText() const;  // the five values joined by tabs
};

// The cells that the row text gives when it is split at its tabs, what falls beyond the fifth left
// out. Holds views: the row's texts must live longer. Nothing is built but the running number.
class RowCells {
public:
    explicit RowCells(const PairRow& row);
    RowCells(const RowCells&) = delete;
    RowCells& operator=(const RowCells&) = delete;

    [[nodiscard]] const std::array<TextView, 5>& cells() const { return m_cells; }

private:
    void splitAtTabs();

    std::array<char16_t, 10> m_number;
    std::array<TextView, 5> m_cells;
};

// Takes the rows of a comparison, in order.
class PairSink {
public:
    virtual ~PairSink() = default;
    // Once, between the reading of the files and the first row. The texts of rows lie in those of
    // the two files (null for one that could not be read), but for section names.
    virtual void filesRead([[maybe_unused]] const std::shared_ptr<const Text>& mainText,
                           [[maybe_unused]] const std::shared_ptr<const Text>& transText) {}
    virtual void row(const PairRow& row) = 0;
};

// The paths of the two documents, as they remember them.
struct PairFiles {
    Text sMainFile;
    Text sTransFile;
};

// One row for each key of the main file; with bOnlyUntranslated those alone that are empty or the
// same as the default, with the numbers they have in the whole list. Reports progress once a
// section. Raises FileFailure "Please load the file first!" when the main file cannot be read, or
// when the translated file cannot and the main file has a key; no row has come then.
PairFiles pvComparePair(TextView sMainFile, TextView sTransFile, bool bOnlyUntranslated,
                        PairSink& sink, JobListener& listener);
