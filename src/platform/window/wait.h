// platform/window/wait.h: a window that must be on the screen before a job that reads no messages.
#pragma once
#include "platform/window/window.h"

namespace platform {

// Shows the window without activating it and returns when it is painted. Until the desktop has put
// it on the screen, at most 500 milliseconds, only messages that are no input are read, and timers
// are held back. False when the window is unknown, was destroyed meanwhile, or did not come up in
// time.
bool showPainted(HWND hWnd);

}  // namespace platform
