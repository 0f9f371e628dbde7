#include "cli/commands.h"
#include "workbench/logic/comparePair.h"
#include "workbench/logic/loadPair.h"

#include <cstdio>

namespace cli {
namespace {

struct Counts : PairSink {
    void row(const PairRow& row) override { ++ofState[static_cast<std::size_t>(row.state)]; }

    [[nodiscard]] std::uint64_t of(RowState state) const {
        return ofState[static_cast<std::size_t>(state)];
    }
    [[nodiscard]] std::uint64_t rows() const { return ofState[0] + ofState[1] + ofState[2]; }

    std::array<std::uint64_t, 3> ofState{};
};

void printTable(const Counts& counts, Output& out) {
    const auto line = [&](const char* name, std::uint64_t count) {
        std::array<char, 80> room;
        std::snprintf(room.data(), room.size(), "%-17s%10llu", name,
                      static_cast<unsigned long long>(count));
        out.bytes(room.data());
        if (counts.rows() > 0) {
            // Cut, not rounded: 100.0 % means all.
            const std::uint64_t tenths = count * 1000 / counts.rows();
            std::snprintf(room.data(), room.size(), "  %3llu.%llu %%",
                          static_cast<unsigned long long>(tenths / 10),
                          static_cast<unsigned long long>(tenths % 10));
            out.bytes(room.data());
        }
        out.bytes("\n");
    };
    line("translated", counts.of(RowState::Translated));
    line("same as default", counts.of(RowState::SameAsDefault));
    line("empty", counts.of(RowState::Empty));
    line("rows", counts.rows());
}

void printJson(const Counts& counts, Output& out) {
    out.bytes("{\"rows\":" + std::to_string(counts.rows()) +
              ",\"translated\":" + std::to_string(counts.of(RowState::Translated)) +
              ",\"same\":" + std::to_string(counts.of(RowState::SameAsDefault)) +
              ",\"empty\":" + std::to_string(counts.of(RowState::Empty)) + "}\n");
}

}  // namespace

ExitCode status(const StatusOptions& options, Output& out) {
    const auto& [sMainFile, sTransFile] = options.pair;
    requireTwoFiles(sMainFile, sTransFile);
    Counts counts;
    ProgressBar bar;
    pvComparePair(sMainFile, sTransFile, false, counts, bar);
    (options.json ? printJson : printTable)(counts, out);
    const std::uint64_t translated = counts.of(RowState::Translated);
    const bool tooFew = options.failUnder && options.failUnder->isAbove(translated, counts.rows());
    return tooFew ? kCheckFailed : kDone;
}

}  // namespace cli
