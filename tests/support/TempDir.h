// tests/support/TempDir.h: a fresh directory for one test, removed with all that is in it.
#pragma once
#include "platform/base/text.h"

#include <filesystem>
#include <string_view>

namespace test {

class TempDir {
public:
    TempDir();
    ~TempDir();
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const { return m_path; }
    // The path of a name in the directory, in the inside form (backslashes). * and ? in it are
    // wildcards.
    [[nodiscard]] Text inside(std::string_view name) const;
    void write(std::string_view name, std::string_view bytes) const;
    [[nodiscard]] std::string read(std::string_view name) const;  // fails the test when it cannot
    // All that is in it, or below a name in it, in order: "d/ d/e/ f=F", directories with a slash,
    // files with their content. Links are followed.
    [[nodiscard]] std::string tree(std::string_view name = {}) const;

private:
    std::filesystem::path m_path;
};

}  // namespace test
