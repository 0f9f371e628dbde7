// The levels of the house (docs/architecture.md) as tables, the source tree against them, and the
// check itself against small trees with one fault each.
#include "architecture/include_graph.h"
#include "support/TempDir.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace test {
namespace {

// Lists of folders put together, so that a level can be named by the levels below it.
std::vector<std::string> all(std::initializer_list<std::vector<std::string>> lists) {
    std::vector<std::string> folders;
    for (const auto& list : lists) folders.insert(folders.end(), list.begin(), list.end());
    return folders;
}

IncludeRules houseRules() {
    const std::vector<std::string> base{"platform/base"};
    const std::vector<std::string> platform{"platform/base", "platform/window"};
    const std::vector<std::string> logic{"file", "langfile", "grid/store", "workbench/logic"};
    const std::vector<std::string> graphics{"gfx", "win"};
    const std::vector<std::string> host{"host"};
    const std::vector<std::string> controls{"grid", "menu", "controls"};

    IncludeRules rules;
    rules.folders = {
        {"platform/base", {}},
        {"platform/window", base},
        {"file", base},
        {"langfile", all({base, {"file"}})},
        {"grid/store", base},
        {"workbench/logic", all({base, {"file", "langfile", "grid/store"}})},
        {"gfx", all({platform, {"file"}})},
        {"win", all({platform, {"file"}})},
        {"host", all({platform, graphics})},
        {"grid", all({platform, logic, graphics, host})},
        {"menu", all({platform, logic, graphics, host})},
        {"controls", all({platform, logic, graphics, host})},
        {"workbench", all({platform, logic, graphics, host, controls})},
        {"gallery", all({platform, logic, graphics, host, controls, {"workbench"}})},
        {"app", all({platform, logic, graphics, host, controls, {"workbench"}})},
        {"cli", all({base, logic})},
    };
    rules.libraries = {
        {"Qt", {"Q"}, {"platform/window"}, false},
        {"ICU", {"unicode/"}, {"platform/base"}},
        {"CLI11", {"CLI/"}, {"cli"}},
        {"nlohmann-json", {"nlohmann/"}, {"cli"}},
        {"GoogleTest", {"gtest/", "gmock/"}, {}},
        {"Google Benchmark", {"benchmark/"}, {}},
    };
    return rules;
}

std::string joined(const std::vector<std::string>& lines) {
    std::string text;
    for (const auto& line : lines) text += line + "\n";
    return text;
}

TEST(Architecture, SourcesIncludeOnlyWhatTheirLevelAllows) {
    EXPECT_EQ(joined(includeFaults(QUILLMERE_SOURCES, houseRules())), "");
}

TEST(Architecture, TheTableOfLevelsItselfHasNoCircle) {
    // Each row names only rows above it.
    const auto rules = houseRules();
    std::vector<std::string> known;
    for (const auto& rule : rules.folders) {
        for (const auto& folder : rule.mayInclude) {
            EXPECT_NE(std::ranges::find(known, folder), known.end())
                << rule.folder << " names " << folder;
        }
        known.push_back(rule.folder);
    }
}

struct TreeFile {
    std::string path;
    std::string text;
};

std::string faultsOf(const std::vector<TreeFile>& files) {
    const TempDir root;
    for (const auto& file : files) {
        std::filesystem::create_directories((root.path() / file.path).parent_path());
        root.write(file.path, file.text);
    }
    IncludeRules rules;
    rules.folders = {
        {"low", {}}, {"low/inner", {"low"}}, {"left", {"low"}}, {"right", {"low", "left"}}};
    // Two rows that name each other: only so can a circle be drawn at all.
    rules.folders.push_back({"ring", {"left"}});
    rules.folders[2].mayInclude.push_back("ring");
    rules.libraries = {{"Qt", {"Q"}, {"left"}, false},
                       {"ICU", {"unicode/"}, {"low"}},
                       {"GoogleTest", {"gtest/"}, {}}};
    return joined(includeFaults(root.path(), rules));
}

TEST(IncludeGraph, AcceptsWhatTheTablesAllow) {
    EXPECT_EQ(
        faultsOf({
            {"low/a.h", "// a\n#pragma once\n#include <unicode/uchar.h>\n#include <vector>\n"},
            {"low/inner/b.h", "#pragma once\n  #  include \"low/a.h\"\n"},
            {"left/k_internal.h", "#pragma once\n#include <QString>\n"},
            {"left/c.cpp", "#include \"left/k_internal.h\"\n#include <QWidget>\n#include "
                           "<Queue>\n#include <sys/stat.h>\n"},
            {"right/d.cpp", "#include \"low/a.h\"\n// #include \"up/x.h\"\n"},
            {"right/d_test.cpp", "#include \"support/TempDir.h\"\n#include <gtest/gtest.h>\n"},
        }),
        "");
}

TEST(IncludeGraph, NamesEachFault) {
    const TreeFile header{"right/r.h", "#pragma once\n"};
    const TreeFile inner{"low/inner/i.h", "#pragma once\n"};
    const struct {
        std::vector<TreeFile> files;
        std::string faults;
    } kCases[] = {
        {{header, {"left/l.cpp", "#include \"right/r.h\"\n"}},
         "left/l.cpp: may not include \"right/r.h\": left stands below or beside right\n"},
        {{inner, {"low/l.cpp", "#include \"low/inner/i.h\"\n"}},
         "low/l.cpp: may not include \"low/inner/i.h\": low stands below or beside low/inner\n"},
        {{inner, {"left/l_test.cpp", "#include \"low/inner/i.h\"\n"}},
         "left/l_test.cpp: may not include \"low/inner/i.h\": left stands below or beside "
         "low/inner\n"},
        {{{"low/l_internal.h", "#pragma once\n"},
          {"left/l.cpp", "#include \"low/l_internal.h\"\n"}},
         "left/l.cpp: may not include \"low/l_internal.h\", which belongs to its folder alone\n"},
        {{header, {"right/l.cpp", "#include \"r.h\"\n#include \"right/../right/r.h\"\n"}},
         "right/l.cpp: includes \"r.h\", which is no path from the root of the sources\n"
         "right/l.cpp: includes \"right/../right/r.h\", which is no path from the root of the "
         "sources\n"},
        {{{"new/x.cpp", ""}}, "new/x.cpp: its folder has no row in the table of levels\n"},
        {{{"low/a.h", "// #pragma once\n"}}, "low/a.h: has no #pragma once\n"},
        {{{"low/a.cpp", "#include <QtCore/QString>\n"}},
         "low/a.cpp: may not include <QtCore/QString>: Qt stays in left\n"},
        {{{"left/a.h", "#pragma once\n#include <QString>\n"}},
         "left/a.h: is a header and may not include <QString> of Qt\n"},
        {{{"left/a.cpp", "#include <unicode/ucol.h>\n"}},
         "left/a.cpp: may not include <unicode/ucol.h>: ICU stays in low\n"},
        {{{"low/a.cpp", "#include <boost/regex.hpp>\n"}},
         "low/a.cpp: includes <boost/regex.hpp>, a library without a row\n"},
        {{{"low/a.cpp", "#include <gtest/gtest.h>\n#include \"support/TempDir.h\"\n"}},
         "low/a.cpp: product code includes <gtest/gtest.h> of the tests\n"
         "low/a.cpp: product code includes \"support/TempDir.h\" of the tests\n"},
        {{{"low/a_fuzz.cpp", ""}, {"low/a.cpp", "#include \"low/a_fuzz.cpp\"\n"}},
         "low/a.cpp: product code includes the test file \"low/a_fuzz.cpp\"\n"},
        {{{"left/a.h", "#pragma once\n#include \"ring/b.h\"\n"},
          {"ring/b.h", "#pragma once\n#include \"left/a.h\"\n"}},
         "circle: left -> ring -> left\n"},
    };
    for (const auto& c : kCases) EXPECT_EQ(faultsOf(c.files), c.faults);
}

}  // namespace
}  // namespace test
