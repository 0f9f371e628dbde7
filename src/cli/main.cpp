#include "cli/commandLine.h"

#include <csignal>

int main(int argc, char** argv) {
    // A file that may not grow is a failed write like any other, not the end of the process.
    std::signal(SIGXFSZ, SIG_IGN);
    return cli::run(argc, argv);
}
