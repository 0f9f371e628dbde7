#include "cli/commands.h"
#include "cli/edits.h"
#include "platform/base/paths.h"
#include "workbench/logic/editRow.h"
#include "workbench/logic/findRows.h"
#include "workbench/logic/loadPair.h"
#include "workbench/logic/saveTranslation.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace cli {
namespace {

constexpr std::string_view kStandardInput = "-";

// For messages.
Text nameOf(const std::string& edits) {
    return edits == kStandardInput ? u"standard input" : platform::pathFromSystem(edits);
}

std::string readAll(const std::string& edits) {
    const bool fromInput = edits == kStandardInput;
    const int file = fromInput ? STDIN_FILENO : ::open(edits.c_str(), O_RDONLY | O_CLOEXEC);
    std::string bytes;
    ssize_t got = file;
    while (got >= 0) {
        std::array<char, 64 * 1024> chunk;
        got = ::read(file, chunk.data(), chunk.size());
        if (got > 0) bytes.append(chunk.data(), static_cast<std::size_t>(got));
        if (got == 0) break;
        if (got < 0 && errno == EINTR) got = 0;
    }
    if (!fromInput && file >= 0) ::close(file);
    if (got < 0) throw FileFailure(Failure(kOwnError, u"", u"Error reading file"), nameOf(edits));
    return bytes;
}

Text atLine(std::size_t line, TextView message) {
    return u"line " + fromUtf8(std::to_string(line)) + u": " + Text(message);
}

// The row that each edit means. Raises Stop about the first line that is no edit or means none.
std::vector<std::int32_t> rowsOf(const Edits& edits, const GridData& fxGrid, const Text& file) {
    std::vector<RowName> names;
    names.reserve(edits.edits.size());
    for (const Edit& edit : edits.edits) names.push_back({edit.section, edit.key});
    std::vector<std::int32_t> rows = findRows(fxGrid, names);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (rows[i] < 0) {
            throw Stop{kCheckFailed,
                       atLine(edits.edits[i].line, u"no row has this section and key"), file};
        }
    }
    if (edits.error) {
        throw Stop{kCheckFailed, atLine(edits.error->line, edits.error->message), file};
    }
    return rows;
}

}  // namespace

ExitCode apply(const ApplyOptions& options) {
    const auto& [sMainFile, sTransFile] = options.pair;
    GridData fxGrid;
    PairList list(fxGrid);
    ProgressBar bar;
    loadPair(list, {.sMainFile = sMainFile, .sTransFile = sTransFile, .bFillDuplicates = false},
             bar);
    // The edits are asked for once the pair is there: whoever feeds them may do so bit by bit.
    const Edits edits = parseEdits(readAll(options.edits));
    const std::vector<std::int32_t> rows = rowsOf(edits, fxGrid, nameOf(options.edits));
    for (std::size_t i = 0; i < rows.size(); ++i) {
        confirmEdit(list, rows[i], edits.edits[i].translation, bar);
    }
    saveTranslation(fxGrid, sTransFile, options.keepEmpty, bar);
    return kDone;
}

}  // namespace cli
