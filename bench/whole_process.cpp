// whole_process [ROUNDS]: quillmere-cli against the reference program, in turn, each as a whole
// process.
//
// CPU time (user and system) of a process, not the clock: other work on the machine hardly counts.
// The ratio of a round is taken within the round; the table shows medians over all rounds (15), and
// the most memory that quillmere-cli held.
#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

namespace fs = std::filesystem;
using Words = std::vector<std::string>;

struct Cost {
    double milliseconds = 0;
    double mebibytes = 0;  // most memory held at once
};

// Runs a program with standard output into the file `out`; raises when it does not end with 0.
Cost run(const std::string& program, const Words& arguments, const std::string& out = "out.txt") {
    std::vector<char*> argv{const_cast<char*>(program.c_str())};
    for (const auto& word : arguments) argv.push_back(const_cast<char*>(word.c_str()));
    argv.push_back(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        const int file = open(out.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
        if (file >= 0 && dup2(file, STDOUT_FILENO) >= 0) execv(argv[0], argv.data());
        _exit(127);
    }
    int status = 0;
    rusage used{};
    while (wait4(child, &status, 0, &used) < 0) {
        if (errno != EINTR) throw std::runtime_error("cannot start " + program);
    }
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
        throw std::runtime_error(program + " " + arguments.front() + " failed");
    }
    const auto milliseconds = [](const timeval& t) {
        return static_cast<double>(t.tv_sec) * 1e3 + static_cast<double>(t.tv_usec) / 1e3;
    };
    return {milliseconds(used.ru_utime) + milliseconds(used.ru_stime),
            static_cast<double>(used.ru_maxrss) / 1024};
}

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

std::string content(const char* path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream all;
    all << in.rdbuf();
    return std::move(all).str();
}

struct Job {
    const char* name;
    const char* shape;
    Words arguments;  // of quillmere-cli; MAIN and TRANS stand for the files
    bool merge = false;
};

Words filled(Words words, const std::string& folder) {
    for (auto& word : words) {
        if (word == "MAIN") word = folder + "/main.lng";
        if (word == "TRANS") word = folder + "/trans.lng";
        if (word == "EDITS") word = folder + "/edits.jsonl";
    }
    return words;
}

void measure(const Job& job, int rounds) {
    const std::string folder = "pair";
    fs::remove_all(folder);
    fs::create_directory(folder);
    (void)run(MAKE_PAIR_PROGRAM, {job.shape, folder});
    const Words cli = filled(job.arguments, folder);
    const Words reference = filled(
        job.merge ? Words{"--merge", "TRANS", "merged.lng"} : Words{"MAIN", "TRANS"}, folder);

    std::vector<double> referenceTimes;
    std::vector<double> times;
    std::vector<double> ratios;
    double peak = 0;
    for (int round = 0; round < rounds; ++round) {
        const Cost floor = run(REFERENCE_PROGRAM, reference, "reference.txt");
        const Cost cost = run(CLI_PROGRAM, cli);
        referenceTimes.push_back(floor.milliseconds);
        times.push_back(cost.milliseconds);
        ratios.push_back(cost.milliseconds / floor.milliseconds);
        peak = std::max(peak, cost.mebibytes);
    }
    // Both count: a wrong result makes the time worth nothing.
    if (job.arguments.front() == "status" && content("out.txt") != content("reference.txt")) {
        throw std::runtime_error(std::string(job.name) + " counts otherwise than the reference");
    }
    std::printf("%-28s %10.1f %10.1f %8.2f %8.1f\n", job.name, median(referenceTimes),
                median(times), median(ratios), peak);
    std::fflush(stdout);
}

}  // namespace

int main(int argc, char** argv) {
    const int rounds = argc > 1 ? std::atoi(argv[1]) : 15;
    if (rounds < 1) {
        std::fputs("usage: whole_process [ROUNDS]\n", stderr);
        return 2;
    }
    const Job jobs[] = {
        {"status, small", "small", {"status", "MAIN", "TRANS", "--json"}},
        {"status, large", "large", {"status", "MAIN", "TRANS", "--json"}},
        {"status, large-utf16", "large-utf16", {"status", "MAIN", "TRANS", "--json"}},
        {"status, large-utf8", "large-utf8", {"status", "MAIN", "TRANS", "--json"}},
        {"status, dense", "dense", {"status", "MAIN", "TRANS", "--json"}},
        {"rows --json, large", "large", {"rows", "MAIN", "TRANS", "--json"}},
        {"fill --dry-run, large", "large", {"fill", "MAIN", "TRANS", "--dry-run"}},
        {"merge, large", "large", {"merge", "MAIN", "TRANS"}, true},
        {"apply 1,000 edits, large", "large", {"apply", "MAIN", "TRANS", "EDITS"}, true},
    };
    const fs::path folder =
        fs::temp_directory_path() / ("quillmere-bench-" + std::to_string(getpid()));
    try {
        fs::create_directory(folder);
        fs::current_path(folder);
        std::printf("%-28s %10s %10s %8s %8s\n", "medians", "reference", "cli", "ratio", "peak");
        std::printf("%-28s %10s %10s %8s %8s\n", "", "ms CPU", "ms CPU", "", "MiB");
        for (const Job& job : jobs) measure(job, rounds);
        fs::remove_all(folder);
    } catch (const std::exception& failure) {
        std::error_code ignored;
        fs::remove_all(folder, ignored);
        std::fprintf(stderr, "whole_process: %s\n", failure.what());
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
