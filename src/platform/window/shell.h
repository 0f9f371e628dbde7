// platform/window/shell.h: opening pages, files and programs by the desktop.
#pragma once
#include "platform/window/messages.h"

namespace platform {

constexpr std::intptr_t SE_ERR_FNF = 2;       // no such file
constexpr std::intptr_t SE_ERR_NOASSOC = 31;  // nothing opens it, or the verb is not known here
constexpr std::intptr_t SE_ERR_SUCCESS = 33;

// What ShellExecuteW was asked for.
struct ShellRequest {
    HWND hWnd = 0;
    Text verb, file, parameters, directory;
    int show = 0;
};

// Opens an address ("https://...", "mailto:...") or a file, a path in the inside form, with the
// program that the desktop has for it; a program with parameters, or a file that can be executed,
// is started in `directory` (empty: the present one). Verbs: "" and "open"; "edit" does the same
// with a document; "explore" opens a directory, or the one around a file. hWnd and show have no
// influence. Above 32 when it was handed over; else one of the codes above.
std::intptr_t ShellExecuteW(HWND hWnd, TextView verb, TextView file, TextView parameters,
                            TextView directory, int show);

}  // namespace platform
