// host/hostFocus.h: who the focus is inside of, for the sources of this folder.
#pragma once

class HostWindow;

void startFocusWatch();
// The host's window has gone, and the focus with it if it was inside. No later move is told.
void leaveFocus(HostWindow& host);
