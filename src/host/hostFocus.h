// host/hostFocus.h: who the focus is inside of, for the sources of this folder.
#pragma once

class HostWindow;

void startFocusWatch();
// The host's window goes: it hears of no move any more.
void forgetFocus(const HostWindow& host);
