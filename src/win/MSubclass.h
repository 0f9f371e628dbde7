// win/MSubclass.h: attaching objects to single messages of windows.
//
// The first attachment to a window puts one procedure, common to all windows, in front of the
// window's own; the last detachment takes it away. A message then goes to the sinks attached to
// it, the last attached first. The mode of the first attached says when the window's own procedure
// runs: just before that sink (smAfter), or after all sinks (smBefore); not at all when a sink has
// stopped the message, which the sinks still to come hear all the same.
//
// Sinks may attach, detach, send messages and destroy windows while they run. A dispatch goes down
// the places that were taken at its start and calls whoever stands there by then; an empty place
// is passed over. What a sink raises reaches the sender of the message, and nobody hears it
// further.
//
// The attachments of a window that is destroyed go by themselves. Only a sink that is attached to
// its WM_DESTROY keeps them: it detaches there what is attached, itself included.
#pragma once
#include "win/ISubclass.h"

enum SubclassMode : std::int32_t {
    smBefore = 9,  // ahead of the window's own procedure
    smAfter = 10,  // behind it
};

// The failures of SubclassAttach; the source is the program's name followed by ".WindowProc".
constexpr auto kCannotSubclass = static_cast<std::int32_t>(0x80043319);
constexpr auto kAlreadyAttached = static_cast<std::int32_t>(0x8004331A);
constexpr auto kInvalidWindow = static_cast<std::int32_t>(0x8004331B);
constexpr auto kExternalWindow = static_cast<std::int32_t>(0x8004331C);
constexpr std::int32_t kInvalidArgument = 5;

// Raises one of the failures above, and the window and all its attachments are as they were:
// kInvalidWindow, kExternalWindow for one of another process, kAlreadyAttached for a sink that is
// attached to this message already, kInvalidArgument for the mode 0, kCannotSubclass when the
// window keeps its procedure, or somebody else has left the common one there after the last
// detachment, so that the window's own is not known any more.
void SubclassAttach(ISubclass& oSink, platform::HWND hWnd, std::uint32_t uMsg, std::int32_t iMode);

// Does nothing for a window that is gone or of another process and for a sink that is not attached.
// The sinks behind it move up by one place. The last one puts the window's own procedure back, also
// over one that somebody else has put in front since.
void SubclassDetach(const ISubclass& oSink, platform::HWND hWnd, std::uint32_t uMsg) noexcept;

// For use inside a sink: runs the window's previous procedure at once and gives its result; 0
// without one.
platform::LRESULT SubclassCallOld(platform::HWND hWnd, std::uint32_t uMsg, platform::WPARAM wParam,
                                  platform::LPARAM lParam);
