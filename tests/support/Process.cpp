#include "support/Process.h"

#include <cstdlib>
#include <fcntl.h>
#include <stdexcept>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace test {
namespace {

// A file without a name, for one stream of the program: no pipe to fill up, nothing to clean up.
class Scratch {
public:
    Scratch() {
        std::string name = (std::filesystem::temp_directory_path() / "quillmere-XXXXXX").string();
        m_file = mkostemp(name.data(), O_CLOEXEC);
        if (m_file < 0) throw std::runtime_error("no temporary file");
        unlink(name.c_str());
    }
    ~Scratch() { close(m_file); }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;

    [[nodiscard]] int file() const { return m_file; }
    [[nodiscard]] std::string content() const {
        std::string all(static_cast<std::size_t>(lseek(m_file, 0, SEEK_END)), '\0');
        std::size_t done = 0;
        while (done < all.size()) {
            const auto got =
                pread(m_file, all.data() + done, all.size() - done, static_cast<off_t>(done));
            if (got <= 0) throw std::runtime_error("cannot read back what the program wrote");
            done += static_cast<std::size_t>(got);
        }
        return all;
    }

private:
    int m_file;
};

std::vector<char*> pointers(std::vector<std::string>& texts) {
    std::vector<char*> list;
    list.reserve(texts.size() + 1);
    for (auto& text : texts) list.push_back(text.data());
    list.push_back(nullptr);
    return list;
}

}  // namespace

ProcessResult runProcess(const std::filesystem::path& program,
                         const std::vector<std::string>& arguments, const ProcessInput& input) {
    auto environment = input.environment;
    environment.emplace("LC_ALL", "C");
    for (const char* name : {"ASAN_OPTIONS", "UBSAN_OPTIONS", "LSAN_OPTIONS"}) {
        if (const char* value = std::getenv(name)) environment.emplace(name, value);
    }
    std::vector<std::string> environmentTexts;
    environmentTexts.reserve(environment.size());
    for (const auto& [name, value] : environment) environmentTexts.push_back(name + "=" + value);
    std::vector<std::string> argumentTexts{program.string()};
    argumentTexts.insert(argumentTexts.end(), arguments.begin(), arguments.end());
    const auto argv = pointers(argumentTexts);
    const auto envp = pointers(environmentTexts);
    const std::string folder = input.folder.string();
    const std::string standardInput =
        input.standardInput.empty() ? "/dev/null" : input.standardInput.string();
    const Scratch out;
    const Scratch err;

    constexpr int kCannotStart = 255;
    const pid_t child = fork();
    if (child < 0) throw std::system_error(errno, std::generic_category(), "fork");
    if (child == 0) {
        int in = -1;
        if (chdir(folder.c_str()) == 0 && (in = open(standardInput.c_str(), O_RDONLY)) >= 0 &&
            dup2(in, STDIN_FILENO) >= 0 && dup2(out.file(), STDOUT_FILENO) >= 0 &&
            dup2(err.file(), STDERR_FILENO) >= 0) {
            execve(argv[0], argv.data(), envp.data());
        }
        _exit(kCannotStart);
    }
    int status = 0;
    while (waitpid(child, &status, 0) < 0) {
        if (errno != EINTR) throw std::system_error(errno, std::generic_category(), "waitpid");
    }
    ProcessResult result;
    result.exitCode = WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
    if (result.exitCode == kCannotStart) {
        throw std::runtime_error("cannot start " + program.string() + " in " + folder);
    }
    result.out = out.content();
    result.err = err.content();
    return result;
}

}  // namespace test
