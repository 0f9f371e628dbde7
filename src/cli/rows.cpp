#include "cli/commands.h"
#include "langfile/scanText.h"
#include "workbench/logic/comparePair.h"
#include "workbench/logic/editRow.h"
#include "workbench/logic/loadPair.h"

namespace cli {
namespace {

std::string_view nameOf(RowState state) {
    switch (state) {
    case RowState::Empty:
        return "empty";
    case RowState::SameAsDefault:
        return "same";
    case RowState::Translated:
        return "translated";
    }
    return {};
}

// The cells joined by tabs: no cell holds one. Where a file's lines end in CR LF, a cell can hold a
// lone CR or LF; it shows as a blank, so that a row is a line.
class PlainRows : public PairSink {
public:
    explicit PlainRows(Output& out) : m_out(out) {}
    void row(const PairRow& row) override {
        const RowCells cells(row);
        std::string_view before;
        for (const TextView cell : cells.cells()) {
            m_out.bytes(before);
            if (mayHold(cell, '\n') || mayHold(cell, '\r')) {
                m_out.plain(onOneLine(cell));
            } else {
                m_out.plain(cell);
            }
            before = "\t";
        }
        m_out.bytes("\n");
    }

private:
    Output& m_out;
};

class JsonRows : public PairSink {
public:
    explicit JsonRows(Output& out) : m_out(out) {}
    void row(const PairRow& row) override {
        static constexpr std::string_view kBefore[] = {
            "{\"row\":", ",\"section\":", ",\"key\":", ",\"default\":", ",\"translation\":"};
        const RowCells cells(row);
        for (std::size_t i = 0; i < cells.cells().size(); ++i) {
            m_out.bytes(kBefore[i]);
            m_out.json(cells.cells()[i]);
        }
        m_out.bytes(",\"state\":\"");
        m_out.bytes(nameOf(row.state));
        m_out.bytes("\"}\n");
    }

private:
    Output& m_out;
};

}  // namespace

ExitCode rows(const RowsOptions& options, Output& out) {
    const auto& [sMainFile, sTransFile] = options.pair;
    requireTwoFiles(sMainFile, sTransFile);
    PlainRows plain(out);
    JsonRows json(out);
    PairSink& sink = options.json ? static_cast<PairSink&>(json) : plain;
    // On a terminal or in a pager a bar would come between the rows, which show progress enough.
    ProgressBar bar;
    JobListener silent;
    JobListener& listener = out.toFile() ? static_cast<JobListener&>(bar) : silent;
    pvComparePair(sMainFile, sTransFile, options.untranslated, sink, listener);
    return kDone;
}

}  // namespace cli
