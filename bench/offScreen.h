// bench/offScreen.h: the window system for benchmarks, without a display.
#pragma once
#include "platform/window/application.h"

// Starts it, once for the whole run. It never ends: what it works with goes first when a program
// exits.
inline void startOffScreen() {
    static int argc = 1;
    static char name[] = "bench";
    static char* argv[] = {name, nullptr};
    [[maybe_unused]] static const auto* const application =
        new platform::Application(argc, argv, {.offScreen = true});
}
