#include "support/TempDir.h"

#include "platform/base/paths.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <set>
#include <sstream>
#include <stdexcept>

namespace test {

TempDir::TempDir() {
    std::string name = (std::filesystem::temp_directory_path() / "quillmere-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary directory");
    m_path = name;
}

TempDir::~TempDir() {
    namespace fs = std::filesystem;
    std::error_code ignored;
    for (auto it = fs::recursive_directory_iterator(m_path, ignored);
         it != fs::recursive_directory_iterator(); it.increment(ignored)) {
        if (it->is_directory(ignored) && !it->is_symlink(ignored)) {
            fs::permissions(it->path(), fs::perms::owner_all, ignored);
        }
    }
    fs::remove_all(m_path, ignored);
}

Text TempDir::inside(std::string_view name) const {
    Text path = platform::pathFromSystem((m_path / name).string());
    for (const char wildcard : {'*', '?'}) {
        const Text escaped = platform::pathFromSystem(std::string_view(&wildcard, 1));
        std::replace(path.begin(), path.end(), escaped[0], static_cast<char16_t>(wildcard));
    }
    return path;
}

void TempDir::write(std::string_view name, std::string_view bytes) const {
    std::ofstream(m_path / name, std::ios::binary) << bytes;
}

std::string TempDir::read(std::string_view name) const {
    std::ifstream in(m_path / name, std::ios::binary);
    EXPECT_TRUE(in.good()) << "cannot read " << name;
    std::ostringstream all;
    all << in.rdbuf();
    return std::move(all).str();
}

std::string TempDir::tree(std::string_view name) const {
    const std::filesystem::path top = m_path / name;
    std::set<std::string> entries;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(top)) {
        const std::string path = entry.path().lexically_relative(top).string();
        std::ostringstream content;
        if (!entry.is_directory()) content << std::ifstream(entry.path()).rdbuf();
        entries.insert(entry.is_directory() ? path + '/' : path + '=' + content.str());
    }
    std::string all;
    for (const std::string& entry : entries) all += (all.empty() ? "" : " ") + entry;
    return all;
}

}  // namespace test
