// platform/window/focus.h: hearing of every move of the focus.
#pragma once
#include "platform/window/types.h"

namespace platform {

// Is called after each move of the focus between windows of the program, and to or from none: after
// WM_KILLFOCUS and WM_SETFOCUS. GetFocus tells where it is then. Moves that it makes itself call it
// again, inside. What it raises ends at the message loop. There is one; nullptr takes it away.
using FocusObserver = void (*)();
void setFocusObserver(FocusObserver observer);

}  // namespace platform
