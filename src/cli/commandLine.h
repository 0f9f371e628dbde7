// cli/commandLine.h: from the arguments of the process to a command, and from there to an exit
// code.
#pragma once
#include "cli/console.h"

namespace cli {

// Does what the arguments ask for, says what went wrong, and returns how the process should end.
// Raises nothing.
ExitCode run(int argc, const char* const* argv);

}  // namespace cli
