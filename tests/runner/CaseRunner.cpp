#include "runner/CaseRunner.h"

#include "support/Process.h"
#include "support/TempDir.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <optional>
#include <sstream>
#include <stdexcept>

namespace fs = std::filesystem;

namespace test {
namespace {

using Files = std::map<std::string, std::string>;  // name -> bytes

std::string readFile(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream all;
    all << in.rdbuf();
    if (!in) throw std::runtime_error("cannot read " + path.string());
    return std::move(all).str();
}

void writeFile(const fs::path& path, std::string_view bytes) {
    std::ofstream out(path, std::ios::binary);
    out << bytes;
    if (!out.flush()) throw std::runtime_error("cannot write " + path.string());
}

Files readFolder(const fs::path& folder) {
    Files files;
    for (const auto& entry : fs::directory_iterator(folder)) {
        std::string name = entry.path().filename().string();
        files[name] = entry.is_regular_file() ? readFile(entry.path()) : "(no regular file)";
    }
    return files;
}

// Takes a file out of the folder's files.
std::optional<std::string> take(Files& files, const std::string& name) {
    auto node = files.extract(name);
    return node ? std::optional(std::move(node.mapped())) : std::nullopt;
}

constexpr std::string_view kExpected = "expected.";

// expected.lng is about trans.lng, the file that the program writes to; expected.NAME about NAME.
std::string expectedTarget(std::string_view name) {
    name.remove_prefix(kExpected.size());
    return name == "lng" ? "trans.lng" : std::string(name);
}

std::string expectedName(std::string_view target) {
    return std::string(kExpected) + (target == "trans.lng" ? "lng" : std::string(target));
}

struct Case {
    std::vector<CaseRun> runs;
    std::vector<int> exitCodes;      // one for each run
    std::optional<std::string> out;  // none: the file is missing
    std::optional<std::string> err;
    Files input;
    Files expected;  // by the name of the file that they are about
};

std::vector<int> parseExitCodes(const std::optional<std::string>& text, std::size_t runs) {
    std::vector<int> codes;
    if (!text) return std::vector<int>(runs, 0);
    std::istringstream in(*text);
    for (int code = 0; in >> code;) codes.push_back(code);
    if (!in.eof() || codes.size() != runs) {
        throw std::runtime_error("exit needs one number for each line of cmd");
    }
    return codes;
}

Case readCase(const fs::path& folder) {
    Case result;
    result.input = readFolder(folder);
    result.runs = parseRuns(take(result.input, "cmd").value_or(""));
    if (result.runs.empty()) throw std::runtime_error("cmd asks for nothing");
    result.exitCodes = parseExitCodes(take(result.input, "exit"), result.runs.size());
    result.out = take(result.input, "out");
    result.err = take(result.input, "err");
    for (auto it = result.input.begin(); it != result.input.end();) {
        if (it->first.starts_with(kExpected)) {
            result.expected[expectedTarget(it->first)] = std::move(it->second);
            it = result.input.erase(it);
        } else {
            ++it;
        }
    }
    return result;
}

struct Outcome {
    std::string out;
    std::string err;
    std::vector<int> exitCodes;
    Files files;
};

Outcome execute(const fs::path& program, const Case& theCase) {
    const TempDir work;
    for (const auto& [name, bytes] : theCase.input) work.write(name, bytes);
    Outcome outcome;
    for (const auto& run : theCase.runs) {
        auto result =
            runProcess(program, run.arguments, {work.path(), run.standardInput, run.environment});
        outcome.out += result.out;
        outcome.err += result.err;
        outcome.exitCodes.push_back(result.exitCode);
    }
    outcome.files = readFolder(work.path());
    return outcome;
}

std::string joined(const std::vector<int>& codes) {
    std::string text;
    for (const int code : codes) text += std::to_string(code) + "\n";
    return text;
}

bool allZero(const std::vector<int>& codes) {
    return std::ranges::all_of(codes, [](int code) { return code == 0; });
}

std::string compare(const Case& theCase, const Outcome& outcome) {
    std::string report =
        describeDifference("exit", joined(theCase.exitCodes), joined(outcome.exitCodes));
    if (!theCase.out) report += "the case has no file out\n";
    report += describeDifference("out", theCase.out.value_or(""), outcome.out);
    if (theCase.err || allZero(theCase.exitCodes)) {
        report += describeDifference("err", theCase.err.value_or(""), outcome.err);
    } else if (!report.empty()) {
        report += "standard error was:\n" + outcome.err;
    }

    Files wanted = theCase.input;
    for (const auto& [name, bytes] : theCase.expected) wanted[name] = bytes;
    for (const auto& [name, bytes] : wanted) {
        const auto found = outcome.files.find(name);
        report += found == outcome.files.end() ? "no file " + name + " is left\n"
                                               : describeDifference(name, bytes, found->second);
    }
    for (const auto& [name, bytes] : outcome.files) {
        if (!wanted.contains(name)) {
            report += "a file appeared that nothing expects\n";
            report += describeDifference(name, "", bytes);
        }
    }
    return report;
}

void rewriteCase(const fs::path& folder, const Case& theCase, const Outcome& outcome) {
    writeFile(folder / "out", outcome.out);
    if (theCase.err || (allZero(outcome.exitCodes) && !outcome.err.empty())) {
        writeFile(folder / "err", outcome.err);
    }
    if (allZero(outcome.exitCodes)) {
        fs::remove(folder / "exit");
    } else {
        writeFile(folder / "exit", joined(outcome.exitCodes));
    }
    for (const auto& [name, bytes] : outcome.files) {
        const auto before = theCase.input.find(name);
        const bool changed = before == theCase.input.end() || before->second != bytes;
        if (changed || theCase.expected.contains(name)) {
            writeFile(folder / expectedName(name), bytes);
        }
    }
}

// Text with its line end, cut after each LF.
std::vector<std::string_view> splitLines(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t length = std::min(text.find('\n'), text.size() - 1) + 1;
        lines.push_back(text.substr(0, length));
        text.remove_prefix(length);
    }
    return lines;
}

// Length of the well-formed UTF-8 character above U+009F at the start of a text, 0 if none is
// there.
std::size_t printableCharacter(std::string_view text) {
    const std::string_view one = text.substr(0, 4);
    for (std::size_t length = 2; length <= one.size(); ++length) {
        const Text units = fromUtf8(one.substr(0, length));
        if (units.find(u'\xFFFD') == Text::npos) return units[0] > u'\x9F' ? length : 0;
    }
    return 0;
}

std::string escaped(std::string_view text) {
    constexpr std::string_view kHex = "0123456789abcdef";
    std::string shown;
    while (!text.empty()) {
        const char c = text.front();
        std::size_t length = 1;
        if (c == '\\') {
            shown += "\\\\";
        } else if (c == '\r') {
            shown += "\\r";
        } else if (c == '\n') {
            shown += "\\n";
        } else if (c == '\t') {
            shown += "\\t";
        } else if (c >= ' ' && c <= '~') {
            shown += c;
        } else if (const std::size_t character = printableCharacter(text)) {
            length = character;
            shown += text.substr(0, length);
        } else {
            const auto byte = static_cast<unsigned char>(c);
            shown += {'\\', 'x', kHex[byte / 16], kHex[byte % 16]};
        }
        text.remove_prefix(length);
    }
    return shown;
}

bool isName(std::string_view word) {
    return !word.empty() && word.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ_0123456789") ==
                                std::string_view::npos;
}

struct Word {
    std::string text;
    bool quoted = false;
};

std::vector<Word> splitWords(std::string_view line) {
    std::vector<Word> words;
    bool inWord = false;
    while (!line.empty()) {
        const char c = line.front();
        line.remove_prefix(1);
        if (c == ' ' || c == '\t') {
            inWord = false;
            continue;
        }
        if (!inWord) words.emplace_back();
        inWord = true;
        if (c != '"' && c != '\'') {
            words.back().text += c;
            continue;
        }
        const std::size_t end = line.find(c);
        if (end == std::string_view::npos) throw std::runtime_error("cmd has a quote without end");
        words.back().text += line.substr(0, end);
        words.back().quoted = true;
        line.remove_prefix(end + 1);
    }
    return words;
}

CaseRun parseRun(std::string_view line) {
    CaseRun run;
    auto words = splitWords(line);
    for (std::size_t i = 0; i < words.size(); ++i) {
        auto& word = words[i];
        const std::size_t equals = word.text.find('=');
        if (!word.quoted && word.text == "<") {
            if (++i == words.size()) throw std::runtime_error("cmd has a < without a file");
            run.standardInput = std::move(words[i].text);
        } else if (run.arguments.empty() && equals != std::string::npos &&
                   isName(std::string_view(word.text).substr(0, equals))) {
            run.environment[word.text.substr(0, equals)] = word.text.substr(equals + 1);
        } else {
            run.arguments.push_back(std::move(word.text));
        }
    }
    return run;
}

}  // namespace

std::vector<CaseRun> parseRuns(std::string_view cmd) {
    std::vector<CaseRun> runs;
    for (std::string_view line : splitLines(cmd)) {
        line = line.substr(0, line.find_first_of("\r\n"));
        const std::size_t start = line.find_first_not_of(" \t");
        if (start != std::string_view::npos && line[start] != '#') runs.push_back(parseRun(line));
    }
    return runs;
}

std::vector<fs::path> findCases(const fs::path& root) {
    std::vector<fs::path> cases;
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
        if (entry.is_directory() && fs::exists(entry.path() / "cmd")) cases.push_back(entry.path());
    }
    std::ranges::sort(cases);
    return cases;
}

std::string runCase(const fs::path& program, const fs::path& folder, bool rewrite) {
    const Case theCase = readCase(folder);
    const Outcome outcome = execute(program, theCase);
    if (rewrite) {
        rewriteCase(folder, theCase, outcome);
        return {};
    }
    return compare(theCase, outcome);
}

std::string describeDifference(std::string_view name, std::string_view expected,
                               std::string_view actual) {
    if (expected == actual) return {};
    constexpr std::size_t kMostLines = 20;
    const auto [left, right] = std::ranges::mismatch(expected, actual);
    const auto offset = static_cast<std::size_t>(left - expected.begin());

    auto before = splitLines(expected);
    auto after = splitLines(actual);
    std::size_t same = 0;
    while (same < before.size() && same < after.size() && before[same] == after[same]) ++same;
    std::size_t sameAtEnd = 0;
    while (sameAtEnd < before.size() - same && sameAtEnd < after.size() - same &&
           before[before.size() - 1 - sameAtEnd] == after[after.size() - 1 - sameAtEnd]) {
        ++sameAtEnd;
    }

    std::ostringstream report;
    report << name << " differs from byte " << offset << " (line " << same + 1 << ") on:\n";
    const auto show = [&](char sign, const std::vector<std::string_view>& lines) {
        const std::size_t end = lines.size() - sameAtEnd;
        for (std::size_t i = same; i < end && i < same + kMostLines; ++i) {
            report << sign << ' ' << escaped(lines[i]) << '\n';
        }
        if (end > same + kMostLines) {
            report << sign << " ... " << end - same - kMostLines << " more lines\n";
        }
    };
    show('-', before);
    show('+', after);
    return std::move(report).str();
}

}  // namespace test
