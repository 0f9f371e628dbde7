#include "architecture/include_graph.h"

#include <algorithm>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <stdexcept>
#include <string_view>

namespace fs = std::filesystem;

namespace test {
namespace {

struct Include {
    std::string name;
    bool system = false;  // <...>
};

struct SourceFile {
    std::string path;    // from root
    std::string folder;  // from root
    bool header = false;
    bool product = true;
    bool pragmaOnce = false;
    std::vector<Include> includes;
};

bool isTestCode(std::string_view stem) {
    return stem.ends_with("_test") || stem.ends_with("_fuzz") || stem.ends_with("_bench");
}

SourceFile readSource(const fs::path& root, const fs::path& path) {
    static const std::regex kInclude(R"re(^\s*#\s*include\s*([<"])([^>"]+)[>"])re");
    static const std::regex kOnce(R"(^\s*#\s*pragma\s+once\b)");
    SourceFile file;
    file.path = path.lexically_relative(root).generic_string();
    file.folder = path.parent_path().lexically_relative(root).generic_string();
    file.header = path.extension() == ".h";
    file.product = !isTestCode(path.stem().string());
    std::ifstream in(path);
    if (!in) throw std::runtime_error("cannot read " + path.string());
    std::smatch match;
    for (std::string line; std::getline(in, line);) {
        if (line.find('#') == std::string::npos) continue;
        if (std::regex_search(line, match, kInclude)) {
            file.includes.push_back({match[2], match[1] == "<"});
        } else if (std::regex_search(line, kOnce)) {
            file.pragmaOnce = true;
        }
    }
    return file;
}

std::vector<SourceFile> readTree(const fs::path& root) {
    std::vector<SourceFile> files;
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
        const auto extension = entry.path().extension();
        if (entry.is_regular_file() && (extension == ".h" || extension == ".cpp")) {
            files.push_back(readSource(root, entry.path()));
        }
    }
    std::ranges::sort(files, {}, &SourceFile::path);
    return files;
}

bool contains(const std::vector<std::string>& list, std::string_view item) {
    return std::ranges::find(list, item) != list.end();
}

// <QWidget>, <QtGui/QImage>; a single Q in front is no sign yet.
bool startsWith(std::string_view name, std::string_view prefix) {
    if (prefix != "Q") return name.starts_with(prefix);
    return name.size() > 1 && name[0] == 'Q' &&
           (name[1] == 't' || (name[1] >= 'A' && name[1] <= 'Z'));
}

// X_internal.h is shared by the sources of one folder.
bool isInternal(std::string_view stem) { return stem.ends_with("_internal"); }

class Check {
public:
    Check(const fs::path& root, const IncludeRules& rules) : m_root(root), m_rules(rules) {}

    std::vector<std::string> run() {
        for (const auto& file : readTree(m_root)) checkFile(file);
        checkCircles();
        return std::move(m_faults);
    }

private:
    void fault(const SourceFile& file, const std::string& what) {
        m_faults.push_back(file.path + ": " + what);
    }

    void checkFile(const SourceFile& file) {
        const auto rule = std::ranges::find(m_rules.folders, file.folder, &FolderRule::folder);
        if (rule == m_rules.folders.end()) {
            fault(file, "its folder has no row in the table of levels");
            return;
        }
        if (file.header && !file.pragmaOnce) fault(file, "has no #pragma once");
        for (const auto& include : file.includes) {
            if (include.system) {
                checkLibrary(file, include.name);
            } else {
                checkOwn(file, *rule, include.name);
            }
        }
    }

    void checkOwn(const SourceFile& file, const FolderRule& rule, const std::string& name) {
        if (name.starts_with("support/")) {
            if (file.product) fault(file, "product code includes \"" + name + "\" of the tests");
            return;
        }
        const fs::path path(name);
        if (isTestCode(path.stem().string())) {
            if (file.product) fault(file, "product code includes the test file \"" + name + '"');
        }
        if (!fs::is_regular_file(m_root / path) || path.lexically_normal() != path) {
            fault(file, "includes \"" + name + "\", which is no path from the root of the sources");
            return;
        }
        const std::string target = path.parent_path().generic_string();
        if (target == file.folder) return;
        if (isInternal(path.stem().string())) {
            fault(file, "may not include \"" + name + "\", which belongs to its folder alone");
        }
        if (!contains(rule.mayInclude, target)) {
            fault(file, "may not include \"" + name + "\": " + file.folder +
                            " stands below or beside " + target);
        }
        m_arrows[file.folder].insert(target);
    }

    void checkLibrary(const SourceFile& file, const std::string& name) {
        const auto uses = [&](const LibraryRule& library) {
            return std::ranges::any_of(library.prefixes, [&](const std::string& prefix) {
                return startsWith(name, prefix);
            });
        };
        const auto library = std::ranges::find_if(m_rules.libraries, uses);
        if (library == m_rules.libraries.end()) {
            const bool system = name.find('/') == std::string::npos || name.starts_with("sys/");
            if (!system) fault(file, "includes <" + name + ">, a library without a row");
        } else if (library->folders.empty()) {
            if (file.product) fault(file, "product code includes <" + name + "> of the tests");
        } else if (!contains(library->folders, file.folder)) {
            fault(file, "may not include <" + name + ">: " + library->library + " stays in " +
                            library->folders.front());
        } else if (file.header && !library->headersToo &&
                   !isInternal(fs::path(file.path).stem().string())) {
            fault(file, "is a header and may not include <" + name + "> of " + library->library);
        }
    }

    // A walk along the arrows that comes back to a folder it is still in has found a circle.
    void checkCircles() {
        for (const auto& [folder, targets] : m_arrows) visit(folder);
    }

    void visit(const std::string& folder) {
        if (m_done.contains(folder)) return;
        const auto open = std::ranges::find(m_road, folder);
        if (open != m_road.end()) {
            std::string circle = "circle: ";
            for (auto it = open; it != m_road.end(); ++it) circle += *it + " -> ";
            m_faults.push_back(circle + folder);
            return;
        }
        m_road.push_back(folder);
        if (const auto arrows = m_arrows.find(folder); arrows != m_arrows.end()) {
            for (const auto& target : arrows->second) visit(target);
        }
        m_road.pop_back();
        m_done.insert(folder);
    }

    const fs::path& m_root;
    const IncludeRules& m_rules;
    std::vector<std::string> m_faults;
    std::map<std::string, std::set<std::string>> m_arrows;  // folder -> folders it includes
    std::vector<std::string> m_road;
    std::set<std::string> m_done;
};

}  // namespace

std::vector<std::string> includeFaults(const fs::path& root, const IncludeRules& rules) {
    return Check(root, rules).run();
}

}  // namespace test
